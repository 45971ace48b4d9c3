#pragma once

#include <QDialog>
#include <memory>

#include "i18n/windows/window_host.h"
#include "model/session.h"

namespace Ui {
class frmIncParams;
}

namespace velk {

/// Lists the parameters, inputs and computed channels, but those named "BLANK", with their units, the graph that
/// carries them (none where they are not drawn) and their formula.
class frmIncParams : public QDialog {
  Q_OBJECT

 public:
  frmIncParams(WindowHost& host, const Session& session);
  ~frmIncParams() override;

 protected:
  bool event(QEvent* event) override;

 private:
  void Form_Activate();

  std::unique_ptr<Ui::frmIncParams> ui_;
  const Session& session_;
};

}  // namespace velk
