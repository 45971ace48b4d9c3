#pragma once

#include "base/message_text.h"

/// What boxes, ports and files of settings say. Each with its number in the message database, which never changes its
/// meaning.
namespace velk::text {

// Boxes
inline constexpr MessageText ProgramName{2040, "VELK"};
inline constexpr MessageText ButtonOk{2046, "OK"};
inline constexpr MessageText ButtonCancel{2047, "Cancel"};
inline constexpr MessageText ButtonYes{2048, "&Yes"};
inline constexpr MessageText ButtonNo{2049, "&No"};
inline constexpr MessageText ButtonRetry{2050, "&Retry"};

// Damaged settings files; the path and ": " stand in front, numbers of lines and names of sections
// between the parts
inline constexpr MessageText FileIsDirectory{2530, "this is a directory"};
inline constexpr MessageText FileIsNone{2531, "this is no file"};
inline constexpr MessageText FileTooLarge{2532, "this is too large"};
inline constexpr MessageText FileEmpty{2533, "the file is empty"};
inline constexpr MessageText FileEndMissing{2534, "the end of the file is missing"};
inline constexpr MessageText BadLineBefore{2535, "line "};
inline constexpr MessageText BadLineAfter{2536, " can't be read"};
inline constexpr MessageText BadLinesBefore{2537, "lines "};
inline constexpr MessageText BadLinesUpTo{2538, " to "};
inline constexpr MessageText BadLinesAfter{2539, " can't be read"};
inline constexpr MessageText SectionChanged{2540, " is not as it was written"};
inline constexpr MessageText SectionsChanged{2541, " are not as they were written"};
inline constexpr MessageText SectionsMissing{2542, "sections missing: "};
inline constexpr MessageText FileLastLineOpen{2763, "the last line has no end; the values are used"};

// A full disk; between the parts the path and a number
inline constexpr MessageText NoRoomBefore{2543, "The disk has no room to open ["};
inline constexpr MessageText NoRoomMissing{2544, "]: "};
inline constexpr MessageText NoRoomAfter{2545, " KB more are needed"};

// A printer; its name stands between the parts
inline constexpr MessageText PrinterGoneBefore{2642, "The printer ["};
inline constexpr MessageText PrinterGoneAfter{2643, "] is not there or takes no documents. Nothing was printed."};

// A database of the Jet format; the path stands between the parts
inline constexpr MessageText JetIsReadOnlyBefore{2887, "The log ["};
inline constexpr MessageText JetIsReadOnlyAfter{
    2888, "] is in the Jet format: it can be read, not changed. Save it as a log of this program first."};
inline constexpr MessageText JetNotReadBefore{2891, "The log ["};
inline constexpr MessageText JetNotReadAfter{2892, "] has changed since it was chosen. Choose it again."};

}  // namespace velk::text
