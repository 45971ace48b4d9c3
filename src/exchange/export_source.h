#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "platform/database/catalog.h"
#include "platform/database/command.h"
#include "platform/dialogs/long_task.h"

namespace velk {

enum class ExportMode { LogToCsv, LogToXml, SummaryToCsv };

/// What leaves a file: the rows of a log, or the lines of its report. The file may be one that is being recorded to: it
/// is open while a page is read only, and what is recorded after the beginning of the walk stays out of it.
class ExportSource {
 public:
  /// Raises NoSuchTable, and what the opening of the file raises.
  ExportSource(std::string path, ExportMode mode);

  /// All fields, in order.
  const std::vector<Column>& Fields() const { return table_.columns; }

  /// Hands each row to `visit`, which finds these fields of it, counted from 0, in columns of the command in this
  /// order: rows of a log by their keys for XML, else all by date and time. Raises TaskCancelled.
  void Walk(const std::vector<int>& fields, LongTask& task, const std::function<void(const Command& row)>& visit) const;

 private:
  std::vector<std::int64_t> Keys(LongTask& task) const;
  void VisitSpan(const std::string& columns, std::int64_t first, std::int64_t last,
                 const std::function<void(const Command& row)>& visit) const;
  void VisitEach(const std::string& columns, const std::int64_t* keys, std::size_t count,
                 const std::function<void(const Command& row)>& visit) const;

  std::string path_;
  ExportMode mode_;
  Table table_;
  std::string key_;
};

/// What a field holds, by the name and the declared type of its column.
enum class FieldKind { Date, Time, Moment, Integer, SmallInteger, Number, Text, LongText };
FieldKind KindOf(const Column& column);

}  // namespace velk
