#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "base/message_text.h"
#include "instruments/decoders/decoder.h"
#include "instruments/decoders/page_readers.h"
#include "model/session.h"

namespace velk {

/// Values of SerialData: what stands behind the port. Only the table and tests choose by them.
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
inline constexpr std::string_view OpcServer = "OPC Server";
}  // namespace protocol

/// How the lines of a protocol come in.
enum class Driver { EventLineDriver, PolledByTick, BufferedLines, NetworkedPage, OpcItems, None };

/// The dialog that the set-up of the serial port goes on to.
enum class ProtocolDialog { None, FormattedData, RequestedData, Intermittent, EthernetConfiguration };

/// What is stored once an entry of the protocol list was picked.
enum class Picking { Itself, NextEntry, Nothing };

/// The timer that fetches the page of a networked unit: as one table, or as values to which the program adds the time.
enum class PageTimer { None, Timer4, Timer5 };

/// What stands ahead of the channels in the table that a board prints.
enum class TableHead {
  TwoLines,          ///< two headings
  AnswerAndHeading,  ///< an answer to the request, then one heading
  EchoAndTwoLines,   ///< two headings, and ahead of them the request where the board repeats it
};

/// What the board of an own unit has, and the settings of the port it speaks on.
struct UnitConstants {
  std::int16_t channels;      ///< NumberOfChannels
  std::int16_t lastAnalog;    ///< channels 1 to here are analog
  std::int16_t lastHardware;  ///< from behind the analog ones to here are counters; the rest the unit computes
  std::int32_t baudRate;
  std::int16_t handshake;
  TableHead tableHead = TableHead::TwoLines;
  std::string_view parity = "N";
  std::int16_t dataBits = 8;
  std::string_view stopBits = "1";
  std::string_view delimiter = " ";
  std::string_view terminator = "\r\n";
};

/// All that sets one protocol apart from the others.
struct Protocol {
  std::string_view serialData = {};  ///< what is stored, in any language
  MessageText caption = {};          ///< what the protocol list shows
  Driver driver = Driver::None;
  const Decoder* decoder = &decoder::None;
  ProtocolDialog dialog = ProtocolDialog::None;
  std::optional<UnitConstants> unit = {};  ///< only the company's own units have them
  std::string_view olderName = {};         ///< the same protocol in older settings
  Picking picking = Picking::Itself;
  bool hasPort = true;              ///< there is a serial port to close at the end
  bool asksAtStart = false;         ///< the start asks whether to go on with the present settings of the port
  bool learnsLineLength = false;    ///< ticks read the plain port until the length of a line is known
  bool readsBesideOwnUnit = false;  ///< its decoder reads for a tick though an own unit was chosen before
  bool frameBeginsAtEnd = false;    ///< the end of a frame is the beginning of the next one
  bool deliversNoValues = false;    ///< its check rejects every line
  bool decimalFields = false;       ///< a value is decimal text and nothing else, so that any other is a damaged one
  bool hasCommands = false;         ///< each parameter has a command that asks for it and one that resets it
  PageTimer pageTimer = PageTimer::None;
  ValuesPageReader valuesPage = LineFromNamedCells;  ///< for Timer5
};

/// The seventeen protocols of the protocol list; the place in the table is the place in the list.
std::span<const Protocol> Protocols();

/// The entry of the protocol list of a value of SerialData, or null.
const Protocol* FindProtocol(std::string_view serialData);

/// The row of a value of SerialData. For a value that is no entry of the list a row without driver, decoder or dialog.
const Protocol& ProtocolOf(std::string_view serialData);
/// That of the session's SerialData.
const Protocol& ProtocolOf(const Session& session);

/// The present name of a protocol that older settings have under another one; any other text as it is.
std::string_view PresentName(std::string_view serialData);

/// Takes over the constants of the own unit that SerialData names, and its present name. Any other value changes
/// nothing, IsOwnUnit included. Run at start-up and when a protocol is chosen.
void SetProtocolConstants(StoredSettings& session);

/// Another protocol was chosen behind an own unit. The line driver and its separators stay the own unit's until the
/// next start, with which the choice takes full effect.
bool WaitsForNewStart(const StoredSettings& session);

/// Whether the line driver serves this session; the other protocols use the plain port.
bool ComputeUseODataCom(const Session& session);

}  // namespace velk
