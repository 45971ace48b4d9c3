#pragma once

#include <string>
#include <vector>

#include "base/operator_text.h"
#include "log/open_log.h"
#include "log/row_edits.h"
#include "reports/log_view.h"

namespace velk {

/// Changes of a log and of its report. What was deleted can be taken back as long as this lives. Each change raises
/// what OpenLog::Edit raises, and then nothing has changed.
class LogEdits {
 public:
  /// All outlive this.
  LogEdits(OpenLog& log, LogView& view) : log_(log), view_(view) {}

  /// Why the file can't be changed: another program records to it, or it is protected. Empty where it can.
  OperatorText WhyNot() const;

  /// Deletes a row of the log, counted from 0 among those shown.
  void DeleteRow(int row);
  /// Deletes the line of the report with this key.
  void RemoveLine(std::int64_t key);
  /// Appends a line to the report: date, time and channels of a row, the comment, of which 255 characters count.
  /// Additional fields stay empty. Raises NoCurrentRecord for a row that somebody else has deleted.
  void AddLine(int row, const std::string& comment);

  bool CanUndo() const { return !deleted_.empty(); }
  /// Puts back what was deleted last; gives the place of a row of the log, nothing for a line of the report.
  std::optional<Place> Undo();

 private:
  struct Deleted {
    DeletedRow row;
    std::optional<Place> place;  ///< of a row of the log
  };

  OpenLog& log_;
  LogView& view_;
  std::vector<Deleted> deleted_;
};

}  // namespace velk
