#include "instruments/decoders/own_unit.h"

#include "instruments/reading/time_check.h"

namespace velk {

void OwnUnitDecoder::Orben_ver_3(std::string& line, const Session& session) {
  const auto length = static_cast<std::int32_t>(line.size());
  const bool sound = CountDelimiters(line, session.Delimiter) == session.NumberOfParameters &&
                     length == LastLineLength && HasTime(line);
  LastLineLength = length;
  if (!sound) line.insert(0, "\r\n");
}

}  // namespace velk
