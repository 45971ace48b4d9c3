#pragma once

#include "base/message_text.h"

/// What run-time errors say. Each with its number in the message database, which never changes its meaning.
namespace velk::text {

// Run-time errors
inline constexpr MessageText ErrorInvalidArgument{2500, "Invalid procedure call or argument"};
inline constexpr MessageText ErrorOverflow{2501, "Overflow"};
inline constexpr MessageText ErrorSubscriptOutOfRange{2502, "Subscript out of range"};
inline constexpr MessageText ErrorDivisionByZero{2503, "Division by zero"};
inline constexpr MessageText ErrorTypeMismatch{2504, "Type mismatch"};
inline constexpr MessageText ErrorBadFileName{2505, "Bad file name or number"};
inline constexpr MessageText ErrorFileNotFound{2506, "File not found"};
inline constexpr MessageText ErrorFileAlreadyOpen{2507, "File already open"};
inline constexpr MessageText ErrorDeviceIO{2508, "Device I/O error"};
inline constexpr MessageText ErrorFileAlreadyExists{2509, "File already exists"};
inline constexpr MessageText ErrorDiskFull{2510, "Disk full"};
inline constexpr MessageText ErrorDeviceUnavailable{2511, "Device unavailable"};
inline constexpr MessageText ErrorPermissionDenied{2512, "Permission denied"};
inline constexpr MessageText ErrorPathNotFound{2513, "Path not found"};
inline constexpr MessageText ErrorPortNotOpen{2514, "The port is not open"};
inline constexpr MessageText ErrorPortInvalid{2515, "Invalid port number"};
inline constexpr MessageText ErrorDatabase{2516, "Database error"};
inline constexpr MessageText ErrorNotADatabase{2517, "Unrecognized database format"};
inline constexpr MessageText ErrorDatabaseLocked{2518, "The database is locked"};
inline constexpr MessageText ErrorNoCurrentRecord{2519, "No current record"};
inline constexpr MessageText ErrorNoSuchTable{2520, "The table does not exist"};
inline constexpr MessageText ErrorOther{2521, "Error "};
inline constexpr MessageText ErrorInternal{2522, "Internal error"};

}  // namespace velk::text
