#pragma once

#include "base/message_text.h"

/// What a running job says. Each with its number in the message database, which never changes its meaning.
namespace velk::text {

// Acquisition
inline constexpr MessageText UnableToAcquire{2010, "Unable to acquire data while "};
inline constexpr MessageText AcquireDataTitle{2011, "Acquire Data"};
inline constexpr MessageText FileNameNotSupplied{2017, "File Name not Supplied"};
inline constexpr MessageText TimeOutCheckHardware{2019, "Time Out Error, check hardware"};
inline constexpr MessageText SaveDataNow{2020, "File name not supplied, save the data now?"};
inline constexpr MessageText AcquiringDataError{2021, "Acquiring data ... error"};
inline constexpr MessageText RowsMissing{2022, "Rows not recorded: "};
inline constexpr MessageText NoDriver{2023, "This protocol has no driver: no values will come."};

// The data panel; a number or a time stands between
inline constexpr MessageText SamplesPerSecond{2574, " samples/s"};
inline constexpr MessageText SamplesPerMinute{2575, " samples/min"};
inline constexpr MessageText SamplesPerHour{2576, " samples/h"};
inline constexpr MessageText Rows{2577, " rows"};
inline constexpr MessageText OneRow{2578, " row"};
inline constexpr MessageText Rejected{2579, " rejected: "};
inline constexpr MessageText NotRecording{2546, "not recording"};
inline constexpr MessageText NoDataFor{2547, "no data for "};
inline constexpr MessageText NoRowFor{2548, "no row for "};
inline constexpr MessageText PausedSince{2549, "paused since "};
inline constexpr MessageText ValuesHeldSince{2550, "values held since "};
inline constexpr MessageText EveryLineRejected{2551, "no values"};
inline constexpr MessageText WaitsForData{2552, "waiting for the first line"};
inline constexpr MessageText WaitsForAnswer{2553, "nothing is recorded until the question is answered"};
inline constexpr MessageText Seconds{2554, " s"};
inline constexpr MessageText Minutes{2555, " min"};
inline constexpr MessageText Hours{2556, " h"};
inline constexpr MessageText Days{2557, " days"};

// The sign of a recording and its tool tip
inline constexpr MessageText RecordingSign{2558, "REC"};
inline constexpr MessageText RecordingPaused{2559, "paused"};
inline constexpr MessageText RowsGoTo{2560, "Rows go to "};
inline constexpr MessageText FileSize{2561, "Size: "};
inline constexpr MessageText FreeSpace{2562, "Free on this disk: "};
inline constexpr MessageText FreeSpaceLasts{2563, ", which lasts for "};
inline constexpr MessageText KiloBytes{2564, " KB"};
inline constexpr MessageText MegaBytes{2565, " MB"};
inline constexpr MessageText GigaBytes{2566, " GB"};

// Playback
inline constexpr MessageText UnableToPlayback{2070, "Unable to Playback while "};
inline constexpr MessageText PlaybackFileTitle{2071, "PlayBack File"};
inline constexpr MessageText OpenPlaybackError{2072, "Open playback file ... error"};
inline constexpr MessageText PlaybackError{2073, "Playback ... error"};
inline constexpr MessageText EndOfPlayback{2074, "End of playback"};
inline constexpr MessageText PlaybackStopped{2075, "Playback is Stopped"};
inline constexpr MessageText NothingToPlayBefore{2076, "The log ["};
inline constexpr MessageText NothingToPlayAfter{2077, "] has no rows or no channels: there is nothing to play back."};
inline constexpr MessageText RowBefore{2078, "Row "};
inline constexpr MessageText RowOf{2079, " of "};

// Large values
inline constexpr MessageText NoLargeValues{
    2720, "Channels stand here in large digits once the program is connected to the hardware."};
inline constexpr MessageText NoneChosen{3410, "No channel is chosen. Tick those to be shown under Channels."};

// Why a line was rejected
inline constexpr MessageText LineFailsCheck{2024, "the line fails its protocol's check"};
inline constexpr MessageText FieldNotDecimal{2025, "a value is no decimal number"};
inline constexpr MessageText ValueBeyondRange{2026, "a value is beyond the 32-bit range"};
inline constexpr MessageText FieldMissing{2027, "the line ends ahead of its last value"};
inline constexpr MessageText DateNotRead{2028, "the line does not begin with a date"};

}  // namespace velk::text
