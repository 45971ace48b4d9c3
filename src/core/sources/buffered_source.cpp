#include "core/sources/buffered_source.h"

#include "base/dates.h"
#include "base/scope.h"
#include "core/sources/port_check.h"
#include "model/status.h"
#include "model/texts.h"

namespace velk {

BufferedSource::BufferedSource(Session& session, const Platform& platform, MainTimers& timers, Link& link,
                               SampleRoad& road)
    : session_(session),
      platform_(platform),
      timer_(*timers.Timer1),
      link_(link),
      road_(road),
      report_(road.ReportOf("IntermittentDataAnalysis")) {
}

void BufferedSource::Check() {
  lastTime_.reset();
  CheckPort(session_, platform_, link_);
}

bool BufferedSource::Open() {
  link_.CloseODataCom();  // one owner of a device at a time
  lines_.Reset(session_.Terminator);
  return link_.OpenPlainPort(Handshake::XonXoff);
}

void BufferedSource::End() {
  Pause();
  lastTime_.reset();
  link_.ClosePlainPort();
}

/// A buffering instrument speaks when it likes. Its port is opened again where its device went away, behind a box that
/// stands on a line too, and what was cut off is forgotten.
void BufferedSource::Timer1_Timer() {
  if (link_.MSComm1->IsOpen()) return;
  lines_.DropUnfinished();
  link_.KeepPlainPortOpen();
}

void BufferedSource::MSComm1_OnComm() {
  if (analysing_) return lines_.Hold(*link_.MSComm1);  // a box may stand on the sample for as long as it likes
  analysing_ = true;
  const OnLeaving done([this] { analysing_ = false; });
  while (lines_.Receive(*link_.MSComm1)) {
    link_.PlainDataCame();
    if (StatusIs(session_, text::StatusAcquiringData)) IntermittentDataAnalysis();
  }
}

void BufferedSource::IntermittentDataAnalysis() {
  for (int i = 1; i <= lines_.BufferedLineCount; ++i)
    road_.Sample(report_, [&](const Statements& run) { return Take(run, i); });
}

Values BufferedSource::Take(const Statements& run, int number) {
  const std::string& line = lines_.BufferedLines[static_cast<std::size_t>(number)];
  const BufferedSample sample = run([&] { return ReadBufferedLine(session_, line); });
  if (!sample.IsAccepted()) {
    road_.CountRejected(sample.fault);
    return Values::Left;
  }
  session_.SampleTime = sample.sampleTime;
  const bool beginsAxis = !lastTime_ || sample.sampleTime < *lastTime_;
  lastTime_ = sample.sampleTime;
  if (beginsAxis)
    session_.StartTime = session_.Times.LastPlotTime = session_.Times.GraphEndTime = session_.Times.GraphPageTime =
        session_.LastPageTime = CutToMinute(sample.sampleTime);
  return Values::TakenWithOwnTime;
}

}  // namespace velk
