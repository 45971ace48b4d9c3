#include "graphs/windows/graph_history.h"

#include <algorithm>
#include <utility>

#include "base/dates.h"
#include "base/scope.h"
#include "graphs/chart_comments.h"
#include "graphs/scroll_range.h"
#include "model/status.h"
#include "model/texts.h"
#include "platform/loop/clock.h"

namespace velk {

namespace {

constexpr double kSecondsPerDay = 86400;
constexpr double kMinutesPerDay = 1440;
/// Between two pages of a bar that is dragged: as often as the screen follows.
constexpr std::int64_t kLeastPauseMs = 34;

}  // namespace

GraphHistory::GraphHistory(const Session& session, const Platform& platform, const ParameterCurves& curves,
                           ChartView& view, OpenLog* log, Run run)
    : session_(session),
      platform_(platform),
      view_(view),
      log_(log),
      run_(std::move(run)),
      page_(session, curves, MeasuresOf(session), platform.language, view.Surfaces()),
      pageWaits_(platform.clock.MakeTimer()),
      pageGoesOn_(platform.clock.MakeTimer()) {
  pageWaits_->SetHandler([this] {
    pageWaits_->SetEnabled(false);
    ShowOrWait();
  });
  pageGoesOn_->SetInterval(1);
  pageGoesOn_->SetHandler([this] { DrawNextRows(); });
  QObject::connect(&view_.HistoryBar(), &QScrollBar::valueChanged, &view_, [this] { VScroll1_Change(); });
}

double GraphHistory::PageStart() const {
  return liveView_ ? view_.Chart().TimeOrigin() : pageShownStart_;
}

bool GraphHistory::JobRuns() const {
  return session_.AcquireStarted || StatusIs(session_, text::StatusPlayingBack) ||
         StatusIs(session_, text::StatusPlayingBackPaused);
}

void GraphHistory::UpdateScroll(double upTo) {
  run_("UpdateScroll", [&] {
    const ScrollRange range = ScrollRangeUpTo(session_, upTo);
    QScrollBar& bar = view_.HistoryBar();
    const bool guardBefore = std::exchange(scrollGuard_, true);
    const OnLeaving left([&] { scrollGuard_ = guardBefore; });
    bar.setMinimum(0);
    bar.setEnabled(range.hasHistory);
    if (!range.hasHistory) return;
    bar.setMaximum(range.maximum);
    if (liveView_) bar.setValue(range.maximum);
  });
}

void GraphHistory::MoveBarToEnd() {
  const bool guardBefore = std::exchange(scrollGuard_, true);
  view_.HistoryBar().setValue(view_.HistoryBar().maximum());
  scrollGuard_ = guardBefore;
}

void GraphHistory::VScroll1_Change() {
  if (!scrollGuard_) ShowOrWait();
}

/// A mouse asks for more pages than can be drawn, and the rows of a job come first: the last place that it asked for
/// waits until the page before is whole, and twice as long as that has taken has gone by.
void GraphHistory::ShowOrWait() {
  const std::int64_t pause = page_.IsWhole() ? nextPage_ - platform_.clock.Ticks() : kLeastPauseMs;
  if (!view_.HistoryBar().isSliderDown() || pause <= 0) return ShowWhatIsAsked();
  if (pageWaits_->Enabled()) return;
  pageWaits_->SetInterval(static_cast<int>(pause));
  pageWaits_->SetEnabled(true);
}

void GraphHistory::ShowWhatIsAsked() {
  pageWaits_->SetEnabled(false);
  const std::int64_t begin = platform_.clock.Ticks();
  const OnLeaving shown([&] {
    const std::int64_t end = platform_.clock.Ticks();
    pageTook_ = end - begin;
    nextPage_ = end + std::max(kLeastPauseMs, 2 * pageTook_);
  });
  const QScrollBar& bar = view_.HistoryBar();
  if (bar.value() >= bar.maximum()) return ReturnToPresent();
  if (Log() == nullptr) return;
  const bool isSet = run_("VScroll1_Change", [&] {
    const int minutes = bar.value();
    scrollStart_ = session_.StartTime;
    if (minutes >= 1) scrollStart_ = CutToMinute(session_.StartTime) + minutes / kMinutesPerDay;
    const double rows = session_.pixelslength * session_.Times.BlockPairsPerPage * 2;
    scrollEnd_ = scrollStart_ + session_.SampleSeconds * rows / kSecondsPerDay;
  });
  if (isSet) PlotScrolledGraph();
}

void GraphHistory::StepBack() {
  if (liveView_) view_.HideChart();
  liveView_ = false;
}

void GraphHistory::PlotScrolledGraph() {
  if (!run_("PlotScrolledGraph", [&] { StepBack(); })) return;
  yieldsBehind_ = true;
  DrawPage();
}

/// A segment that can't be drawn costs its own curve only.
void GraphHistory::PlotLeftOut() {
  while (const int slot = page_.TakeLeftOut())
    run_("PlotValue2", [&] {
      if (OpenLog* log = Log()) page_.PlotValue2(log->Reader(), slot);
    });
}

void GraphHistory::DrawPage() {
  LeavePage();
  pageShownStart_ = scrollStart_;
  run_("Picture2_Update2", [&] { page_.Picture2_Update2(scrollStart_); });
  if (OpenLog* log = Log()) {
    pageFile_ = log->Path();
    if (!run_("PlotOldData", [&] { page_.PlotOldData(log->Reader(), scrollStart_, scrollEnd_); })) page_.Leave();
  }
  if (page_.IsWhole()) return EndPage();
  view_.ScheduleRefresh();
  pageGoesOn_->SetEnabled(true);
}

/// Samples are taken between these.
void GraphHistory::DrawNextRows() {
  pageGoesOn_->SetEnabled(false);
  OpenLog* log = Log();
  if (log == nullptr || log->Path() != pageFile_) return LeavePage();
  const std::int64_t begin = platform_.clock.Ticks();
  if (!run_("PlotOldData", [&] { page_.GoOn(log->Reader()); })) page_.Leave();
  const std::int64_t end = platform_.clock.Ticks();
  pageTook_ += end - begin;
  if (page_.IsWhole()) {
    nextPage_ = end + std::max(kLeastPauseMs, 2 * pageTook_);
    return EndPage();
  }
  view_.ScheduleRefresh();
  pageGoesOn_->SetEnabled(true);
}

void GraphHistory::LeavePage() {
  pageGoesOn_->SetEnabled(false);
  page_.Leave();
}

/// Events may run behind a page whose last row stands at its end. A bar that is dragged meanwhile draws its pages on
/// top of this one, and they don't do the same: however fast it goes, no more than two lie on the stack.
void GraphHistory::EndPage() {
  if (OpenLog* log = Log()) {
    PlotLeftOut();
    run_("InsertComments", [&] {
      const auto comments = log->Comments(CommentsOfPage(page_.Chart().TimeOrigin(), scrollEnd_));
      InsertComments(view_.Surfaces().Pic2, page_.Chart(), comments, scrollEnd_);
    });
  }
  view_.ScheduleRefresh();
  if (!std::exchange(yieldsBehind_, false) || !page_.ReachesEnd() || yielding_) return;
  yielding_ = true;
  const OnLeaving left([this] { yielding_ = false; });
  run_("PlotScrolledGraph", [&] { platform_.clock.Yield(); });
}

void GraphHistory::ReturnToPresent() {
  if (liveView_) return;
  LeavePage();
  bool isWhole = false;
  if (!run_("PlotScrolledGraph", [&] { isWhole = view_.ShowChart(); })) return;
  liveView_ = true;
  if (!isWhole && JobRuns()) RepaintLivePage();
  MoveBarToEnd();
}

void GraphHistory::Repaint() {
  if (!liveView_ && Log() != nullptr)
    DrawPage();
  else if (liveView_ && JobRuns())
    RepaintLivePage();
}

void GraphHistory::RepaintLivePage() {
  StripChart& chart = view_.Chart();
  OpenLog* log = Log();
  // Without a log nothing can be drawn again: a picture that was scaled along stays.
  if (log == nullptr && view_.FillsWindow()) return;
  run_("Form_Resize", [&] { chart.RedrawFrame(); });
  const double from = session_.Times.GraphPageTime;
  if (log == nullptr || from == 0 || chart.TimeOrigin() == 0) return;
  run_("PlotOldData", [&] { page_.ReplotFromLog(log->Reader(), from, session_.SampleTime, chart.TimeOrigin()); });
  PlotLeftOut();
  run_("InsertComments",
       [&] { InsertComments(view_.Surfaces().Pic2, chart, log->Comments(CommentsFrom(from)), session_.SampleTime); });
  view_.ScheduleRefresh();
}

void GraphHistory::InsertCommentsOfBlock(double blockStart, double blockEnd) {
  OpenLog* log = Log();
  if (log == nullptr) return;
  run_("InsertComments", [&] {
    StripChart& chart = view_.Chart();
    InsertComments(chart.PlotTarget(), chart, log->Comments(CommentsOfPage(blockStart, blockEnd)), blockEnd);
  });
}

}  // namespace velk
