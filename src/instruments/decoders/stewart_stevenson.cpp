#include "instruments/decoders/stewart_stevenson.h"

namespace velk {

namespace {

/// Place of the first CR from `from` on, both counted from 1; 0 where there is none.
std::size_t PlaceOfCr(const std::string& text, std::size_t from) {
  const std::size_t found = text.find('\r', from - 1);
  return found == std::string::npos ? 0 : found + 1;
}

}  // namespace

std::string Stewart_stevenson(PortReader& reader) {
  std::string buffer = reader.AllWaiting();
  // A frame's leading CR may be the very first to come.
  const auto hasCome = [](const std::string& text) { return !text.empty(); };
  if (reader.ReadUntil(buffer, hasCome, [] { return false; }) != Reading::Whole) return {};
  const std::size_t first = PlaceOfCr(buffer, 1);
  std::size_t second = PlaceOfCr(buffer, first + 1);
  if (second <= first) {
    const std::size_t waited = buffer.size();
    // A CR that comes directly behind the first one does not end the frame.
    const auto ends = [&](const std::string& text) {
      return text.size() > waited && text.back() == '\r' && text.size() >= first + 2;
    };
    const auto givesUp = [&] { return buffer.size() - waited >= PortReader::kLongestText; };
    if (reader.ReadUntil(buffer, ends, givesUp) != Reading::Whole) return {};
    second = buffer.size();
  }
  return buffer.substr(first, second - first);
}

const Decoder decoder::Stewart_stevenson{
    .procedure = "Stewart_stevenson",
    .read = [](PortReader& reader, const Decoding&) { return velk::Stewart_stevenson(reader); }};

}  // namespace velk
