#pragma once

#include <functional>
#include <memory>
#include <string>

#include "instruments/link/link.h"
#include "model/main_timers.h"
#include "model/main_view.h"
#include "model/session.h"
#include "platform/dialogs/dialogs.h"
#include "platform/platform.h"

namespace velk {

/// What the search for an instrument works with.
struct AutoDetect {
  Session& session;
  Platform platform;
  MainView& view;
  Link& link;
  MainTimers& timers;
  std::function<std::unique_ptr<ProgressBox>()> makeBox;
  std::function<void()> keep;  ///< the session has other settings, and the link is set up for them
  std::string devices = "/dev";
};

/// Searches the serial ports for an instrument and sets the session to it. Where none was found, or the search was
/// cancelled, the operator may go back to the settings of before.
void mnuEditAutoDetect_Click(const AutoDetect& parts);

}  // namespace velk
