#pragma once

#include "base/message_text.h"

/// What charts say. Each with its number in the message database, which never changes its meaning.
namespace velk::text {

// Graphs
inline constexpr MessageText AxisTime{2300, "Time"};
inline constexpr MessageText AxisTimeUnit{2301, "(hh:mm)"};

// Read Value and history
inline constexpr MessageText ReadAt{2310, " at "};
inline constexpr MessageText ReadValueTitle{2311, "Read Value from Graph"};
inline constexpr MessageText SelectParameterToRead{2312, "Select the Parameter to Read"};
inline constexpr MessageText BehindMidnight{2313, "What comes behind midnight is on the next page."};

// Comments
inline constexpr MessageText MustSupplyFileName{2314, "Must supply a file name"};
inline constexpr MessageText CommentHint{2315, "Comment: Enter stores it, Esc leaves without it"};
inline constexpr MessageText CommentHintInPlayback{
    2316, "Comment: Enter stores it in the played file under the present time of the clock, Esc leaves without it"};

}  // namespace velk::text
