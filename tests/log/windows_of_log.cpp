#include "log/windows/frm_file_exist.h"
#include "log/windows/frm_inc_param_in_sum.h"
#include "log/windows/frm_rt_sum_rep.h"
#include "model/help_topics.h"
#include "windows/every_window.h"

namespace velk::test {
namespace {

std::shared_ptr<QWidget> OpenFileExist(const std::string& language, bool compatible, bool sameOrder) {
  const Job job = MakeJob(language);
  const std::string file =
      job->session.DefaultDirectory + job->Pick("/Well 1042 fracturing.mdb", "/Скважина 1042 гидроразрыв пласта.mdb");
  return Hosted<frmFileExist>(job, ExistingLog{file, "/jobs/well 7/new.mdb", compatible, sameOrder,
                                               compatible ? OperatorText() : "It has no column for the channel Rate"});
}

std::shared_ptr<QWidget> OpenSummaryQuestion(const std::string& language, int channels) {
  const Job job = MakeJob(language);
  SummaryInclusion inclusion;
  for (int i = 1; i <= channels; ++i)
    inclusion.parameters.push_back(
        {i, job->Pick("Pump Pressure No. ", "Давление на входе насоса № ") + std::to_string(i), i % 3 != 0});
  return Hosted<frmIncParamInSum>(job, inclusion);
}

/// The headings of a grid have no name; those of a report are names of its columns.
constexpr const char* kHeadings = "";

std::shared_ptr<QWidget> OpenReport(const std::string& language, int lines) {
  const Job job = MakeJob(language);
  job->Record(lines);
  const auto window = Hosted<frmRTSumRep>(job, ReportAccess{job->session, job->platform, job->open});
  dynamic_cast<frmRTSumRep&>(*window).RefreshGrid();
  return window;
}

const WindowsOf kLog([] {
  const auto file = [](bool compatible, bool sameOrder) {
    return [=](const std::string& language) { return OpenFileExist(language, compatible, sameOrder); };
  };
  const auto summary = [](int channels) {
    return [=](const std::string& language) { return OpenSummaryQuestion(language, channels); };
  };
  const auto report = [](int lines) {
    return [=](const std::string& language) { return OpenReport(language, lines); };
  };
  return std::vector<ListedWindow>{
      {"frmFileExist", "", topic::Recording, {"lblFile", "lblNote", "lblNewFile"}, file(true, true)},
      {"frmFileExist", "other-order", topic::Recording, {"lblFile", "lblNote", "lblNewFile"}, file(true, false)},
      {"frmFileExist", "not-compatible", topic::Recording, {"lblFile", "lblNote", "lblNewFile"}, file(false, false)},
      {"frmIncParamInSum", "", topic::Recording, {"chk_*"}, summary(18)},
      {"frmIncParamInSum", "one", topic::Recording, {"chk_*"}, summary(1)},
      {"frmIncParamInSum", "64", topic::Recording, {"chk_*"}, summary(64)},
      {"frmRTSumRep", "", topic::Recording, {"lblFile", "lblNote", kHeadings}, report(30)},
      {"frmRTSumRep", "empty", topic::Recording, {"lblFile", "lblNote", kHeadings}, report(0)},
  };
});

}  // namespace
}  // namespace velk::test
