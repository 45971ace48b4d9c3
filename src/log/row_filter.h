#pragma once

#include <cstdint>
#include <optional>

namespace velk {

/// Which rows of a log by their time.
struct RowFilter {
  enum class Compare {
    DayAndTime,  ///< Date and Time each for itself: a range over midnight holds nothing behind 00:00
    Sum,         ///< as points in time
  };

  std::optional<double> from = {};  ///< date-times, both bounds included
  std::optional<double> to = {};
  Compare compare = Compare::DayAndTime;
};

/// Keys of rows, both included.
struct KeySpan {
  std::int64_t first;
  std::int64_t last;
};

}  // namespace velk
