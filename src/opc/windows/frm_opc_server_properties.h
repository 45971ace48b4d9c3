#pragma once

#include <QDialog>
#include <memory>

#include "i18n/windows/window_host.h"
#include "opc/opc_server_class.h"

namespace Ui {
class frmOPCServerProperties;
}

namespace velk {

/// What a server says of itself as the window opens. What it doesn't say is told in its field, without a box.
class frmOPCServerProperties : public QDialog {
  Q_OBJECT

 public:
  frmOPCServerProperties(WindowHost& host, OpcCalls& calls, OPCServerClass& server);
  ~frmOPCServerProperties() override;

 private:
  void Fill(OpcCalls& calls, OPCServerClass& server);

  WindowHost& host_;
  std::unique_ptr<Ui::frmOPCServerProperties> ui_;
};

/// A state by its code, 1 to 6; empty for any other.
OperatorText OpcStateText(int code);

}  // namespace velk
