#include "core/sample_road.h"

#include <utility>

#include "base/dates.h"
#include "core/alarms.h"
#include "core/texts.h"
#include "formula/additional_parameters.h"
#include "platform/loop/clock.h"

namespace velk {

namespace {

/// Lines that the guard swallows before one overruns a sample that does not come back.
constexpr int kSwallowed = 28;

}  // namespace

/// Counts the samples that are under way, one on top of the other. The last one to leave ends the recording if Stop was
/// pressed meanwhile.
class SampleRoad::Running {
 public:
  explicit Running(SampleRoad& road) : road_(road) { ++road_.depth_; }
  ~Running() {
    road_.session_.SampleBusy = false;
    if (--road_.depth_ == 0 && road_.session_.StopRequested) road_.recorder_.Finish();
  }

 private:
  SampleRoad& road_;
};

/// While a sample is drawn and logged, a box costs no row: the row goes to the log ahead of the box, and the guard lets
/// later samples pass while the box stands.
class SampleRoad::RowAheadOfBoxes {
 public:
  RowAheadOfBoxes(SampleRoad& road, std::optional<double> rowTime) : road_(road), rowTime_(rowTime) {
    road_.platform_.dialogs.beforeBox = [this] {
      AppendRowQuietly();
      road_.session_.SampleBusy = false;
    };
  }
  ~RowAheadOfBoxes() { road_.platform_.dialogs.beforeBox = nullptr; }

  void AppendRow(const Statements& run) {
    if (std::exchange(rowIsDone_, true)) return;
    bool firstTry = true;
    run([&] { road_.recorder_.AppendRow(std::exchange(firstTry, false), rowTime_); });
  }
  void AppendRowQuietly() {
    if (!std::exchange(rowIsDone_, true)) road_.recorder_.AppendRowQuietly(rowTime_);
  }

 private:
  SampleRoad& road_;
  std::optional<double> rowTime_;
  bool rowIsDone_ = false;
};

SampleRoad::SampleRoad(Session& session, const Platform& platform, MainView& view, Recorder& recorder)
    : session_(session), platform_(platform), view_(view), recorder_(recorder), decoders_(session, platform) {
}

void SampleRoad::ProcessLine(const std::string& line) {
  Sample(ReportOf("ProcessLine"), [&](const Statements& run) {
    std::string decoded = line;
    decoders_.DecodeDelivered(decoded);
    return TakeValues(run, decoded);
  });
}

Report SampleRoad::ReportOf(const char* procedure) const {
  return {platform_.dialogs, procedure, text::AcquiringDataError};
}

void SampleRoad::Sample(const Report& report, const std::function<Values(const Statements& run)>& take) {
  platform_.clock.Yield();
  if (session_.StopRequested) {
    if (depth_ == 0) recorder_.Finish();
    return;
  }
  if (!PassesGuard()) return;
  const Running running(*this);
  RunProcedure(report, [&](const Statements& run) { RunSample(run, take); });
}

bool SampleRoad::PassesGuard() {
  if (session_.SampleBusy && ++session_.SampleSkips <= kSwallowed) return false;
  session_.SampleSkips = 0;
  session_.SampleBusy = true;
  return true;
}

void SampleRoad::RunSample(const Statements& run, const std::function<Values(const Statements& run)>& take) {
  session_.SampleTime = platform_.clock.Now();
  const Values values = take(run);
  if (values == Values::Left) return;
  if (values != Values::Held) hasValues_ = true;
  std::optional<double> rowTime;
  if (values == Values::TakenWithOwnTime) rowTime = session_.SampleTime;
  if (hasValues_ && DrawAndLog(run, values, rowTime)) {
    recorder_.FollowPage(run);
    MovePlotTime();
  }
  view_.SetPanel(4, FormatDate(session_.SampleTime, rowTime ? "dd-mmm-yyyy hh:mm:ss" : "hh:mm:ss"));
  platform_.clock.Yield();
}

bool SampleRoad::DrawAndLog(const Statements& run, Values values, std::optional<double> rowTime) {
  RowAheadOfBoxes row(*this, rowTime);
  try {
    // A rejected line has only its time: values that stand have not moved.
    const bool significant = values == Values::Held ? IsDue(session_) : IsSignificant(run);
    if (!significant) return false;
    Draw(run);
    ReadPageStart();
    HideAlarmsIfNone(session_, view_);
    row.AppendRow(run);
    return true;
  } catch (const LeaveProcedure&) {
    row.AppendRowQuietly();  // where no box came, because one of an earlier sample stands already
    throw;
  }
}

Values SampleRoad::TakeValues(const Statements& run, const std::string& line) {
  if (!IsAccepted(session_, line)) return Values::Held;
  return run([&] { return values_.Take(session_, line); }) ? Values::Taken : Values::Held;
}

bool SampleRoad::IsSignificant(const Statements& run) {
  bool moved = false;
  for (int i = 1; i <= session_.NumberOfParameters; ++i)
    if (session_.CurrentParameters[i].GraphVisible)
      if (run([&] { return HasMoved(session_, i); })) moved = true;
  return moved || IsDue(session_);
}

void SampleRoad::Draw(const Statements& run) {
  for (int i = 1; i <= session_.TotalParameters; ++i) {
    if (!session_.CurrentParameters[i].GraphVisible) continue;
    if (i > session_.NumberOfParameters) Compute(run, i);
    DrawParameter(i);
  }
  session_.FirstPoint = false;
}

void SampleRoad::Compute(const Statements& run, int parameter) {
  const int index = parameter - session_.NumberOfParameters;
  if (index > session_.NumberOfFormulae || session_.Formula[index] == kLinkedParameter) return;
  run([&] { session_.CurrentValue[parameter] = ValueOf(session_, index); });
}

void SampleRoad::DrawParameter(int parameter) {
  const Parameter& curve = session_.CurrentParameters[parameter];
  const int graph = curve.FormIndex;
  GraphWindow* window = graph >= 1 && graph <= kMaxParameters ? session_.GraphForms[graph] : nullptr;

  if (window && session_.GraphSlots[1][graph] == parameter && session_.SampleTime >= session_.Times.GraphEndTime) {
    const double blockEnd = session_.Times.GraphEndTime + session_.SamplingRate * session_.pixelslength;
    window->Picture2_Update(session_.Times.GraphEndTime, blockEnd);
    if (session_.RecordToDB) window->UpdateScroll(blockEnd);
  }
  if (window) window->WriteValuesToLabels(parameter, session_.CurrentValue[parameter]);
  if (session_.FirstPoint) {
    session_.Times.LastPlotTime = session_.SampleTime;
    session_.PreviousValue[parameter] = session_.CurrentValue[parameter];
  }
  if (window)
    window->PlotValue(session_.Times.LastPlotTime, session_.SampleTime, session_.PreviousValue[parameter],
                      session_.CurrentValue[parameter], curve.min, curve.max, curve.color, curve.Wrapping);
  TestAlarms(session_, view_, parameter);
  session_.PreviousValue[parameter] = session_.CurrentValue[parameter];
}

void SampleRoad::ReadPageStart() {
  for (int k = 1; k <= session_.GraphCount; ++k) {
    const GraphWindow* window = session_.GraphForms[session_.GraphList[k]];
    if (!window) continue;
    if (window->TimeOrigin() != 0) session_.Times.GraphPageTime = window->TimeOrigin();
    return;
  }
}

void SampleRoad::MovePlotTime() {
  if (session_.SampleTime >= session_.Times.GraphEndTime)
    session_.Times.GraphEndTime += session_.SamplingRate * session_.pixelslength;
  session_.Times.LastPlotTime = session_.SampleTime;
}

}  // namespace velk
