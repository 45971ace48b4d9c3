#include "core/windows/alarms_window.h"
#include "core/windows/large_values_window.h"
#include "model/help_topics.h"
#include "windows/every_window.h"

namespace velk::test {
namespace {

std::shared_ptr<QWidget> OpenAlarms(const std::string& language) {
  const Job job = MakeJob(language);
  return Hosted<Alarms>(job, job->session);
}

std::shared_ptr<QWidget> OpenLargeValues(const std::string& language) {
  const Job job = MakeJob(language);
  return Hosted<frmLargeValues>(job, LargeValuesAccess{job->session, job->clock, [] {}});
}

const WindowsOf kCore([] {
  return std::vector<ListedWindow>{
      {"Alarms", "", topic::Alarms, {"Label1_*"}, OpenAlarms},
      {"frmLargeValues", "", topic::StripChart, {}, OpenLargeValues},
  };
});

}  // namespace
}  // namespace velk::test
