#include "platform/windows/window_strips.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QBackingStore>
#include <QDialog>
#include <QPaintEvent>
#include <QPainter>
#include <algorithm>
#include <memory>

#include "platform/windows/paint_target.h"
#include "support/on_the_display.h"

namespace velk {
namespace {

constexpr QRgb kOld = qRgb(200, 0, 0), kNew = qRgb(0, 120, 0);

/// Of one colour all over, by copies or by a painter.
class Plain : public QWidget, public ReadyDots {
 public:
  explicit Plain(QWidget* parent, const QRect& place) : QWidget(parent) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setGeometry(place);
    show();
  }

  bool CopyDots(const PaintTarget& target, const QRect& part) override {
    if (!isReady) return false;
    const int ratio = target.Ratio();
    for (int y = part.top() * ratio; y < (part.bottom() + 1) * ratio; ++y)
      std::fill_n(target.Row(part.left() * ratio, y), part.width() * ratio, colour);
    return true;
  }

  QRgb colour = kOld;
  bool isReady = true;
  QRegion painted;

 protected:
  void paintEvent(QPaintEvent* event) override {
    painted += event->region();
    QPainter(this).fillRect(event->rect(), QColor(colour));
  }
};

constexpr QRect kPart(10, 5, 20, 8);

struct Strips : testing::Test {
  Strips() { Begin(); }

  void Begin() {
    window.resize(300, 200);
    window.show();
    Settle();
  }
  /// Until all is painted that was shown.
  void Settle() {
    for (int i = 0; i < 3; ++i) QApplication::processEvents();
    plain.painted = {};
  }
  /// The widget has another colour in a part, and shows it; what the toolkit is left with is painted behind it.
  void Change(const QRect& part) {
    plain.colour = kNew;
    {
      WindowStrips strips;
      strips.Add(plain, part);
    }
    copied = Shown();
    QApplication::processEvents();
  }
  /// As it looked before.
  void Restore() {
    plain.colour = kOld;
    plain.update();
    Settle();
  }
  /// Where the new colour stands on the screen, in pixels of the window.
  QRegion Shown() const { return ShownIn(window); }
  static QRegion ShownIn(const QWidget& window) {
    const auto& picture = *static_cast<const QImage*>(window.backingStore()->paintDevice());
    const int ratio = static_cast<int>(picture.devicePixelRatio());
    QRegion shown;
    for (int y = 0; y < picture.height() / ratio; ++y)
      for (int x = 0; x < picture.width() / ratio; ++x)
        if ((picture.pixel(x * ratio, y * ratio) & RGB_MASK) == (kNew & RGB_MASK)) shown += QRect(x, y, 1, 1);
    return shown;
  }
  void ExpectCopied(const QRect& part) {
    EXPECT_EQ(copied, QRegion(part));
    EXPECT_TRUE(plain.painted.isEmpty());
    EXPECT_EQ(Shown(), copied);
  }
  void ExpectPainted(const QRegion& part) {
    EXPECT_TRUE(copied.isEmpty());
    EXPECT_EQ(plain.painted, part);
  }

  QWidget window;
  QWidget area{&window};
  Plain plain{&area, {20, 10, 100, 60}};
  const QPoint corner = [this] {
    area.setGeometry(40, 30, 200, 150);
    return QPoint(60, 40);
  }();
  QRegion copied;
};

TEST_F(Strips, AreCopiedIntoTheWindow) {
  Change(kPart);
  ExpectCopied(kPart.translated(corner));
}

TEST_F(Strips, AreCopiedAloneOfWhatTheyAreSentWith) {
  const QRect parts[] = {{0, 0, 5, 5}, {50, 20, 5, 5}};
  plain.colour = kNew;
  {
    WindowStrips strips;
    strips.Add(plain, parts);
  }
  EXPECT_EQ(Shown(), QRegion(parts[0].translated(corner)) + parts[1].translated(corner));
}

TEST_F(Strips, OfManyWidgetsAreShownAtOnce) {
  Plain other(&window, {0, 0, 30, 20});
  QWidget secondWindow;
  Plain third(&secondWindow, {0, 0, 30, 20});
  secondWindow.resize(100, 100);
  secondWindow.show();
  Settle();
  WindowStrips strips;
  for (Plain* const widget : {&plain, &third, &other}) {
    widget->colour = kNew;
    widget->painted = {};
    strips.Add(*widget, QRect(1, 2, 3, 4));
  }
  EXPECT_TRUE(Shown().isEmpty()) << "there may be more";
  strips.Show();
  EXPECT_EQ(Shown(), QRegion(QRect(1, 2, 3, 4)) + QRect(corner + QPoint(1, 2), QSize(3, 4)));
  EXPECT_EQ(ShownIn(secondWindow), QRegion(1, 2, 3, 4));
  QApplication::processEvents();
  for (const Plain* const widget : {&plain, &third, &other}) EXPECT_TRUE(widget->painted.isEmpty());
}

TEST_F(Strips, EndWhereTheirParentsDo) {
  plain.move(150, 10);
  Settle();
  Change({30, 5, 60, 8});
  ExpectCopied(QRect(220, 45, 20, 8));
  Change({60, 5, 20, 8});
  EXPECT_TRUE(plain.painted.isEmpty()) << "none of it is in view";
  EXPECT_EQ(Shown(), QRegion(220, 45, 20, 8));
}

TEST_F(Strips, AreLeftToTheToolkitWhereAnotherStandsInFront) {
  const QRect beside(80, 5, 10, 8);
  QWidget child(&plain), sibling(&area), aunt(&window);
  for (QWidget* const cover : {&child, &sibling, &aunt}) {
    const QPoint at = plain.mapTo(&window, QPoint(28, 10)) - cover->parentWidget()->mapTo(&window, QPoint());
    cover->setGeometry(QRect(at, QSize(10, 10)));
    cover->show();
    Begin();
    Change(kPart);
    ExpectPainted(kPart);
    Restore();
    Change(beside);
    ExpectCopied(beside.translated(corner));
    Restore();
    cover->hide();
    Change(kPart);
    EXPECT_TRUE(Shown().contains(kPart.center() + corner));
    Restore();
    Change(kPart);
    ExpectCopied(kPart.translated(corner));
    Restore();
  }
}

TEST_F(Strips, AreCopiedAboveWhatStandsBehind) {
  QWidget behind(&area);
  behind.setGeometry(plain.geometry());
  behind.show();
  behind.lower();
  Begin();
  Change(kPart);
  ExpectCopied(kPart.translated(corner));
}

TEST_F(Strips, AreCopiedBelowAWindow) {
  QDialog dialog(&area);
  dialog.setGeometry(0, 0, 300, 200);
  dialog.show();
  Begin();
  Change(kPart);
  ExpectCopied(kPart.translated(corner));
}

TEST_F(Strips, KeepToTheShapeOfAFrame) {
  area.setMask(QRegion(area.rect()) - QRect(0, 0, 200, 20));
  Begin();
  Change({10, 2, 20, 20});
  EXPECT_TRUE(copied.isEmpty());
  EXPECT_EQ(Shown(), QRegion(QRect(70, 50, 20, 12))) << "what is in the shape";
  plain.painted = {};
  Change({10, 30, 20, 8});
  EXPECT_TRUE(plain.painted.isEmpty());
  EXPECT_EQ(Shown(), QRegion(QRect(70, 50, 20, 12)) + QRect(70, 70, 20, 8));
}

TEST_F(Strips, AreLeftToTheToolkitWhereAWidgetCanNotCopyThem) {
  plain.isReady = false;
  Change(kPart);
  ExpectPainted(kPart);
  EXPECT_EQ(Shown(), QRegion(kPart.translated(corner)));
}

TEST_F(Strips, AreLeftToTheToolkitUntilAWindowHasItsNewSize) {
  window.resize(400, 300);
  Change(kPart);
  EXPECT_FALSE(plain.painted.isEmpty());
  EXPECT_EQ(Shown(), QRegion(plain.rect().translated(corner))) << "all of it is painted anew";
}

TEST_F(Strips, OfAWidgetThatIsNotShownAreNone) {
  plain.hide();
  Change(kPart);
  EXPECT_TRUE(Shown().isEmpty());
  EXPECT_TRUE(plain.painted.isEmpty());
}

TEST_F(Strips, WaitWhileUpdatesDo) {
  area.setUpdatesEnabled(false);
  Change(kPart);
  EXPECT_TRUE(copied.isEmpty());
  EXPECT_TRUE(plain.painted.isEmpty());
  area.setUpdatesEnabled(true);
  QApplication::processEvents();
  EXPECT_EQ(Shown(), QRegion(plain.rect().translated(corner)));
}

TEST_F(Strips, AreLeftToTheToolkitInAWindowOfTheSystemsOwn) {
  area.setAttribute(Qt::WA_DontCreateNativeAncestors);
  area.setAttribute(Qt::WA_NativeWindow);
  Begin();
  Change(kPart);
  ExpectPainted(kPart);
}

TEST_F(Strips, AreCopiedBesideOneThatCanNotBe) {
  Plain other(&window, {0, 0, 30, 20});
  Settle();
  plain.isReady = false;
  plain.colour = other.colour = kNew;
  other.painted = {};
  {
    WindowStrips strips;
    strips.Add(other, QRect(1, 2, 3, 4));
    strips.Add(plain, kPart);
  }
  EXPECT_EQ(Shown(), QRegion(1, 2, 3, 4));
  QApplication::processEvents();
  EXPECT_EQ(plain.painted, QRegion(kPart));
  EXPECT_TRUE(other.painted.isEmpty());
}

TEST_F(Strips, OfNothingShowNothing) {
  Change({});
  EXPECT_TRUE(copied.isEmpty());
  EXPECT_TRUE(plain.painted.isEmpty());
}

/// Each line of another colour, of many more than there is room for.
class Lines : public QWidget, public ReadyDots {
 public:
  explicit Lines(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setGeometry(20, 20, dots_.width(), 200);
    for (int y = 0; y < dots_.height(); ++y) Fill({0, y, dots_.width(), 1}, qRgb(y % 250, 80, 120));
  }

  int Top() const { return top_; }
  void Fill(const QRect& part, QRgb colour) {
    for (int y = part.top(); y <= part.bottom(); ++y)
      for (int x = part.left(); x <= part.right(); ++x) dots_.setPixel(x, top_ + y, colour);
  }
  void Scroll(int step) {
    top_ += step;
    scroll(0, -step);
  }
  bool CopyDots(const PaintTarget& target, const QRect& part) override {
    if (target.Ratio() != 1) return false;
    target.Copy(part, dots_, {0, -top_});
    return true;
  }

 protected:
  void paintEvent(QPaintEvent*) override { QPainter(this).drawImage(0, -top_, dots_); }

 private:
  QImage dots_{100, 1000, QImage::Format_RGB32};
  int top_ = 0;
};

/// The display itself moves what is scrolled; what lies between the parts that are copied next is known to it alone.
TEST(OnTheDisplay, WhatWasScrolledStaysBetweenThePartsThatAreCopiedNext) {
  QWidget window;
  window.resize(300, 300);
  Lines lines(&window);
  window.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
  ASSERT_TRUE(test::ComesToShow(window));
  for (const int step : {0, 45, 3, -20}) {
    lines.Scroll(step);
    EXPECT_TRUE(test::ComesToShow(window)) << "scrolled to " << lines.Top();
    const QRect parts[] = {{10, 24, 10, 10}, {60, 144, 10, 10}};
    for (const QRect& part : parts) lines.Fill(part, qRgb(255, lines.Top(), 0));
    WindowStrips().Add(lines, parts);
    EXPECT_TRUE(test::ComesToShow(window)) << "changed at " << lines.Top();
  }
}

}  // namespace
}  // namespace velk
