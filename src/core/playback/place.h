#pragma once

#include <cstdint>

#include "base/operator_text.h"
#include "log/log_reader.h"

namespace velk {

/// Where a playback stands in its file, for the operator: "Row 1 204 of 2 600 000".
class PlaybackPlace {
 public:
  /// The file begins again.
  void Begin() { *this = {}; }
  bool IsAtFirstRow() const { return played_ == 0; }
  /// The next row is played.
  void Step() { ++played_; }

  /// Rows were deleted.
  void CountAnew() { count_ = 0; }

  /// `now` in milliseconds. Rows are counted between the rows that are played, those too that are recorded meanwhile: a
  /// long log begins to play at once. Raises what the reader raises.
  OperatorText Text(LogReader& reader, std::int64_t now);

 private:
  std::int64_t played_ = 0;
  std::int64_t count_ = 0;  ///< rows of the file, as far as is known
  std::int64_t countedAt_ = 0;
};

}  // namespace velk
