// Any line through the own units' check and the field splitter: only the front of the line may change, a sound line has
// what a reader counts on, and the fields put together are the line again.

#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include "instruments/decoders/own_unit.h"
#include "instruments/reading/decimal_fields.h"
#include "instruments/reading/get_field.h"

using namespace velk;

namespace {

void Require(bool holds) {
  if (!holds) std::abort();
}

void RequireSound(const std::string& line, const Session& session) {
  Require(std::count(line.begin(), line.end(), session.Delimiter[0]) == session.NumberOfParameters);
  Require(line.size() > 5 && line[2] == ':' && line[5] == ':');
  // Hours from 30 and minutes from 60 up begin with these digits.
  Require(line[0] < '3' || line[0] > '9' || line[1] < '0' || line[1] > '9');
  Require(line[3] < '6' || line[3] > '9' || line[4] < '0' || line[4] > '9');
}

void RequireFieldsOf(const std::string& line, std::string_view delimiter) {
  if (line.starts_with(delimiter)) return;  // then the first field is the whole line
  std::string together;
  std::size_t position = 0;
  do {
    const std::string_view field = GetField(line, delimiter, position);
    Require(field.find(delimiter) == std::string_view::npos);
    together += field;
    if (position != 0) together += delimiter;
  } while (position != 0);
  Require(together == line);
}

/// Fields that pass as decimal text hold no other character than those of a number, and a digit each.
void RequireDecimal(const std::string& line, std::string_view delimiter) {
  if (!HasDecimalFields(line, delimiter, "\r\n")) return;
  const std::string fields = line.substr(0, line.find("\r\n"));
  const std::size_t first = fields.starts_with(delimiter) ? std::string::npos : fields.find(delimiter);
  if (first == std::string::npos) return;
  const std::string values = fields.substr(first);
  Require(values.find_first_not_of("+-.0123456789 " + std::string(delimiter)) == std::string::npos);
  const auto digits = std::count_if(values.begin(), values.end(), [](char c) { return c >= '0' && c <= '9'; });
  Require(digits >= std::count(values.begin(), values.end(), delimiter[0]));
}

}  // namespace

/// The first byte is the number of parameters, the second tells whether the line before was as long as this one.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  static Session session;
  session.NumberOfParameters = static_cast<std::int16_t>(data[0] % 65);
  session.Delimiter = data[1] & 2 ? "," : " ";
  const std::string line(data + 2, data + size);

  OwnUnitDecoder decoder;
  const bool sameLength = (data[1] & 1) == 0;
  decoder.LastLineLength = static_cast<std::int32_t>(line.size()) + (sameLength ? 0 : 1);
  std::string decoded = line;
  decoder.Orben_ver_3(decoded, session);
  Require(decoder.LastLineLength == static_cast<std::int32_t>(line.size()));
  if (decoded == line) {
    Require(sameLength);
    RequireSound(line, session);
  } else {
    Require(decoded == "\r\n" + line);
  }

  RequireFieldsOf(line, session.Delimiter);
  RequireDecimal(line, session.Delimiter);
  Require(CleanUp(line).find('\0') == std::string::npos);
  return 0;
}
