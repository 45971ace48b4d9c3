#pragma once

#include <cstdint>
#include <vector>

namespace velk {

/// One sample of a log.
struct LogRow {
  double time = 0;             ///< date-time; NaN where a file's row has none
  std::vector<double> values;  ///< of the channels, in order; NaN where there is none
  std::int64_t key = 0;        ///< its ID; 0 for a row that is in no file
};

}  // namespace velk
