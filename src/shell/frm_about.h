#pragma once

#include <QDialog>
#include <memory>
#include <string>

#include "i18n/windows/window_host.h"
#include "model/session.h"

namespace Ui {
class frmAbout;
}

namespace velk {

/// Which program this is, what it is built on, and where its files are.
class frmAbout : public QDialog {
  Q_OBJECT

 public:
  /// `settingsFolder`: where the settings files are.
  frmAbout(WindowHost& host, const Session& session, const std::string& settingsFolder);
  ~frmAbout() override;

 private:
  std::unique_ptr<Ui::frmAbout> ui_;
};

}  // namespace velk
