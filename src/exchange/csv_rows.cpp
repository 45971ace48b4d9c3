#include "exchange/csv_rows.h"

#include <charconv>

#include "base/numbers.h"
#include "exchange/csv_times.h"

namespace velk {

CsvPlan PlanOf(const CsvShape& shape, const std::vector<std::string>& names) {
  CsvPlan plan;
  for (std::size_t i = 0; i < names.size(); ++i) {
    const int place = shape.ColumnsAhead() + static_cast<int>(i);
    if (i + 1 == names.size() && names[i] == kCommentColumn) {
      plan.commentField = place;
      continue;
    }
    plan.names.push_back(names[i]);
    plan.fields.push_back(place);
  }
  return plan;
}

void CsvRows::Clear() {
  days.clear();
  times.clear();
  values.clear();
  comments.clear();
}

double CsvNumber(std::string_view field) {
  // What a number usually looks like, without the copy that the general way makes.
  const bool isPlain = !field.empty() && ((field[0] >= '0' && field[0] <= '9') ||
                                          (field.size() > 1 && field[0] == '-' && field[1] >= '0' && field[1] <= '9'));
  if (!isPlain) return Val(field);
  double value = 0;
  const auto [end, error] = std::from_chars(field.data(), field.data() + field.size(), value);
  return error == std::errc() && end == field.data() + field.size() ? value : Val(field);
}

CsvRowReader::CsvRowReader(const CsvFile& file, const CsvPlan& plan)
    : plan_(plan),
      page_(file.Page()),
      hasDates_(file.Shape().hasHeader),
      lines_(file.Bytes(), file.TextStart()),
      day_(plan.startDay) {
  int slot = 0;
  for (const int field : plan.fields) {
    slots_.resize(static_cast<std::size_t>(field) + 1, -1);
    slots_.back() = slot++;
  }
  if (hasDates_ && lines_.Next()) line_ = 1;
}

bool CsvRowReader::Read(CsvRows& rows, std::size_t most) {
  rows.Clear();
  while (badLine_ == 0 && rows.Count() < most && lines_.Next()) {
    ++line_;
    if (!IsRow()) continue;
    if (!TakeRow(rows)) badLine_ = blank_ != 0 ? blank_ : line_;
  }
  return rows.Count() > 0;
}

/// Passes deleted lines, and blank ones as long as nothing stands behind them.
bool CsvRowReader::IsRow() {
  if (deleted_ < plan_.deletedLines.size() && plan_.deletedLines[deleted_] == line_ - 1) {
    ++deleted_;
    return false;
  }
  if (!IsBlankLine(lines_.Line())) return true;
  if (blank_ == 0) blank_ = line_;
  return false;
}

bool CsvRowReader::TakeRow(CsvRows& rows) {
  std::string_view rest = lines_.Line();
  if (blank_ != 0 || !TakeTime(rest, rows)) return false;
  const std::size_t first = rows.values.size();
  rows.values.resize(first + plan_.fields.size());
  const auto ahead = static_cast<std::size_t>(hasDates_ ? 2 : 1);
  for (std::size_t place = ahead; place < slots_.size() && !rest.empty(); ++place) {
    const std::string_view field = TakeField(rest);
    if (slots_[place] >= 0) rows.values[first + static_cast<std::size_t>(slots_[place])] = CsvNumber(field);
  }
  if (plan_.commentField < 0) return true;
  rest = lines_.Line();
  for (int place = 0; place < plan_.commentField && !rest.empty(); ++place) TakeField(rest);
  rows.comments.push_back(ToUtf8(TakeField(rest), page_));
  return true;
}

/// Takes the first fields off; false where they tell no date and time.
bool CsvRowReader::TakeTime(std::string_view& rest, CsvRows& rows) {
  if (hasDates_) {
    const std::string_view text = TakeField(rest);
    if (text != dayText_) {
      const auto day = CsvDay(text);
      if (!day) return false;
      day_ = *day;
      dayText_ = text;
    }
  }
  const auto seconds = CsvSeconds(TakeField(rest));
  if (!seconds) return false;
  if (!hasDates_) day_ = NextDate(*seconds, seconds_, day_);
  seconds_ = *seconds;
  rows.days.push_back(day_);
  rows.times.push_back(CsvTimeOfDay(seconds_));
  return true;
}

}  // namespace velk
