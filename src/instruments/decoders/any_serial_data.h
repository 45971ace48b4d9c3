#pragma once

#include <string>

#include "instruments/decoders/decoder.h"

namespace velk {

/// Takes the characters of code 0 out of the line. Nothing is checked: a line with any count of values goes on.
void AnySerialData(std::string& line);

namespace decoder {
extern const Decoder AnySerialData;
}  // namespace decoder

}  // namespace velk
