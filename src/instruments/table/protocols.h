#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "model/session.h"

namespace velk {

/// Values of SerialData: what stands at the other end of the line.
namespace protocol {
inline constexpr std::string_view Formatted = "formatted and at regular intervals";
inline constexpr std::string_view NationalOilWellPlc = "National Oil Well PLC";
inline constexpr std::string_view SentWhenRequested = "sent when requested";
inline constexpr std::string_view Intermittent = "intermittent and by request";
inline constexpr std::string_view DllFunctionCall = "via dll function call";
inline constexpr std::string_view Kesta3 = "KESTA version 3";
inline constexpr std::string_view Kesta4 = "KESTA version 4";
inline constexpr std::string_view Kesta5 = "KESTA version 5";
inline constexpr std::string_view LumoA = "LUMO version A";
inline constexpr std::string_view LumoB = "LUMO version B";
inline constexpr std::string_view Das104 = "S&S DAS 104";
inline constexpr std::string_view DataTakerA = "Data Taker a";
inline constexpr std::string_view DataTakerB = "Data Taker b";
inline constexpr std::string_view HoneywellEZtrend = "HPT - Honeywell eZtrend";
inline constexpr std::string_view LumoThroughHmi = "ORBEN LUMO through HMI";
inline constexpr std::string_view AnySerialData = "Any Serial Data";
/// No entry of the protocol list: the values come from an OPC server.
inline constexpr std::string_view OpcServer = "OPC Server";
}  // namespace protocol

/// How the lines of a protocol come in.
enum class Driver { EventLineDriver, PolledByTick, BufferedLines, NetworkedPage, None };

/// What the board of an own unit has, and the line it speaks on.
struct UnitConstants {
  std::int16_t channels;      ///< NumberOfChannels
  std::int16_t lastAnalog;    ///< channels 1 to here are analog
  std::int16_t lastHardware;  ///< from behind the analog ones to here are counters; the rest the unit computes
  std::int32_t baudRate;
  std::int16_t handshake;
};

struct Protocol {
  std::string_view serialData;
  Driver driver;
  std::optional<UnitConstants> unit;  ///< only the company's own units have them
};

/// The sixteen protocols; the place in the table is the place in the protocol list.
std::span<const Protocol> Protocols();

/// The row of a value of SerialData, or null.
const Protocol* FindProtocol(std::string_view serialData);

/// Takes over the constants of the own unit that SerialData names, and the line settings that all of them share. Names
/// from older settings become the present ones. Any other value changes nothing, IsOwnUnit included. Run at start-up
/// and when a protocol is chosen.
void SetProtocolConstants(Session& session);

/// Whether the line driver serves this session; the other protocols use the plain port.
bool ComputeUseODataCom(const Session& session);

}  // namespace velk
