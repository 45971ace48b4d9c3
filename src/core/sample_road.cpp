#include "core/sample_road.h"

#include <utility>

#include "base/dates.h"
#include "base/scope.h"
#include "core/texts.h"
#include "instruments/reading/heard_lines.h"
#include "instruments/reading/time_check.h"
#include "instruments/table/protocols.h"
#include "log/channels.h"
#include "platform/loop/clock.h"

namespace velk {

namespace {

/// Lines that the guard swallows before one overruns a sample that does not come back.
constexpr int kSwallowed = 28;

MessageText ReasonOf(LineFault fault) {
  switch (fault) {
    case LineFault::None:
      break;
    case LineFault::CheckFailed:
      return text::LineFailsCheck;
    case LineFault::FieldMissing:
      return text::FieldMissing;
    case LineFault::FieldNotDecimal:
      return text::FieldNotDecimal;
    case LineFault::BeyondRange:
      return text::ValueBeyondRange;
    case LineFault::NoDate:
      return text::DateNotRead;
  }
  return {};
}

}  // namespace

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
    const LogRow row = Row();
    bool firstTry = true;
    run([&] { road_.log_.AppendRow(row, std::exchange(firstTry, false)); });
  }
  void AppendRowQuietly() {
    if (!std::exchange(rowIsDone_, true)) road_.log_.AppendRowQuietly(Row());
  }

 private:
  LogRow Row() const { return PresentRow(road_.session_, rowTime_.value_or(road_.platform_.clock.Now())); }

  SampleRoad& road_;
  std::optional<double> rowTime_;
  bool rowIsDone_ = false;
};

SampleRoad::SampleRoad(Session& session, const Platform& platform, MainView& view, SampleLog& log)
    : session_(session),
      platform_(platform),
      view_(view),
      log_(log),
      errors_(session, platform.clock),
      lineReport_(ReportOf("ProcessLine")),
      plotter_(session, view),
      decoders_(session, platform) {
}

void SampleRoad::ProcessLine(const std::string& line) {
  Sample(lineReport_, [&](const Statements& run) {
    std::string decoded = line;
    decoders_.DecodeDelivered(decoded);
    return TakeValues(run, decoded);
  });
}

Report SampleRoad::ReportOf(const char* procedure) {
  return {platform_.dialogs, procedure, text::AcquiringDataError, &errors_};
}

void SampleRoad::Sample(const Report& report, const std::function<Values(const Statements& run)>& take) {
  platform_.clock.Yield();
  if (session_.StopRequested) {
    if (depth_ == 0) log_.Finish();
    return;
  }
  if (!PassesGuard()) return;
  ++depth_;
  const OnLeaving done([this] { Leave(); });
  errors_.BeginSample();
  session_.SampleBoxes = &errors_;
  RunProcedure(report, [&](const Statements& run) { RunSample(run, take); });
}

bool SampleRoad::PassesGuard() {
  if (session_.SampleBusy && ++session_.SampleSkips <= kSwallowed) return false;
  session_.SampleSkips = 0;
  session_.SampleBusy = true;
  return true;
}

/// Samples may lie one on top of the other. The last one to leave ends the recording if Stop was pressed meanwhile.
void SampleRoad::Leave() {
  session_.SampleBusy = false;
  if (--depth_ > 0) return;
  session_.SampleBoxes = nullptr;
  if (session_.StopRequested) log_.Finish();
}

void SampleRoad::RunSample(const Statements& run, const std::function<Values(const Statements& run)>& take) {
  session_.SampleTime = platform_.clock.Now();
  session_.Data.channel = 0;
  const Values values = take(run);
  if (values != Values::Left) PlotAndRecord(run, values);
  errors_.EndSample();  // ahead of the screen, which names no more what has ended
  if (values == Values::Left) return;
  view_.ShowDue();
  platform_.clock.Yield();
}

void SampleRoad::PlotAndRecord(const Statements& run, Values values) {
  NoteLine(values);
  if (values != Values::Held && onValues) onValues();
  std::optional<double> rowTime;
  if (values == Values::TakenWithOwnTime) rowTime = session_.SampleTime;
  if (session_.Data.hasValues && DrawAndLog(run, values, rowTime)) {
    log_.FollowPage(run);
    plotter_.MoveTimeBase(session_.SamplingRate);
  }
  view_.SetPanel(4, FormatDate(session_.SampleTime, rowTime ? "dd-mmm-yyyy hh:mm:ss" : "hh:mm:ss"));
}

bool SampleRoad::DrawAndLog(const Statements& run, Values values, std::optional<double> rowTime) {
  RowAheadOfBoxes row(*this, rowTime);
  try {
    // A rejected line has only its time: values that stand have not moved.
    const bool significant = values == Values::Held ? IsDue(session_) : IsSignificant(run);
    if (!significant) return false;
    plotter_.Draw(run, {.samplingRate = session_.SamplingRate,
                        .watchesAlarms = true,
                        .movesScrollBar = session_.RecordToDB,
                        .catchesUp = true});
    plotter_.ReadPageStart();
    row.AppendRow(run);
    return true;
  } catch (const LeaveProcedure&) {
    row.AppendRowQuietly();  // where no box came, because one of an earlier sample stands already
    throw;
  }
}

void SampleRoad::NoteLine(Values values) {
  DataState& data = session_.Data;
  data.lastLine = platform_.clock.Ticks();
  if (values == Values::Held) return;
  data.hasValues = true;
  data.heldSince = 0;
  data.lastSample = data.lastLine;
  ++data.samples;
}

Values SampleRoad::TakeValues(const Statements& run, const std::string& line) {
  const LineFault fault = TakeLine(run, line);
  if (fault == LineFault::None) return Values::Taken;
  CountRejected(fault, line);
  if (session_.Data.hasValues && session_.Data.heldSince == 0) session_.Data.heldSince = session_.SampleTime;
  return Values::Held;
}

LineFault SampleRoad::TakeLine(const Statements& run, const std::string& line) {
  if (!IsAccepted(session_, line)) return LineFault::CheckFailed;
  return run([&] { return values_.Take(session_, line); });
}

/// The check of an own unit's line goes by the length of the line before; so does that of a unit's page.
bool SampleRoad::ShowsLengthOnly(LineFault fault, bool wrongCount) const {
  const Protocol& row = ProtocolOf(session_);
  const bool goesByLength = row.unit.has_value() || row.driver == Driver::NetworkedPage;
  const bool isFirst = session_.Data.samples == 0 && session_.Data.rejected == 0;
  return goesByLength && isFirst && fault == LineFault::CheckFailed && !wrongCount;
}

void SampleRoad::CountRejected(LineFault fault, std::string_view line) {
  DataState& data = session_.Data;
  data.lastLine = platform_.clock.Ticks();
  const int sent = CountDelimiters(line, session_.Delimiter);
  const int expected = session_.NumberOfParameters;
  const bool dependsOnCount = fault == LineFault::CheckFailed || fault == LineFault::FieldMissing;
  const bool wrongCount = dependsOnCount && sent > 0 && sent != expected;
  if (ShowsLengthOnly(fault, wrongCount)) ++data.firstLines;
  ++data.rejected;
  data.lastReason = wrongCount ? ValueCountFault(sent, expected) : ReasonOf(fault);
}

bool SampleRoad::IsSignificant(const Statements& run) {
  const bool moved = run([&] {
    bool any = false;
    for (int i = 1; i <= session_.NumberOfParameters; ++i) {
      if (!session_.CurrentParameters[i].GraphVisible) continue;
      session_.Data.channel = i;
      if (HasMoved(session_, i)) any = true;
    }
    return any;
  });
  session_.Data.channel = 0;
  return moved || IsDue(session_);
}

}  // namespace velk
