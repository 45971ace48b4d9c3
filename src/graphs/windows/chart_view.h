#pragma once

#include <QFont>
#include <QScrollBar>
#include <QWidget>
#include <memory>

#include "graphs/chart_measures.h"
#include "graphs/curve_source.h"
#include "graphs/header_zones.h"
#include "graphs/strip_chart.h"
#include "graphs/windows/label_rows.h"
#include "model/time_base.h"
#include "platform/drawing/colour_map.h"
#include "platform/drawing/surface_image.h"
#include "platform/windows/screen_refresh.h"

namespace Ui {
class ChartView;
}

namespace velk {

/// A strip chart on the screen, for any window that shows one: labels on the left, then the header band with the plot
/// and its axis below it, the bar of the history on the right. It knows no session: what it draws, and when, its window
/// tells it. Samples change surfaces and values, and texts are made when they are shown; the screen follows at most
/// 30 times a second.
class ChartView : public QWidget {
  Q_OBJECT

 public:
  /// All that is given by reference outlives the view. `font` is that of header, axis and labels.
  ChartView(TimeBase& times, const ChartMeasures& measures, const CurveSource& curves, const QFont& font,
            const Language& language, const ScreenRefresh& refresh, QWidget* parent);
  ~ChartView() override;

  /// Height in pixels of a window in which the whole plot of so many curves can be seen at 15 twips a dot.
  static int WantedHeight(const ChartMeasures& measures, int curves);
  /// The same where the plot is as low as it gets when it fills its window.
  static int LeastHeight(const ChartMeasures& measures, int curves);
  /// Width in pixels of a window whose plot is just wide enough for its curves to be told apart.
  static int LeastWidth();

  /// Whether the plot fills the window: it then takes as many dots down the page as there is room for, half of its
  /// 15 twips a dot at least. Takes effect with the next FitToWindow.
  void FillWindow(bool fills) { fills_ = fills; }
  bool FillsWindow() const { return fills_; }
  /// Dark paper, or white.
  void ShowNight(bool night);

  /// The chart behind the picture. Whoever draws on it calls ScheduleRefresh.
  StripChart& Chart() { return *chart_; }
  /// VScroll1; its value counts minutes.
  QScrollBar& HistoryBar();
  /// Pic2 as a widget, for who follows the mouse over it.
  QWidget& PlotArea();
  /// Twips from the top of the plot of a place so many pixels down PlotArea.
  double PlotTwips(double pixels) const;

  /// The visible surfaces, for what is drawn on them while the chart goes on unseen.
  ChartSurfaces Surfaces() { return {picture1_, pic2_, picture3_}; }
  /// From now on the chart draws unseen, on copies of plot and axis (Picture2, Pic3_Hidden).
  void HideChart();
  /// The chart's picture stands on the visible surfaces again, with all that was drawn meanwhile. Gives false where the
  /// plot got another size since: it has the old picture then, and is to be drawn anew.
  bool ShowChart();

  /// The header band with the plot below it, and the panel of the labels: whoever edits curves on the chart watches
  /// them.
  QWidget& HeaderBand();
  LabelRows& Labels();
  /// The place on the header band at a point of it.
  HeaderPlace PlaceInHeader(const QPoint& point) const;

  /// Lays all out for a window of this size in pixels, its frame and title included, and gives the surfaces their
  /// sizes; what was drawn stays. Gives whether the width was one to follow: a narrower one leaves the widths.
  bool FitToWindow(QSize window);
  /// Draws the header band and places the plot below it.
  void DrawHeader();
  /// Writes name, units and colour of each curve into its row of labels; rows come and go with the curves.
  void FillLabels();
  /// The latest value of a curve, shown as a text by the curve's picture. Slots without labels are passed over.
  void SetValue(int slot, double value);
  /// See LabelRows::SetAlarm.
  void SetAlarm(int slot, AlarmSide side);

  /// The screen follows within 34 ms.
  void ScheduleRefresh() { refresh_.Ask(); }
  /// The window is on its way out: nothing is shown any more.
  void StopRefresh() { refresh_.Stop(); }

 private:
  double PlotHeight() const;
  int PlotPixels() const;
  void PlaceFrame();
  void FitHeader();
  void FitSurfaces();
  void FitPictures(double ratio);
  void ShowChanges(WindowStrips& strips);
  void RepaintViews();

  const ChartMeasures measures_;
  const CurveSource& curves_;
  std::unique_ptr<Ui::ChartView> ui_;
  double headerWidth_;  ///< twips
  double plotWidth_;
  ColourMap colours_;
  bool fills_ = false;
  SurfaceImage picture1_;
  SurfaceImage pic2_;
  SurfaceImage picture3_;
  struct Hidden;
  std::unique_ptr<Hidden> hidden_;  ///< where the chart draws unseen; null while it is seen
  std::unique_ptr<StripChart> chart_;
  ScreenRefresh::Part refresh_;
};

}  // namespace velk
