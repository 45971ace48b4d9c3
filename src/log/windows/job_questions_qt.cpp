#include "log/windows/job_questions_qt.h"

#include "log/windows/frm_file_exist.h"
#include "log/windows/frm_inc_param_in_sum.h"

namespace velk {

FileChoice JobQuestionsQt::AppendOrCreate(const std::string& oldName, bool compatible, bool sameOrder) {
  // On the heap and watched: the parent may be destroyed while the window stands, and takes it along.
  const QPointer<frmFileExist> window = new frmFileExist(translation_, oldName, compatible, sameOrder, parent_);
  const FileChoice choice = windows_.Run(window.data()) ? window->Choice() : FileChoice::None;
  delete window;
  return choice;
}

void JobQuestionsQt::IncludeInSummary(SummaryInclusion& inclusion) {
  const QPointer<frmIncParamInSum> window = new frmIncParamInSum(translation_, inclusion, parent_);
  if (windows_.Run(window.data())) inclusion = window->Inclusion();
  delete window;
}

}  // namespace velk
