#pragma once

#include "i18n/windows/window_host.h"
#include "model/command_binder.h"
#include "reports/windows/frm_summary_report.h"

namespace velk {

/// Binds the command that opens the summary report.
void BindSummaryReport(CommandBinder& commands, WindowHost& host, const ViewerAccess& access);

/// While data are acquired, the report of the job; otherwise the viewer over the log that is in use. A log without a
/// report is given one; where that can't be, it says so.
void mnuViewSummaryReport_Click(WindowHost& host, const ViewerAccess& access);

}  // namespace velk
