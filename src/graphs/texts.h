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
// Editing on the chart
inline constexpr MessageText TipMinimum{2320, "Click here to change the minimum value"};
inline constexpr MessageText TipMaximum{2321, "Click here to change the maximum value"};
inline constexpr MessageText TipColour{2322, "Click here to change the curve color"};
inline constexpr MessageText GraphScales{2323, "Graph Scales"};
inline constexpr MessageText EnterMinimum{2324, "Enter new minimum value"};
inline constexpr MessageText EnterMaximum{2325, "Enter new maximum value"};
inline constexpr MessageText MaximumNotAboveMinimum{2326, "Maximum scale must be greater than minimum scale"};
inline constexpr MessageText GraphsTitle{2327, "VELK Graphs"};
inline constexpr MessageText EnterName{2328, "Enter parameter name"};
inline constexpr MessageText EnterUnits{2329, "Enter parameter units"};
inline constexpr MessageText UnableToPaste{2330, "Unable to Paste on this Graph, max. number of curves is "};
inline constexpr MessageText RemoveTitle{2331, "Remove Parameter from Graph"};
inline constexpr MessageText RemovePrompt{2332, "Select the Parameter to Remove"};
inline constexpr MessageText FileNameFirst{2333, "File Name should be Supplied first."};

// The chart of another program's data
inline constexpr MessageText ExternalTitle{3060, "External Data Display"};
inline constexpr MessageText UnableToReadData{3061, "Unable to read the data"};
inline constexpr MessageText NoDataToPlot{3062, "No Data availble to plot"};
inline constexpr MessageText FollowedTable{3063, "Followed: "};
inline constexpr MessageText FollowingPaused{3064, "Not followed at present: "};
inline constexpr MessageText LastRowAt{3065, ". Last row: "};
inline constexpr MessageText NoRowSince{3066, ". No row since "};
inline constexpr MessageText NotReadTriedAgain{3067, "It can't be read, and is tried again every 7 s. "};

}  // namespace velk::text
