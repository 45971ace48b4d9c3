#include "instruments/reading/line_length.h"

namespace velk {

namespace {

/// Reads up to and with the next terminator and gives the count of characters. Only the end of the text is held.
Reading CountToTerminator(PortReader& reader, const std::string& terminator, const TimeLimit& limit, double& count) {
  std::string tail;
  std::int64_t dropped = 0;
  const auto ends = [&](std::string& text) {
    if (text.size() > terminator.size()) {
      text.erase(0, 1);
      ++dropped;
    }
    return !terminator.empty() && text == terminator;
  };
  const Reading reading = reader.ReadUntil(tail, ends, [&] { return limit.IsExceeded(); });
  count = static_cast<double>(dropped) + static_cast<double>(tail.size());
  return reading;
}

/// To the end of the line that is under way. With a terminator of several characters the first one read is not looked
/// at: it may be the rest of a terminator.
Reading SkipStartedLine(PortReader& reader, const std::string& terminator, const TimeLimit& limit) {
  const auto givesUp = [&] { return limit.IsExceeded(); };
  if (terminator.size() > 1) {
    std::string first;
    const auto hasCome = [](const std::string& text) { return !text.empty(); };
    const Reading reading = reader.ReadUntil(first, hasCome, givesUp);
    if (reading != Reading::Whole) return reading;
  }
  double count = 0;
  return CountToTerminator(reader, terminator, limit, count);
}

LineLength NotLearned(Session& session, Reading reading, LineLength timedOut) {
  if (reading != Reading::GivenUp) return LineLength::Stopped;
  session.StopRequested = true;
  return timedOut;
}

}  // namespace

LineLength LearnLineLength(PortReader& reader, Session& session, const TimeLimit& limit) {
  const std::string terminator = session.Terminator;
  const Reading skipped = SkipStartedLine(reader, terminator, limit);
  if (skipped != Reading::Whole) return NotLearned(session, skipped, LineLength::TimedOutCheckHardware);
  double length = 0;
  const Reading counted = CountToTerminator(reader, terminator, limit, length);
  if (counted != Reading::Whole) return NotLearned(session, counted, LineLength::TimedOutCheckSettings);
  session.FormattedLineLength = ToInt16(length);
  return LineLength::Learned;
}

}  // namespace velk
