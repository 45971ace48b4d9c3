#pragma once

#include "core/polling.h"
#include "instruments/link/link.h"
#include "model/main_timers.h"
#include "model/session.h"
#include "platform/platform.h"

namespace velk {

/// The link brought into line with settings that have changed; nothing is asked.
class LinkSetUp {
 public:
  LinkSetUp(Session& session, const Platform& platform, MainTimers& timers, Link& link, Polling& polling)
      : session_(session), platform_(platform), timers_(timers), link_(link), polling_(polling) {}

  /// As at start-up, for line settings that have changed.
  void ResetConnection();
  /// Behind the dialogs of the serial port: everything closed, saved, and set up for the new choice.
  void SetUpAgain();

 private:
  Session& session_;
  Platform platform_;
  MainTimers& timers_;
  Link& link_;
  Polling& polling_;
};

}  // namespace velk
