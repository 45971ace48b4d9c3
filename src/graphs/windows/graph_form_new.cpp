#include "graphs/windows/graph_form_new.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QMdiSubWindow>
#include <algorithm>
#include <limits>

#include "graphs/windows/chart_fonts.h"
#include "i18n/windows/translate_form.h"
#include "model/graph_map.h"
#include "model/help_topics.h"
#include "platform/dialogs/procedure.h"

namespace velk {

namespace {

constexpr int kResizeSettled = 500;  ///< ms

}  // namespace

/// Runs one statement that has changed nothing when it fails. A success costs nothing: the box, and what it needs, come
/// with the failure. Gives whether it succeeded.
template <class Statement>
bool GraphFormNew::Operation(const char* procedure, Statement&& statement, const OperatorText& title) {
  try {
    statement();
    return true;
  } catch (const std::exception&) {  // runs again below, where its text is shown
  }
  const Stay stay(*this);
  BoxPause* const pause = session_.Data.channel > 0 ? session_.SampleBoxes : nullptr;
  return RunProcedure({platform_.dialogs, procedure, title, pause}, [&](auto run) { run(statement); });
}

bool GraphFormNew::RunStatement(const char* procedure, const std::function<void()>& statement,
                                const OperatorText& title) {
  const Stay stay(*this);
  return Operation(procedure, statement, title);
}

/// An operation whose result the screen follows.
template <class Statement>
void GraphFormNew::Draw(const char* procedure, Statement&& statement) {
  Operation(procedure, statement);
  view_->ScheduleRefresh();
}

GraphFormNew::GraphFormNew(Session& session, Platform& platform, const Translation& translation, int graphNumber,
                           const ScreenRefresh& refresh, std::function<void()> onHeaderChanged, OpenLog* log)
    : session_(session),
      platform_(platform),
      translation_(translation),
      formIndex_(graphNumber),
      onHeaderChanged_(std::move(onHeaderChanged)),
      curves_(session, graphNumber),
      view_(std::make_unique<ChartView>(session.Times, MeasuresOf(session), curves_,
                                        ChartFont(session.CurrentFont, session.intFontSize), platform.language, refresh,
                                        this)),
      toolbar_(new GraphToolbar(this)),
      commentBox_(new CommentBox(this)),
      log_(log),
      storeHeader_(platform.clock.MakeTimer()) {
  const GraphHistory::Run run = [this](const char* procedure, const std::function<void()>& statement) {
    return RunStatement(procedure, statement);
  };
  history_ = std::make_unique<GraphHistory>(session, platform, curves_, *view_, log, run);
  readValue_ = std::make_unique<ReadValueMode>(session, platform, curves_, *history_, *view_, run,
                                               [this](const auto& text) { SetCaption(text); });
  setObjectName("GraphFormNew");
  setProperty("helpTopic", topic::StripChart);
  setFocusPolicy(Qt::ClickFocus);
  resize(view_->size());
  BindToolbar();
  storeHeader_->SetInterval(kResizeSettled);
  storeHeader_->SetHandler([this] { StoreHeader(); });
}

GraphFormNew::~GraphFormNew() {
  Unload();
}

void GraphFormNew::Load(double timeOrigin) {
  session_.GraphForms[formIndex_] = this;
  TranslateForm(*this, translation_);
  if (auto* window = qobject_cast<QMdiSubWindow*>(parentWidget()))
    connect(window, &QMdiSubWindow::aboutToActivate, this, [this] { Form_Activate(); });
  if (session_.AcquireStarted) EnableToolbar();
  FollowLog();
  FollowLooks();
  loaded_ = true;
  view_->FitToWindow(WindowSize());
  FillLabels();
  InitialHeader();
  Operation("Form_Load", [&] { view_->Chart().SetBlockPairsPerPage(); });
  view_->Chart().SetTimeOrigin(timeOrigin);
  if (timeOrigin != 0) DrawFirstBlock(timeOrigin);
  LayoutDone_ = true;
  view_->ScheduleRefresh();
}

void GraphFormNew::FollowLooks() {
  const bool fills = session_.FitGraphsToWindows;
  view_->ShowNight(session_.NightColours || palette().color(QPalette::Window).lightness() <= 127);
  if (fills == view_->FillsWindow()) return;
  view_->FillWindow(fills);
  if (!loaded_) return;
  view_->FitToWindow(WindowSize());
  RebuildHeader();
  history_->Repaint();
  view_->ScheduleRefresh();
}

void GraphFormNew::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::PaletteChange && loaded_) FollowLooks();
}

void GraphFormNew::LoadAgain() {
  view_->FitToWindow(WindowSize());
  RefreshForm();
  // A page of history holds the curves that the window has, at the height that it has.
  if (!history_->LiveView()) history_->Repaint();
  view_->ScheduleRefresh();
}

void GraphFormNew::DrawFirstBlock(double timeOrigin) {
  const double blockEnd = timeOrigin + session_.Times.GraphTimeStep * session_.pixelslength;
  Picture2_Update(timeOrigin, blockEnd);
  WriteDate(timeOrigin, blockEnd);
}

void GraphFormNew::Unload() {
  if (!loaded_) return;
  loaded_ = false;
  view_->StopRefresh();
  if (storeHeader_->Enabled()) StoreHeader();
  UpdateParametersDefs();
  session_.GraphForms[formIndex_] = nullptr;
}

void GraphFormNew::closeEvent(QCloseEvent* event) {
  Unload();
  event->accept();
  DeleteWindow();
}

void GraphFormNew::DeleteWindow() {
  auto* window = qobject_cast<QMdiSubWindow*>(parentWidget());
  if (window == nullptr) return;
  deleteWhenDone_ = standing_ > 0;
  if (!deleteWhenDone_) window->deleteLater();
}

QSize GraphFormNew::WindowSize() const {
  const auto* window = qobject_cast<const QMdiSubWindow*>(parentWidget());
  return window != nullptr ? window->size() : size();
}

void GraphFormNew::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  const int bar = std::min(toolbar_->sizeHint().height(), GraphToolbar::kMostHeight);
  toolbar_->setGeometry(0, 0, width(), bar);
  view_->setGeometry(0, bar, width(), std::max(height() - bar, 0));
  if (!LayoutDone_ || !loaded_) return;
  if (view_->FitToWindow(WindowSize())) {
    RebuildHeader();
    // Dragging an edge must not write to the log with every pixel.
    storeHeader_->SetEnabled(false);
    storeHeader_->SetEnabled(true);
  }
  history_->Repaint();
  view_->ScheduleRefresh();
}

void GraphFormNew::Picture2_Update(double blockStart, double blockEnd) {
  Draw("Picture2_Update", [&] { view_->Chart().Picture2_Update(blockStart, blockEnd); });
  history_->InsertCommentsOfBlock(blockStart, blockEnd);
}

void GraphFormNew::WriteDate(double blockStart, double blockEnd) {
  Draw("WriteDate", [&] { view_->Chart().WriteDate(blockStart, blockEnd); });
}

void GraphFormNew::PlotValue(double previousTime, double time, float previousValue, float value, double min, double max,
                             std::int32_t colour, bool wrapping) {
  Draw("PlotValue",
       [&] { view_->Chart().PlotValue(previousTime, time, previousValue, value, min, max, colour, wrapping); });
}

void GraphFormNew::UpdateScroll(double upTo) {
  history_->UpdateScroll(upTo);
  FollowLog();
}

/// 0 where the parameter has none.
int GraphFormNew::SlotOf(int parameter) {
  const int count = session_.GraphCurveCount[formIndex_];
  int slot = nextSlot_ <= count ? nextSlot_ : 1;
  if (count == 0 || session_.GraphSlots[slot][formIndex_] != parameter)
    slot = GraphSlotOf(session_, parameter, formIndex_);
  nextSlot_ = slot + 1;
  return slot;
}

void GraphFormNew::WriteValuesToLabels(int parameter, float value) {
  const int slot = SlotOf(parameter);
  if (slot == 0) return;
  Draw("WriteValuesToLabels", [&] { view_->SetValue(slot, static_cast<double>(value)); });
}

void GraphFormNew::ShowAlarm(int parameter, AlarmSide side) {
  view_->SetAlarm(GraphSlotOf(session_, parameter, formIndex_), side);
  view_->ScheduleRefresh();
}

void GraphFormNew::ShowValuesStale(bool stale) {
  if (view_->Labels().SetStale(stale)) view_->ScheduleRefresh();
}

void GraphFormNew::InitialHeader() {
  Draw("InitialHeader", [&] { view_->DrawHeader(); });
  UpdateParametersDefs();
  StoreHeader();
}

void GraphFormNew::StoreHeader() {
  storeHeader_->SetEnabled(false);
  if (onHeaderChanged_) onHeaderChanged_();
}

void GraphFormNew::RefreshForm() {
  FollowLog();
  InitialHeader();
  FillLabels();
}

/// RefreshForm without telling the log: nothing of what it stores has changed.
void GraphFormNew::RebuildHeader() {
  Operation("RefreshForm", [&] { view_->DrawHeader(); });
  FillLabels();
}

void GraphFormNew::FillLabels() {
  // Until the first sample of a job the values are those of an earlier one.
  const bool hasValues = session_.Data.hasValues || !session_.AcquisitionMode;
  Draw("RefreshForm", [&] {
    view_->FillLabels();
    for (int slot = 1; slot <= curves_.Count(); ++slot)
      view_->SetValue(slot, hasValues ? static_cast<double>(session_.CurrentValue[curves_.ParameterOf(slot)])
                                      : std::numeric_limits<double>::quiet_NaN());
    if (!readValue_->IsOn()) SetCaption(std::nullopt);
  });
}

void GraphFormNew::UpdateParametersDefs() {
  Operation("UpdateParametersDefs", [&] { CarryBack(session_, curves_); });
}

}  // namespace velk
