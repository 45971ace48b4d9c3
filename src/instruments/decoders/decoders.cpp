#include "instruments/decoders/decoders.h"

#include <array>

#include "instruments/decoders/any_serial_data.h"
#include "instruments/decoders/data_taker.h"
#include "instruments/decoders/national_oil_well.h"
#include "instruments/decoders/requested_data.h"
#include "instruments/decoders/stewart_stevenson.h"
#include "instruments/reading/port_reader.h"
#include "instruments/table/protocols.h"
#include "instruments/texts.h"
#include "platform/dialogs/procedure.h"

namespace velk {

namespace {

struct Row {
  std::string_view serialData;
  Decoder decoder;
};

Decoder Find(std::span<const Row> rows, std::string_view serialData) {
  for (const Row& row : rows)
    if (row.serialData == serialData) return row.decoder;
  return Decoder::None;
}

// The same for lines that are delivered and for ticks.
constexpr Row kCommon[] = {
    {protocol::Formatted, Decoder::NationalOilWell}, {protocol::Das104, Decoder::Stewart_stevenson},
    {protocol::Kesta3, Decoder::Orben_ver_3},        {protocol::Kesta4, Decoder::Orben_ver_3},
    {protocol::Kesta5, Decoder::Orben_ver_3},        {protocol::LumoA, Decoder::Orben_ver_3},
    {protocol::LumoB, Decoder::Orben_ver_3},
};

constexpr Row kDelivered[] = {
    {protocol::NationalOilWellPlc, Decoder::NOWPLC},
    {protocol::HoneywellEZtrend, Decoder::HPTHoneywellEZtrend},
    {protocol::LumoThroughHmi, Decoder::HPTHoneywellEZtrend},
    {protocol::AnySerialData, Decoder::AnySerialData},
};

constexpr Row kPolled[] = {
    {protocol::SentWhenRequested, Decoder::Requested_data},
    {protocol::DataTakerA, Decoder::DataTaker_a},
    {protocol::DataTakerB, Decoder::DataTaker_b},
    {protocol::AnySerialData, Decoder::AnySerialData},
};

/// Stands behind " - " in the box of a fault.
std::string ProcedureName(Decoder decoder) {
  switch (decoder) {
    case Decoder::None:
      return {};
    case Decoder::AnySerialData:
      return "Any Serial Data";
    case Decoder::DataTaker_a:
      return "DataTaker_a";
    case Decoder::DataTaker_b:
      return "DataTaker_b";
    case Decoder::HPTHoneywellEZtrend:
      return "HPTHoneywellEZtrend";
    case Decoder::NationalOilWell:
      return "NationalOilWell";
    case Decoder::NOWPLC:
      return "NOWPLC";
    case Decoder::Orben_ver_3:
      return "Orben_ver_3";
    case Decoder::Requested_data:
      return "Requested_data";
    case Decoder::Stewart_stevenson:
      return "Stewart_stevenson";
  }
  return {};
}

}  // namespace

Decoder DeliveredDecoder(const Session& session) {
  const Decoder common = Find(kCommon, session.SerialData);
  return common != Decoder::None ? common : Find(kDelivered, session.SerialData);
}

Decoder PolledDecoder(const Session& session) {
  const Decoder common = Find(kCommon, session.SerialData);
  if (common != Decoder::None) return common;
  if (session.IsOwnUnit) return Decoder::Orben_ver_3;
  return Find(kPolled, session.SerialData);
}

void Decoders::DecodeDelivered(std::string& line) {
  switch (DeliveredDecoder(session_)) {
    case Decoder::NationalOilWell:
      return NationalOilWell(line, session_);
    case Decoder::NOWPLC:
      return NOWPLC(line, session_);
    case Decoder::Orben_ver_3:
    case Decoder::HPTHoneywellEZtrend:  // the same check, on the same length of the line before
      return ownUnit_.Orben_ver_3(line, session_);
    case Decoder::AnySerialData:
      return AnySerialData(line);
    default:  // a frame between CRs carries nothing that could be checked
      return;
  }
}

std::string Decoders::ReadPolled(SerialPort& port) {
  const Decoder decoder = PolledDecoder(session_);
  std::string line;
  RunProcedure({platform_.dialogs, ProcedureName(decoder)},
               [&](const Statements& run) { line = run([&] { return Read(decoder, port); }); });
  return line;
}

std::string Decoders::Read(Decoder decoder, SerialPort& port) {
  PortReader reader(port, platform_.clock, session_);
  std::string line;
  switch (decoder) {
    case Decoder::NationalOilWell:
      line = ReadNationalOilWell(reader, session_);
      NationalOilWell(line, session_);
      break;
    case Decoder::Stewart_stevenson:
      return Stewart_stevenson(reader);
    case Decoder::Requested_data:
      return ReadRequested(port);
    case Decoder::DataTaker_a:
      return DataTaker_a(reader, session_);
    case Decoder::DataTaker_b:
      return DataTaker_b(reader, session_);
    case Decoder::Orben_ver_3:
      ownUnit_.Orben_ver_3(line, session_);  // its lines come from the line driver: there is none here
      break;
    default:
      break;
  }
  return line;
}

std::string Decoders::ReadRequested(SerialPort& port) {
  const RequestedLine requested = Requested_data(port, platform_.clock, session_);
  if (requested.timedOut)
    platform_.dialogs.Message({text::TimeOutCheckSettings, text::TimeOutTitle, Buttons::Ok, BoxIcon::Critical});
  return requested.line;
}

}  // namespace velk
