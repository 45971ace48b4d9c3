#include "reports/windows/summary_report_command.h"

#include "log/texts.h"
#include "log/windows/real_time_report.h"
#include "model/status.h"
#include "model/texts.h"
#include "reports/texts.h"

namespace velk {

void BindSummaryReport(CommandBinder& commands, WindowHost& host, const ViewerAccess& access) {
  commands.Bind("mnuViewSummaryReport", [&host, access] { mnuViewSummaryReport_Click(host, access); });
}

void mnuViewSummaryReport_Click(WindowHost& host, const ViewerAccess& access) {
  const ReportAccess report{access.session, access.platform, access.log};
  if (StatusIs(access.session, text::StatusAcquiringData)) return ShowRealTimeReport(host, report);
  RunProcedure({access.platform.dialogs, "mnuViewSummaryReport_Click"}, [&](const Statements& run) {
    if (!HasReport(report)) return;
    auto view = run([&] {
      LongTask task(access.platform.dialogs, access.platform.clock, text::ViewerTitle);
      return std::make_unique<LogView>(report.Path(), task);
    });
    host.Show<frmSummaryReport>(access, *view);
  });
}

}  // namespace velk
