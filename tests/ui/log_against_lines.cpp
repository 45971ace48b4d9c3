#include "ui/log_against_lines.h"

#include <QDateTime>
#include <QLocale>

namespace velk::test {

namespace {

double DaysOf(const std::string& dateTime) {
  const QDateTime when = QLocale::c().toDateTime(QString::fromStdString(dateTime), "d-MMM-yyyy hh:mm:ss");
  return static_cast<double>(QDate(1899, 12, 30).daysTo(when.date())) + QTime(0, 0).secsTo(when.time()) / 86400.0;
}

bool IsRowOf(const LogRow& row, const Sample& sample) {
  if (row.values.size() != sample.fields.size()) return false;
  for (std::size_t i = 0; i < row.values.size(); ++i)
    if (row.values[i] != Logged(sample.fields[i], i + 1)) return false;
  return !sample.dateTime || row.dateTime == DaysOf(*sample.dateTime);
}

std::string Told(const SentLine& line, const std::vector<LogRow>& rows, std::size_t row) {
  std::string text = "line \"" + line.text + "\" against ";
  if (row >= rows.size()) return text + "the end of the log";
  text += "row " + std::to_string(row + 1) + ":";
  for (const double value : rows[row].values) text += " " + std::to_string(value);
  return text;
}

}  // namespace

Agreement Compare(const std::vector<SentLine>& lines, std::size_t first, LineRule rule, const LineForm& form,
                  const std::vector<LogRow>& rows, std::size_t unread, bool mayHold) {
  Agreement agreement;
  std::size_t row = 0;
  std::optional<Sample> standing;
  for (std::size_t i = first; i < lines.size(); ++i) {
    ++agreement.sent;
    const std::optional<Sample> sample = rule(lines[i], i > first ? &lines[i - 1] : nullptr, form);
    const bool ended = row == rows.size();
    if (!sample) {
      const bool held = mayHold && standing && !ended && IsRowOf(rows[row], *standing);
      agreement.held += held ? 1 : 0;
      row += held ? 1 : 0;
      continue;
    }
    if (ended && unread > 0) {
      --unread;
      --agreement.sent;
      continue;
    }
    ++agreement.accepted;
    if (ended || !IsRowOf(rows[row], *sample)) {
      agreement.fault = Told(lines[i], rows, row);
      return agreement;
    }
    standing = sample;
    ++row;
  }
  if (row < rows.size()) agreement.fault = "rows that no line has sent, from " + std::to_string(row + 1);
  return agreement;
}

}  // namespace velk::test
