#include "log/windows/real_time_report.h"

#include "base/errors.h"
#include "log/summary_report.h"
#include "log/texts.h"

namespace velk {

void FollowComments(WindowHost& host, OpenLog& log) {
  log.onReportChanged = [&host] {
    if (auto* window = host.Opened<frmRTSumRep>(); window && window->isVisible()) window->RefreshGrid();
  };
}

bool HasReport(const ReportAccess& access) {
  try {
    access.log.EnsureReport(access.Path());
    OpenLog::Report(access.Path());
    return true;
  } catch (const RuntimeError& error) {
    access.platform.dialogs.Message(
        {text::UnableToLocateReport + "\n\n" + TextOf(error), {}, Buttons::Ok, BoxIcon::Exclamation, error.Number()});
    return false;
  }
}

void ShowRealTimeReport(WindowHost& host, const ReportAccess& access) {
  if (HasReport(access)) host.Open<frmRTSumRep>(access).RefreshGrid();
}

}  // namespace velk
