#include "exchange/field_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "base/dates.h"
#include "exchange/csv_times.h"

namespace velk {

void AppendNumber(std::string& to, double value) {
  char text[32];
  const auto [end, error] = std::to_chars(text, text + sizeof text, value);
  to.append(text, end);
}

void FieldText::AppendTo(std::string& to, const Command& row, int column) {
  const FieldValue field = row.Field(column);
  if (const auto* number = std::get_if<double>(&field)) {
    const bool isMoment = kind_ == FieldKind::Date || kind_ == FieldKind::Time || kind_ == FieldKind::Moment;
    if (isMoment && IsDateTime(*number)) return AppendMoment(to, *number);
    return AppendNumber(to, *number);
  }
  if (const auto* whole = std::get_if<std::int64_t>(&field)) {
    const auto number = static_cast<double>(*whole);
    const bool isMoment = kind_ == FieldKind::Date || kind_ == FieldKind::Time || kind_ == FieldKind::Moment;
    if (isMoment && IsDateTime(number)) return AppendMoment(to, number);
    to += std::to_string(*whole);
    return;
  }
  if (const auto* text = std::get_if<std::string>(&field)) {
    const std::size_t begin = to.size();
    to += *text;
    if (xml_) return;
    std::replace_if(
        to.begin() + static_cast<std::ptrdiff_t>(begin), to.end(), [](char c) { return c == '\n' || c == '\r'; }, ' ');
  }
}

void FieldText::AppendMoment(std::string& to, double value) {
  const DateParts parts = Split(value);
  const int seconds = (parts.hour * 60 + parts.minute) * 60 + parts.second;
  if (kind_ != FieldKind::Time || xml_) to += Day(DatePart(value));
  if (kind_ == FieldKind::Date && !xml_) return;
  if (kind_ != FieldKind::Time || xml_) to += xml_ ? 'T' : ' ';
  to += CsvTimeText(seconds);
}

const std::string& FieldText::Day(double day) {
  if (day != day_) {
    day_ = day;
    dayText_ = xml_ ? FormatDate(day, "yyyy-mm-dd") : CsvDayText(day);
  }
  return dayText_;
}

}  // namespace velk
