#include "graphs/windows/chart_fonts.h"

#include <gtest/gtest.h>

#include <QFontMetricsF>

namespace velk {
namespace {

TEST(FitFont, GivesLettersThatFitOrTheSmallestOnes) {
  const QFont font = ChartFont("DejaVu Sans", 10);
  for (const char* text : {"bbl/min", "lb/gal", "Treating Pressure", "м³/мин", "кгс/см²"}) {
    const QString shown = QString::fromUtf8(text);
    for (double width = 20; width < 140; width += 1) {
      const QFont fitting = FitFont(font, shown, width, 10);
      const double advance = QFontMetricsF(fitting).horizontalAdvance(shown);
      EXPECT_TRUE(advance <= width || fitting.pixelSize() == 10)
          << text << " is " << advance << " wide in " << width << " at " << fitting.pixelSize();
    }
  }
}

TEST(FitFont, LeavesLettersThatFitAsTheyAre) {
  const QFont font = ChartFont("DejaVu Sans", 10);
  const QFont fitting = FitFont(font, QStringLiteral("psi"), 60, 10);
  EXPECT_EQ(fitting.pixelSize(), font.pixelSize());
  EXPECT_EQ(fitting.stretch(), 100);
}

TEST(FitFont, KeepsUnitsOfUsualJobsWhole) {
  for (const char* units : {"bbl/min", "lb/gal", "kg/m³", "м³/мин"}) {
    const QString shown = QString::fromUtf8(units);
    const QFont fitting = FitFont(ChartFont("DejaVu Sans", 10), shown, 40, 10);
    EXPECT_EQ(QFontMetricsF(fitting).elidedText(shown, Qt::ElideRight, 40), shown);
  }
}

}  // namespace
}  // namespace velk
