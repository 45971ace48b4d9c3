#include "instruments/decoders/data_taker.h"

#include <cmath>

#include "base/numbers.h"
#include "base/text.h"
#include "instruments/reading/line_end.h"
#include "instruments/reading/time_check.h"

namespace velk {

namespace {

constexpr std::string_view kBlockEnd = "\r\n\r\n";
// Ahead of the time of a block stand its heading and what leads the line of the time.
constexpr std::size_t kHeading = 17;
constexpr std::size_t kTimeLead = 5;
constexpr std::size_t kTime = 8;
constexpr std::size_t kTimeLine = 10;  ///< the time with its CR LF
constexpr std::size_t kShortestLine = 5;
/// From a line's CR to where the next one is read: CR LF and the first character, which belongs to the channel's name.
constexpr std::size_t kToNextLine = 3;

std::string_view Behind(std::string_view text, std::size_t count) {
  return text.substr(std::min(count, text.size()));
}

/// The number that the next delimiter leads; 0 where there is none.
double NextValue(std::string_view text, std::string_view delimiter) {
  const std::size_t found = delimiter.empty() ? std::string_view::npos : text.find(delimiter);
  return found == std::string_view::npos ? 0 : Val(Trimmed(text.substr(found)));
}

/// Appends the value of each line and a delimiter. False for a value beyond all numbers.
bool AppendValues(std::string& line, std::string_view text, std::string_view delimiter) {
  while (text.size() >= kShortestLine) {
    const double value = NextValue(text, delimiter);
    if (!std::isfinite(value)) return false;
    line.append(NumberText(value)).append(delimiter);
    const std::size_t end = text.find("\r\n");
    text = end == std::string_view::npos ? std::string_view{} : Behind(text, end + kToNextLine);
  }
  return true;
}

}  // namespace

std::string DataTaker_a(PortReader& reader, const Session& session) {
  std::string line = reader.Waiting(2);
  switch (reader.ReadUntil(line, EndsALine, RoundLimit(kDataTakerLineRounds))) {
    case Reading::Stopped:
    case Reading::Gone:
      return {};
    case Reading::GivenUp:
      return line;
    case Reading::Whole:
      break;
  }
  line.resize(KeptOfLine(line, session.Terminator));
  const bool sound = CountDelimiters(line, session.Delimiter) == session.NumberOfParameters && HasTime(line);
  if (!sound) line.insert(0, session.Terminator);
  return line;
}

std::string DataTaker_b(PortReader& reader, const Session& session) {
  if (session.StopRequested) return {};
  std::string block = reader.Waiting(kBlockEnd.size());
  const auto ends = [](std::string_view text) { return text.ends_with(kBlockEnd); };
  if (reader.ReadUntil(block, ends, RoundLimit(kDataTakerBlockRounds)) != Reading::Whole) return {};
  return LineFromDataTakerBlock(block, session);
}

std::string LineFromDataTakerBlock(std::string_view block, const Session& session) {
  const std::string_view text = Trimmed(Behind(Behind(Trimmed(block), kHeading), kTimeLead));
  std::string line(text.substr(0, kTime));
  line += session.Delimiter;
  const bool finite = AppendValues(line, Behind(text, kTimeLine), session.Delimiter);
  const bool sound =
      finite && CountDelimiters(line, session.Delimiter) == session.NumberOfParameters + 1 && HasTime(line);
  return sound ? line + session.Terminator : session.Terminator + line;
}

const Decoder decoder::DataTaker_a{.procedure = "DataTaker_a", .read = [](PortReader& reader, const Decoding& with) {
                                     return velk::DataTaker_a(reader, with.session);
                                   }};
const Decoder decoder::DataTaker_b{.procedure = "DataTaker_b", .read = [](PortReader& reader, const Decoding& with) {
                                     return velk::DataTaker_b(reader, with.session);
                                   }};

}  // namespace velk
