#include "graphs/windows/chart_view.h"

#include <QFontMetricsF>
#include <algorithm>
#include <cmath>

#include "graphs/windows/chart_fonts.h"
#include "graphs/windows/surface_view.h"
#include "ui_chart_view.h"

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
constexpr double kBelowHeader = 200;  ///< a little more than the lines of the header's corners reach below it
constexpr double kAxisWidth = kLeftMargin - 3;
constexpr double kLeastPlot = 3000;  ///< right of the axis

constexpr int kMostPixels = 16000;

int Pixels(double twips) {
  const double pixels = std::floor(twips / kTwipsPerPixel);
  return pixels > 0 ? static_cast<int>(std::min<double>(pixels, kMostPixels)) : 0;
}

/// The date has to fit into the strip left of the axis.
QFont AxisFont(const QFont& font) {
  return FitFont(font, QStringLiteral("00-May-0000"), kLeftMargin / 1.05 / kTwipsPerPixel);
}

/// A row of the header has its height whatever the size of the letters.
QFont HeaderFont(QFont font) {
  while (QFontMetricsF(font).height() * kTwipsPerPixel > kHeaderRowHeight && font.pixelSize() > kSmallestLetters)
    font.setPixelSize(font.pixelSize() - 1);
  return font;
}

/// The picture of a plot that hasn't been drawn yet; a surface has at least a pixel.
constexpr double kNothing = 1;

/// The controls of the form, loaded into the view.
std::unique_ptr<Ui::ChartView> Loaded(QWidget& view) {
  auto ui = std::make_unique<Ui::ChartView>();
  ui->setupUi(&view);
  return ui;
}

}  // namespace

struct ChartView::Hidden {
  Hidden(double ratio, const QFont& font)
      : Picture2(kNothing, kNothing, ratio, font), Pic3_Hidden(kNothing, kNothing, ratio, font) {}

  SurfaceImage Picture2;
  SurfaceImage Pic3_Hidden;
  bool isWhole = true;  ///< Picture2 has had its size since the copy
};

ChartView::ChartView(TimeBase& times, const ChartMeasures& measures, const CurveSource& curves, const QFont& font,
                     const Language& language, const ScreenRefresh& refresh, QWidget* parent)
    : QWidget(parent),
      measures_(measures),
      curves_(curves),
      ui_(Loaded(*this)),
      headerWidth_(ui_->Picture1->width() * kTwipsPerPixel),
      plotWidth_(ui_->Pic2->width() * kTwipsPerPixel),
      picture1_(headerWidth_, PlotHeight(), devicePixelRatioF(), HeaderFont(font)),
      pic2_(plotWidth_, PlotHeight(), devicePixelRatioF(), font),
      picture3_(kAxisWidth, PlotHeight(), devicePixelRatioF(), AxisFont(font)),
      chart_(std::make_unique<StripChart>(times, measures_, curves_, language,
                                          ChartSurfaces{picture1_, pic2_, picture3_})),
      refresh_(refresh, [this](WindowStrips& strips) { ShowChanges(strips); }) {
  picture3_.SetTextCovers(true);
  ui_->Picture1->Show(&picture1_, &colours_);
  ui_->Pic2->Show(&pic2_, &colours_);
  ui_->Picture3->Show(&picture3_, &colours_);
  ui_->LabelPanel->UseFont(font);
  ui_->VScroll1->setMinimum(0);
  ui_->VScroll1->setSingleStep(1);
  ui_->VScroll1->setPageStep(4);
}

ChartView::~ChartView() {
  for (SurfaceView* view : {ui_->Picture1, ui_->Pic2, ui_->Picture3}) view->Show(nullptr, nullptr);
}

int ChartView::WantedHeight(const ChartMeasures& measures, int curves) {
  const double frame = curves * kHeaderRowHeight + kAboveFrame + measures.MaximumTime + kBelowPlot;
  return Pixels(frame + kBelowPicture1) + 1;
}

int ChartView::LeastHeight(const ChartMeasures& measures, int curves) {
  return WantedHeight(measures, curves) - Pixels(measures.MaximumTime) / 2;
}

int ChartView::LeastWidth() {
  return Pixels(kBesidePlot + kLeftMargin + kLeastPlot) + 1;
}

void ChartView::ShowNight(bool night) {
  if (night == colours_.IsNight()) return;
  colours_.SetNight(night);
  ui_->LabelPanel->SetNight(night);
  RepaintViews();
}

void ChartView::RepaintViews() {
  for (SurfaceView* view : {ui_->Picture1, ui_->Pic2, ui_->Picture3}) view->update();
}

QScrollBar& ChartView::HistoryBar() {
  return *ui_->VScroll1;
}

QWidget& ChartView::PlotArea() {
  return *ui_->Pic2;
}

double ChartView::PlotTwips(double pixels) const {
  return pixels * PlotHeight() / std::max(ui_->Pic2->height(), 1);
}

void ChartView::HideChart() {
  if (hidden_) return;
  hidden_ = std::make_unique<Hidden>(devicePixelRatioF(), font());
  hidden_->Picture2.CopyFrom(pic2_);
  hidden_->Pic3_Hidden.CopyFrom(picture3_);
  chart_->SetTargets(hidden_->Picture2, hidden_->Pic3_Hidden);
}

bool ChartView::ShowChart() {
  if (!hidden_) return true;
  chart_->SetTargets(pic2_, picture3_);
  pic2_.CopyFrom(hidden_->Picture2);
  picture3_.CopyFrom(hidden_->Pic3_Hidden);
  const bool isWhole = hidden_->isWhole;
  hidden_.reset();
  ScheduleRefresh();
  return isWhole;
}

QWidget& ChartView::HeaderBand() {
  return *ui_->Picture1;
}

LabelRows& ChartView::Labels() {
  return *ui_->LabelPanel;
}

HeaderPlace ChartView::PlaceInHeader(const QPoint& point) const {
  return HeaderPlaceAt(point.x() * kTwipsPerPixel, point.y() * kTwipsPerPixel, headerWidth_, curves_.Count());
}

double ChartView::PlotHeight() const {
  return velk::PlotHeight(measures_);
}

bool ChartView::FitToWindow(QSize window) {
  const double width = window.width() * kTwipsPerPixel, height = window.height() * kTwipsPerPixel;
  QRect picture1 = ui_->Picture1->geometry();
  const bool followsWidth = width >= kBesidePlot;
  if (followsWidth) {
    headerWidth_ = width - kBesidePicture1;
    plotWidth_ = width - kBesidePlot;
    picture1.setWidth(Pixels(headerWidth_));
    ui_->VScroll1->move(Pixels(width - kBesideScrollBar), ui_->VScroll1->y());
  }
  if (fills_)
    picture1.setHeight(QWidget::height());
  else if (height - kBelowPicture1 >= 0)
    picture1.setHeight(Pixels(height - kBelowPicture1));
  picture1.moveLeft(Pixels(kLabelsWidth));
  ui_->Picture1->setGeometry(picture1);
  ui_->VScroll1->setGeometry(ui_->VScroll1->x(), picture1.top(), ui_->VScroll1->width(), picture1.height());
  ui_->LabelArea->setGeometry(0, picture1.top(), Pixels(kLabelsWidth), picture1.height());
  PlaceFrame();
  FitSurfaces();
  return followsWidth;
}

/// Height of Pic2.
int ChartView::PlotPixels() const {
  const int told = std::max(1, Pixels(measures_.MaximumTime));
  if (!fills_) return told;
  const int room = ui_->Picture1->height() - Pixels(chart_->HeaderHeight() + kAboveFrame) - Pixels(kBelowPlot);
  return std::clamp(room, (told + 1) / 2, kMostPixels);
}

void ChartView::PlaceFrame() {
  const int plotPixels = PlotPixels();
  ui_->Frame1->setGeometry(0, Pixels(chart_->HeaderHeight() + kAboveFrame), Pixels(plotWidth_),
                           plotPixels + Pixels(kBelowPlot));
  ui_->Pic2->setGeometry(0, 0, Pixels(plotWidth_), plotPixels);
  ui_->Picture3->setGeometry(0, 0, Pixels(kAxisWidth), plotPixels);
}

/// Picture1 goes on below the header, behind the plot and beside it: there is nothing but paper.
void ChartView::FitHeader() {
  const QSize before = picture1_.PixelSize();
  const double room = ui_->Picture1->height() * kTwipsPerPixel;
  picture1_.Resize(headerWidth_, std::min(chart_->HeaderHeight() + kBelowHeader, room), devicePixelRatioF());
  if (picture1_.PixelSize() != before) ui_->Picture1->update();
}

void ChartView::FitSurfaces() {
  const double ratio = devicePixelRatioF();
  FitHeader();
  if (fills_ || pic2_.Stretch() != 1) return FitPictures(ratio);
  if (hidden_) {
    const double width = hidden_->Picture2.Width();
    const int height = hidden_->Picture2.PixelHeight();
    hidden_->Picture2.Resize(plotWidth_, PlotHeight(), ratio);
    if (hidden_->Picture2.Width() != width || hidden_->Picture2.PixelHeight() != height) hidden_->isWhole = false;
    hidden_->Pic3_Hidden.Resize(kAxisWidth, PlotHeight(), ratio);
  }
  pic2_.Resize(plotWidth_, PlotHeight(), ratio);
  picture3_.Resize(kAxisWidth, PlotHeight(), ratio);
}

/// What was drawn is scaled along with the window; times and dates are printed anew, since letters don't stretch.
void ChartView::FitPictures(double ratio) {
  const double stretch = fills_ ? ui_->Pic2->height() * kTwipsPerPixel / std::max(PlotHeight(), 1.0) : 1;
  pic2_.Rescale(plotWidth_, PlotHeight(), ratio, stretch, kLeftMargin);
  picture3_.Resize(kAxisWidth, PlotHeight(), ratio, stretch);
  if (hidden_) {
    hidden_->Picture2.Rescale(plotWidth_, PlotHeight(), ratio, stretch, kLeftMargin);
    hidden_->Pic3_Hidden.Resize(kAxisWidth, PlotHeight(), ratio, stretch);
  }
  chart_->PrintAxisAgain();
}

void ChartView::DrawHeader() {
  PlaceFrame();
  if (fills_)
    FitSurfaces();
  else
    FitHeader();
  bool isNew = false;
  for (int slot = 1; slot <= curves_.Count(); ++slot)
    if (colours_.AddInk(curves_.Curve(slot).color)) isNew = true;
  if (isNew) RepaintViews();
  chart_->InitialHeader();
}

void ChartView::FillLabels() {
  ui_->LabelPanel->Fill(curves_);
}

void ChartView::SetValue(int slot, double value) {
  ui_->LabelPanel->SetValue(slot - 1, value);
}

void ChartView::SetAlarm(int slot, AlarmSide side) {
  ui_->LabelPanel->SetAlarm(slot - 1, side);
}

void ChartView::ShowChanges(WindowStrips& strips) {
  ui_->LabelPanel->ShowChanges(strips);
  for (SurfaceView* view : {ui_->Picture1, ui_->Pic2, ui_->Picture3}) view->ShowChanges(strips);
}

}  // namespace velk
