#pragma once

#include <QWidget>
#include <functional>
#include <memory>

#include "graphs/parameter_curves.h"
#include "graphs/strip_chart.h"
#include "graphs/windows/label_rows.h"
#include "i18n/translation.h"
#include "model/graph_window.h"
#include "model/session.h"
#include "platform/drawing/surface_image.h"
#include "platform/loop/clock.h"
#include "platform/platform.h"

namespace Ui {
class GraphFormNew;
}

namespace velk {

/// A strip-chart window: labels on the left, then the header band with the plot below it. Samples change surfaces and
/// label texts; the screen follows at most 30 times a second.
///
/// Made by GraphWindowsMdi, which puts it into the client area, sizes it and calls Load. Closing it unloads it.
class GraphFormNew : public QWidget, public GraphWindow {
  Q_OBJECT

 public:
  /// `graphNumber`, 1 to 64, becomes FormIndex. `onHeaderChanged` is called whenever the header was drawn anew: it
  /// stores the curves' settings in the log, where one is open.
  GraphFormNew(Session& session, Platform& platform, const Translation& translation, int graphNumber,
               std::function<void()> onHeaderChanged);
  ~GraphFormNew() override;

  /// Lays the window out and draws it. Where `timeOrigin` is not 0 the frame of the first block from there is drawn
  /// too.
  void Load(double timeOrigin);
  /// Carries edited curves back and takes the window out of the session; no operation may follow.
  void Unload();

  void Picture2_Update(double blockStart, double blockEnd) override;
  void WriteDate(double blockStart, double blockEnd) override;
  /// Sets the range of VScroll1. The bar itself stays disabled.
  void UpdateScroll(double upTo) override;
  void WriteValuesToLabels(int parameter, float value) override;
  void PlotValue(double previousTime, double time, float previousValue, float value, double min, double max,
                 std::int32_t colour, bool wrapping) override;
  void ShowAlarm(int parameter, bool alarmed) override;
  double TimeOrigin() const override { return chart_->TimeOrigin(); }
  /// The window has no buttons of its own that could be enabled.
  void EnableToolbar() override {}
  void RefreshForm() override;
  void UpdateParametersDefs() override;

  /// Draws the header band, sizes Picture3, and carries the curves' settings back.
  void InitialHeader();
  /// Creates the labels of one more curve row below the previous row.
  void LoadAnotherFrame(int row);

  int FormIndex() const { return formIndex_; }
  /// Height in pixels at which the whole plot of a window with so many curves can be seen.
  static int WantedHeight(const Session& session, int curves);

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  class Standing;

  template <class Statement>
  void Operation(const char* procedure, Statement&& statement);
  void MakeChart();
  bool SizeToWindow();
  void FitSurfaces();
  void PlaceFrame();
  void RebuildHeader();
  void FillLabels();
  double PlotHeight() const;
  void ScheduleRefresh();
  void ShowChanges();
  void StoreHeader();
  void DeleteWindow();
  QSize WindowSize() const;

  Session& session_;
  Platform& platform_;
  const Translation& translation_;
  const int formIndex_;
  std::function<void()> onHeaderChanged_;
  std::unique_ptr<Ui::GraphFormNew> ui_;
  ParameterCurves curves_;
  SurfaceImage* picture1_ = nullptr;  ///< owned by the chart
  SurfaceImage* pic2_ = nullptr;
  SurfaceImage* picture3_ = nullptr;
  std::unique_ptr<StripChart> chart_;
  std::unique_ptr<LabelRows> labels_;
  std::unique_ptr<Timer> refresh_;      ///< one repaint, 33 ms after the first change
  std::unique_ptr<Timer> storeHeader_;  ///< a resize has settled
  bool refreshWaits_ = false;
  double headerWidth_ = 0;  ///< twips
  double plotWidth_ = 0;
  bool LayoutDone_ = false;  ///< the layout of the first load is finished
  bool loaded_ = false;
  int standing_ = 0;  ///< error boxes of this window that stand
  bool deleteWhenDone_ = false;
};

}  // namespace velk
