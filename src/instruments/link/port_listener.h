#pragma once

#include <optional>

#include "instruments/link/link_lease.h"
#include "instruments/setup/edit_serial_port.h"

namespace velk {

/// Listens on the plain port, with the session's link lent for as long.
class PortListener : public PortListening {
 public:
  PortListener(Link& link, MainTimers& timers) : link_(link), timers_(timers) {}
  ~PortListener() override { Stop(); }

  void Listen(const SerialSettings& line, std::function<void(const std::string& bytes)> onBytes) override;
  void Stop() override;

 private:
  Link& link_;
  MainTimers& timers_;
  std::optional<LinkLease> lease_;
};

}  // namespace velk
