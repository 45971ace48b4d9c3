#include <cmath>
#include <optional>

#include "base/date_names.h"
#include "base/dates.h"
#include "base/errors.h"
#include "base/number_reading.h"
#include "base/text.h"

namespace velk {

namespace {

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}
bool IsLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

/// Takes a text piece by piece from the front.
class Reader {
 public:
  explicit Reader(std::string_view text) : rest_(text) {}

  bool AtEnd() const { return rest_.empty(); }

  bool Skip(char c) {
    if (rest_.empty() || rest_.front() != c) return false;
    rest_.remove_prefix(1);
    return true;
  }

  /// Gives whether there was a blank.
  bool SkipBlanks() {
    const std::size_t before = rest_.size();
    while (Skip(' ')) {
    }
    return rest_.size() < before;
  }

  std::string_view Digits() { return TakeAll(IsDigit); }
  std::string_view Letters() { return TakeAll(IsLetter); }

 private:
  std::string_view TakeAll(bool (*belongs)(char)) {
    std::size_t length = 0;
    while (length < rest_.size() && belongs(rest_[length])) ++length;
    const std::string_view taken = rest_.substr(0, length);
    rest_.remove_prefix(length);
    return taken;
  }

  std::string_view rest_;
};

/// The number that `digits` make where there are `least` to `most` of them; else -1.
int NumberOf(std::string_view digits, std::size_t least, std::size_t most) {
  if (digits.size() < least || digits.size() > most) return -1;
  int number = 0;
  for (const char c : digits) number = number * 10 + (c - '0');
  return number;
}

int OneOrTwoDigits(std::string_view digits) {
  return NumberOf(digits, 1, 2);
}

/// 1 to 12, by three letters or the whole name; else -1.
int MonthOf(std::string_view word) {
  const std::string lower = LowerCase(word);
  for (int month = 1; month <= 12; ++month) {
    const std::string name = LowerCase(kMonthNames[month - 1]);
    if (lower == name || lower == name.substr(0, 3)) return month;
  }
  return -1;
}

std::optional<double> DayOf(int year, int month, int day) {
  if (!DateExists(year, month, day)) return std::nullopt;
  return DateSerial(year, month, day);
}

std::optional<double> ReadDay(Reader& text) {
  const std::string_view first = text.Digits();
  if (text.Skip('/')) {
    const int month = OneOrTwoDigits(text.Digits());
    if (!text.Skip('/')) return std::nullopt;
    return DayOf(NumberOf(text.Digits(), 4, 4), month, OneOrTwoDigits(first));
  }
  if (!text.Skip('-')) return std::nullopt;
  if (first.size() == 4) {
    const int month = OneOrTwoDigits(text.Digits());
    if (!text.Skip('-')) return std::nullopt;
    return DayOf(NumberOf(first, 4, 4), month, OneOrTwoDigits(text.Digits()));
  }
  const int month = MonthOf(text.Letters());
  if (!text.Skip('-')) return std::nullopt;
  return DayOf(NumberOf(text.Digits(), 4, 4), month, OneOrTwoDigits(first));
}

/// The hour of the day behind an optional AM or PM; -1 for a word or an hour that does not fit.
int ReadHalfOfDay(Reader& text, int hour) {
  text.SkipBlanks();
  const std::string word = LowerCase(text.Letters());
  if (word.empty()) return hour;
  if ((word != "am" && word != "pm") || hour < 1 || hour > 12) return -1;
  return hour % 12 + (word == "pm" ? 12 : 0);
}

std::optional<double> ReadTime(Reader& text) {
  int hour = OneOrTwoDigits(text.Digits());
  if (!text.Skip(':')) return std::nullopt;
  const int minute = OneOrTwoDigits(text.Digits());
  int second = 0;
  double fraction = 0;
  if (text.Skip(':')) {
    second = OneOrTwoDigits(text.Digits());
    if (text.Skip('.')) {
      // Nine digits are more than a date-time holds, and can't round up to the next second.
      const std::string_view digits = text.Digits().substr(0, 9);
      if (digits.empty()) return std::nullopt;
      fraction = NumberOf(digits, 1, 9) / std::pow(10.0, digits.size());
    }
  }
  hour = ReadHalfOfDay(text, hour);
  if (hour < 0 || hour > 23 || minute < 0 || minute > 59 || second < 0 || second > 59) return std::nullopt;
  return TimeOfDay(hour, minute, second + fraction);
}

std::optional<double> ReadDateTime(Reader text) {
  const std::optional<double> day = ReadDay(text);
  if (!day) return std::nullopt;
  const bool blanks = text.SkipBlanks();
  if (text.AtEnd()) return day;
  const std::optional<double> time = blanks ? ReadTime(text) : std::nullopt;
  if (!time || !text.AtEnd()) return std::nullopt;
  return JoinDateTime(*day, *time);
}

std::optional<double> ReadTimeAlone(Reader text) {
  const std::optional<double> time = ReadTime(text);
  return text.AtEnd() ? time : std::nullopt;
}

std::optional<double> ReadCount(std::string_view text) {
  if (!IsNumeric(text)) return std::nullopt;
  const double days = Val(text);
  if (!IsDateTime(days)) return std::nullopt;
  return days;
}

}  // namespace

double CDate(std::string_view text) {
  const std::string trimmed = Trim(text);
  std::optional<double> value = ReadDateTime(Reader(trimmed));
  if (!value) value = ReadTimeAlone(Reader(trimmed));
  if (!value) value = ReadCount(trimmed);
  if (!value) throw RuntimeError(ErrorNumber::TypeMismatch);
  return *value;
}

}  // namespace velk
