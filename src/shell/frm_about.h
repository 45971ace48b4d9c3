#pragma once

#include <QDialog>
#include <memory>
#include <string>

#include "i18n/translation.h"
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
  frmAbout(const Session& session, const Translation& translation, const std::string& settingsFolder, QWidget* parent);
  ~frmAbout() override;

 private:
  std::unique_ptr<Ui::frmAbout> ui_;
};

}  // namespace velk
