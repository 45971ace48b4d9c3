#pragma once

#include <QPointer>
#include <QWidget>

#include "i18n/languages.h"
#include "i18n/translator.h"
#include "platform/windows/modal_windows.h"
#include "store/job_questions.h"

namespace velk {

/// Asks with frmFileExist and frmIncParamInSum.
class JobQuestionsQt : public JobQuestions {
 public:
  explicit JobQuestionsQt(Dialogs& dialogs) : windows_(dialogs) {}

  /// For the language, which is known only after the first settings were read.
  void SetLanguage(const clstranslation& translator, const clsLanguages& languages) {
    translator_ = translator;
    languages_ = languages;
  }
  /// The main window, over which the windows stand.
  void SetParent(QWidget* parent) { parent_ = parent; }

  FileChoice AppendOrCreate(const std::string& oldName, bool compatible, bool sameOrder) override;
  void IncludeInSummary(SummaryInclusion& inclusion) override;

 private:
  ModalWindows windows_;
  clstranslation translator_;
  clsLanguages languages_;
  QPointer<QWidget> parent_;
};

}  // namespace velk
