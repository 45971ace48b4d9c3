#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "platform/database/catalog.h"
#include "platform/database/command.h"
#include "platform/dialogs/long_task.h"
#include "platform/files/output_file.h"

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

  /// Appends the text of a row, whose fields stand in columns of the command.
  using RowText = std::function<void(const Command& row, std::string& to)>;

  /// Writes each row, with these fields, counted from 0, in this order: rows of a log by their keys for XML, else all
  /// by date and time. Pages are read and brought into text in threads, two at a time; `make` gives each page what
  /// writes its rows. Raises TaskCancelled.
  void Write(const std::vector<int>& fields, const std::function<RowText()>& make, OutputFile& file,
             LongTask& task) const;

 private:
  using Visit = std::function<void(const Command& row)>;
  std::vector<std::int64_t> Keys() const;
  std::string PageText(const std::string& columns, std::span<const std::int64_t> keys, bool areInOrder,
                       const RowText& text) const;
  void VisitSpan(const std::string& columns, std::int64_t first, std::int64_t last, const Visit& visit) const;
  void VisitEach(const std::string& columns, std::span<const std::int64_t> keys, const Visit& visit) const;

  std::string path_;
  ExportMode mode_;
  Table table_;
  std::string key_;
};

/// What a field holds, by the name and the declared type of its column.
enum class FieldKind { Date, Time, Moment, Integer, SmallInteger, Number, Text, LongText };
FieldKind KindOf(const Column& column);

}  // namespace velk
