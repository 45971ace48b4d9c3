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

/// y is itself, yyy counts as yy and one more y.
std::size_t AppendYear(std::string& out, std::string_view picture, int year) {
  std::size_t length = RunLength(picture, 4);
  if (length == 3) length = 2;
  if (length == 1)
    out += picture.front();
  else
    AppendNumber(out, length == 2 ? year % 100 : year, length);
  return length;
}

std::size_t AppendMonth(std::string& out, std::string_view picture, int month) {
  const std::size_t length = RunLength(picture, 4);
  AppendNamed(out, length, month, kMonthNames[month - 1]);
  return length;
}

std::size_t AppendDay(std::string& out, std::string_view picture, const DateParts& parts) {
  const std::size_t length = RunLength(picture, 4);
  AppendNamed(out, length, parts.day, kDayNames[parts.weekday]);
  return length;
}

std::size_t AppendOfTime(std::string& out, std::string_view picture, int number) {
  const std::size_t length = RunLength(picture, 2);
  AppendNumber(out, number, length);
  return length;
}

/// Appends what the front of the picture stands for and gives how many of its characters that were. `behindHour`: an m
/// means minutes.
std::size_t AppendFront(std::string& out, std::string_view picture, const DateParts& parts, bool behindHour) {
  switch (LowerLetter(picture.front())) {
    case 'd':
      return AppendDay(out, picture, parts);
    case 'm':
      return behindHour ? AppendOfTime(out, picture, parts.minute) : AppendMonth(out, picture, parts.month);
    case 'y':
      return AppendYear(out, picture, parts.year);
    case 'h':
      return AppendOfTime(out, picture, parts.hour);
    case 'n':
      return AppendOfTime(out, picture, parts.minute);
    case 's':
      return AppendOfTime(out, picture, parts.second);
    default:
      out += picture.front();
      return 1;
  }
}

}  // namespace

std::string FormatDate(double dateTime, std::string_view picture) {
  const DateParts parts = Split(dateTime);
  std::string out;
  bool behindHour = false;
  while (!picture.empty()) {
    const char letter = LowerLetter(picture.front());
    const std::size_t length = AppendFront(out, picture, parts, behindHour);
    const bool field = std::string_view("dmyhns").find(letter) != std::string_view::npos;
    if (field) behindHour = letter == 'h';
    picture.remove_prefix(length);
  }
  return out;
}

}  // namespace velk
