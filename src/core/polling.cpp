#include "core/polling.h"

#include <utility>

#include "base/dates.h"
#include "core/texts.h"
#include "core/under.h"
#include "instruments/link/networked_unit.h"
#include "instruments/reading/port_reader.h"
#include "instruments/table/protocols.h"
#include "instruments/texts.h"
#include "model/status.h"
#include "model/texts.h"

namespace velk {

namespace {

constexpr int kTickMs = 50;
constexpr int kPageMs = 500;
constexpr int kRestBeforeCloseMs = 500;
/// Behind a page that could not be fetched the operator is left alone for so long.
constexpr std::int64_t kRestAfterCancelMs = 10'000;

}  // namespace

Polling::Polling(Session& session, const Platform& platform, MainView& view, MainTimers& timers, Link& link,
                 Recorder& recorder, SampleRoad& road, std::unique_ptr<PageFetch> pages)
    : session_(session),
      platform_(platform),
      view_(view),
      timers_(timers),
      link_(link),
      recorder_(recorder),
      road_(road),
      pages_(std::move(pages)) {
  timers_.Timer1->SetInterval(kTickMs);
  timers_.Timer1->SetHandler([this] { Timer1_Timer(); });
  timers_.Timer4->SetInterval(kPageMs);
  timers_.Timer4->SetHandler([this] { Timer4_Timer(); });
  timers_.Timer5->SetInterval(kPageMs);
  timers_.Timer5->SetHandler([this] { Timer5_Timer(); });
  link_.MSComm1->onReadyRead = [this] { MSComm1_OnComm(); };
}

// --- The plain port, tick by tick ---

/// The port for the topmost tick, away from one that lies below a box.
TickPort Polling::TakePort() {
  return {*link_.MSComm1, portHolder_, ticks_.Depth() > 1 ? &platform_.dialogs : nullptr};
}

bool Polling::OpenPort() {
  if (!NeedsTicks(session_)) return true;
  link_.CloseODataCom();  // one owner of a device at a time
  if (ProtocolOf(session_).driver == Driver::BufferedLines) {
    lines_.Reset(session_.Terminator);
    return link_.OpenPlainPort(Handshake::XonXoff);
  }
  return link_.MSComm1->IsOpen() || link_.OpenPlainPort(static_cast<Handshake>(session_.Handshake));
}

void Polling::Timer1_Timer() {
  if (ticks_.IsUnderWay() || !timers_.Timer1->Enabled()) return;
  if (ProtocolOf(session_).driver == Driver::BufferedLines) return KeepListening();
  const StackedWork::Piece tick(ticks_);
  bool timedOut = false;
  road_.Sample(road_.ReportOf("Timer1_Timer"), [&](const Statements& run) { return Poll(run, timedOut); });
  if (timedOut) PauseAfterTimeOut();
}

Values Polling::Poll(const Statements& run, bool& timedOut) {
  if (!link_.KeepPlainPortOpen()) return Values::Left;  // the gap is a gap in the log too
  if (ProtocolOf(session_).learnsLineLength) return Learn(run, timedOut);
  TickPort port = TakePort();
  const std::string line = road_.LineDecoders().ReadPolled(port);
  if (session_.StopRequested) {
    timedOut = TakeTimeOut();
    return Values::Left;
  }
  // Silence is no sample, and one that a later sample has overtaken would be drawn backwards.
  if (line.empty() || !port.IsHeld()) return Values::Left;
  link_.PlainDataCame();
  return road_.TakeValues(run, line);
}

/// The length of formatted lines is learned on the plain port; then the line driver takes the device over.
Values Polling::Learn(const Statements& run, bool& timedOut) {
  TickPort port = TakePort();
  PortReader reader(port, platform_.clock, session_);
  const TimeLimit limit(platform_.clock, session_);
  const LineLength outcome = run([&] { return LearnLineLength(reader, session_, limit); });
  if (outcome == LineLength::Learned) {
    timers_.Timer1->SetEnabled(false);
    link_.ClosePlainPort();
    link_.SetODataCom();
  }
  if (outcome != LineLength::TimedOutCheckHardware && outcome != LineLength::TimedOutCheckSettings) return Values::Left;
  const MessageText text =
      outcome == LineLength::TimedOutCheckHardware ? text::TimeOutCheckHardware : text::TimeOutCheckSettings;
  platform_.dialogs.Message({text, text::TimeOutTitle, Buttons::Ok, BoxIcon::Critical});
  timedOut = TakeTimeOut();
  return Values::Left;
}

/// Whether it was a wait that has set StopRequested in a running job. A job that stands then loses the mark at once, or
/// the end of this sample would end the recording too; Stop has left the job already.
bool Polling::TakeTimeOut() {
  const bool acquiring = StatusIs(session_, text::StatusAcquiringData);
  if (acquiring || StatusIs(session_, text::StatusAcquiringPaused)) session_.StopRequested = false;
  return acquiring;
}

/// A time-out goes through Pause, so that a restart needs only Resume.
void Polling::PauseAfterTimeOut() {
  recorder_.Close();
  platform_.clock.WaitMilliseconds(kRestBeforeCloseMs);
  if (!StatusIs(session_, text::StatusAcquiringData)) return;
  link_.ClosePlainPort();
  timers_.Timer1->SetEnabled(false);
  view_.Repaint();
  view_.PressButton("Pause");
}

/// Lines that come ahead of Start and during a pause must not be logged later, as if they were present ones. The line
/// under way stays: the job may begin with it. Frames of the DAS 104 stand between CRs, so the CR ahead of it stays
/// too.
void Polling::DropLinesOutsideOfTheJob() {
  if (ticks_.Depth() > 0 || StatusIs(session_, text::StatusAcquiringData)) return;
  const std::size_t lastEnd = link_.MSComm1->Peek().find_last_of("\r\n");
  if (lastEnd == std::string::npos) return;
  link_.MSComm1->Read(ProtocolOf(session_).frameBeginsAtEnd ? lastEnd : lastEnd + 1);
}

// --- An instrument that sends its buffer ---

void Polling::MSComm1_OnComm() {
  const Driver driver = ProtocolOf(session_).driver;
  if (driver == Driver::PolledByTick) return DropLinesOutsideOfTheJob();
  if (driver != Driver::BufferedLines) return;
  if (analysing_) return lines_.Hold(*link_.MSComm1);  // a box may stand on the sample for as long as it likes
  const Under analysing(analysing_);
  while (lines_.Receive(*link_.MSComm1)) {
    link_.PlainDataCame();
    if (StatusIs(session_, text::StatusAcquiringData)) IntermittentDataAnalysis();
  }
}

/// A buffering instrument speaks when it likes. Its port is opened again where its device went away, and what was cut
/// off is forgotten.
void Polling::KeepListening() {
  if (link_.MSComm1->IsOpen() || analysing_) return;
  lines_.Reset(session_.Terminator);
  link_.KeepPlainPortOpen();
}

void Polling::IntermittentDataAnalysis() {
  const Report report = road_.ReportOf("IntermittentDataAnalysis");
  for (int i = 1; i <= lines_.BufferedLineCount; ++i) {
    road_.Sample(report, [&](const Statements& run) { return TakeBufferedLine(run, i); });
  }
}

Values Polling::TakeBufferedLine(const Statements& run, int number) {
  const std::string& line = lines_.BufferedLines[static_cast<std::size_t>(number)];
  const BufferedSample sample = run([&] { return ReadBufferedLine(session_, line); });
  if (!sample.accepted) return Values::Left;
  session_.SampleTime = sample.sampleTime;
  if (number == 1)
    session_.StartTime = session_.Times.LastPlotTime = session_.Times.GraphEndTime = session_.Times.GraphPageTime =
        session_.LastPageTime = CutToMinute(sample.sampleTime);
  return Values::TakenWithOwnTime;
}

// --- The page of a networked unit ---

void Polling::EnablePageTimer() {
  if (ended_) return;
  timers_.Timer4->SetEnabled(ProtocolOf(session_).pageTimer == PageTimer::Timer4);
  timers_.Timer5->SetEnabled(ProtocolOf(session_).pageTimer == PageTimer::Timer5);
}

bool Polling::CanFetchPage() {
  return RunProcedure({platform_.dialogs, "mnuAcquireConnect_Click"}, [&](const Statements& run) {
    run([&] {
      try {
        pages_->Fetch(UnitPageAddress(session_));
      } catch (const PageError& error) {
        throw RuntimeError(error.Number(), PageErrorText(error));
      }
    });
  });
}

void Polling::Timer4_Timer() {
  FetchAndPass("Timer4_Timer", [this] { return ReadTablePage(session_, *pages_); });
}

void Polling::Timer5_Timer() {
  FetchAndPass("Timer5_Timer", [this] { return ReadValuesPage(session_, *pages_, platform_.clock); });
}

bool Polling::PutOffBehindPage(std::function<void()> task) {
  if (!fetches_.IsUnderWay()) return false;
  behindPage_ = std::move(task);
  pages_->Cancel();
  return true;
}

void Polling::End() {
  behindPage_ = nullptr;
  ended_ = true;
  timers_.Timer1->SetEnabled(false);
  timers_.Timer4->SetEnabled(false);
  timers_.Timer5->SetEnabled(false);
  pages_->Cancel();
}

void Polling::FetchAndPass(const char* procedure, const std::function<std::optional<std::string>()>& read) {
  if (fetches_.IsUnderWay() || platform_.clock.Ticks() < nextFetch_) return;
  if (fetches_.Depth() > 0) pages_->GiveUp();  // a box stands on its wait
  ++passes_;
  PassPage(procedure, read);
  --passes_;
  if (const auto task = std::exchange(behindPage_, nullptr)) task();
}

/// Pages go on behind the box of a fault, since nobody may be there to answer it.
void Polling::PassPage(const char* procedure, const std::function<std::optional<std::string>()>& read) {
  const auto cameBefore = pagesCame_;
  std::optional<std::string> line;
  const bool done = RunProcedure({platform_.dialogs, procedure}, [&](const Statements& run) {
    line = run([&] {
      const StackedWork::Piece fetch(fetches_);
      return read();
    });
  });
  const bool faultStands = !done && pagesCame_ == cameBefore;
  if (faultStands) nextFetch_ = platform_.clock.Ticks() + kRestAfterCancelMs;
  if (!line) return;
  ++pagesCame_;
  Text1_ = *line;
  if (StatusIs(session_, text::StatusAcquiringData)) road_.ProcessLine(Text1_);
}

}  // namespace velk
