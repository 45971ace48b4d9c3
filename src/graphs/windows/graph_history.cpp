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
      pageWaits_(platform.clock.MakeTimer()) {
  pageWaits_->SetHandler([this] { ShowWhatIsAsked(); });
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

/// A mouse asks for more pages than can be drawn, and the rows of a job come first: the last place that it asked for
/// waits until twice as long has gone by as the page before has taken.
void GraphHistory::VScroll1_Change() {
  if (scrollGuard_) return;
  const std::int64_t pause = nextPage_ - platform_.clock.Ticks();
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
    nextPage_ = end + std::max(kLeastPauseMs, 2 * (end - begin));
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

/// Events may run behind a page whose last row stands at its end. A bar that is dragged meanwhile draws its pages on
/// top of this one, and they don't do the same: however fast it goes, no more than two lie on the stack.
void GraphHistory::PlotScrolledGraph() {
  if (!run_("PlotScrolledGraph", [&] { StepBack(); }) || !DrawPage() || yielding_) return;
  yielding_ = true;
  const OnLeaving left([this] { yielding_ = false; });
  run_("PlotScrolledGraph", [&] { platform_.clock.Yield(); });
}

/// A segment that can't be drawn costs its own curve only.
void GraphHistory::PlotLeftOut() {
  while (const int slot = page_.TakeLeftOut())
    run_("PlotValue2", [&] {
      if (OpenLog* log = Log()) page_.PlotValue2(log->Reader(), slot);
    });
}

bool GraphHistory::DrawPage() {
  bool reachesEnd = false;
  pageShownStart_ = scrollStart_;
  run_("Picture2_Update2", [&] { page_.Picture2_Update2(scrollStart_); });
  if (OpenLog* log = Log()) {
    run_("PlotOldData", [&] { reachesEnd = page_.PlotOldData(log->Reader(), scrollStart_, scrollEnd_); });
    PlotLeftOut();
    run_("InsertComments", [&] {
      const auto comments = log->Comments(CommentsOfPage(page_.Chart().TimeOrigin(), scrollEnd_));
      InsertComments(view_.Surfaces().Pic2, page_.Chart(), comments, scrollEnd_);
    });
  }
  view_.ScheduleRefresh();
  return reachesEnd;
}

void GraphHistory::ReturnToPresent() {
  if (liveView_) return;
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
