#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace velk {

/// Rows of a log for who walks through millions of them: what they have stands in one array each.
struct RowBlock {
  std::size_t channels = 0;
  std::vector<std::int64_t> keys;
  std::vector<double> times;   ///< date-times; NaN where a row has none
  std::vector<double> values;  ///< of the channels of one row after the other; NaN where there is none

  std::size_t Count() const { return keys.size(); }
  std::span<const double> Values(std::size_t row) const { return {values.data() + row * channels, channels}; }
};

}  // namespace velk
