#include <gtest/gtest.h>

#include <QPalette>

#include "graphs/graph_form_fixture.h"
#include "graphs/windows/chart_fonts.h"
#include "support/window_driving.h"

namespace velk {
namespace {

using test::GraphDesk;

const std::string kMark = "\u25B2", kLowMark = "\u25BC";

/// The colour behind the text of a label, as it stands on the screen, inside its frame.
QColor Background(const QImage& label) {
  return QColor(label.pixel(2, 2));
}

/// That of its edge.
QColor Edge(const QImage& label) {
  return QColor(label.pixel(0, 0));
}

/// A palette for the time of a test.
class UnderPalette {
 public:
  explicit UnderPalette(const QColor& button) : before_(QApplication::palette()) {
    QPalette changed = before_;
    changed.setColor(QPalette::Button, button);
    QApplication::setPalette(changed);
  }
  ~UnderPalette() { QApplication::setPalette(before_); }
  UnderPalette(const UnderPalette&) = delete;
  UnderPalette& operator=(const UnderPalette&) = delete;

 private:
  const QPalette before_;
};

class AlarmLabels : public testing::Test {
 protected:
  AlarmLabels() {
    for (int i = 1; i <= 3; ++i) desk.session.CurrentParameters[i].upperalarm = "11.5";
    desk.Create();
    for (int i = 1; i <= 3; ++i) desk.Form().WriteValuesToLabels(i, 10.0F + static_cast<float>(i));
    desk.Refresh();
  }

  QImage Value(int row) { return test::LabelPicture(desk.Form(), "Label2_" + std::to_string(row)); }
  void Sample(bool alarmed, AlarmSide side = AlarmSide::High) {
    desk.Form().ShowAlarm(2, alarmed ? side : AlarmSide::None);
    desk.Refresh();
  }

  GraphDesk desk{3};
};

TEST_F(AlarmLabels, ChangeTheirBackgroundWithEachSample) {
  const QColor button = QApplication::palette().color(QPalette::Button);
  ASSERT_NE(button, QColor(Qt::white));
  for (int flash = 0; flash < 3; ++flash) {
    Sample(true);
    EXPECT_EQ(Background(Value(1)), QColor(Qt::white)) << flash;
    Sample(true);
    EXPECT_EQ(Background(Value(1)), button) << flash;
  }
}

TEST_F(AlarmLabels, CarryAMarkAllTheWhileSinceColourAloneCanBeMissed) {
  EXPECT_EQ(desk.Text("Label2_1"), "12.000");
  for (int flash = 0; flash < 4; ++flash) {
    Sample(true);
    EXPECT_EQ(desk.Text("Label2_1"), kMark + "12.000") << flash;
  }
}

TEST_F(AlarmLabels, PointToTheSideOnWhichTheValueIsOut) {
  Sample(true, AlarmSide::Low);
  EXPECT_EQ(desk.Text("Label2_1"), kLowMark + "12.000");
  const QImage low = Value(1);
  Sample(false);
  Sample(true, AlarmSide::High);
  EXPECT_EQ(desk.Text("Label2_1"), kMark + "12.000");
  // The same but for the mark, which stands upside down.
  const QImage high = Value(1);
  ASSERT_EQ(low.size(), high.size());
  EXPECT_NE(low, high);
  const QRect digits(low.width() / 3, 2, 2 * low.width() / 3 - 2, low.height() - 4);
  EXPECT_EQ(low.copy(digits), high.copy(digits));
}

TEST_F(AlarmLabels, LeaveTheDigitsWhereTheyAre) {
  const QImage before = Value(1);
  Sample(true);
  Sample(false);
  EXPECT_EQ(Value(1).size(), before.size());
  EXPECT_EQ(Value(1), before);
}

TEST_F(AlarmLabels, LookAsEverOnceTheValueIsBackWithinItsLimits) {
  const QColor before = Background(Value(1));
  Sample(true);
  Sample(false);
  EXPECT_EQ(Background(Value(1)), before);
  EXPECT_EQ(desk.Text("Label2_1"), "12.000");
  // The next alarm begins with white again.
  Sample(true);
  EXPECT_EQ(Background(Value(1)), QColor(Qt::white));
}

TEST_F(AlarmLabels, HaveTheGroundOfButtonsAtRestBehindAnyCurveColour) {
  const QColor button = QApplication::palette().color(QPalette::Button);
  for (const std::int32_t colour : {0x000000, 0xFFFFFF, 0x80FFFF, 0xC0C0C0, 0x0000C0}) {
    desk.session.CurrentParameters[2].color = colour;
    desk.Form().RefreshForm();
    Sample(false);
    EXPECT_EQ(Background(Value(1)), button) << colour;
    EXPECT_EQ(Edge(Value(1)), button) << colour;
    Sample(true);
    EXPECT_EQ(Background(Value(1)), QColor(Qt::white)) << colour;
    Sample(true);
    EXPECT_EQ(Background(Value(1)), button) << colour;
    Sample(false);
    EXPECT_EQ(Background(Value(1)), button) << colour;
  }
}

TEST_F(AlarmLabels, HaveAFrameInTheColourOfAlarmsAllTheWhile) {
  for (int flash = 0; flash < 4; ++flash) {
    Sample(true);
    EXPECT_EQ(Edge(Value(1)), QColor(0xC8, 0x10, 0x2E)) << flash;
  }
  Sample(false);
  EXPECT_EQ(Edge(Value(1)), Background(Value(1)));
}

TEST_F(AlarmLabels, FlashPlainlyWhereButtonsAreWhiteOrDark) {
  for (const QColor& button : {QColor(Qt::white), QColor(0x22, 0x26, 0x2B)}) {
    const UnderPalette palette(button);
    Sample(true);
    Sample(true);
    EXPECT_EQ(Background(Value(1)), button);
    EXPECT_NE(Edge(Value(1)), button);
    Sample(false);
    EXPECT_EQ(Edge(Value(1)), button);
  }
}

/// Grey digits are those of an old value.
TEST_F(AlarmLabels, AreTheBrightestOnADarkDesktop) {
  const UnderPalette palette(QColor(0x22, 0x26, 0x2B));
  Sample(true);
  Sample(true);
  const QImage plate = Value(1).copy();
  int brightest = 0;
  for (int y = 4; y < plate.height() - 4; ++y)
    for (int x = plate.width() / 3; x < plate.width() - 4; ++x)
      brightest = std::max(brightest, qGray(plate.pixel(x, y)));
  EXPECT_GE(brightest, 250);
}

TEST_F(AlarmLabels, FollowAChangeOfThemeAtRestAndInAlarm) {
  Sample(true);
  const QColor button(0x22, 0x26, 0x2B);
  const UnderPalette palette(button);
  QCoreApplication::processEvents();
  for (const int row : {0, 2}) {
    EXPECT_EQ(Background(Value(row)), button) << "at rest, without a sample: " << row;
    EXPECT_EQ(Edge(Value(row)), button) << row;
  }
  EXPECT_EQ(Background(Value(1)), QColor(Qt::white));
  Sample(false);
  EXPECT_EQ(Background(Value(1)), button);
}

TEST_F(AlarmLabels, AreThoseOfTheAlarmedParameterOnly) {
  const QColor before = Background(Value(0));
  Sample(true);
  for (const int row : {0, 2}) EXPECT_EQ(Background(Value(row)), before) << row;
  EXPECT_EQ(desk.Text("Label2_0"), "11.000");
}

TEST_F(AlarmLabels, StayWithoutAnAlarmForAParameterOfAnotherGraph) {
  desk.Form().ShowAlarm(7, AlarmSide::High);
  desk.Refresh();
  for (int row = 0; row < 3; ++row)
    EXPECT_EQ(desk.Text("Label2_" + std::to_string(row)), std::to_string(11 + row) + ".000");
}

TEST_F(AlarmLabels, KeepANameAndAValueInView) {
  desk.session.CurrentParameters[2].name = "Давление на входе насоса";
  desk.Form().RefreshForm();
  desk.Form().WriteValuesToLabels(2, -1234.5F);
  Sample(true);
  test::ShowWindow(*desk.Form().parentWidget(), "alarmed-white");
  EXPECT_EQ(desk.Text("Label2_1"), kMark + "-1234.500");
  EXPECT_LE(QFontMetrics(ChartFont("DejaVu Sans", 10)).horizontalAdvance("-1234.500"), desk.Box("Label2_1").width());
  Sample(true);
  test::ShowWindow(*desk.Form().parentWidget(), "alarmed-button");
}

}  // namespace
}  // namespace velk
