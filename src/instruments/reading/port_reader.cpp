#include "instruments/reading/port_reader.h"

namespace velk {

std::string PortReader::Waiting(std::size_t most) {
  if (!port_.IsOpen()) throw RuntimeError(ErrorNumber::PortNotOpen);
  std::string bytes = port_.Read(most);
  bytesRead_ += static_cast<std::int64_t>(bytes.size());
  return bytes;
}

void PortReader::Round(std::string& text) {
  const std::string character = port_.Read(1);
  text += character;
  bytesRead_ += static_cast<std::int64_t>(character.size());
  if (character.empty())
    clock_.WaitRound();
  else
    clock_.Yield();
}

}  // namespace velk
