#include "instruments/own_unit.h"

#include <string_view>

#include "platform/numbers.h"

namespace velk {

namespace {

std::int32_t Count(std::string_view line, std::string_view delimiter) {
  if (delimiter.empty()) return 0;
  std::int32_t count = 0;
  for (std::size_t at = line.find(delimiter); at != std::string_view::npos;
       at = line.find(delimiter, at + delimiter.size()))
    ++count;
  return count;
}

bool IsBelow(std::string_view digits, double limit) {
  const double value = Val(digits);
  return value >= 0 && value < limit;
}

bool HasTime(std::string_view line) {
  return line.size() >= 6 && line[2] == ':' && line[5] == ':' && IsBelow(line.substr(0, 2), 24) &&
         IsBelow(line.substr(3, 2), 60);
}

}  // namespace

void OwnUnitDecoder::Orben_ver_3(std::string& line, const Session& session) {
  const auto length = static_cast<std::int32_t>(line.size());
  const bool sound =
      Count(line, session.Delimiter) == session.NumberOfParameters && length == LastLineLength && HasTime(line);
  LastLineLength = length;
  if (!sound) line.insert(0, "\r\n");
}

}  // namespace velk
