#pragma once

#include "i18n/windows/window_host.h"
#include "log/windows/frm_rt_sum_rep.h"

namespace velk {

/// What is shown of a report follows each comment.
void FollowComments(WindowHost& host, OpenLog& log);

/// Whether the log has a report: one without is given an empty one. Tells where there is none and none can be made.
bool HasReport(const ReportAccess& access);

/// Opens the report of the log; tells where there is none.
void ShowRealTimeReport(WindowHost& host, const ReportAccess& access);

}  // namespace velk
