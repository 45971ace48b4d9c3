#include "exchange/row_inserter.h"

#include <algorithm>

#include "base/errors.h"
#include "base/text.h"
#include "exchange/csv_shape.h"
#include "log/field_names.h"
#include "log/log_schema.h"
#include "platform/database/catalog.h"

namespace velk {

namespace {

/// Rows of one statement. To begin and end one takes the engine as long as half of a row of 18 channels.
constexpr std::size_t kRowsTogether = 32;

std::string Statement(const char* table, const std::vector<std::string>& columns, std::size_t rows = 1) {
  std::string names, marks, values;
  for (const std::string& column : columns) {
    (names += names.empty() ? "" : ",") += QuoteName(column);
    marks += marks.empty() ? "(?" : ",?";
  }
  for (std::size_t i = 0; i < rows; ++i) values += (i == 0 ? "" : ",") + marks + ")";
  return std::string("INSERT INTO ") + table + " (" + names + ") VALUES " + values;
}

/// Date, Time and so many columns behind ID, Date and Time.
std::vector<std::string> ColumnsOfRows(const Table& logData, std::size_t channels) {
  std::vector<std::string> columns = {"Date", "Time"};
  for (std::size_t i = 0; i < channels; ++i) columns.push_back(logData.columns.at(i + kFieldsBeforeChannels).name);
  return columns;
}

}  // namespace

RowInserter::RowInserter(const std::shared_ptr<Connection>& log, const CsvPlan& plan, const std::string& comments)
    : channels_(plan.names.size()) {
  const Catalog catalog(*log);
  const auto logData = catalog.Find(kLogData);
  const auto report = catalog.Find(kSummaryReport);
  if (!logData || !report) throw RuntimeError(ErrorNumber::NoSuchTable);
  std::vector<std::string> columns = ColumnsOfRows(*logData, channels_);
  holdsComments_ = plan.commentField >= 0 && SameName(logData->columns.back().name, kCommentColumn);
  if (holdsComments_) columns.push_back(logData->columns.back().name);
  row_ = std::make_unique<Command>(*log, Statement(kLogData, columns));
  rows_ = std::make_unique<Command>(*log, Statement(kLogData, columns, kRowsTogether));

  // Of a log that was recorded the report has the channels that were asked for only.
  std::vector<std::string> lineColumns = {"Date", "Time", comments};
  const std::vector<std::string> own = SummaryColumnNames(plan.names, {}, comments).parameters;
  for (std::size_t i = 0; i < own.size(); ++i) {
    const bool isThere = std::any_of(report->columns.begin(), report->columns.end(),
                                     [&](const Column& column) { return column.name == own[i]; });
    if (!isThere) continue;
    lineColumns.push_back(own[i]);
    reported_.push_back(i);
  }
  comment_ = std::make_unique<Command>(*log, Statement(kSummaryReport, lineColumns));
}

void RowInserter::InsertRows(const CsvRows& rows) {
  std::size_t row = 0;
  for (; row + kRowsTogether <= rows.Count(); row += kRowsTogether) Insert(*rows_, rows, row, kRowsTogether);
  for (; row < rows.Count(); ++row) Insert(*row_, rows, row, 1);
}

void RowInserter::Insert(Command& command, const CsvRows& rows, std::size_t first, std::size_t count) const {
  const double* value = rows.values.data() + first * channels_;
  int place = 1;
  for (std::size_t row = first; row < first + count; ++row) {
    command.BindNumber(place, rows.days[row]).BindNumber(place + 1, rows.times[row]);
    place += 2;
    for (std::size_t i = 0; i < channels_; ++i) command.BindNumber(place++, *value++);
    if (!holdsComments_) continue;
    command.Bind(place++, rows.comments[row].empty() ? FieldValue() : FieldValue(rows.comments[row]));
  }
  command.Execute();
}

void RowInserter::InsertComments(const CsvRows& rows) {
  for (std::size_t row = 0; row < rows.comments.size(); ++row) {
    std::string comment = Trim(rows.comments[row]);
    if (comment.empty() || comment == lastComment_) continue;
    comment_->Bind(1, rows.days[row]).Bind(2, rows.times[row]).Bind(3, comment);
    int place = 4;
    for (const std::size_t channel : reported_) comment_->Bind(place++, rows.values[row * channels_ + channel]);
    comment_->Execute();
    lastComment_ = std::move(comment);
  }
}

}  // namespace velk
