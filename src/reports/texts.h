#pragma once

#include "base/message_text.h"

/// What printed tables say. Each with its number in the message database, which never changes its meaning.
namespace velk::text {

// The head of a page: the title, these with the present date and the times of the first and the last record between
// them, the number of the page
inline constexpr MessageText TablePrintedOn{2680, " On  "};
inline constexpr MessageText TableFrom{2681, "   From [ "};
inline constexpr MessageText TableTo{2682, "]  to  ["};
inline constexpr MessageText TablePage{2683, "] Page "};

}  // namespace velk::text
