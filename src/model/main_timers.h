#pragma once

#include <memory>

#include "platform/loop/clock.h"

namespace velk {

/// The main window's timers. Their handlers are bound where the work stands.
struct MainTimers {
  explicit MainTimers(Clock& clock);

  std::unique_ptr<Timer> Timer1;  ///< polled sample
  std::unique_ptr<Timer> Timer2;  ///< watchdog of the line driver
  std::unique_ptr<Timer> Timer3;  ///< playback row
  std::unique_ptr<Timer> Timer4;  ///< page of a networked recorder
  std::unique_ptr<Timer> Timer5;  ///< page of a networked own unit
  std::unique_ptr<Timer> Timer6;  ///< live survey
  std::unique_ptr<Timer> Timer7;  ///< OPC sample
  std::unique_ptr<Timer> Timer8;  ///< OPC line
};

}  // namespace velk
