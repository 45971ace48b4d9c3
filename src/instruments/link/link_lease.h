#pragma once

#include <functional>
#include <vector>

#include "instruments/link/link.h"

namespace velk {

/// The timers that tick on a port or fetch, at rest for a scope. At its end those that were on run again.
class TimersAtRest {
 public:
  explicit TimersAtRest(MainTimers& timers);
  ~TimersAtRest();
  TimersAtRest(const TimersAtRest&) = delete;
  TimersAtRest& operator=(const TimersAtRest&) = delete;

  /// They ticked for an instrument that isn't the session's any more: they stay still.
  void StayStill() { running_.clear(); }

 private:
  std::vector<Timer*> running_;
};

/// The link lent for a scope to somebody who needs the plain port for himself: a command to the board, a search for the
/// instrument, a calibration, a change of the port. The line driver is closed and not watched, the plain port is free
/// and what comes through it is left to him, and the timers that tick on a port or fetch are still. At the end all of
/// it is as it was, images included, whatever the way the scope is left; what can't be opened again is told once and
/// tried on.
class LinkLease {
 public:
  LinkLease(Link& link, MainTimers& timers);
  ~LinkLease();
  LinkLease(const LinkLease&) = delete;
  LinkLease& operator=(const LinkLease&) = delete;

  /// The operator has been told that the device is gone: no box of the link's comes on top.
  void LossIsTold() { before_.lossIsTold = true; }
  /// The session has another instrument by now, or another port: at the end the link is set up for that one, and
  /// what ticked for the old one stays still.
  void SetUpAnew() {
    anew_ = true;
    timers_.StayStill();
  }

 private:
  Link& link_;
  TimersAtRest timers_;  ///< ends last
  Link::State before_;
  const std::function<void()> onReadyRead_;  ///< of the plain port
  bool anew_ = false;
};

}  // namespace velk
