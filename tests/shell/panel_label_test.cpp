#include "shell/panel_label.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QBackingStore>
#include <QHBoxLayout>
#include <QPaintEvent>
#include <QTest>
#include <memory>
#include <utility>

#include "shell/path_label.h"
#include "support/own_face.h"

namespace velk {
namespace {

void ShowText(PanelLabel& label, const QString& text) {
  label.ShowText(text);
  WindowStrips strips;
  label.ShowChanges(strips);
}

/// A window of two labels, and what stands on its screen: a grab would have them painted anew.
class OnTheScreen {
 public:
  explicit OnTheScreen(bool bold) {
    auto* const line = new QHBoxLayout(&window_);
    for (PanelLabel* const label : {new PanelLabel(&window_), static_cast<PanelLabel*>(new PathLabel(&window_))}) {
      label->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
      QFont letters = label->font();
      letters.setBold(bold);
      label->setFont(letters);
      line->addWidget(label);
      labels.push_back(label);
    }
    window_.resize(900, 60);
    window_.show();
    QApplication::processEvents();
  }

  QImage Show(const QString& text) {
    for (PanelLabel* const label : labels) ShowText(*label, text);
    return Picture();
  }
  QImage Picture() {
    QApplication::processEvents();
    return static_cast<const QImage*>(window_.backingStore()->paintDevice())->copy();
  }

  QImage Grab() { return window_.grab().toImage().convertToFormat(Picture().format()); }

  std::vector<PanelLabel*> labels;

 private:
  QWidget window_;
};

QString Clock(int second) {
  return QStringLiteral("\u25cf REC well 7.mdb  %1:%2:%3")
      .arg(second / 3600)
      .arg(second / 60 % 60, 2, 10, QLatin1Char('0'))
      .arg(second % 60, 2, 10, QLatin1Char('0'));
}

TEST(PanelLabelTest, LooksTheSameWhetherItsDigitsChangedOrAllOfItWasPaintedAnew) {
  for (const bool bold : {false, true}) {
    OnTheScreen changed(bold);
    changed.Show(Clock(0));
    for (int second = 7; second < 36'000; second += 1111) {
      const QImage picture = changed.Show(Clock(second));
      OnTheScreen fresh(bold);
      EXPECT_EQ(picture, fresh.Show(Clock(second))) << Clock(second).toStdString();
      EXPECT_NE(picture, fresh.Show(Clock(second + 1)));
    }
  }
}

/// Notes what is painted of a widget. Something without a look stands in front of it, so that it is painted by events:
/// of the rectangle around what has changed.
class Painted : public QObject {
 public:
  explicit Painted(QWidget& widget) : cover_(&widget) {
    cover_.setGeometry(widget.rect());
    cover_.show();
    for (int i = 0; i < 3; ++i) QApplication::processEvents();  // until it is painted
    widget.installEventFilter(this);
  }
  QRect Take() {
    QApplication::processEvents();
    return std::exchange(painted_, {});
  }

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Paint) painted_ |= static_cast<QPaintEvent*>(event)->rect();
    return false;
  }

 private:
  QWidget cover_;
  QRect painted_;
};

TEST(PanelLabelTest, PaintsTheDigitsThatHaveChangedAlone) {
  OnTheScreen screen(false);
  screen.Show("12:34:56 and much that stays");
  PanelLabel& label = *screen.labels.front();
  Painted painted(label);
  painted.Take();
  ShowText(label, "12:34:57 and much that stays");
  const QRect last = painted.Take();
  const int letter = label.fontMetrics().horizontalAdvance('0');
  EXPECT_TRUE(last.isValid());
  EXPECT_LT(last.width(), 3 * letter);
  ShowText(label, "12:35:08 and much that stays");
  const QRect three = painted.Take();
  EXPECT_TRUE(three.contains(last));
  EXPECT_LT(three.width(), 6 * letter);
  ShowText(label, "12:35:08 and much that stays");
  EXPECT_FALSE(painted.Take().isValid());
  ShowText(label, "12:35:08 or much that stays");
  EXPECT_EQ(painted.Take(), label.rect());
  EXPECT_TRUE(label.updatesEnabled());
}

TEST(PanelLabelTest, FollowsEachChangeOfWhatItLooksLike) {
  OnTheScreen changed(false);
  const auto same = [&](const char* what) {
    const QImage picture = changed.Show(Clock(5));
    OnTheScreen fresh(false);
    for (std::size_t i = 0; i < fresh.labels.size(); ++i) {
      fresh.labels[i]->setPalette(changed.labels[i]->palette());
      fresh.labels[i]->setStyleSheet(changed.labels[i]->styleSheet());
      fresh.labels[i]->setEnabled(changed.labels[i]->isEnabled());
    }
    EXPECT_EQ(picture, fresh.Show(Clock(5))) << what;
    changed.Show(Clock(6));
  };
  same("as it began");
  for (PanelLabel* const label : changed.labels) {
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, Qt::red);
    label->setPalette(palette);
  }
  same("red letters");
  for (PanelLabel* const label : changed.labels)
    label->setStyleSheet(QStringLiteral("QLabel { color: white; background: #c8102e; font-weight: bold; }"));
  same("a sheet");
  for (PanelLabel* const label : changed.labels) label->setStyleSheet({});
  same("no sheet");
  for (PanelLabel* const label : changed.labels) label->setEnabled(false);
  same("off");
  for (PanelLabel* const label : changed.labels) label->setEnabled(true);
  same("on");
}

/// The toolkit has nothing painted for another locale, which changes no look.
TEST(PanelLabelTest, ShowsDigitsThatAChangeComesAheadOf) {
  OnTheScreen changed(false), fresh(false);
  changed.Show(Clock(5));
  changed.Show(Clock(6));
  for (PanelLabel* const label : changed.labels) {
    label->ShowText(Clock(7));
    QEvent locale(QEvent::LocaleChange);
    QApplication::sendEvent(label, &locale);
    WindowStrips strips;
    label->ShowChanges(strips);
  }
  EXPECT_EQ(changed.Picture(), fresh.Show(Clock(7)));
}

TEST(PanelLabelTest, HasTheColoursOfAWindowBehindWhileItIsOne) {
  OnTheScreen changed(false), fresh(false);
  const auto fade = [](PanelLabel& label) {
    QPalette palette = label.palette();
    palette.setColor(QPalette::Active, QPalette::WindowText, Qt::red);
    palette.setColor(QPalette::Inactive, QPalette::WindowText, Qt::blue);
    label.setPalette(palette);
  };
  QWidget other;
  for (std::size_t i = 0; i < changed.labels.size(); ++i) fade(*changed.labels[i]), fade(*fresh.labels[i]);
  changed.labels.front()->window()->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(changed.labels.front()->window()));
  changed.Show(Clock(5));
  changed.Show(Clock(6));
  other.show();
  other.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
  EXPECT_EQ(changed.Show(Clock(7)), fresh.Show(Clock(7)));
}

TEST(PanelLabelTest, ShowsAnotherTextOfTheSameLengthWhole) {
  OnTheScreen changed(false), fresh(false);
  changed.Show("12 rows");
  changed.Show("13 rows");
  EXPECT_EQ(changed.Show("13 cows"), fresh.Show("13 cows"));
  EXPECT_EQ(changed.Show(""), OnTheScreen(false).Show(""));
  EXPECT_EQ(changed.Show("7"), OnTheScreen(false).Show("7"));
}

/// A grab has no screen's memory, and paints what a window shows into a picture of its own.
TEST(PanelLabelTest, IsGrabbedAsItStandsOnTheScreen) {
  for (const bool bold : {false, true}) {
    OnTheScreen window(bold);
    const QImage shown = window.Show(Clock(5));
    EXPECT_EQ(window.Grab(), shown) << "painted whole";
    const QImage changed = window.Show(Clock(6));
    EXPECT_NE(changed, shown);
    EXPECT_EQ(window.Grab(), changed) << "another digit";
  }
}

TEST(PanelLabelTest, ATextWithoutRoomGivesWayWhateverDigitsItHas) {
  OnTheScreen changed(false);
  const QString path = QString(200, 'm') + "/job ";
  changed.Show(path + "1.mdb");
  EXPECT_NE(changed.labels[1]->Shown(), changed.labels[1]->text());
  const QImage picture = changed.Show(path + "2.mdb");
  OnTheScreen fresh(false);
  EXPECT_EQ(picture, fresh.Show(path + "2.mdb"));
}

/// A window with one label at a place of its own, in the application's font or another.
struct Placed {
  explicit Placed(const QRect& place, const QFont& font = QApplication::font()) {
    label->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    label->setFont(font);
    label->setGeometry(place);
    window.resize(400, 60);
    window.show();
  }

  QImage Show(const QString& text) {
    ShowText(*label, text);
    return Picture();
  }
  QImage Picture() {
    QApplication::processEvents();
    return static_cast<const QImage*>(window.backingStore()->paintDevice())->copy();
  }

  QWidget window;
  PanelLabel* label = new PanelLabel(&window);
};

constexpr QRect kPlace(10, 10, 200, 24);

/// Shows a text behind another, and by itself.
void ExpectSame(const QString& before, const QString& text, const QRect& place,
                const QFont& font = QApplication::font()) {
  Placed changed(place, font), fresh(place, font);
  const QImage first = changed.Show(before);
  const QImage picture = changed.Show(text);
  EXPECT_EQ(picture, fresh.Show(text)) << before.toStdString() << " to " << text.toStdString();
  EXPECT_NE(picture, first);
}

TEST(PanelLabelTest, DigitsOfOtherWidthsMoveWhatStandsBehindThem) {
  test::OwnFace face("Narrow");
  face.Narrow('1', 0.7);
  const QFont font = face.Install(9);
  ASSERT_LT(QFontMetrics(font).horizontalAdvance('1'), QFontMetrics(font).horizontalAdvance('8'));
  ExpectSame("12:34:58", "11:11:11", kPlace, font);
  ExpectSame("11:11:11", "12:34:58", kPlace, font);
  ExpectSame("2 of 8", "3 of 8", kPlace, font);
}

TEST(PanelLabelTest, DigitsThatAreKernedMoveWhatStandsBehindThem) {
  test::OwnFace pair("Paired"), mark("Marked");
  pair.Kern('1', '1', 0.2);
  mark.Kern('7', '.', 0.2);
  const QFont paired = pair.Install(9), marked = mark.Install(9);
  ASSERT_LT(QFontMetrics(paired).horizontalAdvance("11"), QFontMetrics(paired).horizontalAdvance("10"));
  ASSERT_LT(QFontMetrics(marked).horizontalAdvance("7."), QFontMetrics(marked).horizontalAdvance("8."));
  ExpectSame("12:34:58", "11:11:11", kPlace, paired);
  ExpectSame("11:11:11", "12:34:58", kPlace, paired);
  ExpectSame("job 8.mdb", "job 7.mdb", kPlace, marked);
  ExpectSame("job 7.mdb", "job 8.mdb", kPlace, marked);
}

TEST(PanelLabelTest, ATextThatIsLargerThanItsRoomEndsThere) {
  for (int width = 30; width <= 70; ++width) ExpectSame("11:11:11", "88:88:88", {10, 10, width, 24});
  for (int height = 8; height <= 20; ++height) ExpectSame("11:11:11", "88:88:88", {10, 10, 200, height});
}

TEST(PanelLabelTest, ATextWithTabsOrLinesIsPaintedAsEver) {
  const QRect high(10, 5, 200, 50);
  for (const char* between : {"\t", "\n", "\r", "\u2028", "\u00a0", " "})
    ExpectSame(QString("job") + between + "1.mdb", QString("job") + between + "2.mdb", high);
}

TEST(PanelLabelTest, TakesTheGroundOfThePlaceItIsMovedTo) {
  Placed moved(kPlace), fresh(kPlace.translated(150, 0));
  for (Placed* const placed : {&moved, &fresh}) {
    auto* const plate = new QWidget(&placed->window);
    plate->setGeometry(150, 0, 100, 60);
    plate->setAutoFillBackground(true);
    plate->setPalette(Qt::darkGray);
    plate->lower();
    plate->show();
  }
  moved.Show("12:34:56");
  moved.label->move(fresh.label->pos());
  EXPECT_EQ(moved.Picture(), fresh.Show("12:34:56"));
  EXPECT_EQ(moved.Show("12:34:57"), fresh.Show("12:34:57"));
  EXPECT_EQ(moved.Show("12:34:58"), fresh.Show("12:34:58"));
}

TEST(PanelLabelTest, TellsTextsApartThatDifferInMoreThanDigits) {
  EXPECT_TRUE(DifferInDigitsOnly("10:59:59", "11:00:00"));
  EXPECT_TRUE(DifferInDigitsOnly("", ""));
  EXPECT_FALSE(DifferInDigitsOnly("9 rows", "10 rows"));
  EXPECT_FALSE(DifferInDigitsOnly("1 row", "1 cow"));
  EXPECT_FALSE(DifferInDigitsOnly(QString::fromUtf8("1\u0661"), "11")) << "another script's";
}

}  // namespace
}  // namespace velk
