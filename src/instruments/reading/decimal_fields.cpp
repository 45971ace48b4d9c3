#include "instruments/reading/decimal_fields.h"

#include <algorithm>

#include "base/text.h"
#include "instruments/reading/get_field.h"

namespace velk {

bool IsDecimalText(std::string_view text) {
  std::string_view number = Trimmed(text);
  if (number.starts_with('+') || number.starts_with('-')) number.remove_prefix(1);
  const auto points = std::count(number.begin(), number.end(), '.');
  const auto digits = std::count_if(number.begin(), number.end(), [](char c) { return c >= '0' && c <= '9'; });
  return digits > 0 && points <= 1 && digits + points == static_cast<std::ptrdiff_t>(number.size());
}

bool HasDecimalFields(std::string_view line, std::string_view delimiter, std::string_view terminator) {
  const std::string_view fields = line.substr(0, line.find(terminator));
  std::size_t position = 0;
  GetField(fields, delimiter, position);  // the time
  while (position != 0)
    if (!IsDecimalText(GetField(fields, delimiter, position))) return false;
  return true;
}

}  // namespace velk
