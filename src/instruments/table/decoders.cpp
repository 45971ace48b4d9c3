#include "instruments/table/decoders.h"

#include "instruments/table/protocols.h"
#include "platform/dialogs/procedure.h"

namespace velk {

const Decoder& PolledDecoder(const Session& session) {
  const Protocol& row = ProtocolOf(session);
  return session.IsOwnUnit && !row.readsBesideOwnUnit ? decoder::Orben_ver_3 : *row.decoder;
}

void Decoders::DecodeDelivered(std::string& line) {
  const Decoder& decoder = *ProtocolOf(session_).decoder;
  if (decoder.check) decoder.check(line, with_);
}

std::string Decoders::ReadPolled(SerialPort& port, const OperatorText& portInUse) {
  const Decoder& decoder = PolledDecoder(session_);
  std::string line;
  if (!decoder.read) return line;
  with_.portInUse = portInUse;
  PortReader reader(port, platform_.clock, session_);
  RunProcedure({platform_.dialogs, std::string(decoder.procedure)},
               [&](const Statements& run) { line = run([&] { return decoder.read(reader, with_); }); });
  return line;
}

}  // namespace velk
