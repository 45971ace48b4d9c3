#pragma once

#include "i18n/windows/window_host.h"
#include "log/windows/frm_rt_sum_rep.h"
#include "model/command_binder.h"

namespace velk {

/// Binds the command that opens the summary report, and has what is shown of it follow each comment.
void BindSummaryReport(CommandBinder& commands, WindowHost& host, const ReportAccess& access);

/// Opens the report of the log; tells where there is none.
void mnuViewSummaryReport_Click(WindowHost& host, const ReportAccess& access);

}  // namespace velk
