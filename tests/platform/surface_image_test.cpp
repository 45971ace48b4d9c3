#include "platform/drawing/surface_image.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QFontMetricsF>
#include <algorithm>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "base/colour.h"

namespace velk::test {

namespace {

QFont SmallFont() {
  QFont font("DejaVu Sans");
  font.setPixelSize(13);
  return font;
}

/// 100 x 40 pixels at ratio 1.
SurfaceImage Small(double ratio = 1) {
  return SurfaceImage(1500, 600, ratio, SmallFont());
}

QRgb At(const SurfaceImage& surface, int x, int y) {
  return surface.View().pixel(x, y) & 0xFFFFFF;
}

int CountOf(const SurfaceImage& surface, QRgb colour) {
  const QImage view = surface.View();
  int count = 0;
  for (int y = 0; y < view.height(); ++y)
    for (int x = 0; x < view.width(); ++x) count += (view.pixel(x, y) & 0xFFFFFF) == colour;
  return count;
}

}  // namespace

TEST(SurfaceImage, HasAPixelForFifteenTwipsTimesTheRatio) {
  EXPECT_EQ(Small(1).View().size(), QSize(100, 40));
  EXPECT_EQ(Small(1.5).View().size(), QSize(150, 60));
  EXPECT_EQ(Small(2).View().size(), QSize(200, 80));
  EXPECT_EQ(Small(2).PixelHeight(), 80);
  EXPECT_DOUBLE_EQ(Small(2).Width(), 1500);
}

TEST(SurfaceImage, TakesColoursAsBlueGreenRed) {
  SurfaceImage surface = Small();
  surface.Line(150, 150, 600, 150, 0x0000FF);
  EXPECT_EQ(At(surface, 20, 10), 0xFF0000u);
  surface.Line(150, 300, 600, 300, 0xFF8000);
  EXPECT_EQ(At(surface, 20, 20), 0x0080FFu);
}

TEST(SurfaceImage, DrawsWithThePenWidthTimesTheRatio) {
  for (const double ratio : {1.0, 2.0})
    for (const int width : {1, 2, 3}) {
      SurfaceImage surface = Small(ratio);
      surface.SetPenWidth(width);
      surface.Line(0, 300, 1500, 300, colour::Black);
      int thick = 0;
      for (int y = 0; y < surface.PixelHeight(); ++y) thick += At(surface, static_cast<int>(50 * ratio), y) == 0;
      EXPECT_EQ(thick, width * ratio);
    }
}

TEST(SurfaceImage, ShowsALineWithoutLength) {
  SurfaceImage surface = Small();
  surface.SetPenWidth(2);
  surface.Line(600, 300, 600, 300, colour::Black);
  EXPECT_GE(CountOf(surface, 0), 1);
}

TEST(SurfaceImage, ShowsASmallCircleAsADot) {
  for (const double ratio : {1.0, 1.5, 2.0}) {
    SurfaceImage surface = Small(ratio);
    surface.SetPenWidth(2);
    surface.Circle(600, 300, 3, colour::Black);
    EXPECT_GE(CountOf(surface, 0), 4);
    EXPECT_LE(CountOf(surface, 0), 16 * ratio * ratio);
  }
}

TEST(SurfaceImage, CutsALineThatRunsFarOutWithoutBendingIt) {
  SurfaceImage surface = Small();
  surface.Line(-3e9, -3e9, 3e9, 3e9, colour::Black);
  EXPECT_EQ(At(surface, 20, 20), 0u);
  EXPECT_EQ(At(surface, 39, 39), 0u);
  EXPECT_EQ(At(surface, 80, 20), 0xFFFFFFu);
  surface.Line(0, 150, 3e37, 160, colour::Black);
  EXPECT_EQ(At(surface, 90, 10), 0u);
}

/// Square pens at each step of the straight way, pixel by pixel; what lies outside is left out.
void WalkByHand(QImage& picture, QPoint from, QPoint to, int pen) {
  const int dx = std::abs(to.x() - from.x()), dy = std::abs(to.y() - from.y());
  const int stepX = from.x() < to.x() ? 1 : -1, stepY = from.y() < to.y() ? 1 : -1;
  for (int error = dx - dy;;) {
    for (int y = from.y() - pen / 2; y < from.y() - pen / 2 + pen; ++y)
      for (int x = from.x() - pen / 2; x < from.x() - pen / 2 + pen; ++x)
        if (picture.rect().contains(x, y)) picture.setPixel(x, y, qRgb(255, 0, 0));
    if (from == to) return;
    const int twice = 2 * error;
    if (twice >= -dy) error -= dy, from.rx() += stepX;
    if (twice <= dx) error += dx, from.ry() += stepY;
  }
}

TEST(SurfaceImage, DrawsALineAsItIsWalkedByHandInsideAndAtEachEdge) {
  std::mt19937 random(7);
  for (int i = 0; i < 3000; ++i) {
    const double ratio = i % 2 == 0 ? 1 : 2;
    SurfaceImage surface = Small(ratio);
    const auto pen = static_cast<int>(random() % 4 + 1);
    surface.SetPenWidth(pen);
    const auto place = [&](int below) { return static_cast<int>(random() % static_cast<unsigned>(below)); };
    const QPoint from(place(surface.View().width() + 1), place(surface.View().height() + 1));
    const QPoint to(std::clamp(from.x() + place(9) - 4, 0, surface.View().width()),
                    std::clamp(from.y() + place(9) - 4, 0, surface.View().height()));
    const auto twips = [&](int pixel) { return (pixel + 0.25) * 15 / ratio; };
    surface.TakeDirty();
    surface.Line(twips(from.x()), twips(from.y()), twips(to.x()), twips(to.y()), 0x0000FF);
    QImage expected(surface.View().size(), QImage::Format_RGB32);
    expected.fill(Qt::white);
    WalkByHand(expected, from, to, static_cast<int>(pen * ratio));
    QImage drawn = surface.View().copy();
    drawn.setDevicePixelRatio(1);
    ASSERT_EQ(drawn, expected) << from.x() << " " << from.y() << " to " << to.x() << " " << to.y() << ", pen " << pen;
    const QRect dirty = surface.TakeDirty();
    for (int y = 0; y < drawn.height(); ++y)
      for (int x = 0; x < drawn.width(); ++x)
        if (drawn.pixel(x, y) != qRgb(255, 255, 255)) {
          ASSERT_TRUE(dirty.contains(static_cast<int>(x / ratio), static_cast<int>(y / ratio)));
        }
  }
}

/// A picture whose rows are all moved when it scrolls.
struct MovedByHand {
  QImage picture{100, 40, QImage::Format_RGB32};

  MovedByHand() { picture.fill(Qt::white); }
  void ScrollUp(int rows) {
    QImage moved(picture.size(), picture.format());
    moved.fill(Qt::white);
    for (int y = rows; y < picture.height(); ++y)
      for (int x = 0; x < picture.width(); ++x) moved.setPixel(x, y - rows, picture.pixel(x, y));
    picture = moved;
  }
};

/// By its rows; to look at the picture whole would move them.
QImage RowsOf(const SurfaceImage& surface) {
  QImage rows(surface.PixelSize(), QImage::Format_RGB32);
  for (int y = 0; y < rows.height(); ++y)
    for (int x = 0; x < rows.width(); ++x) rows.setPixel(x, y, surface.Row(y)[x]);
  return rows;
}

TEST(SurfaceImage, LooksBehindAnyScrollsAsAPictureWhoseRowsAreMoved) {
  std::mt19937 random(11);
  const auto below = [&](int bound) { return static_cast<int>(random() % static_cast<unsigned>(bound)); };
  SurfaceImage surface = Small();
  MovedByHand expected;
  for (int i = 0; i < 4000; ++i) {
    switch (below(12)) {
      case 0: {
        const int rows = below(3) == 0 ? below(41) : below(6);
        surface.ScrollUp(rows);
        expected.ScrollUp(rows);
        break;
      }
      case 1: {
        const QRect box(below(90), below(30), below(20) + 1, below(20) + 1);
        surface.Fill(box.x() * 15, box.y() * 15, box.width() * 15, box.height() * 15, 0x00FF00);
        for (int y = box.top(); y <= std::min(box.bottom(), 39); ++y)
          for (int x = box.left(); x <= std::min(box.right(), 99); ++x) expected.picture.setPixel(x, y, 0xFF00FF00);
        break;
      }
      case 2:
        ASSERT_EQ(surface.View(), expected.picture) << i;
        break;
      default: {
        const int pen = below(4) + 1;
        const QPoint from(below(100), below(40)), to(below(100), below(40));
        surface.SetPenWidth(pen);
        surface.Line(from.x() * 15 + 1, from.y() * 15 + 1, to.x() * 15 + 1, to.y() * 15 + 1, 0x0000FF);
        WalkByHand(expected.picture, from, to, pen);
      }
    }
    ASSERT_EQ(RowsOf(surface), expected.picture) << i;
  }
}

TEST(SurfaceImage, IsCopiedAndResizedBehindAScrollAsItLooks) {
  for (const int rows : {1, 13, 39, 40, 1000}) {
    SurfaceImage surface = Small(), copy = Small();
    MovedByHand expected;
    surface.Line(0, 15, 1500, 585, 0x0000FF);
    WalkByHand(expected.picture, {0, 1}, {100, 39}, 1);
    surface.ScrollUp(rows);
    expected.ScrollUp(std::min(rows, 40));
    copy.ScrollUp(7);
    copy.CopyFrom(surface);
    EXPECT_EQ(RowsOf(copy), expected.picture) << rows;
    copy.ScrollUp(3);
    copy.Cls();
    EXPECT_EQ(CountOf(copy, 0xFFFFFF), 100 * 40) << rows;
    SurfaceImage rescaled = Small();
    rescaled.CopyFrom(surface);
    rescaled.Rescale(1500, 600, 1, 2, 0);
    surface.Resize(1500, 300, 1);
    EXPECT_EQ(surface.View(), expected.picture.copy(0, 0, 100, 20)) << rows;
    for (int y = 0; y < 40; ++y)
      for (int x = 0; x < 100; ++x) ASSERT_EQ(At(rescaled, x, 2 * y), expected.picture.pixel(x, y) & 0xFFFFFF);
  }
}

TEST(SurfaceImage, DrawsNothingForPlacesThatAreNoNumbers) {
  SurfaceImage surface = Small();
  const double nan = std::numeric_limits<double>::quiet_NaN(), inf = std::numeric_limits<double>::infinity();
  for (const double bad : {nan, inf, -inf}) {
    surface.Line(bad, 0, 100, 100, colour::Black);
    surface.Line(0, 0, 100, bad, colour::Black);
    surface.Circle(bad, 100, 3, colour::Black);
    surface.Print(100, bad, "text", colour::Black);
  }
  EXPECT_EQ(CountOf(surface, 0xFFFFFF), 100 * 40);
}

TEST(SurfaceImage, ScrollsByWholePixelsAndClearsWhatComesFree) {
  SurfaceImage surface = Small();
  surface.Line(0, 450, 1500, 450, colour::Black);  // row 30
  surface.Line(0, 150, 1500, 150, 0x0000FF);       // row 10
  surface.ScrollUp(20);
  EXPECT_EQ(At(surface, 50, 10), 0u);
  EXPECT_EQ(CountOf(surface, 0), 100);
  EXPECT_EQ(CountOf(surface, 0xFF0000), 0);
  surface.Line(0, 450, 1500, 450, colour::Black);
  EXPECT_EQ(At(surface, 50, 30), 0u);
}

TEST(SurfaceImage, KeepsItsPictureWhenItsSizeChanges) {
  SurfaceImage surface = Small();
  surface.Line(150, 150, 600, 150, colour::Black);
  surface.Resize(3000, 450, 1);
  EXPECT_EQ(At(surface, 20, 10), 0u);
  EXPECT_EQ(At(surface, 190, 29), 0xFFFFFFu);
  surface.Resize(3000, 450, 2);
  EXPECT_EQ(CountOf(surface, 0), 0);
}

TEST(SurfaceImage, TellsTheRectangleThatChangedOnce) {
  SurfaceImage surface = Small(2);
  EXPECT_EQ(surface.TakeDirty(), QRect(0, 0, 100, 40));
  EXPECT_TRUE(surface.TakeDirty().isEmpty());
  surface.Line(300, 300, 450, 315, colour::Black);  // pixels 20..30, 20..21
  const QRect dirty = surface.TakeDirty();
  EXPECT_TRUE(dirty.contains(QRect(20, 20, 11, 2)));
  EXPECT_LE(dirty.width(), 17);
  EXPECT_LE(dirty.height(), 8);
  surface.Line(-5000, 300, -4000, 315, colour::Black);
  EXPECT_TRUE(surface.TakeDirty().isEmpty());
}

TEST(SurfaceImage, TellsNoMoreOfALineThanItsPenHasTouched) {
  SurfaceImage surface = Small();
  surface.TakeDirty();
  surface.SetPenWidth(2);
  surface.Line(10 * 15 + 1, 20 * 15 + 1, 14 * 15 + 1, 21 * 15 + 1, colour::Black);
  EXPECT_EQ(surface.TakeDirty(), QRect(QPoint(9, 19), QPoint(14, 21)));
  surface.SetPenWidth(1);
  surface.Line(10 * 15 + 1, 20 * 15 + 1, 10 * 15 + 1, 20 * 15 + 1, colour::Black);
  EXPECT_EQ(surface.TakeDirty(), QRect(10, 20, 1, 1));
}

TEST(SurfaceImage, MeasuresTextInTwipsAtEveryRatio) {
  const double width = Small(1).TextWidth("09:32"), height = Small(1).TextHeight("09:32");
  EXPECT_NEAR(width, 5 * 0.6 * 13 * 15, 0.12 * width);
  EXPECT_NEAR(height, 1.16 * 13 * 15, 0.1 * height);
  EXPECT_NEAR(Small(2).TextWidth("09:32"), width, 0.05 * width);
  EXPECT_NEAR(Small(2).TextHeight("09:32"), height, 0.08 * height);
}

TEST(SurfaceImage, MeasuresEachTextInTheFontThatItHas) {
  SurfaceImage surface = Small(1);
  const std::vector<std::string> texts = {"10:04", "", "10:06", "14-Mar-2026", "Time", "(hh:mm)", "10:04"};
  for (const int size : {13, 21, 13}) {
    QFont font = SmallFont();
    font.setPixelSize(size);
    surface.UseFont(font);
    for (int twice = 0; twice < 2; ++twice)
      for (const std::string& text : texts) {
        EXPECT_DOUBLE_EQ(surface.TextWidth(text), 15 * QFontMetricsF(font).horizontalAdvance(text.c_str())) << text;
        EXPECT_DOUBLE_EQ(surface.TextHeight(text), 15 * QFontMetricsF(font).height());
      }
  }
}

TEST(SurfaceImage, CoversWithATextThatComesAgainAsAPainterWould) {
  std::mt19937 random(5);
  const auto real = [&](double from, double to) {
    return from + (to - from) * static_cast<double>(random()) / 4294967296.0;
  };
  for (const double ratio : {1.0, 1.5, 2.0}) {
    SurfaceImage surface = Small(ratio);
    surface.SetTextCovers(true);
    surface.Fill(0, 0, 1500, 600, 0x80FF80);
    QImage expected = surface.View().copy();
    expected.setDevicePixelRatio(1);
    QFont font = SmallFont();
    font.setPixelSize(static_cast<int>(std::lround(13 * ratio)));
    const QFontMetricsF metrics(font);
    for (int i = 0; i < 600; ++i) {
      const std::string text = std::vector<std::string>{"09:32", "10:04", "14-Mar-2026"}[random() % 3];
      // Places of blocks come again, some with the noise of 32 bits; others lie anywhere, also across an edge.
      const bool isAnywhere = i % 3 == 0;
      const double x = isAnywhere ? real(-600, 1500) : 97.3;
      const double y = isAnywhere ? real(-200, 650) : 150.0 * static_cast<double>(random() % 5) + real(-1e-4, 1e-4);
      const std::int32_t colour = i % 50 == 0 ? 0x0000FF : colour::Black;
      surface.Print(x, y, text, colour);
      const QRectF box(x * ratio / 15, y * ratio / 15, metrics.horizontalAdvance(text.c_str()), metrics.height());
      QPainter painter(&expected);
      painter.setFont(font);
      painter.fillRect(box.toAlignedRect().adjusted(-2, 0, 2, 0), Qt::white);
      painter.setPen(QColor(colour & 0xFF, 0, 0));
      painter.drawText(QPointF(box.left(), box.top() + metrics.ascent()), text.c_str());
      painter.end();
      QImage printed = surface.View().copy();
      printed.setDevicePixelRatio(1);
      ASSERT_EQ(printed, expected) << ratio << ": " << text << " at " << x << ", " << y;
    }
  }
}

TEST(SurfaceImage, PrintsAPaleTextOnThePaperAsAnyOther) {
  SurfaceImage surface = Small();
  surface.Print(150, 150, "Rate", 0x00FFFF);  // yellow
  const QImage picture = surface.View();
  for (int y = 0; y < picture.height(); ++y)
    for (int x = 0; x < picture.width(); ++x) {
      EXPECT_EQ(qRed(picture.pixel(x, y)), 255);
      EXPECT_EQ(qGreen(picture.pixel(x, y)), 255);
    }
  EXPECT_GT(CountOf(surface, 0xFFFF00), 0);
}

TEST(SurfaceImage, StretchesPlacesDownThePageButNoLettersAndPens) {
  SurfaceImage surface = Small();
  surface.Resize(1500, 600, 1, 2.5);
  EXPECT_EQ(surface.PixelHeight(), 100);
  EXPECT_DOUBLE_EQ(surface.Height(), 600);
  EXPECT_DOUBLE_EQ(surface.Stretch(), 2.5);
  surface.Line(0, 300, 1500, 300, colour::Black);
  EXPECT_EQ(CountOf(surface, 0), 100) << "one dot high";
  EXPECT_EQ(At(surface, 50, 50), 0u);
  // So many dots as ever, so the fewer twips.
  EXPECT_NEAR(surface.TextHeight("09:32"), Small().TextHeight("09:32") / 2.5, 0.01);
  EXPECT_DOUBLE_EQ(surface.TextWidth("09:32"), Small().TextWidth("09:32"));
}

TEST(SurfaceImage, OnWhichNothingStandsYetIsAtAnotherSizeAsIfItHadAlwaysHadIt) {
  SurfaceImage early = Small();
  early.Rescale(2700, 900, 1, 2, 300);
  early.Rescale(3000, 600, 1, 1, 300);
  SurfaceImage late(3000, 600, 1, SmallFont());
  EXPECT_EQ(early.TakeDirty(), QRect(0, 0, 200, 40));
  for (SurfaceImage* const surface : {&early, &late}) {
    surface->Line(150, 0, 2900, 590, 0x0000FF);
    surface->Print(300, 200, "09:32", colour::Black);
  }
  EXPECT_EQ(early.View(), late.View());
  early.Rescale(1500, 600, 1, 1, 300);
  EXPECT_EQ(At(early, 10, 0), 0xFF0000u) << "what was drawn meanwhile goes along";
}

TEST(SurfaceImage, TakesItsPictureAlongToAnotherSize) {
  SurfaceImage surface = Small();
  surface.Line(150, 0, 150, 600, 0x0000FF);          // column 10, within the part that keeps its width
  surface.Line(300, 300, 1500, 300, colour::Black);  // row 20
  surface.Line(900, 0, 900, 600, 0xFF0000);          // column 60, the middle of the rest
  surface.Rescale(2700, 600, 1, 2, 300);
  EXPECT_EQ(surface.View().size(), QSize(180, 80));
  EXPECT_EQ(At(surface, 10, 5), 0xFF0000u);
  EXPECT_EQ(At(surface, 150, 40), 0u);
  EXPECT_EQ(At(surface, 100, 5), 0x0000FFu);  // 20 + 40 x 2
  EXPECT_EQ(At(surface, 60, 5), 0xFFFFFFu);
}

TEST(SurfaceImage, LosesNothingOnTheWayThroughManySizes) {
  SurfaceImage surface = Small();
  for (int x = 300; x < 1500; x += 90) surface.Line(x, 0, x + 40, 600, 0x0000FF);
  const QImage before = surface.View().copy();
  for (int step = 0; step < 20; ++step) surface.Rescale(700 + 100 * step, 600, 1, 0.5 + 0.1 * step, 300);
  surface.Rescale(1500, 600, 1, 1, 300);
  EXPECT_EQ(surface.View(), before);
}

TEST(SurfaceImage, KeepsThinLinesWhenItGetsLower) {
  SurfaceImage surface = Small();
  for (int y = 15; y < 600; y += 150) surface.Line(0, y, 1500, y, colour::Black);
  surface.Rescale(1500, 600, 1, 0.5, 300);
  int rules = 0;
  for (int y = 0; y < surface.PixelHeight(); ++y) rules += At(surface, 50, y) == 0;
  EXPECT_EQ(rules, 4);
}

TEST(SurfaceImage, FillsARectangleAndTellsThatItChanged) {
  SurfaceImage surface = Small();
  surface.TakeDirty();
  surface.Fill(150, 300, 450, 75, 0xFF0000);  // pixels 10 to 39 and 20 to 24
  EXPECT_EQ(CountOf(surface, 0x0000FF), 30 * 5);
  EXPECT_EQ(At(surface, 10, 20), 0x0000FFu);
  EXPECT_EQ(At(surface, 39, 24), 0x0000FFu);
  EXPECT_EQ(surface.TakeDirty(), QRect(10, 20, 30, 5));
}

TEST(SurfaceImage, StretchesAPictureToItsRectangle) {
  const std::uint32_t pixels[] = {0xFFFF0000, 0xFF00FF00, 0xFF123456, 0xFF0000FF, 0xFFFFFFFF, 0xFF123456};
  SurfaceImage surface = Small();
  surface.Picture(150, 150, 300, 300, {pixels, 3, 2, 2});  // each pixel becomes 10 x 10; the third of a row is outside
  EXPECT_EQ(CountOf(surface, 0xFF0000), 100);
  EXPECT_EQ(At(surface, 19, 10), 0xFF0000u);
  EXPECT_EQ(At(surface, 20, 10), 0x00FF00u);
  EXPECT_EQ(At(surface, 10, 20), 0x0000FFu);
  EXPECT_EQ(CountOf(surface, 0x123456), 0);
}

TEST(SurfaceImage, DrawsNoRectangleAtAPlaceThatIsNoNumberOrFarOut) {
  const std::uint32_t pixel = 0xFF000000;
  SurfaceImage surface = Small();
  for (const double bad : {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(), 1e30}) {
    surface.Fill(bad, 0, 100, 100, colour::Black);
    surface.Fill(0, 0, 100, bad, colour::Black);
    surface.Picture(0, bad, 100, 100, {&pixel, 1, 1, 1});
  }
  EXPECT_EQ(CountOf(surface, 0xFFFFFF), 100 * 40);
}

TEST(SurfaceImage, TakesAFontByItsSizeInPoints) {
  SurfaceImage surface = Small();
  surface.SetFont({"DejaVu Sans", 12, false});
  const double width = surface.TextWidth("09:32"), height = surface.TextHeight("09:32");
  EXPECT_NEAR(height, 1.16 * 12 * 20, 0.1 * height);  // 20 twips are a point
  surface.SetFont({"DejaVu Sans", 24, false});
  EXPECT_NEAR(surface.TextWidth("09:32"), 2 * width, 0.05 * width);
  surface.SetFont({"DejaVu Sans", 12, true});
  EXPECT_GT(surface.TextWidth("09:32"), width);
}

TEST(SurfaceImage, IsACopyOfAnotherInSizeAndPicture) {
  SurfaceImage from(3000, 900, 2, SmallFont()), to = Small();
  from.Line(0, 450, 3000, 450, 0x0000FF);
  from.Print(150, 600, "Rate", colour::Black);
  to.Line(0, 300, 1500, 300, colour::Black);
  to.TakeDirty();
  to.CopyFrom(from);
  EXPECT_EQ(to.View(), from.View());
  EXPECT_EQ(to.View().devicePixelRatio(), 2);
  EXPECT_DOUBLE_EQ(to.Width(), 3000);
  EXPECT_DOUBLE_EQ(to.Height(), 900);
  EXPECT_EQ(to.TakeDirty(), QRect(0, 0, 200, 60));
}

TEST(SurfaceImage, GoesOnAsTheOneThatItIsACopyOf) {
  SurfaceImage from = Small(), to(150, 150, 1, QFont("DejaVu Serif"));
  from.SetFont({"DejaVu Sans", 12, true});
  from.SetTextCovers(true);
  from.Fill(0, 0, 1500, 600, 0x0000FF);
  to.CopyFrom(from);
  for (SurfaceImage* surface : {&from, &to}) surface->Print(150, 150, "09:32", colour::Black);
  EXPECT_EQ(to.View(), from.View());
  EXPECT_GT(CountOf(to, 0xFFFFFF), 0) << "the text's own box";
}

TEST(SurfaceImage, DrawsOnItsCopyWithoutTouchingTheOther) {
  SurfaceImage from = Small(), to = Small();
  from.Print(150, 150, "Rate", colour::Black);
  const QImage before = from.View().copy();
  to.CopyFrom(from);
  to.Line(0, 300, 1500, 300, 0x0000FF);
  to.Circle(600, 300, 60, 0x0000FF);
  to.ScrollUp(5);
  EXPECT_EQ(from.View(), before);
  EXPECT_EQ(CountOf(from, 0xFF0000), 0);
  EXPECT_GT(CountOf(to, 0xFF0000), 90);
}

TEST(SurfaceImage, SurvivesSizesBeyondWhatAScreenHas) {
  SurfaceImage surface(1e12, -5, 1, SmallFont());
  EXPECT_EQ(surface.View().height(), 1);
  EXPECT_GT(surface.View().width(), 1000);
}

TEST(ReadableOn, HasAContrastThatCanBeReadForEveryColour) {
  for (int red = 0; red < 256; red += 15)
    for (int green = 0; green < 256; green += 15)
      for (int blue = 0; blue < 256; blue += 15) {
        const std::int32_t text = red | green << 8 | blue << 16;
        EXPECT_GE(Contrast(ReadableOn(text, colour::White, 3), colour::White), 3) << text;
        EXPECT_GE(Contrast(ReadableOn(text, colour::NightPaper, 3), colour::NightPaper), 3) << text;
      }
}

TEST(Contrast, IsTwentyOneForBlackOnWhiteAndOneForTheSame) {
  EXPECT_NEAR(Contrast(colour::Black, colour::White), 21, 1e-9);
  EXPECT_DOUBLE_EQ(Contrast(0x1234, 0x1234), 1);
}

}  // namespace velk::test
