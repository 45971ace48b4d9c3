#include "instruments/table/protocols.h"

#include <iterator>

#include "instruments/decoders/any_serial_data.h"
#include "instruments/decoders/data_taker.h"
#include "instruments/decoders/national_oil_well.h"
#include "instruments/decoders/requested_data.h"
#include "instruments/decoders/stewart_stevenson.h"
#include "instruments/texts.h"

namespace velk {

namespace {

/// A unit of the company's own.
constexpr Protocol OwnUnit(std::string_view serialData, const MessageText& caption, const UnitConstants& unit,
                           std::string_view olderName = {}) {
  return {.serialData = serialData,
          .caption = caption,
          .driver = Driver::EventLineDriver,
          .decoder = &decoder::Orben_ver_3,
          .unit = unit,
          .olderName = olderName,
          .decimalFields = true};
}

constexpr Protocol kProtocols[] = {
    {.serialData = protocol::Formatted,
     .caption = text::ProtocolFormatted,
     .driver = Driver::EventLineDriver,
     .decoder = &decoder::NationalOilWell,
     .dialog = ProtocolDialog::FormattedData,
     .olderName = "formatted",
     .picking = Picking::NextEntry,
     .asksAtStart = true,
     .learnsLineLength = true,
     .readsBesideOwnUnit = true},
    {.serialData = protocol::NationalOilWellPlc,
     .caption = text::ProtocolNationalOilWell,
     .driver = Driver::EventLineDriver,
     .decoder = &decoder::NOWPLC,
     .dialog = ProtocolDialog::FormattedData,
     .asksAtStart = true,
     .deliversNoValues = true},
    {.serialData = protocol::SentWhenRequested,
     .caption = text::ProtocolSentWhenRequested,
     .driver = Driver::PolledByTick,
     .decoder = &decoder::Requested_data,
     .dialog = ProtocolDialog::RequestedData,
     .hasCommands = true},
    {.serialData = protocol::Intermittent,
     .caption = text::ProtocolIntermittent,
     .driver = Driver::BufferedLines,
     .dialog = ProtocolDialog::Intermittent},
    {.serialData = protocol::DllFunctionCall, .caption = text::ProtocolDllFunctionCall},
    // Channels, the last analog one, the last of the hardware, baud rate, handshake.
    OwnUnit(protocol::Kesta3, text::ProtocolKesta3, {18, 8, 13, 19200, 2, TableHead::AnswerAndHeading},
            "orben version 3"),
    OwnUnit(protocol::Kesta4, text::ProtocolKesta4, {18, 8, 13, 19200, 0, TableHead::EchoAndTwoLines},
            "orben version 4"),
    OwnUnit(protocol::Kesta5, text::ProtocolKesta5, {22, 8, 13, 19200, 0}),
    OwnUnit(protocol::LumoA, text::ProtocolLumoA, {4, 2, 3, 19200, 0}),
    OwnUnit(protocol::LumoB, text::ProtocolLumoB, {10, 4, 7, 19200, 0}),
    {.serialData = protocol::Das104,
     .caption = text::ProtocolDas104,
     .driver = Driver::PolledByTick,
     .decoder = &decoder::Stewart_stevenson,
     .dialog = ProtocolDialog::FormattedData,
     .readsBesideOwnUnit = true,
     .frameBeginsAtEnd = true},
    {.serialData = protocol::DataTakerA,
     .caption = text::ProtocolDataTakerA,
     .driver = Driver::PolledByTick,
     .decoder = &decoder::DataTaker_a,
     .dialog = ProtocolDialog::FormattedData},
    {.serialData = protocol::DataTakerB,
     .caption = text::ProtocolDataTakerB,
     .driver = Driver::PolledByTick,
     .decoder = &decoder::DataTaker_b,
     .dialog = ProtocolDialog::FormattedData},
    {.serialData = protocol::HoneywellEZtrend,
     .caption = text::ProtocolHoneywell,
     .driver = Driver::NetworkedPage,
     .decoder = &decoder::HPTHoneywellEZtrend,
     .dialog = ProtocolDialog::EthernetConfiguration,
     .hasPort = false,
     .pageTimer = PageTimer::Timer4},
    {.serialData = protocol::LumoThroughHmi,
     .caption = text::ProtocolLumoThroughHmi,
     .driver = Driver::NetworkedPage,
     .decoder = &decoder::HPTHoneywellEZtrend,
     .dialog = ProtocolDialog::EthernetConfiguration,
     .hasPort = false,
     .pageTimer = PageTimer::Timer5,
     .valuesPage = LineFromPanelPage},
    {.serialData = protocol::AnySerialData,
     .caption = text::ProtocolAnySerialData,
     .driver = Driver::EventLineDriver,
     .decoder = &decoder::AnySerialData,
     .dialog = ProtocolDialog::FormattedData,
     .picking = Picking::Nothing,
     .asksAtStart = true},
    {.serialData = protocol::OpcServer,
     .caption = text::ProtocolOpcServer,
     .driver = Driver::OpcItems,
     .hasPort = false},
};

static_assert(std::end(kProtocols)[-1].picking != Picking::NextEntry);

constexpr Protocol kUnknown{};

const Protocol* FindOlderName(std::string_view serialData) {
  for (const Protocol& row : kProtocols)
    if (!row.olderName.empty() && row.olderName == serialData) return &row;
  return nullptr;
}

}  // namespace

std::span<const Protocol> Protocols() {
  return kProtocols;
}

const Protocol* FindProtocol(std::string_view serialData) {
  for (const Protocol& row : kProtocols)
    if (row.serialData == serialData) return &row;
  return nullptr;
}

const Protocol& ProtocolOf(std::string_view serialData) {
  const Protocol* const row = FindProtocol(serialData);
  return row != nullptr ? *row : kUnknown;
}

const Protocol& ProtocolOf(const Session& session) {
  return ProtocolOf(session.SerialData);
}

std::string_view PresentName(std::string_view serialData) {
  const Protocol* const row = FindOlderName(serialData);
  return row == nullptr ? serialData : row->serialData;
}

void SetProtocolConstants(StoredSettings& session) {
  const Protocol& row = ProtocolOf(PresentName(session.SerialData));
  if (!row.unit) return;

  session.SerialData = row.serialData;
  session.NumberOfChannels = row.unit->channels;
  session.LastAnalogChannel = row.unit->lastAnalog;
  session.LastHardwareChannel = row.unit->lastHardware;
  session.BaudRate = row.unit->baudRate;
  session.Handshake = row.unit->handshake;
  session.IsOwnUnit = true;
  session.Parity = row.unit->parity;
  session.DataBits = row.unit->dataBits;
  session.StopBits = row.unit->stopBits;
  session.Delimiter = row.unit->delimiter;
  session.Terminator = row.unit->terminator;
  ForgetChosenSeparators(session);
  session.OrbenSettings.assign(session.NumberOfChannels, {});
}

bool WaitsForNewStart(const StoredSettings& session) {
  return session.IsOwnUnit && !ProtocolOf(session.SerialData).unit;
}

bool ComputeUseODataCom(const Session& session) {
  const Protocol& row = ProtocolOf(session);
  return session.IsOwnUnit || (row.driver == Driver::EventLineDriver && !row.unit);
}

}  // namespace velk
