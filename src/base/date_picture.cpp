#include "base/date_names.h"
#include "base/dates.h"

namespace velk {

namespace {

char LowerLetter(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// How many of the letters at the front belong together: at most `most` equal ones.
std::size_t RunLength(std::string_view picture, std::size_t most) {
  std::size_t length = 1;
  while (length < most && length < picture.size() && LowerLetter(picture[length]) == LowerLetter(picture[0])) ++length;
  return length;
}

void AppendNumber(std::string& out, int number, std::size_t digits) {
  const std::string text = std::to_string(number);
  if (text.size() < digits) out.append(digits - text.size(), '0');
  out += text;
}

/// d and m: a number of one or two digits, a short name of three letters, a whole name.
void AppendNamed(std::string& out, std::size_t length, int number, std::string_view name) {
  if (length <= 2) return AppendNumber(out, number, length);
  out += length == 3 ? name.substr(0, 3) : name;
}

}  // namespace

std::string FormatDate(double dateTime, std::string_view picture) {
  const DateParts parts = Split(dateTime);
  std::string out;
  bool behindHour = false;
  while (!picture.empty()) {
    std::size_t length = 1;
    const char letter = LowerLetter(picture.front());
    const bool minute = behindHour && letter == 'm';
    switch (letter) {
      case 'd':
        length = RunLength(picture, 4);
        AppendNamed(out, length, parts.day, kDayNames[parts.weekday]);
        break;
      case 'm':
        length = RunLength(picture, minute ? 2 : 4);
        if (minute) {
          AppendNumber(out, parts.minute, length);
        } else {
          AppendNamed(out, length, parts.month, kMonthNames[parts.month - 1]);
        }
        break;
      case 'y':
        length = RunLength(picture, 4);
        if (length == 3) length = 2;
        if (length == 1) {
          out += picture.front();
        } else {
          AppendNumber(out, length == 2 ? parts.year % 100 : parts.year, length);
        }
        break;
      case 'h':
        length = RunLength(picture, 2);
        AppendNumber(out, parts.hour, length);
        break;
      case 'n':
        length = RunLength(picture, 2);
        AppendNumber(out, parts.minute, length);
        break;
      case 's':
        length = RunLength(picture, 2);
        AppendNumber(out, parts.second, length);
        break;
      default:
        out += picture.front();
        break;
    }
    const bool field = std::string_view("dmyhns").find(letter) != std::string_view::npos;
    if (field) behindHour = letter == 'h';
    picture.remove_prefix(length);
  }
  return out;
}

}  // namespace velk
