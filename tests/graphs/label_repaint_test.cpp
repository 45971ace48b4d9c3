#include <gtest/gtest.h>

#include <QBackingStore>
#include <QCoreApplication>
#include <QEvent>
#include <QPaintEvent>
#include <string>
#include <utility>

#include "graphs/graph_form_fixture.h"

namespace velk {
namespace {

using test::GraphDesk;

/// What a widget has repainted. Something without a look stands in front of it, so that it is repainted by events: the
/// rectangle around what has changed. What is copied where nothing stands in front is told by OnTheScreen.
class RepaintWatch : public QObject {
 public:
  explicit RepaintWatch(QWidget& widget) : cover_(&widget) {
    cover_.setGeometry(widget.rect());
    cover_.show();
    for (int i = 0; i < 3; ++i) QCoreApplication::processEvents();  // until it is painted
    widget.installEventFilter(this);
  }
  QRegion region;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint) region += static_cast<QPaintEvent*>(event)->region();
    return QObject::eventFilter(watched, event);
  }

 private:
  QWidget cover_;
};

struct Repainting : testing::Test {
  Repainting() {
    desk.Create();
    Show(0);
  }

  LabelRows& Labels() { return test::LabelsOf(desk.Form()); }
  QImage Picture() { return Labels().grab().toImage(); }
  void Show(float value) {
    desk.Form().WriteValuesToLabels(1, value);
    desk.Refresh();
    QCoreApplication::processEvents();
  }
  /// All rows and curves change, and one row's alarm.
  void Sample(int second, float value) {
    const double time = desk.session.Times.GraphPageTime + second / 86400.0;
    for (int i = 1; i <= kRows; ++i) {
      desk.Form().PlotValue(time, time + 1 / 86400.0, static_cast<float>(10 * i), static_cast<float>(10 * i + 5), 0,
                            100, 0x0000FF, false);
      desk.Form().ShowAlarm(i, i == 1 + second % kRows ? AlarmSide::High : AlarmSide::None);
      desk.Form().WriteValuesToLabels(i, value + 0.125F * static_cast<float>(i));
    }
    desk.Refresh();
    QCoreApplication::processEvents();
  }

  static constexpr int kRows = 4;
  GraphDesk desk{kRows};
};

TEST_F(Repainting, WhatAValueChangesIsRepainted) {
  for (const float value : {12.345F, 12.346F, 13.346F, 912.3F, -912.3F, -912.4F, 0.0F, 1234567.0F, 12.345F}) {
    const QImage before = Picture();
    RepaintWatch watch(Labels());
    Show(value);
    const QRegion repainted = std::exchange(watch.region, {});
    const QImage after = Picture();
    ASSERT_EQ(before.size(), after.size());
    int changed = 0;
    for (int y = 0; y < after.height(); ++y)
      for (int x = 0; x < after.width(); ++x) {
        if (before.pixel(x, y) == after.pixel(x, y)) continue;
        ++changed;
        const QPoint place(static_cast<int>(x / after.devicePixelRatio()),
                           static_cast<int>(y / after.devicePixelRatio()));
        ASSERT_TRUE(repainted.contains(place)) << value << ": " << x << ", " << y;
      }
    EXPECT_GT(changed, 0) << value;
  }
}

/// What stands on the screen where a widget is. A grab has it painted anew, by a painter.
QImage OnTheScreen(const QWidget& widget) {
  const QWidget& window = *widget.window();
  const auto& screen = *static_cast<const QImage*>(window.backingStore()->paintDevice());
  const double ratio = screen.devicePixelRatio();
  const QPoint corner = widget.mapTo(&window, QPoint(0, 0)) * ratio;
  return screen.copy(QRect(corner, widget.size() * ratio)).convertToFormat(QImage::Format_RGB32);
}

QImage Grabbed(QWidget& widget) {
  return widget.grab().toImage().convertToFormat(QImage::Format_RGB32);
}

TEST_F(Repainting, TheScreenShowsWhatAPainterWouldPaint) {
  auto& plot = *desk.Find<QWidget>("Pic2");
  for (const bool night : {false, true}) {
    desk.session.NightColours = night;
    desk.windows.FollowLooks();
    QCoreApplication::processEvents();
    for (const float value : {12.345F, 12.346F, -912.3F, 1234567.0F, 99.5F}) {
      desk.Form().PlotValue(desk.session.Times.GraphPageTime, desk.session.Times.GraphPageTime + 20.0 / 86400, 10,
                            value, 0, 100, 0x0000FF, false);
      Show(value);
      EXPECT_EQ(OnTheScreen(Labels()), Grabbed(Labels())) << value << (night ? " by night" : "");
      EXPECT_EQ(OnTheScreen(plot), Grabbed(plot)) << value << (night ? " by night" : "");
    }
  }
}

/// Counts the events by which a widget is repainted.
class PaintEvents : public QObject {
 public:
  explicit PaintEvents(QWidget& widget) { widget.installEventFilter(this); }
  int count = 0;

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Paint) ++count;
    return false;
  }
};

TEST_F(Repainting, ASampleIsCopiedToTheScreenWithoutTheToolkit) {
  auto& plot = *desk.Find<QWidget>("Pic2");
  Sample(0, -912.5F);
  PaintEvents ofLabels(Labels()), ofPlot(plot);
  int second = 0;
  for (const float value : {1.5F, 12.25F, -99.5F, 0.5F, 1.5F}) {
    const QImage plotBefore = OnTheScreen(plot), labelsBefore = OnTheScreen(Labels());
    Sample(++second, value);
    EXPECT_EQ(std::exchange(ofLabels.count, 0) + std::exchange(ofPlot.count, 0), 0) << value;
    EXPECT_NE(OnTheScreen(plot), plotBefore);
    EXPECT_NE(OnTheScreen(Labels()), labelsBefore);
    EXPECT_EQ(OnTheScreen(plot), Grabbed(plot)) << value;
    EXPECT_EQ(OnTheScreen(Labels()), Grabbed(Labels())) << value;
    ofLabels.count = ofPlot.count = 0;
  }
  const int width = Labels().Box({2, 0}).width();
  Sample(++second, 1234567.0F);
  EXPECT_GT(Labels().Box({2, 0}).width(), width);
  EXPECT_EQ(OnTheScreen(plot), Grabbed(plot));
  EXPECT_EQ(OnTheScreen(Labels()), Grabbed(Labels()));
}

TEST_F(Repainting, NothingOfAHigherHeaderStaysOnTheScreen) {
  auto& header = *desk.Find<QWidget>("Picture1");
  for (const bool night : {false, true}) {
    desk.session.NightColours = night;
    desk.windows.FollowLooks();
    for (const int curves : {8, 2, 5, 0, 8}) {
      test::GiveCurves(desk.session, curves);
      desk.Form().RefreshForm();
      Show(0);
      EXPECT_EQ(OnTheScreen(header), Grabbed(header)) << curves << (night ? " by night" : "");
    }
  }
}

TEST_F(Repainting, AValueLooksAlikeWhateverStoodBeforeIt) {
  for (const char* picture : {"#0.000", "0.0e+00", "[0] (g)", "0%", "#,##0;-#,##0;none"}) {
    desk.session.CurrentParameters[1].format = picture;
    desk.Form().RefreshForm();
    for (const float value : {1.0F, 77.7F, -7.7F, 0.0F, 888.8F, 111.1F, 1234.5F, 9.99e-5F, 4321.5F}) {
      Show(value);
      const QImage written = Picture();
      Labels().SetNight(true);
      Labels().SetNight(false);  // all anew
      ASSERT_EQ(written, Picture()) << picture << " " << value;
    }
  }
}

TEST_F(Repainting, ASegmentBelowTheWindowIsPaintedWhenTheWindowIsHighEnough) {
  auto& plot = *desk.Find<QWidget>("Pic2");
  const double page = 46000, second = 1.0 / 86400;
  const auto plotAt = [&](int seconds, float value) {
    desk.Form().PlotValue(page + seconds * second, page + (seconds + 1) * second, 10, value, 0, 100, 0x0000FF, false);
    Show(value);
  };
  plotAt(0, 50);
  desk.ResizeWindow(900, 200);
  Show(0);
  RepaintWatch watch(plot);
  plotAt(230, 90);
  EXPECT_TRUE(watch.region.isEmpty());
  plotAt(2, 80);
  EXPECT_FALSE(std::exchange(watch.region, {}).isEmpty());
  desk.ResizeWindow(900, 500);
  QCoreApplication::processEvents();
  EXPECT_EQ(OnTheScreen(plot), Grabbed(plot));
  plotAt(231, 70);
  EXPECT_FALSE(watch.region.isEmpty());
  EXPECT_EQ(OnTheScreen(plot), Grabbed(plot));
}

TEST_F(Repainting, AValueWhoseLastDigitChangesRepaintsNoMoreThanHalfOfItsRoom) {
  Show(12.345F);
  RepaintWatch watch(Labels());
  Show(12.346F);
  const QRect box = Labels().Box({2, 0});
  ASSERT_FALSE(watch.region.isEmpty());
  EXPECT_TRUE(box.contains(watch.region.boundingRect()));
  EXPECT_LE(watch.region.boundingRect().width(), box.width() / 2);
}

/// As a window does that is on its way to another screen.
TEST_F(Repainting, AValueIsPaintedIntoAPictureOfOtherDots) {
  Show(12.345F);
  const QRect box = Labels().Box({2, 0});
  const QImage own = Labels().grab(box).toImage().convertToFormat(QImage::Format_RGB32);
  QImage twice(own.size() * 2, QImage::Format_RGB32);
  twice.setDevicePixelRatio(2 * own.devicePixelRatio());
  Labels().render(&twice, {}, box);
  twice.setDevicePixelRatio(own.devicePixelRatio());
  EXPECT_EQ(twice, own.scaled(twice.size()));
}

TEST_F(Repainting, ValuesThatStayWhatTheyAreAreNotRepainted) {
  Show(12.345F);
  RepaintWatch watch(Labels());
  Show(12.345F);
  desk.Form().ShowValuesStale(false);
  desk.Refresh();
  QCoreApplication::processEvents();
  EXPECT_TRUE(watch.region.isEmpty());
}

}  // namespace
}  // namespace velk
