#pragma once

#include <QDialog>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "i18n/windows/window_host.h"
#include "opc/opc_calls.h"

namespace Ui {
class frmSelectOPCServer;
}

namespace velk {

/// Chooses a server of a node and connects it.
class frmSelectOPCServer : public QDialog {
  Q_OBJECT

 public:
  /// Connects a server and adds it to the tree; false where that failed, which has shown its box.
  using AddSelectedOPCServerMain = std::function<bool(const std::string& name, const std::string& node)>;

  frmSelectOPCServer(WindowHost& host, OpcCalls& calls, AddSelectedOPCServerMain add);
  ~frmSelectOPCServer() override;

 private:
  /// Fills the list from the node.
  void Command1_Click();
  void OPCServerList_Click();
  void ConnectToOPCServer_Click();
  /// What a server is stored with as its node.
  std::string NodeOf(const std::string& server) const;

  WindowHost& host_;
  OpcCalls& calls_;
  const AddSelectedOPCServerMain add_;
  std::unique_ptr<Ui::frmSelectOPCServer> ui_;
  std::vector<OpcServerEntry> servers_;  ///< as the list has them
};

}  // namespace velk
