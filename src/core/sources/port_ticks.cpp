#include "core/sources/port_ticks.h"

#include <utility>

#include "model/status.h"
#include "model/texts.h"

namespace velk {

namespace {

constexpr int kTickMs = 50;

}  // namespace

PortTicks::PortTicks(Session& session, const Platform& platform, MainTimers& timers, Link& link, SampleRoad& road,
                     std::function<void()> onTimeOut)
    : session_(session),
      timer_(*timers.Timer1),
      link_(link),
      road_(road),
      report_(road.ReportOf("Timer1_Timer")),
      onTimeOut_(std::move(onTimeOut)),
      turns_(*link.MSComm1, platform.dialogs) {
  timer_.SetInterval(kTickMs);
}

bool PortTicks::OpenPort() {
  link_.CloseODataCom();  // one owner of a device at a time
  return link_.MSComm1->IsOpen() || link_.OpenPlainPort(static_cast<Handshake>(session_.Handshake));
}

void PortTicks::Tick(const Read& read) {
  if (turns_.IsTaken()) return;
  PortTurn port(turns_);
  bool timedOut = false;
  road_.Sample(report_, [&](const Statements& run) {
    if (!link_.KeepPlainPortOpen()) return Values::Left;
    const Values values = read(run, port);
    if (!session_.StopRequested) return values;
    timedOut = TakeTimeOut();
    return Values::Left;
  });
  if (timedOut) onTimeOut_();
}

/// Whether it was a wait that has set StopRequested in a running job. A job that stands then loses the mark at once, or
/// the end of this sample would end the recording too; Stop has left the job already.
bool PortTicks::TakeTimeOut() {
  const bool acquiring = StatusIs(session_, text::StatusAcquiringData);
  if (acquiring || StatusIs(session_, text::StatusAcquiringPaused)) session_.StopRequested = false;
  return acquiring;
}

}  // namespace velk
