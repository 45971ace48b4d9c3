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

// Why a line was rejected
inline constexpr MessageText LineFailsCheck{2024, "the line does not pass its protocol's check"};
inline constexpr MessageText FieldNotDecimal{2025, "a value is no decimal number"};
inline constexpr MessageText ValueBeyondRange{2026, "a value is beyond the 32-bit range"};
inline constexpr MessageText FieldMissing{2027, "the line ends ahead of its last value"};
inline constexpr MessageText DateNotRead{2028, "the line does not begin with a date"};

}  // namespace velk::text
