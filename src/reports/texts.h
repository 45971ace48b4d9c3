#pragma once

#include "base/message_text.h"

/// What the viewer of logs and printed tables say. Each with its number in the message database, which never changes
/// its meaning.
namespace velk::text {

// The head of a page: the title, these with the present date and the times of the first and the last record between
// them, the number of the page
inline constexpr MessageText TablePrintedOn{2680, " On  "};
inline constexpr MessageText TableFrom{2681, "   From [ "};
inline constexpr MessageText TableTo{2682, "]  to  ["};
inline constexpr MessageText TablePage{2683, "] Page "};

// The viewer
inline constexpr MessageText ViewerTitle{2684, "Summary Report Editing"};
inline constexpr MessageText ReadingLog{2685, "Reading the times of the log"};
inline constexpr MessageText SortingLog{2686, "Sorting by "};
inline constexpr MessageText AllColumns{2687, "All Columns"};
inline constexpr MessageText InvalidDateOrTime{2688, "Invalid Date or Time"};
inline constexpr MessageText EnterYourComment{2689, "Enter your comment, max. 255 characters"};
inline constexpr MessageText AddingComment{2690, "Adding Comment"};
inline constexpr MessageText SkipEveryLines{2691, "Skip every ... lines"};
inline constexpr MessageText SkipLines{2692, "Skip Lines"};
inline constexpr MessageText DataLogTitle{2693, "Data Log"};
inline constexpr MessageText SummaryDataTitle{2694, "Summary Data"};
inline constexpr MessageText PrintingTable{2695, "Printing"};
inline constexpr MessageText SearchingEvent{2696, "Looking for a value that jumps"};

// The number and the text of a database error stand behind these two
inline constexpr MessageText DatabaseErrorNumber{2697, "Database error, No "};
inline constexpr MessageText DatabaseErrorWhich{2698, " Which is "};

// The number of the present line of the report; of the present row and of all rows of the log
inline constexpr MessageText RecordNumber{2699, "Record: "};
inline constexpr MessageText RowNumber{2700, "Row "};
inline constexpr MessageText RowsInAll{2701, " of "};

// Below the grids. The reason stands behind the second
inline constexpr MessageText NothingJumps{2702, "No value jumps between here and the end."};
inline constexpr MessageText CannotBeEdited{2703, "The log can be read, not changed: "};
inline constexpr MessageText LogIsEmpty{2704, "The log has no records."};
inline constexpr MessageText NoRowsInRange{2705, "No records lie between these times. \"ALL\" shows the whole log."};

inline constexpr MessageText RowIsBackElsewhere{3201, "The row is back. It lies outside of the times that are shown."};
inline constexpr MessageText FactorBelowZero{3202, "The filter factor can't be less than 0."};

// A log that can only be read; the path stands behind the second
inline constexpr MessageText SaveAsLogTitle{2894, "Save as log"};
inline constexpr MessageText SavedAsLog{2895, "Saved. Open it by PlayBack File to change it: "};

}  // namespace velk::text
