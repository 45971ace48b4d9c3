#pragma once

#include <cstdint>
#include <functional>

namespace velk {

/// What came of a call: 0 is good, the topmost bit is set where it failed. The numbers are those that servers send.
using OpcStatus = std::uint32_t;

inline constexpr OpcStatus kOpcGood = 0;
inline constexpr OpcStatus kOpcTimeout = 0x800A0000;
inline constexpr OpcStatus kOpcShutDown = 0x800C0000;
inline constexpr OpcStatus kOpcNoServer = 0x800D0000;
inline constexpr OpcStatus kOpcCancelled = 0x802C0000;
inline constexpr OpcStatus kOpcBadId = 0x80330000;
inline constexpr OpcStatus kOpcUnknownId = 0x80340000;
inline constexpr OpcStatus kOpcOutOfRange = 0x803C0000;
inline constexpr OpcStatus kOpcCertificateExpired = 0x80140000;
inline constexpr OpcStatus kOpcCertificateRefused = 0x801A0000;
inline constexpr OpcStatus kOpcAccessDenied = 0x801F0000;
inline constexpr OpcStatus kOpcTokenInvalid = 0x80200000;
inline constexpr OpcStatus kOpcTokenRejected = 0x80210000;
inline constexpr OpcStatus kOpcModeRejected = 0x80540000;
inline constexpr OpcStatus kOpcModeInsufficient = 0x80E60000;
inline constexpr OpcStatus kOpcNotWritable = 0x803B0000;
inline constexpr OpcStatus kOpcNotSupported = 0x803D0000;
inline constexpr OpcStatus kOpcNotFound = 0x803E0000;
inline constexpr OpcStatus kOpcUnknownItem = 0x80420000;
inline constexpr OpcStatus kOpcNameTaken = 0x80610000;
inline constexpr OpcStatus kOpcTypeMismatch = 0x80740000;
inline constexpr OpcStatus kOpcNotConnected = 0x808A0000;

constexpr bool IsGood(OpcStatus status) {
  return (status & 0x80000000U) == 0;
}

using OpcDone = std::function<void(OpcStatus)>;

}  // namespace velk
