#include "graphs/windows/chart_view.h"

#include <gtest/gtest.h>

#include <vector>

#include "base/dates.h"
#include "base/language.h"
#include "graphs/chart_fixture.h"
#include "graphs/label_reading.h"
#include "graphs/windows/chart_fonts.h"
#include "support/fake_clock.h"

namespace velk::test {

namespace {

/// Curves that stand in no session: fields of another program's table.
class ForeignFields : public CurveSource {
 public:
  int Count() const override { return static_cast<int>(fields.size()); }
  const Parameter& Curve(int slot) const override { return fields[static_cast<std::size_t>(slot - 1)]; }

  void Add(const std::string& name, const std::string& units) {
    Parameter& field = fields.emplace_back();
    field.name = name;
    field.units = units;
    field.max = 100;
    field.color = 0x0000FF;
    field.format = "#0.0";
  }

  std::vector<Parameter> fields;
};

/// A chart view in a window of its own, 900 x 400 pixels.
struct ForeignChart {
  explicit ForeignChart(int points = 10) : letters(points) {
    times.GraphTimeStep = kSecond;
    fields.Add("Torque", "kNm");
    fields.Add("Depth", "m");
    window.resize(900, 400);
    view.setGeometry(window.rect());
    view.FitToWindow(window.size());
    view.FillLabels();
    view.DrawHeader();
    window.show();
  }

  QWidget& Find(const char* name) { return *window.findChild<QWidget*>(QLatin1String(name)); }
  std::string Text(const char* label) { return LabelText(window, label); }
  int RedOn(const char* name) {
    const QImage picture = Find(name).grab().toImage();
    int count = 0;
    for (int y = 0; y < picture.height(); ++y)
      for (int x = 0; x < picture.width(); ++x) count += (picture.pixel(x, y) & 0xFFFFFF) == 0xFF0000;
    return count;
  }

  const int letters;
  Gate gate;
  FakeClock clock{gate};
  Language language;
  ScreenRefresh refresh{clock};
  TimeBase times;
  ForeignFields fields;
  QWidget window;
  ChartView view{times, {}, fields, ChartFont("DejaVu Sans", letters), language, refresh, &window};
};

}  // namespace

TEST(ChartView, ShowsCurvesThatStandInNoSession) {
  ForeignChart foreign;
  EXPECT_EQ(foreign.Text("Label1_0"), "Torque");
  EXPECT_EQ(foreign.Text("Label1_1"), "Depth");
  EXPECT_EQ(foreign.Text("Label3_1"), "m");
  EXPECT_GT(foreign.RedOn("Picture1"), 0);
}

TEST(ChartView, KeepsTheLettersOfAHeaderRowWithinItWhateverTheirSize) {
  constexpr int kRow = 250 / 15;  // twips a row, 15 a dot
  for (const int points : {6, 8, 10, 14, 20, 48}) {
    ForeignChart foreign(points);
    foreign.fields.fields[0].color = 0xFF0000;  // blue above red
    foreign.fields.fields[1].name = "\u00c9j\u00c5";
    foreign.view.DrawHeader();
    const QImage header = foreign.Find("Picture1").grab().toImage();
    int redAbove = 0, redInRow = 0;
    for (int y = 0; y < 2 * kRow; ++y) {
      for (int x = 0; x < header.width(); ++x) {
        const QColor dot = header.pixelColor(x, y);
        if (dot.red() > 200 && dot.blue() < 200) ++(y < kRow ? redAbove : redInRow);
      }
    }
    EXPECT_EQ(redAbove, 0) << points;
    EXPECT_GT(redInRow, 40) << points;
  }
}

TEST(ChartView, DrawsByTheTimeBaseThatItIsGiven) {
  ForeignChart foreign;
  const double start = DateSerial(2026, 3, 14);
  foreign.view.Chart().PlotValue(start, start + 10 * kSecond, 20, 30, 0, 100, 0x0000FF, false);
  EXPECT_DOUBLE_EQ(foreign.view.Chart().TimeOrigin(), start);
  EXPECT_GT(foreign.RedOn("Pic2"), 0);
}

TEST(ChartView, PlacesThePlotBelowARowOfHeaderForEachCurve) {
  ForeignChart foreign;
  EXPECT_EQ(foreign.Find("Frame1").y(), 40);                      // 2 x 250 + 100 twips
  EXPECT_EQ(foreign.Find("Pic2").size(), QSize(900 - 194, 240));  // 2900 and 3600 twips
  foreign.fields.Add("Speed", "1/min");
  foreign.view.DrawHeader();
  EXPECT_EQ(foreign.Find("Frame1").y(), 56);  // 3 x 250 + 100
}

TEST(ChartView, KeepsItsWidthsInAWindowTooNarrowToFollow) {
  ForeignChart foreign;
  EXPECT_FALSE(foreign.view.FitToWindow({193, 400}));  // 2895 twips
  EXPECT_EQ(foreign.Find("Pic2").width(), 900 - 194);
  EXPECT_TRUE(foreign.view.FitToWindow({194, 400}));
  EXPECT_EQ(foreign.Find("Pic2").width(), 0);
}

TEST(ChartView, LeavesAPlotOf200PixelsInAWindowOfItsLeastWidth) {
  ForeignChart foreign;
  EXPECT_TRUE(foreign.view.FitToWindow({ChartView::LeastWidth(), 400}));
  EXPECT_GE(foreign.Find("Pic2").width() - foreign.Find("Picture3").width(), 200);
  EXPECT_LE(foreign.Find("Pic2").width() - foreign.Find("Picture3").width(), 202);
}

TEST(ChartView, BringsRowsOfLabelsWithTheCurvesAndTakesThemAway) {
  ForeignChart foreign;
  foreign.fields.Add("Speed", "1/min");
  foreign.view.FillLabels();
  EXPECT_EQ(foreign.Text("Label1_2"), "Speed");
  foreign.fields.fields.resize(1);
  foreign.view.FillLabels();
  EXPECT_EQ(LabelsOf(foreign.window).Count(), 1);
}

TEST(ChartView, ShowsTheLatestOfManyValuesOnceARefresh) {
  ForeignChart foreign;
  for (int value = 1; value <= 100; ++value) {
    foreign.view.SetValue(2, value + 0.25);
    foreign.view.ScheduleRefresh();
  }
  EXPECT_EQ(foreign.Text("Label2_1"), "");
  foreign.clock.Advance(40);
  EXPECT_EQ(foreign.Text("Label2_1"), "100.3");
}

TEST(ChartView, PassesOverValuesOfSlotsWithoutLabels) {
  ForeignChart foreign;
  for (const int slot : {-1, 0, 3, 65}) {
    foreign.view.SetValue(slot, 5);
    foreign.view.SetAlarm(slot, AlarmSide::High);
  }
  foreign.view.ScheduleRefresh();
  foreign.clock.Advance(40);
  EXPECT_EQ(foreign.Text("Label2_0"), "");
  EXPECT_EQ(foreign.Text("Label2_1"), "");
}

TEST(ChartView, ShowsNothingMoreOnceItIsStopped) {
  ForeignChart foreign;
  foreign.view.SetValue(1, 5);
  foreign.view.ScheduleRefresh();
  foreign.view.StopRefresh();
  foreign.view.ScheduleRefresh();
  foreign.clock.Advance(100);
  EXPECT_EQ(foreign.Text("Label2_0"), "");
}

TEST(ChartView, WantsAWindowInWhichTheWholePlotIsSeen) {
  ForeignChart foreign;
  const int wanted = ChartView::WantedHeight({}, 2);
  foreign.view.FitToWindow({900, wanted});
  const QWidget& frame = foreign.Find("Frame1");
  EXPECT_GE(foreign.Find("Picture1").height(), frame.y() + frame.height());
}

}  // namespace velk::test
