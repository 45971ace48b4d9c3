#pragma once

#include <QDialog>
#include <memory>
#include <string>

#include "i18n/languages.h"
#include "i18n/translator.h"
#include "store/job_questions.h"

namespace Ui {
class frmFileExist;
}

namespace velk {

/// Asks what to do with a chosen file that is there already. Closing it chooses nothing.
class frmFileExist : public QDialog {
  Q_OBJECT

 public:
  frmFileExist(const clstranslation& translator, const clsLanguages& languages, const std::string& oldName,
               bool compatible, bool sameOrder, QWidget* parent = nullptr);
  ~frmFileExist() override;

  FileChoice Choice() const { return choice_; }

 private:
  void Choose(FileChoice choice);
  void FitToScreen();

  std::unique_ptr<Ui::frmFileExist> ui_;
  FileChoice choice_ = FileChoice::None;
};

}  // namespace velk
