#include "core/windows/alarms_window.h"
#include "model/help_topics.h"
#include "windows/every_window.h"

namespace velk::test {
namespace {

std::shared_ptr<QWidget> OpenAlarms(const std::string& language) {
  const Job job = MakeJob(language);
  return Hosted<Alarms>(job, job->session);
}

const WindowsOf kCore([] {
  return std::vector<ListedWindow>{{"Alarms", "", topic::Alarms, {"Label1_*"}, OpenAlarms}};
});

}  // namespace
}  // namespace velk::test
