// Charts that fill their windows, and charts on dark paper.

#include <gtest/gtest.h>

#include <QApplication>
#include <algorithm>

#include "base/colour.h"
#include "graphs/graph_form_fixture.h"
#include "support/dark_desktop.h"

namespace velk::test {
namespace {

int CountOf(const QImage& picture, QRgb colour) {
  int count = 0;
  for (int y = 0; y < picture.height(); ++y)
    for (int x = 0; x < picture.width(); ++x) count += (picture.pixel(x, y) & 0xFFFFFF) == colour;
  return count;
}

struct FilledDesk : GraphDesk {
  explicit FilledDesk(int curveCount = 1) : GraphDesk(curveCount) {
    session.FitGraphsToWindows = true;
    Create();
    Settle();
  }
  void Settle() {
    QApplication::processEvents();
    Refresh();
    QApplication::processEvents();
  }
  void Size(int width, int height) {
    ResizeWindow(width, height);
    Settle();
  }
  QImage Plot() { return Find<QWidget>("Pic2")->grab().toImage(); }
  /// A value that stays, a segment a second.
  void PlotLevel(int fromSecond, int toSecond, float value, std::int32_t colour = 0x0000FF) {
    for (int second = fromSecond; second < toSecond; ++second)
      Form().PlotValue(JobStart() + second * kSecond, JobStart() + (second + 1) * kSecond, value, value, 0, 100, colour,
                       false);
  }
};

/// Nothing is grey below the plot of three curves, nothing is cut.
void ExpectFilled(FilledDesk& desk) {
  const auto* view = desk.Find<QWidget>("ChartView");
  const auto* picture1 = desk.Find<QWidget>("Picture1");
  EXPECT_EQ(picture1->height(), view->height());
  // 3 rows of header and 100 twips above the plot, 100 below it.
  EXPECT_EQ(desk.Find<QWidget>("Pic2")->height(), picture1->height() - 56 - 6);
  EXPECT_EQ(desk.Find<QWidget>("Frame1")->geometry().bottom() + 1, picture1->height());
  EXPECT_EQ(desk.Find<QWidget>("Picture3")->height(), desk.Find<QWidget>("Pic2")->height());
}

TEST(FilledWindows, LeaveNothingGreyBelowThePlotAndCutNothing) {
  FilledDesk desk(3);
  for (const QSize size : {QSize(700, 400), QSize(900, 760), QSize(620, 1500)}) {
    desk.Size(size.width(), size.height());
    ExpectFilled(desk);
  }
}

TEST(FilledWindows, LeaveNothingGreyWhereTheyFillTheArea) {
  FilledDesk desk(3);
  desk.Size(700, 400);
  desk.Form().parentWidget()->showMaximized();
  desk.Settle();
  EXPECT_TRUE(
      desk.area.viewport()->rect().contains(desk.Form().geometry().translated(desk.Form().parentWidget()->pos())));
  EXPECT_GE(desk.Form().height(), desk.area.viewport()->height() - 40) << "its frame and title aside";
  ExpectFilled(desk);
  desk.area.resize(1000, 600);
  desk.Settle();
  ExpectFilled(desk);
}

TEST(FilledWindows, HoldAsMuchTimeAsEver) {
  FilledDesk desk;
  desk.Size(900, 760);
  const int height = desk.Find<QWidget>("Pic2")->height();
  ASSERT_GT(height, 480);
  desk.PlotLevel(0, 120, 60);  // half of 240 rows
  const QImage plot = desk.Plot();
  int lowest = 0;
  for (int y = 0; y < plot.height(); ++y)
    for (int x = 0; x < plot.width(); ++x)
      if ((plot.pixel(x, y) & 0xFFFFFF) == 0xFF0000) lowest = y;
  EXPECT_NEAR(lowest, height / 2, 2);
}

TEST(FilledWindows, KeepHalfOfThePlotInALowWindow) {
  FilledDesk desk;
  desk.Form().parentWidget()->setMinimumSize(1, 1);
  desk.Size(900, 120);
  EXPECT_EQ(desk.Find<QWidget>("Pic2")->height(), 120);
}

TEST(FilledWindows, ScaleWhatWasDrawnWhereThereIsNoLog) {
  FilledDesk desk;
  desk.session.AcquireStarted = true;
  desk.Size(900, 400);
  desk.Form().Picture2_Update(JobStart(), JobStart() + 120 * kSecond);
  desk.PlotLevel(0, 60, 50);
  const int before = desk.Find<QWidget>("Pic2")->height();
  desk.Size(1100, 740);
  const int after = desk.Find<QWidget>("Pic2")->height();
  const QImage plot = desk.Plot();
  // A quarter of the page, in the middle between the axis and the edge.
  const int middle = 64 + (plot.width() - 64) / 2;
  int red = 0;
  for (int y = 0; y < plot.height(); ++y) {
    bool isRed = false;
    for (int x = middle - 6; x <= middle + 6; ++x) isRed |= (plot.pixel(x, y) & 0xFFFFFF) == 0xFF0000;
    red += isRed;
  }
  EXPECT_NEAR(red, after / 4, 5) << "was " << before;
}

TEST(FilledWindows, PrintTheTimesOfTheAxisAnewInLettersOfTheSameSize) {
  FilledDesk desk;
  desk.session.Times.GraphPageTime = JobStart();
  desk.Size(900, 400);
  desk.Form().Picture2_Update(JobStart(), JobStart() + 120 * kSecond);
  const auto inkRows = [&] {
    const QImage strip = desk.Find<QWidget>("Picture3")->grab().toImage();
    int first = -1, last = -1;
    for (int y = 0; y < strip.height(); ++y)
      for (int x = 0; x < strip.width() - 8; ++x)
        if (qGray(strip.pixel(x, y)) < 128) first = first < 0 ? y : first, last = y;
    return std::pair(first, last);
  };
  const auto [top, bottom] = inkRows();
  desk.Size(900, 740);
  const auto [newTop, newBottom] = inkRows();
  EXPECT_EQ(newBottom - newTop, bottom - top);
  // Half way down, where the block ends.
  EXPECT_NEAR((newTop + newBottom) / 2.0, desk.Find<QWidget>("Picture3")->height() / 2.0, 2);
}

TEST(FilledWindows, GoBackToFifteenTwipsADotWhenThatIsSwitchedOff) {
  FilledDesk desk;
  desk.Size(900, 740);
  desk.PlotLevel(0, 60, 50);
  desk.session.FitGraphsToWindows = false;
  desk.windows.FollowLooks();
  desk.Settle();
  EXPECT_EQ(desk.Find<QWidget>("Pic2")->height(), 240);
  EXPECT_GT(CountOf(desk.Plot(), 0xFF0000), 60);
  desk.session.FitGraphsToWindows = true;
  desk.windows.FollowLooks();
  desk.Settle();
  EXPECT_GT(desk.Find<QWidget>("Pic2")->height(), 480);
}

TEST(FilledWindows, FollowTheAreaUntilTheOperatorHasMovedOne) {
  FilledDesk desk;
  desk.Form().parentWidget()->resize(500, 500);
  desk.area.resize(1000, 700);
  desk.Settle();
  EXPECT_EQ(desk.Form().parentWidget()->size(), QSize(500, 500)) << "moved by hand";
  desk.Create();
  desk.Settle();
  EXPECT_EQ(desk.Form().parentWidget()->size(), desk.area.viewport()->size());
  desk.area.resize(1200, 640);
  desk.Settle();
  EXPECT_EQ(desk.Form().parentWidget()->size(), desk.area.viewport()->size());
}

TEST(FilledWindows, FollowTheAreaThatIsScrolled) {
  FilledDesk desk(4);
  for (int i = 1; i <= 4; ++i) desk.session.CurrentParameters[i].FormIndex = static_cast<std::int16_t>(i);
  BuildGraphMap(desk.session, 4);
  desk.area.setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  desk.area.resize(700, 300);
  desk.Create();
  desk.Settle();
  QScrollBar* const bar = desk.area.verticalScrollBar();
  ASSERT_GT(bar->maximum(), 0);
  bar->setValue(bar->maximum());
  desk.area.resize(760, 320);
  desk.Settle();
  int right = 0;
  for (int graph = 1; graph <= 4; ++graph)
    right = std::max(right, desk.Form(graph).parentWidget()->geometry().right() + 1);
  EXPECT_EQ(right, desk.area.viewport()->width());
  EXPECT_EQ(desk.Form(1).parentWidget()->pos(), QPoint(0, 0));
}

TEST(FilledWindows, FollowTheAreaBehindTheReturnOfOneThatFilledIt) {
  FilledDesk desk(2);
  desk.session.CurrentParameters[2].FormIndex = 5;
  BuildGraphMap(desk.session, 2);
  desk.Create();
  desk.Settle();
  desk.Form(3).parentWidget()->showMaximized();
  desk.Settle();
  desk.area.resize(1000, 700);
  desk.Settle();
  desk.Form(3).parentWidget()->showNormal();
  desk.Settle();
  const QRect both = desk.Form(3).parentWidget()->geometry() | desk.Form(5).parentWidget()->geometry();
  EXPECT_EQ(both, desk.area.viewport()->rect());
}

TEST(FilledWindows, FollowTheAreaBehindTheOpeningOfOneThatWasClosed) {
  FilledDesk desk;
  desk.windows.Close(3);
  desk.Settle();
  desk.windows.Open(3, QRect(100, 80, 600, 400), 0);
  desk.Settle();
  EXPECT_EQ(desk.Form().parentWidget()->geometry(), QRect(100, 80, 600, 400));
  desk.area.resize(1000, 700);
  desk.Settle();
  EXPECT_EQ(desk.Form().parentWidget()->size(), desk.area.viewport()->size());
}

/// Red, a little lighter at most.
int CountOfReds(const QImage& picture) {
  int count = 0;
  for (int y = 0; y < picture.height(); ++y)
    for (int x = 0; x < picture.width(); ++x) {
      const QColor colour = picture.pixelColor(x, y);
      count += colour.red() == 255 && colour.green() == colour.blue() && colour.green() < 48;
    }
  return count;
}

TEST(NightColours, ShowTheChartOnDarkPaperAndLeaveThePictureAsItIs) {
  FilledDesk desk;
  desk.PlotLevel(0, 60, 50);
  const int red = CountOf(desk.Plot(), 0xFF0000);
  ASSERT_GT(red, 60);
  desk.session.NightColours = true;
  desk.windows.FollowLooks();
  const QImage night = desk.Plot();
  EXPECT_EQ(CountOf(night, 0xFFFFFF), 0);
  EXPECT_GT(CountOf(night, 0x14181D), night.width() * night.height() / 2);
  EXPECT_EQ(CountOfReds(night), red) << "as bright as letters have to be";
  desk.session.NightColours = false;
  desk.windows.FollowLooks();
  EXPECT_EQ(CountOf(desk.Plot(), 0xFF0000), red);
  EXPECT_GT(CountOf(desk.Plot(), 0xFFFFFF), 0);
}

TEST(NightColours, AreThereByThemselvesOnADarkDesktop) {
  FilledDesk desk;
  EXPECT_GT(CountOf(desk.Plot(), 0xFFFFFF), 0);
  const DarkDesktop dark;
  desk.Settle();
  EXPECT_EQ(CountOf(desk.Plot(), 0xFFFFFF), 0);
}

TEST(NightColours, DarkenTheLabelsOfALightDesktopToo) {
  FilledDesk desk;
  desk.Form().WriteValuesToLabels(1, 12);
  desk.session.NightColours = true;
  desk.windows.FollowLooks();
  desk.Settle();
  const QImage panel = LabelsOf(desk.Form()).grab().toImage();
  EXPECT_EQ(panel.pixel(0, 0) & 0xFFFFFF, 0x14181Du);
  EXPECT_EQ(LabelPicture(desk.Form(), "Label2_0").pixel(2, 2) & 0xFFFFFF, 0x2A3138u);
}

TEST(PaleCurves, AreDarkerOnWhitePaper) {
  FilledDesk desk;
  desk.session.CurrentParameters[1].color = 0x00FFFF;  // yellow
  desk.Form().RefreshForm();
  desk.PlotLevel(0, 60, 50, 0x00FFFF);
  desk.Settle();
  const QImage plot = desk.Plot();
  const std::int32_t shown = ReadableOn(0x00FFFF, colour::White, 3);
  EXPECT_EQ(CountOf(plot, 0xFFFF00), 0);
  EXPECT_GT(CountOf(plot, static_cast<QRgb>(Red(shown) << 16 | Green(shown) << 8 | Blue(shown))), 60);
}

TEST(StaleValues, AreGreyWithoutThePlateUntilTheyAreOfThisMomentAgain) {
  FilledDesk desk;
  desk.Form().WriteValuesToLabels(1, 12);
  desk.Settle();
  const QImage before = LabelPicture(desk.Form(), "Label2_0");
  desk.Form().ShowValuesStale(true);
  desk.Settle();
  const QImage stale = LabelPicture(desk.Form(), "Label2_0");
  EXPECT_EQ(stale.pixelColor(1, 1), desk.Form().palette().color(QPalette::Window));
  for (int y = 0; y < stale.height(); ++y)
    for (int x = 0; x < stale.width(); ++x) EXPECT_LT(stale.pixelColor(x, y).saturation(), 60);
  EXPECT_EQ(desk.Text("Label2_0"), "12.000") << "the last value stays";
  desk.Form().ShowValuesStale(false);
  desk.Settle();
  EXPECT_EQ(LabelPicture(desk.Form(), "Label2_0"), before);
}

TEST(Labels, KeepTheDigitsOfAValueInTheirPlacesWhenItGetsLonger) {
  FilledDesk desk;
  const auto lastDigits = [&] {
    const QImage label = LabelPicture(desk.Form(), "Label2_0");
    return label.copy(label.width() - 26, 0, 26, label.height());
  };
  const auto show = [&](float value) {
    desk.Form().WriteValuesToLabels(1, value);
    desk.Settle();
    return lastDigits();
  };
  const QImage one = show(1.125F);
  EXPECT_EQ(show(99.125F), one);
  EXPECT_EQ(show(-99.125F), one);
  EXPECT_EQ(show(-54321.125F), one);
  EXPECT_EQ(desk.Text("Label2_0"), "-54321.125");
}

}  // namespace
}  // namespace velk::test
