#pragma once

#include <string>

#include "instruments/decoders/decoder.h"
#include "instruments/reading/port_reader.h"

namespace velk {

/// The text between two CRs, the second one with it. What waits is read at once, or the first byte awaited where none
/// does; then character by character until the second CR has come; what was read behind it is dropped. Where no CR
/// waited, the text begins with what did. Nothing is checked. Empty when the wait was stopped or the device went away,
/// and for a frame longer than PortReader::kLongestText. Raises PortNotOpen.
std::string Stewart_stevenson(PortReader& reader);

namespace decoder {
/// A frame between CRs carries nothing by which a delivered line could be checked.
extern const Decoder Stewart_stevenson;
}  // namespace decoder

}  // namespace velk
