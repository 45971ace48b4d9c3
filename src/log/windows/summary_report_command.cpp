#include "log/windows/summary_report_command.h"

#include "base/errors.h"
#include "log/texts.h"

namespace velk {

void BindSummaryReport(CommandBinder& commands, WindowHost& host, const ReportAccess& access) {
  commands.Bind("mnuViewSummaryReport", [&host, access] { mnuViewSummaryReport_Click(host, access); });
  access.log.onReportChanged = [&host] {
    if (auto* window = host.Opened<frmRTSumRep>(); window && window->isVisible()) window->RefreshGrid();
  };
}

void mnuViewSummaryReport_Click(WindowHost& host, const ReportAccess& access) {
  try {
    OpenLog::Report(access.Path());
  } catch (const RuntimeError& error) {
    access.platform.dialogs.Message(
        {text::UnableToLocateReport + "\n\n" + TextOf(error), {}, Buttons::Ok, BoxIcon::Exclamation, error.Number()});
    return;
  }
  host.Open<frmRTSumRep>(access).RefreshGrid();
}

}  // namespace velk
