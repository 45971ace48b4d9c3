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

}  // namespace velk::text
