// Any bytes in any pieces through the line framing: the lines are those of a plain split of the whole, and what is not
// in a line is still held.

#include <cstdint>
#include <cstdlib>

#include "instruments/reading/line_framing.h"

using namespace velk;

namespace {

void Require(bool holds) {
  if (!holds) std::abort();
}

constexpr std::string_view kTerminators[] = {"\r", "\n", "\r\n", "\n\r"};

/// Takes the next line of a plain split off `rest`.
std::string_view Next(std::string_view& rest, std::string_view terminator) {
  const std::size_t found = rest.find(terminator);
  Require(found != std::string_view::npos);
  const std::string_view line = rest.substr(0, found + terminator.size());
  rest.remove_prefix(line.size());
  return line;
}

}  // namespace

/// The first byte chooses the terminator, the second how the rest is cut into pieces and when lines are taken.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  const std::string_view terminator = kTerminators[data[0] % 4];
  std::uint32_t cut = data[1] + 1U;
  const std::string stream(data + 2, data + size);

  LineFraming framing;
  framing.Reset(terminator);
  std::string_view rest = stream;
  for (std::size_t at = 0; at < stream.size();) {
    cut = cut * 1664525U + 1013904223U;
    const std::string_view piece = std::string_view(stream).substr(at, 1 + (cut >> 28));
    framing.Append(piece);
    at += piece.size();
    if ((cut & 0x10000U) == 0) continue;
    while (framing.HasLine()) Require(framing.TakeLine() == Next(rest, terminator));
    Require(rest.size() == framing.Size() + stream.size() - at);
  }
  while (framing.HasLine()) Require(framing.TakeLine() == Next(rest, terminator));
  Require(rest.find(terminator) == std::string_view::npos);
  Require(framing.Size() == rest.size());
  framing.DropUnfinished();
  Require(framing.Size() == 0);
  return 0;
}
