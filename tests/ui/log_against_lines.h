#pragma once

#include <string>
#include <vector>

#include "ui/line_rules.h"
#include "ui/program_rig.h"

namespace velk::test {

/// How a log agrees with what was sent.
struct Agreement {
  std::size_t sent = 0;      ///< lines from the job's first one on
  std::size_t accepted = 0;  ///< of these, lines that the protocol's rule lets pass
  std::size_t held = 0;      ///< rows in which the values of the line before stand, for a line that did not pass
  std::string fault;         ///< the first difference; empty where there is none
};

/// Whether the rows are the accepted ones of these lines, each once, in order and to the last digit. Behind them only
/// `unread` accepted lines may follow. A line that is not accepted may stand as a row of held values where the time of
/// a row has come, which `mayHold` tells.
Agreement Compare(const std::vector<SentLine>& lines, std::size_t first, LineRule rule, const LineForm& form,
                  const std::vector<LogRow>& rows, std::size_t unread, bool mayHold);

}  // namespace velk::test
