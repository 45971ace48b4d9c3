#pragma once

#include "i18n/windows/window_host.h"
#include "log/job_questions.h"

namespace velk {

/// Asks with frmFileExist and frmIncParamInSum.
class JobQuestionsQt : public JobQuestions {
 public:
  explicit JobQuestionsQt(WindowHost& host) : host_(host) {}

  FileChoice AppendOrCreate(const ExistingLog& log) override;
  void IncludeInSummary(SummaryInclusion& inclusion) override;

 private:
  WindowHost& host_;
};

}  // namespace velk
