#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "log/row_filter.h"
#include "model/session.h"
#include "platform/database/command.h"
#include "platform/database/connection.h"

namespace velk {

/// A column of a summary report by what it holds.
struct SummaryColumn {
  enum class Kind {
    Date,
    Time,
    Value,     ///< of a channel at the moment of the line
    Entry,     ///< an additional field, which is entered by hand
    Comments,  ///< free text
  };
  std::string name;
  Kind kind = Kind::Value;
};

struct SummaryLine {
  std::int64_t key = 0;  ///< by which EnterSummaryField finds it
  std::vector<FieldValue> fields;

  bool operator==(const SummaryLine&) const = default;
};

/// A summary report as it stands in a file.
struct SummaryLines {
  std::vector<SummaryColumn> columns;
  std::vector<SummaryLine> lines;  ///< in order of time
};

/// How values stand in a report.
inline constexpr const char* kSummaryPicture = "#0.000";

/// Raises NoSuchTable for a file without a report or without a log.
SummaryLines ReadSummaryReport(Connection& connection);

/// Appends a line: date and time, cut to the second; the present value of each channel that the report has a column
/// for, with three places; the comment, whole. `channels` are the names that the channels have in this log, in order.
/// Additional fields stay empty; so does a value that is no number, and each one before the first sample of the job.
/// Raises NoSuchTable without a report.
void AppendSummaryRow(const std::shared_ptr<Connection>& log, const Session& session,
                      const std::vector<std::string>& channels, double time, const std::string& comment);

/// Sets an additional field of a line, or empties it. Raises NoCurrentRecord where the line is gone.
void EnterSummaryField(const std::shared_ptr<Connection>& log, std::int64_t key, const std::string& column,
                       std::optional<double> value);

/// What was entered for an additional field.
struct SummaryEntry {
  bool isSound = false;         ///< a number, with a point or a comma, or nothing but blanks
  std::optional<double> value;  ///< nothing for an empty field
};
SummaryEntry ReadSummaryEntry(std::string_view text);

struct ReportComment {
  double time = 0;
  std::string text;
};

/// The comments whose lines pass a filter, in the order in which they were written; none for a file without a report.
std::vector<ReportComment> ReadComments(Connection& connection, const RowFilter& filter);

}  // namespace velk
