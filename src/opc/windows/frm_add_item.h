#pragma once

#include <QDialog>
#include <QStringListModel>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "i18n/windows/window_host.h"
#include "opc/opc_browser_class.h"

class QTreeWidgetItem;

namespace Ui {
class frmAddItem;
}

namespace velk {

/// What adding an item works with.
struct AddItemAccess {
  /// A browser at the server's root; null where the server has none.
  std::function<std::unique_ptr<OPCBrowserClass>()> browse;
  std::function<bool(const std::string& id, const OpcDataType& type, bool active)> validate;
  /// False where the server has refused the item.
  std::function<bool(const std::string& id, const OpcDataType& type, bool active)> addOPCItemMain;
};

/// Adds an item to a group: one that is found in the folders of the server, or whose identifier is typed.
class frmAddItem : public QDialog {
  Q_OBJECT

 public:
  frmAddItem(WindowHost& host, AddItemAccess access);
  ~frmAddItem() override;

 private:
  void FillTypes();
  void BeginBrowsing();
  /// Walks from the root to a branch of the tree.
  bool MoveTo(const QTreeWidgetItem& branch);
  void AddBranches(QTreeWidgetItem& branch);
  void Expand(QTreeWidgetItem& branch);
  void FillItems();
  void TakeItem(const QModelIndex& entry);
  void Validate_Click();
  void AddItem_Click();
  OpcDataType ChosenType() const;

  WindowHost& host_;
  const AddItemAccess access_;
  std::unique_ptr<Ui::frmAddItem> ui_;
  std::unique_ptr<OPCBrowserClass> browser_;
  QStringListModel names_;
};

/// The types that an item can be asked for, as the lists name them.
struct NamedOpcType {
  const char* name;
  OpcDataType type;
};
const std::vector<NamedOpcType>& NamedOpcTypes();

}  // namespace velk
