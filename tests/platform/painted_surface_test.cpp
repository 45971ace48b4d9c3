#include "platform/drawing/painted_surface.h"

#include <gtest/gtest.h>

#include <QImage>
#include <limits>

#include "base/colour.h"

namespace velk {
namespace {

/// A sheet of 20 x 10 mm at 254 dots an inch: 10 dots a millimetre.
struct Sheet {
  explicit Sheet(Unit unit = Unit::Millimetre)
      : surface(painter, unit, Convert(20, Unit::Millimetre, unit), Convert(10, Unit::Millimetre, unit), 254) {}

  static QImage White() {
    QImage white(200, 100, QImage::Format_RGB32);
    white.fill(Qt::white);
    return white;
  }
  QRgb At(int x, int y) const { return image.pixel(x, y) & 0xFFFFFF; }
  int CountOf(QRgb colour) const {
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
      for (int x = 0; x < image.width(); ++x) count += At(x, y) == colour;
    return count;
  }
  /// Columns in which something stands.
  int InkWidth() const {
    int first = image.width(), last = -1;
    for (int x = 0; x < image.width(); ++x)
      for (int y = 0; y < image.height(); ++y)
        if (At(x, y) != 0xFFFFFF) first = std::min(first, x), last = x;
    return last - first + 1;
  }

  QImage image = White();
  QPainter painter{&image};
  PaintedSurface surface;
};

TEST(PaintedSurface, HasTheSameSheetInEachUnit) {
  EXPECT_DOUBLE_EQ(Sheet(Unit::Millimetre).surface.Width(), 20);
  EXPECT_NEAR(Sheet(Unit::Point).surface.Width(), 56.6929, 1e-3);
  EXPECT_NEAR(Sheet(Unit::Twip).surface.Height(), 566.929, 1e-2);
}

TEST(PaintedSurface, DrawsAtThePlaceThatItsUnitGives) {
  for (const Unit unit : {Unit::Millimetre, Unit::Point, Unit::Twip}) {
    Sheet sheet(unit);
    const auto mm = [&](double length) { return Convert(length, Unit::Millimetre, unit); };
    sheet.surface.Fill(mm(2), mm(3), mm(4), mm(1), 0x0000FF);  // dots 20 to 59 and 30 to 39
    EXPECT_EQ(sheet.CountOf(0xFF0000), 40 * 10) << static_cast<int>(unit);
    EXPECT_EQ(sheet.At(20, 30), 0xFF0000u);
    EXPECT_EQ(sheet.At(59, 39), 0xFF0000u);
  }
}

TEST(PaintedSurface, HasPensAsWideOnPaperAsOnAScreen) {
  Sheet sheet;
  sheet.surface.SetPenWidth(Convert(1, Unit::Millimetre, Unit::Pixel));
  sheet.surface.Line(0, 5, 20, 5, colour::Black);
  int thick = 0;
  for (int y = 0; y < 100; ++y) thick += sheet.At(100, y) == 0;
  EXPECT_EQ(thick, 10);
}

TEST(PaintedSurface, DrawsADotOfTheDeviceAtLeast) {
  Sheet sheet;
  sheet.surface.SetPenWidth(0);
  sheet.surface.Line(0, 5, 20, 5, colour::Black);
  EXPECT_GE(sheet.CountOf(0), 200);
}

TEST(PaintedSurface, DrawsACircleAroundItsCentre) {
  Sheet sheet;
  sheet.surface.Circle(10, 5, 3, colour::Black);
  EXPECT_EQ(sheet.At(100, 50), 0xFFFFFFu);
  for (const QPoint on : {QPoint(70, 50), QPoint(129, 50), QPoint(100, 20), QPoint(100, 79)})
    EXPECT_NE(sheet.At(on.x(), on.y()), 0xFFFFFFu) << on.x() << " " << on.y();
  EXPECT_LE(sheet.InkWidth(), 65);
  EXPECT_GE(sheet.InkWidth(), 60);
}

TEST(PaintedSurface, StretchesAPictureToItsRectangle) {
  const std::uint32_t red[] = {0xFFFF0000, 0xFFFF0000};
  Sheet sheet;
  sheet.surface.Picture(1, 1, 5, 2, {red, 2, 2, 1});
  EXPECT_EQ(sheet.CountOf(0xFF0000), 50 * 20);
}

TEST(PaintedSurface, PrintsBelowAndRightOfTheGivenPlaceAsWideAsItMeasures) {
  Sheet sheet;
  sheet.surface.SetFont({"DejaVu Sans", 10, false});
  sheet.surface.Print(2, 3, "HHH", colour::Black);
  const double width = sheet.surface.TextWidth("HHH"), height = sheet.surface.TextHeight("HHH");
  EXPECT_NEAR(sheet.InkWidth(), width * 10, 6);
  EXPECT_NEAR(height, 1.16 * Convert(10, Unit::Point, Unit::Millimetre), 0.2);
  for (int y = 0; y < 100; ++y)
    for (int x = 0; x < 200; ++x)
      if (sheet.At(x, y) != 0xFFFFFF) {
        ASSERT_GE(x, 19);
        ASSERT_GE(y, 29);
        ASSERT_LT(y, (3 + height) * 10 + 1);
      }
}

TEST(PaintedSurface, MeasuresTheSameTextAlikeInEachUnit) {
  Sheet millimetres(Unit::Millimetre), points(Unit::Point);
  for (Sheet* sheet : {&millimetres, &points}) sheet->surface.SetFont({"DejaVu Sans", 12, false});
  EXPECT_NEAR(Convert(millimetres.surface.TextWidth("Давление"), Unit::Millimetre, Unit::Point),
              points.surface.TextWidth("Давление"), 1e-6);
}

TEST(PaintedSurface, DrawsNothingForPlacesThatAreNoNumbers) {
  const std::uint32_t pixel = 0xFF000000;
  Sheet sheet;
  for (const double bad : {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
    sheet.surface.Line(bad, 0, 1, 1, colour::Black);
    sheet.surface.Line(0, 0, 1, bad, colour::Black);
    sheet.surface.Circle(5, 5, bad, colour::Black);
    sheet.surface.Fill(0, 0, bad, 1, colour::Black);
    sheet.surface.Picture(bad, 0, 1, 1, {&pixel, 1, 1, 1});
    sheet.surface.Print(1, bad, "text", colour::Black);
  }
  EXPECT_EQ(sheet.CountOf(0xFFFFFF), 200 * 100);
}

TEST(PaintedSurface, CutsALineThatRunsFarOutWithoutBendingIt) {
  Sheet sheet;
  sheet.surface.Line(-3e9, -3e9, 3e9, 3e9, colour::Black);
  EXPECT_NE(sheet.At(20, 20), 0xFFFFFFu);
  EXPECT_NE(sheet.At(80, 80), 0xFFFFFFu);
  EXPECT_EQ(sheet.At(150, 20), 0xFFFFFFu);
}

}  // namespace
}  // namespace velk
