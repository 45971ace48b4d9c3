#pragma once

#include <QDialog>
#include <memory>
#include <string>

#include "i18n/windows/window_host.h"
#include "log/job_questions.h"

namespace Ui {
class frmFileExist;
}

namespace velk {

/// Asks what to do with a chosen file that is there already. Closing it chooses nothing.
class frmFileExist : public QDialog {
  Q_OBJECT

 public:
  frmFileExist(WindowHost& host, const ExistingLog& log);
  ~frmFileExist() override;

  FileChoice Answer() const { return choice_; }

 private:
  void Choose(FileChoice choice);
  void FitToScreen();

  std::unique_ptr<Ui::frmFileExist> ui_;
  FileChoice choice_ = FileChoice::None;
};

}  // namespace velk
