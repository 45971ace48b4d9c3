#include "instruments/reading/port_reader.h"

namespace velk {

std::string PortReader::Waiting(std::size_t most) {
  if (!port_.IsOpen()) throw RuntimeError(ErrorNumber::PortNotOpen);
  return port_.Read(most);
}

void PortReader::Round(std::string& text) {
  const std::string character = port_.Read(1);
  text += character;
  if (character.empty())
    clock_.WaitRound();
  else
    clock_.Yield();
}

}  // namespace velk
