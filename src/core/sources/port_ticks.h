#pragma once

#include <functional>

#include "core/sample_road.h"
#include "core/sources/port_turns.h"
#include "instruments/link/link.h"
#include "model/main_timers.h"

namespace velk {

/// The plain port read tick by tick: what the sources that live on Timer1 share.
class PortTicks {
 public:
  /// Reads one sample; `run` marks what can fail.
  using Read = std::function<Values(const Statements& run, PortTurn& port)>;

  /// `onTimeOut` is told behind a tick whose wait has set StopRequested in a running job.
  PortTicks(Session& session, const Platform& platform, MainTimers& timers, Link& link, SampleRoad& road,
            std::function<void()> onTimeOut);

  /// Readies the plain port with the session's own port settings, away from the line driver. False after an error box.
  bool OpenPort();
  void Start() { timer_.SetEnabled(true); }
  void Stop() { timer_.SetEnabled(false); }

  /// One sample. Never entered again while it runs: two readers would share one port. A tick that lies below a box does
  /// not run, and a later one takes the port over from it: samples go on behind boxes. Where the device is gone there
  /// is no sample: the gap is a gap in the log too.
  void Tick(const Read& read);

  bool IsRunning() const { return turns_.Depth() > 0; }

 private:
  bool TakeTimeOut();

  Session& session_;
  Timer& timer_;
  Link& link_;
  SampleRoad& road_;
  const Report report_;
  const std::function<void()> onTimeOut_;
  PortTurns turns_;
};

}  // namespace velk
