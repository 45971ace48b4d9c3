#pragma once

#include <QPointer>
#include <QWidget>

#include "i18n/translation.h"
#include "log/job_questions.h"
#include "platform/windows/modal_windows.h"

namespace velk {

/// Asks with frmFileExist and frmIncParamInSum.
class JobQuestionsQt : public JobQuestions {
 public:
  JobQuestionsQt(Dialogs& dialogs, const Translation& translation) : translation_(translation), windows_(dialogs) {}

  /// The main window, over which the windows stand.
  void SetParent(QWidget* parent) { parent_ = parent; }

  FileChoice AppendOrCreate(const std::string& oldName, bool compatible, bool sameOrder) override;
  void IncludeInSummary(SummaryInclusion& inclusion) override;

 private:
  const Translation& translation_;
  ModalWindows windows_;
  QPointer<QWidget> parent_;
};

}  // namespace velk
