#include "instruments/decoders/national_oil_well.h"

#include "base/text.h"
#include "instruments/reading/get_field.h"
#include "instruments/reading/line_end.h"
#include "instruments/reading/time_check.h"

namespace velk {

namespace {

// "hh:mm:ss" and so many characters a parameter.
constexpr int kTimeLength = 8;
constexpr int kFieldLength = 14;

bool IsSound(std::string_view line, const Session& session) {
  const bool lengthFits = line.size() == static_cast<std::size_t>(session.FormattedLineLength);
  if (!lengthFits && session.Delimiter == " ") return false;
  return CountDelimiters(line, session.Delimiter) == session.NumberOfParameters && HasTime(line);
}

}  // namespace

std::string ReadNationalOilWell(PortReader& reader, const Session& session) {
  std::string line = reader.Waiting(2);
  const auto givesUp = [&line] { return line.size() >= PortReader::kLongestText; };
  if (reader.ReadUntil(line, EndsALine, givesUp) != Reading::Whole) return {};
  line = CleanUp(std::move(line));
  const std::size_t kept = KeptOfLine(line, session.Terminator);
  return kept == line.size() ? line : Trim(line.substr(0, kept));
}

void NationalOilWell(std::string& line, const Session& session) {
  if (!IsSound(line, session)) line.insert(0, session.Terminator);
}

void NOWPLC(std::string& line, Session& session) {
  session.FormattedLineLength = static_cast<std::int16_t>(session.NumberOfParameters * kFieldLength + kTimeLength);
  line = session.Terminator + CleanUp(std::move(line));
}

namespace {

std::string ReadAndCheck(PortReader& reader, const Decoding& with) {
  std::string line = ReadNationalOilWell(reader, with.session);
  NationalOilWell(line, with.session);
  return line;
}

}  // namespace

const Decoder decoder::NationalOilWell{
    .procedure = "NationalOilWell",
    .check = [](std::string& line, const Decoding& with) { velk::NationalOilWell(line, with.session); },
    .read = ReadAndCheck};
const Decoder decoder::NOWPLC{
    .procedure = "NOWPLC", .check = [](std::string& line, const Decoding& with) { velk::NOWPLC(line, with.session); }};

}  // namespace velk
