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

std::string Statement(const char* table, const std::vector<std::string>& columns) {
  std::string names, marks;
  for (const std::string& column : columns) {
    (names += names.empty() ? "" : ",") += QuoteName(column);
    marks += marks.empty() ? "?" : ",?";
  }
  return std::string("INSERT INTO ") + table + " (" + names + ") VALUES (" + marks + ")";
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
  const double* value = rows.values.data();
  for (std::size_t row = 0; row < rows.Count(); ++row) {
    row_->BindNumber(1, rows.days[row]).BindNumber(2, rows.times[row]);
    int place = 3;
    for (std::size_t i = 0; i < channels_; ++i) row_->BindNumber(place++, *value++);
    if (holdsComments_) row_->Bind(place, rows.comments[row].empty() ? FieldValue() : FieldValue(rows.comments[row]));
    row_->Execute();
  }
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
