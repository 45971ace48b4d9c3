#include "instruments/table/protocols.h"

namespace velk {

namespace {

constexpr Protocol kProtocols[] = {
    {protocol::Formatted, Driver::EventLineDriver, {}},
    {protocol::NationalOilWellPlc, Driver::EventLineDriver, {}},
    {protocol::SentWhenRequested, Driver::PolledByTick, {}},
    {protocol::Intermittent, Driver::BufferedLines, {}},
    {protocol::DllFunctionCall, Driver::None, {}},
    {protocol::Kesta3, Driver::EventLineDriver, UnitConstants{18, 8, 13, 19200, 2}},
    {protocol::Kesta4, Driver::EventLineDriver, UnitConstants{18, 8, 13, 19200, 0}},
    {protocol::Kesta5, Driver::EventLineDriver, UnitConstants{22, 8, 13, 19200, 0}},
    {protocol::LumoA, Driver::EventLineDriver, UnitConstants{4, 2, 3, 19200, 0}},
    {protocol::LumoB, Driver::EventLineDriver, UnitConstants{10, 4, 7, 19200, 0}},
    {protocol::Das104, Driver::PolledByTick, {}},
    {protocol::DataTakerA, Driver::PolledByTick, {}},
    {protocol::DataTakerB, Driver::PolledByTick, {}},
    {protocol::HoneywellEZtrend, Driver::NetworkedPage, {}},
    {protocol::LumoThroughHmi, Driver::NetworkedPage, {}},
    {protocol::AnySerialData, Driver::EventLineDriver, {}},
};

void RenameFromOlderSettings(std::string& serialData) {
  if (serialData == "orben version 3") serialData = protocol::Kesta3;
  if (serialData == "orben version 4") serialData = protocol::Kesta4;
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

void SetProtocolConstants(Session& session) {
  RenameFromOlderSettings(session.SerialData);
  const Protocol* const row = FindProtocol(session.SerialData);
  if (row == nullptr || !row->unit) return;

  session.NumberOfChannels = row->unit->channels;
  session.LastAnalogChannel = row->unit->lastAnalog;
  session.LastHardwareChannel = row->unit->lastHardware;
  session.BaudRate = row->unit->baudRate;
  session.Handshake = row->unit->handshake;
  session.IsOwnUnit = true;
  session.Parity = 'N';
  session.DataBits = 8;
  session.StopBits = '1';
  session.Delimiter = ' ';
  session.Terminator = "\r\n";
  session.OrbenSettings.assign(session.NumberOfChannels, {});
}

bool ComputeUseODataCom(const Session& session) {
  return session.IsOwnUnit || session.SerialData == protocol::Formatted ||
         session.SerialData == protocol::NationalOilWellPlc || session.SerialData == protocol::AnySerialData;
}

}  // namespace velk
