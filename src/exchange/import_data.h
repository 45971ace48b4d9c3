#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/errors.h"
#include "exchange/jet_reader.h"
#include "exchange/live_import.h"

namespace velk {

/// The number of the query's own error, 0x80040002.
inline constexpr auto kInvalidParameters = static_cast<ErrorNumber>(-2147221502);

/// A row of a followed table: its time, cut to the second, and the values of the chosen fields, NaN where one has none.
struct ForeignRow {
  double time = 0;
  std::vector<double> values;
};

/// From where on rows are read: those of one day, from a second of it on.
struct ForeignStart {
  double day = 0;  ///< whole days
  int second = 0;  ///< since midnight
};

/// The start that a date-time means.
ForeignStart StartAt(double time);

/// One run of the query, in pieces of a few milliseconds: nothing waits for it, and no lock of the database lasts
/// longer than a piece.
class ForeignRead {
 public:
  virtual ~ForeignRead() = default;

  /// Reads on: appends rows in the order in which they are stored. False once there are no more. Raises what keeps the
  /// database from being read; the run is over then.
  virtual bool Read(std::vector<ForeignRow>& rows) = 0;
  /// Behind the end: the earliest day behind the one that was asked for of which there are rows.
  virtual std::optional<double> LaterDay() const = 0;
};

/// The query over a table that another program fills. Date and time of a row are tested for themselves, so each day is
/// asked for by itself.
class ImportData {
 public:
  /// Prepares the query for what is followed. Raises kInvalidParameters where file, table, date or time field is empty.
  void Initialize(const LiveImport& live, const JetTools& tools);

  /// Runs it.
  std::unique_ptr<ForeignRead> ReadData(const ForeignStart& start) const;
  /// All rows of the table.
  std::unique_ptr<ForeignRead> ReadAll() const;

 private:
  std::unique_ptr<ForeignRead> Begin(const std::optional<ForeignStart>& start) const;

  LiveImport live_;
  JetTools tools_;
};

}  // namespace velk
