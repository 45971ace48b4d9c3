#include <gtest/gtest.h>

#include <QApplication>

#include "graphs/graph_form_fixture.h"
#include "graphs/windows/chart_fonts.h"

namespace velk {
namespace {

TEST(LowWindow, KeepsValuesReadableBesideTheScrollBarOfItsLabels) {
  test::GraphDesk desk(3);
  desk.Create();
  desk.ResizeWindow(600, 90);
  QApplication::processEvents();
  for (int parameter = 1; parameter <= 3; ++parameter) desk.Form().WriteValuesToLabels(parameter, -123456.789F);
  desk.Refresh();
  desk.Form().RefreshForm();
  QApplication::processEvents();
  EXPECT_EQ(desk.Text("Label2_0"), "-123456.789");
  const int needed = QFontMetrics(ChartFont("DejaVu Sans", 10)).horizontalAdvance("-123456.789");
  EXPECT_GE(desk.Box("Label2_0").width(), needed);
  EXPECT_GE(desk.Box("Label3_0").width(), 1);
  EXPECT_LT(desk.Box("Label3_0").right(), test::LabelsOf(desk.Form()).width());
}

TEST(BrokenLines, GoOnBetweenWordsWithinALongWordAndNoFurtherThanAsked) {
  const QFont font = ChartFont("DejaVu Sans", 10);
  const double four = QFontMetricsF(font).horizontalAdvance("0000");
  EXPECT_EQ(BrokenLines(font, "0000", four, 1), QStringList{"0000"}) << "as wide as the line";
  EXPECT_EQ(BrokenLines(font, "00 0000", four, 2), (QStringList{"00", "0000"}));
  EXPECT_EQ(BrokenLines(font, "0000000", four, 2), (QStringList{"0000", "000"}));
  EXPECT_TRUE(BrokenLines(font, "00000000000", four, 2)[1].endsWith(QChar(0x2026)));
  EXPECT_TRUE(BrokenLines(font, "000000", four, 1)[0].endsWith(QChar(0x2026)));
  EXPECT_TRUE(BrokenLines(font, "", four, 2).isEmpty());
}

TEST(LowWindow, TakesEverySizeThatAWindowCanBeGiven) {
  test::GraphDesk desk(3);
  desk.Create();
  for (const int width : {1, 100, 200, 300, 1200}) {
    for (const int height : {1, 40, 80, 120, 160, 400}) {
      desk.ResizeWindow(width, height);
      QApplication::processEvents();
      desk.Form().WriteValuesToLabels(1, 12.5F);
      desk.Refresh();
      desk.Form().RefreshForm();
      EXPECT_EQ(desk.Text("Label2_0"), "12.500") << width << "x" << height;
    }
  }
}

}  // namespace
}  // namespace velk
