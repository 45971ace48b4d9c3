#pragma once

#include "model/session.h"

namespace velk {

/// GraphPageTime follows the page of the first graph that is open; a change is counted as a page turned.
void FollowFirstPage(Session& session);

/// Behind a gap: brings all graph windows to the last block that begins ahead of the present sample, as if samples had
/// come all the time, so that the sample lands on the page. Origins are carried on block by block; only frames that can
/// stand on the final page, and those that push the old picture off it, are drawn. The block of the sample itself is
/// left. Each page that is turned on the way is counted (PagesTurned). `samplingRate` is in days a row.
void CatchUpPage(Session& session, double samplingRate);

}  // namespace velk
