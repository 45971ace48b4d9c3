#include "log/log_schema.h"

#include <algorithm>

namespace velk {

namespace {

/// A channel without a name fits everywhere; unnamed ("BLANK") ones fit into each other's columns.
bool FitsInto(const std::string& column, const std::string& name, const std::string& ownColumn) {
  const std::string cleaned = CleanFieldName(name);
  return cleaned.empty() || column == ownColumn || (BeginsWithBlank(cleaned) && BeginsWithBlank(column));
}

}  // namespace

Table LogDataTable(const std::vector<std::string>& channels) {
  Table table{
      kLogData, {{"ID", column_type::kInteger}, {"Date", column_type::kDate}, {"Time", column_type::kDate}}, "ID"};
  for (const std::string& name : LogColumnNames(channels)) table.columns.push_back({name, column_type::kDouble});
  return table;
}

Table GraphSettingsTable() {
  return {kGraphSettings,
          {{"ParameterName", column_type::kText50},
           {"units", column_type::kText50},
           {"Minimum", column_type::kDouble},
           {"Maximum", column_type::kDouble},
           {"NumberFormat", column_type::kText50},
           {"GraphNumber", column_type::kInteger},
           {"CurveColor", column_type::kInteger}}};
}

Table SummaryReportTable(const SummaryColumns& columns, const std::vector<bool>& included) {
  Table table{kSummaryReport, {{"Date", column_type::kDate}, {"Time", column_type::kDate}}};
  for (std::size_t i = 0; i < columns.parameters.size(); ++i)
    if (included[i]) table.columns.push_back({columns.parameters[i], column_type::kDouble});
  for (const std::string& field : columns.extraFields) table.columns.push_back({field, column_type::kDouble});
  table.columns.push_back({columns.comments, column_type::kLongText});
  return table;
}

bool TakesChannel(const Table& logData, const std::vector<std::string>& names, int number) {
  const auto index = static_cast<std::size_t>(number - 1);
  const std::string ownColumn = LogColumnNames(names)[index];
  return std::any_of(logData.columns.begin(), logData.columns.end(),
                     [&](const Column& column) { return FitsInto(column.name, names[index], ownColumn); });
}

bool HasOrderOf(const Table& logData, const std::vector<std::string>& names) {
  if (!HasRoomFor(logData, static_cast<int>(names.size()))) return false;
  const std::vector<std::string> columns = LogColumnNames(names);
  for (std::size_t i = 0; i < names.size(); ++i)
    if (!FitsInto(logData.columns[i + kFieldsBeforeChannels].name, names[i], columns[i])) return false;
  return true;
}

bool HasRoomFor(const Table& logData, int channels) {
  const std::vector<Column>& columns = logData.columns;
  return static_cast<int>(columns.size()) >= channels + kFieldsBeforeChannels && SameName(columns[0].name, "ID") &&
         SameName(columns[1].name, "Date") && SameName(columns[2].name, "Time");
}

}  // namespace velk
