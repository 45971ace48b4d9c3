#pragma once

#include <string>

#include "instruments/decoders/decoder.h"
#include "instruments/reading/port_reader.h"

namespace velk {

/// Rounds of reading behind which a wait for this instrument ends: 2.1 seconds of silence for a line, 71 for a block.
inline constexpr int kDataTakerLineRounds = 2100;
inline constexpr int kDataTakerBlockRounds = 71000;

/// Reads one line that ends in CR LF or LF CR and cuts it ahead of the terminator, unless that is the line's very last
/// character. A line with NumberOfParameters delimiters and a time at its beginning stays as it is; any other gets the
/// terminator in front. When the rounds run out what has come is given as it is, unmarked; empty when the wait was
/// stopped or the device went away. Raises PortNotOpen.
std::string DataTaker_a(PortReader& reader, const Session& session);

/// Reads a block of lines up to its blank line and makes one line of it: the time, then the delimiter and the value of
/// each line, one delimiter more, and the terminator. A block with another count of values, or without a time, gives
/// a line with the terminator in front. Empty when the wait was stopped, the device went away or the rounds run out.
/// Raises PortNotOpen.
std::string DataTaker_b(PortReader& reader, const Session& session);

/// The line of a block that has been read; see DataTaker_b.
std::string LineFromDataTakerBlock(std::string_view block, const Session& session);

namespace decoder {
extern const Decoder DataTaker_a;
extern const Decoder DataTaker_b;
}  // namespace decoder

}  // namespace velk
