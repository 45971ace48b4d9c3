#include "formula/include_in_graphs.h"
#include "formula/windows/computed_parameters.h"
#include "formula/windows/eq_editor.h"
#include "formula/windows/frm_inc_params.h"
#include "model/help_topics.h"
#include "windows/every_window.h"

namespace velk::test {
namespace {

std::shared_ptr<QWidget> OpenCalculator(const std::string& language) {
  const Job job = MakeJob(language);
  return Hosted<EqEditor>(job, job->session, FormulaReport{job->dialogs, job->platform.language, [] {}}, job->graphs);
}

std::shared_ptr<QWidget> OpenComputedParameters(const std::string& language) {
  const Job job = MakeJob(language);
  return Hosted<ComputedParameters>(job, ComputedChannels(job->session), [] {});
}

std::shared_ptr<QWidget> OpenParameterList(const std::string& language) {
  const Job job = MakeJob(language);
  return Hosted<frmIncParams>(job, job->session);
}

const WindowsOf kFormula([] {
  return std::vector<ListedWindow>{
      {"EqEditor", "", topic::Formulas, {"cmdOperator_4", "cmdFunction_*"}, OpenCalculator},
      {"ComputedParameters", "", topic::Formulas, {"Check1_*"}, OpenComputedParameters},
      {"frmIncParams", "", topic::Formulas, {}, OpenParameterList},
  };
});

}  // namespace
}  // namespace velk::test
