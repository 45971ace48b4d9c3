#pragma once

#include "base/message_text.h"

/// What recording says. Each with its number in the message database, which never changes its meaning.
namespace velk::text {

// The log and the settings
inline constexpr MessageText RecordToError{2200, "Record to ... error"};
inline constexpr MessageText DatabaseErrorTitle{2201, "Database error"};
inline constexpr MessageText NotCompatibleBefore{2204, "The file ["};
inline constexpr MessageText NotCompatibleAfter{2205, "] is not compatible with current velk data"};
inline constexpr MessageText NoLogInFile{2624, "It holds no rows of data."};
inline constexpr MessageText SameNameTwice{2625, "Two of the present channels have the same name: "};
inline constexpr MessageText NoColumnForChannel{2626, "It has no column for the channel "};
inline constexpr MessageText NoRoomForChannels{2627, "Its rows don't have room for so many channels: "};
inline constexpr MessageText IsJet{2893, "It is in the Jet format: it can be read, not recorded to."};
inline constexpr MessageText NewFileWillBe{2628, "The new file will be "};
inline constexpr MessageText OrderDiffersBefore{2206, "The columns of the file ["};
inline constexpr MessageText OrderDiffersAfter{
    2207,
    "] stand in another order than the present parameters. Rows are written by position: appended values "
    "would stand in the wrong columns."};
inline constexpr MessageText Comments{2211, "Comments"};
inline constexpr MessageText Failed{2212, "Failed"};
inline constexpr MessageText NoGraphSettings{2213, "Graph settings does not exist"};
inline constexpr MessageText RecordDataTo{2214, "Record Data To..."};
inline constexpr MessageText DataFilesFilter{2215, "Data files (*.mdb)|*.mdb"};
inline constexpr MessageText LogNotOpen{2216, "The log is not open"};
inline constexpr MessageText NoColumn{2217, "The log has no column "};

// A log that another program records to: the path, the number of its process, the name of its machine
inline constexpr MessageText RecordedElsewhereBefore{2218, "The log ["};
inline constexpr MessageText RecordedElsewhereBy{2219, "] is being recorded by another VELK (process "};
inline constexpr MessageText RecordedElsewhereOn{2220, " on "};
inline constexpr MessageText RecordedElsewhereAfter{2221, "). It can be played back; record to another file."};

// What a log that is appended to, or was just ended, is looked at for; the path stands between the parts
inline constexpr MessageText CheckingLog{2222, "Checking the log"};
inline constexpr MessageText DamagedLogBefore{2223, "The log ["};
inline constexpr MessageText DamagedLogAfter{
    2224, "] is damaged: not all of its rows can be read. Record to a new file beside it instead?"};
inline constexpr MessageText UnreadableRowsBefore{2225, "Not all rows of this job can be read back from ["};
inline constexpr MessageText UnreadableRowsAfter{2226, "]. Keep the file as it is, and have the disk checked."};

// What could not be tidied up; the path stands behind
inline constexpr MessageText FolderNotFlushed{
    2227,
    "The disk does not confirm the new file's name: a power cut within the next minute can take the file with it. The "
    "folder: "};
inline constexpr MessageText LeftFileStays{
    2228, "What a broken-off program left of a file with this name could not be removed: "};
inline constexpr MessageText SideFileStays{
    2730, "The recording is whole. What belonged to it while it ran could not be removed, and holds nothing: "};
// The summary report
inline constexpr MessageText SummaryReportError{2230, "Summary report ... error"};
inline constexpr MessageText NoReport{2231, "The log has no summary report"};
inline constexpr MessageText UnableToLocateReport{2232, "Unable to locate / create the summary report"};
inline constexpr MessageText EnterANumber{2233, "Enter a number, or leave the field empty."};
inline constexpr MessageText ReportIsEmpty{
    2234, "No lines yet. F7 in a graph writes a comment; it stands here with the values of that moment."};

inline constexpr MessageText ReportDate{2235, "Date"};
inline constexpr MessageText ReportTime{2236, "Time"};
// A row that can't be played back: its ID, and the path behind
inline constexpr MessageText RowWithoutTimeBefore{2240, "Row "};
inline constexpr MessageText RowWithoutTimeAfter{2241, " of the log has no date and time that can be read: "};

}  // namespace velk::text
