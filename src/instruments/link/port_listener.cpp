#include "instruments/link/port_listener.h"

#include <utility>

namespace velk {

void PortListener::Listen(const SerialSettings& line, std::function<void(const std::string& bytes)> onBytes) {
  Stop();
  lease_.emplace(link_, timers_);
  SerialPort& port = *link_.MSComm1;
  port.onReadyRead = [&port, onBytes = std::move(onBytes)] {
    while (port.BytesWaiting() > 0) onBytes(port.Read(port.BytesWaiting()));
  };
  try {
    port.Open(line);
  } catch (const RuntimeError&) {
    Stop();
    throw;
  }
}

void PortListener::Stop() {
  if (!lease_) return;
  link_.ClosePlainPort();
  lease_.reset();
}

}  // namespace velk
