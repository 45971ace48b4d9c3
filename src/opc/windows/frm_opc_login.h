#pragma once

#include <QDialog>
#include <memory>
#include <string>

#include "i18n/windows/window_host.h"
#include "platform/opc/opc_questions.h"

namespace Ui {
class frmOPCLogin;
}

namespace velk {

/// User and password for a server that wants them. They are kept while the program runs.
class frmOPCLogin : public QDialog {
  Q_OBJECT

 public:
  /// `again` behind a login that the server has refused.
  frmOPCLogin(WindowHost& host, const std::string& url, bool again);
  ~frmOPCLogin() override;

  OpcLogin Answer() const;

 private:
  std::unique_ptr<Ui::frmOPCLogin> ui_;
};

}  // namespace velk
