#include "graphs/windows/graph_form_new.h"

#include <QCloseEvent>
#include <QMdiSubWindow>
#include <QScrollBar>
#include <algorithm>
#include <cmath>

#include "graphs/scroll_range.h"
#include "graphs/windows/chart_fonts.h"
#include "graphs/windows/surface_view.h"
#include "i18n/windows/translate_form.h"
#include "model/graph_map.h"
#include "model/help_topics.h"
#include "platform/dialogs/procedure.h"
#include "ui_graph_form_new.h"

namespace velk {

namespace {

// All in twips.
constexpr double kLabelsWidth = 2300;  ///< panel left of Picture1
constexpr double kBesidePicture1 = 2800;
constexpr double kBesidePlot = 2900;
constexpr double kBesideScrollBar = 500;
constexpr double kBelowPicture1 = 1185;
constexpr double kAboveFrame = 100;
constexpr double kBelowPlot = 100;
constexpr double kAxisWidth = kLeftMargin - 3;

constexpr int kRefreshInterval = 34;  ///< ms: at most 30 a second
constexpr int kResizeSettled = 500;   ///< ms
constexpr int kMostPixels = 16000;

int Pixels(double twips) {
  const double pixels = std::floor(twips / kTwipsPerPixel);
  return pixels > 0 ? static_cast<int>(std::min<double>(pixels, kMostPixels)) : 0;
}

}  // namespace

/// Keeps the window alive while one of its error boxes stands: events run behind the box, and one may close the window.
class GraphFormNew::Standing {
 public:
  explicit Standing(GraphFormNew& form) : form_(form) { ++form_.standing_; }
  ~Standing() {
    if (--form_.standing_ == 0 && form_.deleteWhenDone_) form_.DeleteWindow();
  }
  Standing(const Standing&) = delete;
  Standing& operator=(const Standing&) = delete;

 private:
  GraphFormNew& form_;
};

/// Runs one statement that has changed nothing when it fails. A success costs nothing: the box, and what it needs, come
/// with the failure.
template <class Statement>
void GraphFormNew::Operation(const char* procedure, Statement&& statement) {
  try {
    statement();
    return;
  } catch (const std::exception&) {  // runs again below, where its text is shown
  }
  const Standing standing(*this);
  RunProcedure({platform_.dialogs, procedure}, [&](auto run) { run(statement); });
}

GraphFormNew::GraphFormNew(Session& session, Platform& platform, const Translation& translation, int graphNumber,
                           std::function<void()> onHeaderChanged)
    : session_(session),
      platform_(platform),
      translation_(translation),
      formIndex_(graphNumber),
      onHeaderChanged_(std::move(onHeaderChanged)),
      ui_(std::make_unique<Ui::GraphFormNew>()),
      curves_(session, graphNumber),
      refresh_(platform.clock.MakeTimer()),
      storeHeader_(platform.clock.MakeTimer()) {
  ui_->setupUi(this);
  setProperty("helpTopic", topic::StripChart);
  labels_ = std::make_unique<LabelRows>(*ui_->LabelPanel, *ui_->Label1_0, *ui_->Label2_0, *ui_->Label3_0);
  ui_->LabelPanel->installEventFilter(this);
  headerWidth_ = ui_->Picture1->width() * kTwipsPerPixel;
  plotWidth_ = ui_->Pic2->width() * kTwipsPerPixel;
  refresh_->SetInterval(kRefreshInterval);
  refresh_->SetHandler([this] { ShowChanges(); });
  storeHeader_->SetInterval(kResizeSettled);
  storeHeader_->SetHandler([this] { StoreHeader(); });
  MakeChart();
}

GraphFormNew::~GraphFormNew() {
  Unload();
  for (SurfaceView* view : {ui_->Picture1, ui_->Pic2, ui_->Picture3}) view->SetSurface(nullptr);
}

void GraphFormNew::MakeChart() {
  const QFont font = ChartFont(session_);
  // The date has to fit into the strip left of the axis.
  const QFont axisFont = FitFont(font, QStringLiteral("00-May-0000"), kLeftMargin / 1.05 / kTwipsPerPixel);
  labels_->SetFont(font);
  auto picture1 = std::make_unique<SurfaceImage>(headerWidth_, PlotHeight(), devicePixelRatioF(), font);
  auto pic2 = std::make_unique<SurfaceImage>(plotWidth_, PlotHeight(), devicePixelRatioF(), font);
  auto picture3 = std::make_unique<SurfaceImage>(kAxisWidth, PlotHeight(), devicePixelRatioF(), axisFont);
  picture3->SetTextCovers(true);
  ui_->Picture1->SetSurface(picture1_ = picture1.get());
  ui_->Pic2->SetSurface(pic2_ = pic2.get());
  ui_->Picture3->SetSurface(picture3_ = picture3.get());
  chart_ = std::make_unique<StripChart>(session_, curves_, platform_.language,
                                        ChartSurfaces{std::move(picture1), std::move(pic2), std::move(picture3)});
}

void GraphFormNew::Load(double timeOrigin) {
  session_.GraphForms[formIndex_] = this;
  TranslateForm(*this, translation_);
  loaded_ = true;
  ui_->VScroll1->setMinimum(0);
  ui_->VScroll1->setSingleStep(1);
  ui_->VScroll1->setPageStep(4);
  SizeToWindow();
  FitSurfaces();
  FillLabels();
  InitialHeader();
  Operation("Form_Load", [&] { chart_->SetBlockPairsPerPage(); });
  chart_->SetTimeOrigin(timeOrigin);
  if (timeOrigin != 0) {
    const double blockEnd = timeOrigin + session_.Times.GraphTimeStep * session_.pixelslength;
    Picture2_Update(timeOrigin, blockEnd);
    WriteDate(timeOrigin, blockEnd);
  }
  LayoutDone_ = true;
  ScheduleRefresh();
}

void GraphFormNew::Unload() {
  if (!loaded_) return;
  loaded_ = false;
  refresh_->SetEnabled(false);
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

int GraphFormNew::WantedHeight(const Session& session, int curves) {
  const double frame = curves * kHeaderRowHeight + kAboveFrame + session.MaximumTime + kBelowPlot;
  return Pixels(frame + kBelowPicture1) + 1;
}

QSize GraphFormNew::WindowSize() const {
  const auto* window = qobject_cast<const QMdiSubWindow*>(parentWidget());
  return window != nullptr ? window->size() : size();
}

double GraphFormNew::PlotHeight() const {
  return std::floor(session_.MaximumTime / 3) * 3;
}

/// Sizes the controls to the window; gives whether the width was one to follow.
bool GraphFormNew::SizeToWindow() {
  const double width = WindowSize().width() * kTwipsPerPixel, height = WindowSize().height() * kTwipsPerPixel;
  QRect picture1 = ui_->Picture1->geometry();
  const bool followsWidth = width >= kBesidePlot;
  if (followsWidth) {
    headerWidth_ = width - kBesidePicture1;
    plotWidth_ = width - kBesidePlot;
    picture1.setWidth(Pixels(headerWidth_));
    ui_->VScroll1->move(Pixels(width - kBesideScrollBar), ui_->VScroll1->y());
  }
  if (height - kBelowPicture1 >= 0) picture1.setHeight(Pixels(height - kBelowPicture1));
  picture1.moveLeft(Pixels(kLabelsWidth));
  ui_->Picture1->setGeometry(picture1);
  ui_->VScroll1->setGeometry(ui_->VScroll1->x(), picture1.top(), ui_->VScroll1->width(), picture1.height());
  ui_->LabelArea->setGeometry(0, picture1.top(), Pixels(kLabelsWidth), picture1.height());
  PlaceFrame();
  return followsWidth;
}

void GraphFormNew::PlaceFrame() {
  const int plotPixels = std::max(1, Pixels(session_.MaximumTime));
  ui_->Frame1->setGeometry(0, Pixels(chart_->HeaderHeight() + kAboveFrame), Pixels(plotWidth_),
                           plotPixels + Pixels(kBelowPlot));
  ui_->Pic2->setGeometry(0, 0, Pixels(plotWidth_), plotPixels);
  ui_->Picture3->setGeometry(0, 0, Pixels(kAxisWidth), plotPixels);
}

void GraphFormNew::FitSurfaces() {
  const double ratio = devicePixelRatioF();
  picture1_->Resize(headerWidth_, ui_->Picture1->height() * kTwipsPerPixel, ratio);
  pic2_->Resize(plotWidth_, PlotHeight(), ratio);
  picture3_->Resize(kAxisWidth, PlotHeight(), ratio);
}

void GraphFormNew::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  if (!LayoutDone_ || !loaded_) return;
  const bool followsWidth = SizeToWindow();
  FitSurfaces();
  if (followsWidth) {
    RebuildHeader();
    // Dragging an edge must not write to the log with every pixel.
    storeHeader_->SetEnabled(false);
    storeHeader_->SetEnabled(true);
  }
  if (session_.AcquireStarted) Operation("Form_Resize", [&] { chart_->RedrawFrame(); });
  ScheduleRefresh();
}

/// The label panel gets narrower when the scroll bar comes beside it.
bool GraphFormNew::eventFilter(QObject* watched, QEvent* event) {
  if (watched == ui_->LabelPanel && event->type() == QEvent::Resize && loaded_) labels_->FitToPanel();
  return QWidget::eventFilter(watched, event);
}

void GraphFormNew::Picture2_Update(double blockStart, double blockEnd) {
  Operation("Picture2_Update", [&] { chart_->Picture2_Update(blockStart, blockEnd); });
  ScheduleRefresh();
}

void GraphFormNew::WriteDate(double blockStart, double blockEnd) {
  Operation("WriteDate", [&] { chart_->WriteDate(blockStart, blockEnd); });
  ScheduleRefresh();
}

void GraphFormNew::PlotValue(double previousTime, double time, float previousValue, float value, double min, double max,
                             std::int32_t colour, bool wrapping) {
  Operation("PlotValue",
            [&] { chart_->PlotValue(previousTime, time, previousValue, value, min, max, colour, wrapping); });
  ScheduleRefresh();
}

void GraphFormNew::UpdateScroll(double upTo) {
  Operation("UpdateScroll", [&] {
    const ScrollRange range = ScrollRangeUpTo(session_, upTo);
    ui_->VScroll1->setMinimum(0);
    if (!range.hasHistory) return;
    ui_->VScroll1->setMaximum(range.maximum);
    ui_->VScroll1->setValue(range.maximum);
  });
}

void GraphFormNew::WriteValuesToLabels(int parameter, float value) {
  const int slot = GraphSlotOf(session_, parameter, formIndex_);
  if (slot == 0 || slot > labels_->Count()) return;
  Operation("WriteValuesToLabels", [&] {
    labels_->SetValue(slot - 1, static_cast<double>(value), session_.CurrentParameters[parameter].format);
  });
  ScheduleRefresh();
}

void GraphFormNew::ShowAlarm(int parameter, bool alarmed) {
  const int slot = GraphSlotOf(session_, parameter, formIndex_);
  if (slot == 0 || slot > labels_->Count()) return;
  labels_->SetAlarm(slot - 1, alarmed);
  ScheduleRefresh();
}

void GraphFormNew::InitialHeader() {
  Operation("InitialHeader", [&] { chart_->InitialHeader(); });
  PlaceFrame();
  UpdateParametersDefs();
  StoreHeader();
  ScheduleRefresh();
}

void GraphFormNew::StoreHeader() {
  storeHeader_->SetEnabled(false);
  if (onHeaderChanged_) onHeaderChanged_();
}

void GraphFormNew::RefreshForm() {
  InitialHeader();
  FillLabels();
}

/// RefreshForm without telling the log: nothing of what it stores has changed.
void GraphFormNew::RebuildHeader() {
  Operation("RefreshForm", [&] { chart_->InitialHeader(); });
  FillLabels();
}

void GraphFormNew::LoadAnotherFrame(int row) {
  Operation("LoadAnotherFrame", [&] { labels_->LoadAnotherFrame(row); });
}

void GraphFormNew::FillLabels() {
  Operation("RefreshForm", [&] {
    while (labels_->Count() < curves_.Count()) LoadAnotherFrame(labels_->Count());
    labels_->Unload(curves_.Count());
    for (int slot = 1; slot <= curves_.Count(); ++slot) {
      const Parameter& curve = curves_.Curve(slot);
      labels_->Fill(slot - 1, curve);
      labels_->SetValue(slot - 1, static_cast<double>(session_.CurrentValue[curves_.ParameterOf(slot)]), curve.format);
    }
    if (curves_.Count() > 0) setWindowTitle(QString::fromStdString(curves_.Curve(1).name));
  });
  ScheduleRefresh();
}

void GraphFormNew::UpdateParametersDefs() {
  Operation("UpdateParametersDefs", [&] {
    for (int slot = 1; slot <= curves_.Count(); ++slot) {
      const int parameter = curves_.ParameterOf(slot);
      const int formula = parameter - session_.NumberOfParameters;
      if (formula <= 0)
        session_.Parameters[parameter] = curves_.Curve(slot);
      else if (formula < static_cast<int>(session_.AdditionalParameters.size()))
        CopyDefinition(curves_.Curve(slot), session_.AdditionalParameters[formula]);
    }
  });
}

void GraphFormNew::ScheduleRefresh() {
  if (refreshWaits_ || !loaded_) return;
  refreshWaits_ = true;
  refresh_->SetEnabled(true);
}

void GraphFormNew::ShowChanges() {
  refresh_->SetEnabled(false);
  refreshWaits_ = false;
  labels_->ShowChanges();
  for (SurfaceView* view : {ui_->Picture1, ui_->Pic2, ui_->Picture3}) view->ShowChanges();
}

}  // namespace velk
