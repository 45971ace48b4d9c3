#pragma once

#include <QDialog>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "i18n/windows/window_host.h"
#include "opc/opc_manager.h"
#include "opc/windows/opc_item_model.h"
#include "platform/platform.h"

class QAction;
class QTreeWidgetItem;

namespace Ui {
class frmMainOPC;
}

namespace velk {

/// The servers, groups and items whose values become channels: a tree of servers and groups, and the items of the
/// chosen group with their values as they come. Closing it stores the list.
class frmMainOPC : public QDialog {
  Q_OBJECT

 public:
  frmMainOPC(WindowHost& host, const Platform& platform, OpcCalls& calls, OpcManager& manager);
  ~frmMainOPC() override;

 private:
  /// Places in the tree, counted from 0.
  struct Place {
    std::size_t server = 0;
    std::optional<std::size_t> group;
  };

  std::optional<Place> Chosen() const;
  std::optional<Place> ChosenGroup() const;
  /// The chosen items' places, the last first.
  std::vector<std::size_t> ChosenItems() const;
  void ConnectCommands();
  void FillTree(std::optional<Place> chosen);
  void FitColumns();
  QString LabelOf(const ManagedServer& server) const;
  void ShowChosen();
  void Timer1_Timer();

  void mnuTreeViewNewServer_Click();
  void mnuTreeViewConnect_Click();
  void mnuTreeViewNewGroup_Click();
  void mnuTreeViewNewItem_Click();
  void mnuTreeViewDelete_Click();
  void mnuTreeViewProperties_Click();
  void mnuListViewDelete_Click();
  void SetItemsActive(bool active);
  void mnuListViewWriteValue_Click();
  void mnuViewUpdateDispaly_Click();
  bool IsSureToDelete(const std::string& name);
  void ShowGroupProperties(const Place& place);
  void RestorePlace();
  void SavePlace();

  WindowHost& host_;
  Platform platform_;
  OpcCalls& calls_;
  OpcManager& manager_;
  std::unique_ptr<Ui::frmMainOPC> ui_;
  OpcItemModel items_;
  std::unique_ptr<Timer> Timer1;
};

/// The menu command: the list is edited, stored, and `stored` is called; all that the window has connected is ended
/// before.
void mnuEditOPCServer_Click(WindowHost& host, const Platform& platform, OpcTransport& transport, int channelsLeft,
                            const std::function<void()>& stored);

}  // namespace velk
