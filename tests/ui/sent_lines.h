#pragma once

#include <string>
#include <vector>

#include "support/child_program.h"

namespace velk::test {

/// A line as the wire carried it: what stands between two ends, however the instrument's frames were damaged.
struct SentLine {
  std::string text;   ///< with its end, as far as the instrument has one
  double sentAt = 0;  ///< seconds since 1970, of the frame that ended it
};

// From the journal of a simulator to the lines that a reader gets to see. None of this is taken from the program.

/// The bytes of all frames, cut behind each `end`.
std::vector<SentLine> LinesEndingIn(const std::string& end, const std::vector<SentFrame>& journal);

/// The bytes of all frames, cut behind each CR LF or LF CR.
std::vector<SentLine> LinesOfEitherEnd(const std::vector<SentFrame>& journal);

/// The answers of a request-driven instrument, so many a line, each with its end taken off and a blank ahead. An answer
/// that did not come, or did not end, ends its line without a trace: the program asks from the first parameter on.
std::vector<SentLine> LinesOfAnswers(int parameters, const std::vector<SentFrame>& journal);

/// The values of each page that is one table, behind the page's own time. A page that did not come makes no line; one
/// that came without its cells makes a line without values.
std::vector<SentLine> LinesOfTablePages(const std::vector<SentFrame>& journal);

/// The values of each page of the operator panel, as plain decimal numbers behind a time that the program sets. A page
/// without its cells makes no line.
std::vector<SentLine> LinesOfPanelPages(const std::vector<SentFrame>& journal);

}  // namespace velk::test
