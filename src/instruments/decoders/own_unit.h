#pragma once

#include <cstdint>
#include <string>

#include "model/session.h"

namespace velk {

struct Decoder;

/// Tells a sound frame of a KESTA or LUMO unit in run mode from a damaged one: "hh:mm:ss", then a blank and a raw value
/// a channel, CR LF. Nothing is scaled here.
class OwnUnitDecoder {
 public:
  /// Bytes of the line before, sound or not. A frame is believed only if it is as long as that one.
  std::int32_t LastLineLength = 0;

  /// Leaves a sound line as it is and puts CR LF in front of any other, by which the sample's road drops it. Sound is a
  /// line with NumberOfParameters delimiters, of the length of the line before, whose hour is 0 to 23 and whose minute
  /// is 0 to 59. Seconds are not looked at.
  void Orben_ver_3(std::string& line, const Session& session);
};

namespace decoder {
/// Its lines come from the line driver: a tick finds none, and so rejects an empty one.
extern const Decoder Orben_ver_3;
/// For the lines of pages: the same check, on the same length of the line before.
extern const Decoder HPTHoneywellEZtrend;
}  // namespace decoder

}  // namespace velk
