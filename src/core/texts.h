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

// Why a line was rejected
inline constexpr MessageText LineFailsCheck{2024, "the line does not pass its protocol's check"};
inline constexpr MessageText FieldNotDecimal{2025, "a value is no decimal number"};
inline constexpr MessageText ValueBeyondRange{2026, "a value is beyond the 32-bit range"};
inline constexpr MessageText FieldMissing{2027, "the line ends ahead of its last value"};
inline constexpr MessageText DateNotRead{2028, "the line does not begin with a date"};

}  // namespace velk::text
