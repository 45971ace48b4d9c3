#pragma once

#include <string>

#include "instruments/decoders/decoder.h"
#include "instruments/reading/port_reader.h"

namespace velk {

/// Reads one line that ends in CR LF or LF CR, takes the characters of code 0 out, and cuts it ahead of the terminator.
/// Only a terminator that is the line's very last character stays on; without it the sample's road will not take the
/// line. Empty when the wait was stopped or the device went away, and for a line longer than PortReader::kLongestText.
/// Raises PortNotOpen.
std::string ReadNationalOilWell(PortReader& reader, const Session& session);

/// Leaves a sound line as it is and puts the terminator in front of any other, by which the sample's road drops it.
/// Sound is a line with NumberOfParameters delimiters and a time at its beginning; where the delimiter is the blank it
/// also has the learnt FormattedLineLength.
void NationalOilWell(std::string& line, const Session& session);

/// Sets the line length of this instrument and rejects the line, whatever it holds.
void NOWPLC(std::string& line, Session& session);

namespace decoder {
extern const Decoder NationalOilWell;
extern const Decoder NOWPLC;
}  // namespace decoder

}  // namespace velk
