#include "log/windows/job_questions_qt.h"

#include "log/windows/frm_file_exist.h"
#include "log/windows/frm_inc_param_in_sum.h"

namespace velk {

FileChoice JobQuestionsQt::AppendOrCreate(const ExistingLog& log) {
  return host_.Ask<frmFileExist>(log).value_or(FileChoice::None);
}

void JobQuestionsQt::IncludeInSummary(SummaryInclusion& inclusion) {
  if (auto chosen = host_.Ask<frmIncParamInSum>(inclusion)) inclusion = *std::move(chosen);
}

}  // namespace velk
