#pragma once

#include "core/sources/sample_sources.h"
#include "instruments/link/link.h"
#include "model/main_timers.h"
#include "model/session.h"
#include "platform/platform.h"

namespace velk {

/// The link brought into line with settings that have changed; nothing is asked.
class LinkSetUp {
 public:
  LinkSetUp(Session& session, const Platform& platform, MainTimers& timers, Link& link, SampleSources& sources)
      : session_(session), platform_(platform), timers_(timers), link_(link), sources_(sources) {}

  /// As at start-up, for port settings that have changed.
  void ResetConnection();
  /// Behind the dialogs of the serial port: everything closed, saved, and set up for the new choice.
  void SetUpAgain();
  /// Behind a search for the instrument, which has set the link up already: saved, and its lines taken in its way.
  void KeepFound();

 private:
  Session& session_;
  Platform platform_;
  MainTimers& timers_;
  Link& link_;
  SampleSources& sources_;
};

}  // namespace velk
