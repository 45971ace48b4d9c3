#pragma once

#include <iosfwd>

#include "ui/line_rules.h"

namespace velk::test {

/// Seconds of sampling at which nothing but its own values makes a row of a line: no rejected line is due before that
/// time has gone.
inline constexpr double kNeverDue = 3600;

/// A protocol, the instrument that stands at the other end, and what of its lines belongs into the log.
struct Instrument {
  const char* name;
  const char* serialData;
  const char* simulator;  ///< velk_sim_...
  std::vector<std::string> arguments;
  LineForm form;
  /// The lines of a journal, as a reader of this instrument gets to see them.
  std::vector<SentLine> (*lines)(const std::vector<SentFrame>& journal, const LineForm& form);
  LineRule rule;
  std::size_t frames;  ///< that an instrument sends by itself; 0 for one that is asked, or serves pages
  double samplingSeconds = 1;
  std::size_t leastAccepted = 20;
  std::size_t setUp = 0;       ///< lines behind Start that the program takes for itself
  bool asksAtStartUp = false;  ///< whether to continue with the port's settings
  bool stepByStep = false;     ///< a frame that comes between two ticks is lost to the program's reader
};

void PrintTo(const Instrument& instrument, std::ostream* out);

const std::vector<Instrument>& Instruments();

}  // namespace velk::test
