#include "store/windows/job_questions_qt.h"

#include "store/windows/frm_file_exist.h"
#include "store/windows/frm_inc_param_in_sum.h"

namespace velk {

void JobQuestionsQt::Close() {
  const auto standing = standing_;
  for (auto window = standing.rbegin(); window != standing.rend(); ++window)
    if (*window) (*window)->reject();
}

FileChoice JobQuestionsQt::AppendOrCreate(const std::string& oldName, bool compatible, bool sameOrder) {
  // On the heap and watched: the parent may be destroyed while the window stands, and takes it along.
  const QPointer<frmFileExist> window =
      new frmFileExist(translator_, languages_, oldName, compatible, sameOrder, parent_);
  const FileChoice choice = Run(window.data()) ? window->Choice() : FileChoice::None;
  delete window;
  return choice;
}

void JobQuestionsQt::IncludeInSummary(SummaryInclusion& inclusion) {
  const QPointer<frmIncParamInSum> window = new frmIncParamInSum(languages_, inclusion, parent_);
  if (Run(window.data())) inclusion = window->Inclusion();
  delete window;
}

bool JobQuestionsQt::Run(const QPointer<QDialog>& window) {
  window->setWindowModality(Qt::WindowModal);
  standing_.push_back(window);
  bool answered = false;
  dialogs_.Modal([&] { answered = window->exec() == QDialog::Accepted; });
  std::erase_if(standing_, [&](const QPointer<QDialog>& each) { return each.isNull() || each == window; });
  return answered && window;
}

}  // namespace velk
