#pragma once

#include <cstddef>
#include <span>
#include <string_view>

namespace velk {

struct FieldNumbers {
  std::size_t count = 0;  ///< fields that were read
  bool areSound = false;  ///< they are all of the line's, and plain decimal numbers: HasDecimalFields holds
};

/// Reads the fields behind the first one, the time, as Val reads them: as many as `numbers` has room for, or as the
/// line has. The line ends at its terminator, but what stands behind one counts where values are missing.
FieldNumbers ReadFieldNumbers(std::string_view line, std::string_view delimiter, std::string_view terminator,
                              std::span<double> numbers);

}  // namespace velk
