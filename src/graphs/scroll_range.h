#pragma once

#include "model/session.h"

namespace velk {

/// What the history scroll bar may reach. Its value counts minutes from the start of the session.
struct ScrollRange {
  bool hasHistory = false;  ///< there is something to scroll back to
  int maximum = 0;          ///< good only where there is
};

/// The range when blocks have been drawn up to `upTo`: the last five minutes are the live page. There is no history
/// below five minutes, nor where the session neither records to a log file nor plays one back.
ScrollRange ScrollRangeUpTo(const Session& session, double upTo);

}  // namespace velk
