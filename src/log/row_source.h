#pragma once

#include "log/log_row.h"

namespace velk {

/// Rows one after the other, wherever they come from: what draws, prints or exports reads them through this. Before the
/// first move there is no present row. Each move raises a RuntimeError where the rows can't be read.
class RowSource {
 public:
  virtual ~RowSource() = default;

  /// Goes to the first row; false where there is none.
  virtual bool First() = 0;
  /// Goes to the first row at or behind a date-time; false where there is none.
  virtual bool Seek(double time) = 0;
  /// Goes to the next row; false behind the last one. There it can be asked again: more may have been recorded.
  virtual bool Next() = 0;
  /// The present row, until the next move.
  virtual const LogRow& Row() const = 0;
};

}  // namespace velk
