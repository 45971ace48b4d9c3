#include "instruments/decoders/own_unit.h"

#include "instruments/decoders/decoder.h"
#include "instruments/reading/time_check.h"

namespace velk {

void OwnUnitDecoder::Orben_ver_3(std::string& line, const Session& session) {
  const auto length = static_cast<std::int32_t>(line.size());
  const bool sound = CountDelimiters(line, session.Delimiter) == session.NumberOfParameters &&
                     length == LastLineLength && HasTime(line);
  LastLineLength = length;
  if (!sound) line.insert(0, "\r\n");
}

namespace {

void Check(std::string& line, const Decoding& with) {
  with.ownUnit.Orben_ver_3(line, with.session);
}

std::string RejectEmptyLine(PortReader&, const Decoding& with) {
  std::string line;
  Check(line, with);
  return line;
}

}  // namespace

const Decoder decoder::Orben_ver_3{.procedure = "Orben_ver_3", .check = Check, .read = RejectEmptyLine};
const Decoder decoder::HPTHoneywellEZtrend{.procedure = "HPTHoneywellEZtrend", .check = Check};

}  // namespace velk
