#include <QMouseEvent>
#include <QScrollBar>
#include <algorithm>
#include <cmath>

#include "base/colour.h"
#include "base/dates.h"
#include "base/errors.h"
#include "base/scope.h"
#include "base/text_qt.h"
#include "graphs/chart_comments.h"
#include "graphs/read_value.h"
#include "graphs/texts.h"
#include "graphs/windows/frm_ext_graph_form.h"
#include "model/help_topics.h"
#include "model/parameter_questions.h"
#include "platform/drawing/units.h"

namespace velk {

namespace {

constexpr double kDaySeconds = 86400;
constexpr double kDayMinutes = 1440;
constexpr int kLivePageMinutes = 5;
constexpr double kNoteBesideAxis = 150;  ///< twips
constexpr int kDragPauseMs = 100;
constexpr int kAroundComment = 8;  ///< pixels
constexpr int kNarrowestComment = 240;

bool StandsEarlier(const ForeignRow& a, const ForeignRow& b) {
  return a.time < b.time;
}

}  // namespace

// --- The bar: minutes since the window was opened ---

void frmExtGraphForm::UpdateScroll(double upTo) {
  QScrollBar& bar = view_->HistoryBar();
  const bool before = std::exchange(scrollGuard_, true);
  const OnLeaving left([&] { scrollGuard_ = before; });
  const long long minutes = MinutesBetween(plot_->FormStart(), upTo);
  bar.setMinimum(0);
  bar.setEnabled(minutes >= kLivePageMinutes);
  if (minutes < kLivePageMinutes) return;
  bar.setMaximum(ToInt32(static_cast<double>(minutes - kLivePageMinutes)));
  if (liveView_) bar.setValue(bar.maximum());
}

void frmExtGraphForm::MoveBarToEnd() {
  const bool before = std::exchange(scrollGuard_, true);
  view_->HistoryBar().setValue(view_->HistoryBar().maximum());
  scrollGuard_ = before;
}

/// While the bar is dragged, a page is read once it rests for a moment.
void frmExtGraphForm::VScroll1_Change() {
  if (scrollGuard_) return;
  pageWaits_->SetEnabled(false);
  if (!view_->HistoryBar().isSliderDown()) return PlotScrolledGraph();
  pageWaits_->SetInterval(kDragPauseMs);
  pageWaits_->SetEnabled(true);
}

void frmExtGraphForm::PlotScrolledGraph() {
  const QScrollBar& bar = view_->HistoryBar();
  if (bar.value() >= bar.maximum()) return ReturnToPresent();
  page_ = {};
  page_.start = plot_->FormStart() + bar.value() / kDayMinutes;
  page_.end = page_.start + sampleSeconds_ * measures_.pixelslength * times_.BlockPairsPerPage * 2 / kDaySeconds;
  if (liveView_) view_->HideChart();
  liveView_ = false;
  BeginPastRead(StartAt(page_.start));
  DrawPast();
}

// --- A page of the past: its frame at once, its rows as they come ---

void frmExtGraphForm::BeginPastRead(const ForeignStart& start) {
  try {
    importReader_.Initialize(live_, access_.tools);
    page_.read = importReader_.ReadData(start);
    pieces_->SetEnabled(true);
  } catch (const std::exception&) {
    page_.note = text::UnableToReadData;
  }
}

void frmExtGraphForm::ReadPastPiece() {
  std::vector<ForeignRow> rows;
  bool goesOn = false;
  try {
    goesOn = page_.read->Read(rows);
  } catch (const std::exception&) {
    page_.read.reset();
    page_.note = text::UnableToReadData;
    return DrawPast();
  }
  // Of the rows behind the page only the first is drawn to.
  const ForeignRow* behind = nullptr;
  for (const ForeignRow& row : rows)
    if (row.time <= page_.end)
      page_.rows.push_back(row);
    else if (!behind || row.time < behind->time)
      behind = &row;
  if (behind) page_.rows.push_back(*behind);
  if (!goesOn) EndPastRead();
}

void frmExtGraphForm::EndPastRead() {
  const std::optional<double> later = page_.read->LaterDay();
  page_.read.reset();
  std::stable_sort(page_.rows.begin(), page_.rows.end(), StandsEarlier);
  const bool isFull = !page_.rows.empty() && page_.rows.back().time > page_.end;
  if (later && *later <= page_.end && !isFull) return BeginPastRead({*later, 0});
  const auto first = std::find_if(page_.rows.begin(), page_.rows.end(),
                                  [this](const ForeignRow& row) { return row.time > page_.end; });
  if (first == page_.rows.begin()) page_.note = text::NoDataToPlot;
  if (first != page_.rows.end()) page_.rows.erase(first + 1, page_.rows.end());
  DrawPast();
}

void frmExtGraphForm::DrawPast() {
  pastTimes_.BlockPairsPerPage = times_.BlockPairsPerPage;
  past_->SetTimeOrigin(CutToMinute(page_.start));
  Operation("Picture2_Update2", [&] { past_->Picture2_Update2(page_.start); });
  if (!page_.note.IsEmpty())
    view_->Surfaces().Pic2.Print(kLeftMargin + kNoteBesideAxis, kNoteBesideAxis,
                                 access_.platform.language.In(page_.note), colour::Black);
  if (!page_.rows.empty() && page_.note.IsEmpty()) {
    past_->SetTimeOrigin(CutToMinute(page_.rows.front().time));
    PlotRows(*past_, curves_, page_.rows);
  }
  InsertCommentsOf(*past_, past_->TimeOrigin(), page_.end);
  view_->ScheduleRefresh();
}

void frmExtGraphForm::ReturnToPresent() {
  if (liveView_) return;
  page_ = {};
  liveView_ = true;
  if (!view_->ShowChart()) RepaintLivePage();
  MoveBarToEnd();
  view_->ScheduleRefresh();
}

void frmExtGraphForm::Repaint() {
  if (liveView_)
    RepaintLivePage();
  else
    DrawPast();
}

/// From the rows that are kept: nothing is read for another size of the window.
void frmExtGraphForm::RepaintLivePage() {
  StripChart& chart = view_->Chart();
  Operation("Form_Resize", [&] { chart.RedrawFrame(); });
  past_->SetTimeOrigin(chart.TimeOrigin());
  PlotRows(*past_, curves_, {plot_->Rows().begin(), plot_->Rows().end()});
  InsertCommentsOf(chart, times_.GraphPageTime, plot_->LastRead());
  view_->ScheduleRefresh();
}

void frmExtGraphForm::InsertCommentsOf(StripChart& chart, double from, double to) {
  if (!access_.log.IsOpen()) return;
  Operation("InsertComments",
            [&] { InsertComments(chart.PlotTarget(), chart, access_.log.Comments(CommentsOfPage(from, to)), to); });
}

// --- Read Value ---

void frmExtGraphForm::ReadValue() {
  const Stay stay(*this);
  if (readSlot_ != 0) return EndReadValue();
  const int count = curves_.Count();
  int slot = std::min(count, 1);
  if (count > 1) {
    std::vector<std::string> names;
    for (int i = 1; i <= count; ++i) names.push_back(curves_.Curve(i).name);
    slot =
        AskWhich(access_.platform.dialogs, text::ReadValueTitle, text::SelectParameterToRead, names, topic::StripChart)
            .value_or(0);
  }
  if (slot == 0 || ended_) return;
  readSlot_ = slot;
  toolbar_->SetPressed("ReadValue", true);
  view_->PlotArea().setMouseTracking(true);
  view_->PlotArea().setCursor(Qt::CrossCursor);
}

void frmExtGraphForm::EndReadValue() {
  readSlot_ = 0;
  toolbar_->SetPressed("ReadValue", false);
  view_->PlotArea().setMouseTracking(false);
  view_->PlotArea().unsetCursor();
  setWindowTitle(ToQt(access_.platform.language.In(text::ExternalTitle)));
}

bool frmExtGraphForm::eventFilter(QObject* watched, QEvent* event) {
  if (readSlot_ != 0 && event->type() == QEvent::MouseMove)
    setWindowTitle(ToQt(TextAt(view_->PlotTwips(static_cast<const QMouseEvent*>(event)->position().y()))));
  return QWidget::eventFilter(watched, event);
}

/// Of the rows that stand on the page. Empty where there is none at that place.
std::string frmExtGraphForm::TextAt(double y) const {
  const double start = liveView_ ? view_->Chart().TimeOrigin() : page_.start;
  if (!liveView_ && !page_.note.IsEmpty()) return access_.platform.language.In(page_.note);
  const double from = start + std::floor(y / measures_.pixeldivide) * times_.GraphTimeStep;
  // Rows stand at whole seconds.
  constexpr double kHalfSecond = 0.5 / kDaySeconds;
  const auto at = [&](const auto& rows) -> std::string {
    for (const ForeignRow& row : rows) {
      if (row.time < from - kHalfSecond || row.time > from + times_.GraphTimeStep - kHalfSecond) continue;
      const double value = row.values[static_cast<std::size_t>(readSlot_) - 1];
      if (std::isnan(value)) return {};
      return ReadValueCaption(curves_.Curve(readSlot_), {row.time, static_cast<float>(value)},
                              access_.platform.language);
    }
    return {};
  };
  return liveView_ ? at(plot_->Rows()) : at(page_.rows);
}

// --- Comments, printing ---

void frmExtGraphForm::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_F7) return RunKey("Form_KeyUp", &frmExtGraphForm::AddComment);
  if (event->key() == Qt::Key_Escape && readSlot_ != 0) return EndReadValue();
  QWidget::keyPressEvent(event);
}

void frmExtGraphForm::AddComment() {
  if (!access_.log.IsOpen()) return Tell(text::FileNameFirst);
  const QWidget& plot = view_->PlotArea();
  const QPoint corner = plot.mapTo(this, QPoint(static_cast<int>(kLeftMargin / kTwipsPerPixel), 0));
  const int right = std::min(plot.mapTo(this, QPoint(plot.width(), 0)).x(), width()) - kAroundComment;
  const int wide = std::max(right - corner.x() - kAroundComment, kNarrowestComment);
  commentBox_->Begin(ToQt(access_.platform.language.In(text::CommentHint)),
                     QRect(std::max(right - wide, 0), corner.y() + kAroundComment, wide, 0));
}

void frmExtGraphForm::AddTheComment(const std::string& comment) {
  if (comment.empty()) return;
  if (!Operation("AddTheComment", [&] { access_.log.AddSummaryRow(comment); })) return;
  Operation("AddTheComment", [&] { PrintTheComment(view_->Chart(), comment, access_.platform.clock.Now()); });
  view_->ScheduleRefresh();
}

void frmExtGraphForm::Print() {
  const Stay stay(*this);
  if (access_.session.LogFileInUse.empty()) return Tell(text::FileNameFirst);
  access_.print(live_);
}

}  // namespace velk
