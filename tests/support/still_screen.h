#pragma once

#include "platform/windows/screen_refresh.h"
#include "support/fake_clock.h"

namespace velk::test {

/// A screen that follows what changes as its clock is advanced.
struct StillScreen {
  Gate gate;
  FakeClock clock{gate};
  ScreenRefresh refresh{clock};
};

}  // namespace velk::test
