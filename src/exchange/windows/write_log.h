#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "exchange/csv_rows.h"
#include "exchange/csv_table.h"
#include "i18n/windows/window_host.h"
#include "platform/platform.h"

namespace velk {

/// What an import needs besides its file; all outlives it.
struct ImportAccess {
  Platform platform;
  std::string directory;                 ///< where the choice of a file begins
  std::function<std::string()> openLog;  ///< the log that is recorded or played back now; empty without one
  /// Called with a log ahead of its opening for reading; it may raise what keeps it from being read.
  std::function<void(const std::string& path)> prepare = {};
};

/// Writes the rows of a table into a log that the operator chooses: a new one, one in the place of another, or behind
/// the rows of one that they fit. Then the graph settings of another log may take the place of its own.
class WriteLog {
 public:
  WriteLog(WindowHost& host, ImportAccess access) : host_(host), access_(std::move(access)) {}

  /// cmdCreate of ViewData. `startDay` is the date of the first row of a file without dates.
  void cmdCreate_Click(const CsvTable& table, double startDay);

 private:
  enum class Way { New, Replace, Append };
  struct Target {
    std::string path;
    Way way = Way::New;
  };

  bool Pick(CsvPlan& plan, const CsvTable& table);
  std::optional<Target> AskTarget(const CsvTable& table, const CsvPlan& plan);
  std::optional<Way> WayFor(const std::string& path);
  bool Write(const CsvTable& table, const CsvPlan& plan, const Target& target);
  void OfferGraphSettings(const std::string& path);
  OperatorText ReasonAgainst(Way way, const std::string& path) const;
  void Tell(const OperatorText& text);
  void TellError(const RuntimeError& error);

  WindowHost& host_;
  ImportAccess access_;
};

/// The log that a text file becomes: the file's name with "mdb" behind its first point.
std::string OutputNameFor(const std::string& csvFileName);

}  // namespace velk
