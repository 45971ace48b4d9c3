#include "wells/windows/frm_3d_well.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QTest>
#include <QToolButton>
#include <QWheelEvent>

#include "platform/settings/settings.h"
#include "support/fake_clock.h"
#include "support/fake_printers.h"
#include "support/host.h"
#include "support/temporary_folder.h"
#include "support/window_script.h"
#include "wells/windows/well_picture.h"

namespace velk {
namespace {

class WellWindow : public testing::Test {
 protected:
  WellWindow() {
    well.Survey = {{0, 0, 0}, {1000, 0, 0}, {2500, 45, 60}};
    well.Path = CalculateTrajectory(well.Survey, well.CalculationInterval);
    well.SurveyFileName = "/wells/north.d15";
    session.CurrentFont = "DejaVu Sans";
    settings.Save("VELK2", "PrintGraph", "Client", "Smith");
  }
  void Open() {
    window = std::make_unique<frm3DWell>(
        host, WellAccess{well, session, platform, [this]() -> PrinterChoice& { return choice; }, [] {}});
    window->show();
    QApplication::processEvents();
    picture = window->findChild<WellPicture*>("Picture1");
  }
  std::string Box(int i) const {
    return test::FindControl<QLineEdit>(*window, ("Text1_" + std::to_string(i)).c_str())->text().toStdString();
  }
  void SetBox(int i, const char* text) {
    auto* box = test::FindControl<QLineEdit>(*window, ("Text1_" + std::to_string(i)).c_str());
    box->setText(QString::fromLatin1(text));
    QMetaObject::invokeMethod(box, "editingFinished");
  }
  template <class Control>
  Control& Find(const char* name) const {
    return *test::FindControl<Control>(*window, name);
  }
  QImage Shown() const { return picture->grab().toImage(); }
  static int Green(const QImage& image) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
      for (int x = 0; x < image.width(); ++x) count += (image.pixel(x, y) & 0xFFFFFF) == 0x00FF00 ? 1 : 0;
    return count;
  }
  void Drag(Qt::MouseButton button, QPoint by) {
    QTest::mousePress(picture, button, {}, QPoint(300, 300));
    QMouseEvent move(QEvent::MouseMove, QPointF(300, 300) + by, QPointF(300, 300) + by, Qt::NoButton, button, {});
    QApplication::sendEvent(picture, &move);
    QTest::mouseRelease(picture, button, {}, QPoint(300, 300) + by);
  }

  const test::TemporaryFolder folder;
  SettingsStore settings{folder.Path().string()};
  test::Host host;
  test::FakeClock clock{host.gate};
  Platform platform{clock, host.gate, host.dialogs, settings, host.translation.Translator};
  Session session;
  Well well;
  FakePrinters printers;
  PrinterChoice choice{printers};
  std::unique_ptr<frm3DWell> window;
  WellPicture* picture = nullptr;
};

TEST_F(WellWindow, ShowsThePathOfTheSurveyThatItNames) {
  Open();
  EXPECT_EQ(window->windowTitle().toStdString(), "3D Well Profile: /wells/north.d15");
  EXPECT_EQ(Find<QLabel>("lblUnits").text().toStdString(), "Depth units are feet");
  EXPECT_GT(Green(Shown()), 50);
  EXPECT_TRUE(Find<QAction>("mnuPrint").isEnabled());
}

TEST_F(WellWindow, SaysWhereAPathComesFromWhereThereIsNone) {
  well.Path = {};
  Open();
  EXPECT_EQ(Green(Shown()), 0);
  EXPECT_TRUE(Find<QLabel>("lblHint").text().startsWith("There is no path yet"));
}

TEST_F(WellWindow, TurnsByItsBars) {
  Open();
  const QImage before = Shown();
  Find<QScrollBar>("HScroll1").setValue(100);
  EXPECT_EQ(Box(1), "-80") << "the bar's value less 180";
  EXPECT_NE(Shown(), before);
  Find<QScrollBar>("VScroll1").setValue(75);
  EXPECT_EQ(Box(0), "75");
}

TEST_F(WellWindow, PutsItsBarsWhereItsBoxesSay) {
  Open();
  SetBox(1, "-90");
  EXPECT_EQ(Find<QScrollBar>("HScroll1").value(), 90);
  SetBox(0, "45");
  EXPECT_EQ(Find<QScrollBar>("VScroll1").value(), 45);
  SetBox(1, "270");
  EXPECT_EQ(Find<QScrollBar>("HScroll1").value(), 90);
}

TEST_F(WellWindow, GoesNearerAndFartherByAThousand) {
  Open();
  SetBox(2, "30000");
  Find<QToolButton>("UpDown1_0").click();
  EXPECT_EQ(Box(2), "31000");
  Find<QToolButton>("UpDown1_1").click();
  Find<QToolButton>("UpDown1_1").click();
  EXPECT_EQ(Box(2), "29000");
}

TEST_F(WellWindow, WaitsForRedrawWhereItDoesNotDrawByItself) {
  Open();
  Find<QAction>("mnuRedrawFalse").trigger();
  const QImage before = Shown();
  Find<QScrollBar>("HScroll1").setValue(10);
  EXPECT_EQ(Shown(), before);
  test::Click(*window, "cmdRedraw");
  EXPECT_NE(Shown(), before);
  Find<QScrollBar>("HScroll1").setValue(90);
  const QImage stale = Shown();
  Find<QAction>("mnuRedrawTrue").trigger();
  EXPECT_NE(Shown(), stale);
}

TEST_F(WellWindow, HidesSurfacesAndDrawsTheCasing) {
  Open();
  const auto dots = [this](QRgb colour) {
    const QImage shown = Shown();
    int count = 0;
    for (int y = 0; y < shown.height(); ++y)
      for (int x = 0; x < shown.width(); ++x) count += (shown.pixel(x, y) & RGB_MASK) == colour ? 1 : 0;
    return count;
  };
  // The lines of each surface have a colour of their own.
  constexpr QRgb kColours[] = {0x3CC8C4, 0x8FA8FF, 0xC99A6B};
  for (int surface = 0; surface < 3; ++surface) {
    auto& hide = Find<QCheckBox>(("Check1_" + std::to_string(surface)).c_str());
    EXPECT_GT(dots(kColours[surface]), 300) << surface;
    hide.setChecked(true);
    EXPECT_EQ(dots(kColours[surface]), 0) << surface;
    hide.setChecked(false);
    EXPECT_GT(dots(kColours[surface]), 300) << surface;
  }
  const int path = Green(Shown());
  Find<QCheckBox>("chkCasing").setChecked(true);
  EXPECT_GT(Green(Shown()), 3 * path);
}

TEST_F(WellWindow, SpinsAndBeginsAgainBehindTheEndOfABar) {
  Open();
  auto& across = Find<QScrollBar>("HScroll1");
  auto& down = Find<QScrollBar>("VScroll1");
  across.setValue(359);
  down.setValue(10);
  Find<QComboBox>("cmdScroll").setCurrentIndex(3);
  clock.Advance(50);
  EXPECT_EQ(across.value(), 360);
  clock.Advance(50);
  EXPECT_EQ(across.value(), 0);
  EXPECT_EQ(Box(1), "-180");
  EXPECT_EQ(down.value(), 10);
  Find<QComboBox>("cmdScroll").setCurrentIndex(1);
  clock.Advance(50);
  EXPECT_EQ(across.value(), 1);
  EXPECT_EQ(down.value(), 11);
  window->hide();
  clock.Advance(500);
  EXPECT_EQ(down.value(), 11) << "nobody looks";
}

TEST_F(WellWindow, IsTurnedMovedAndZoomedByTheMouse) {
  Open();
  SetBox(0, "60");
  SetBox(1, "30");
  SetBox(2, "30000");
  Drag(Qt::LeftButton, {40, -20});
  EXPECT_EQ(Box(1), "50");
  EXPECT_EQ(Box(0), "70");
  EXPECT_EQ(Find<QScrollBar>("HScroll1").value(), 230);
  const QImage before = Shown();
  Drag(Qt::RightButton, {30, 30});
  EXPECT_NE(Shown(), before);
  QWheelEvent wheel({300, 300}, picture->mapToGlobal(QPointF(300, 300)), {}, {0, 120}, Qt::NoButton, {},
                    Qt::NoScrollPhase, false);
  QApplication::sendEvent(picture, &wheel);
  EXPECT_EQ(Box(2), "27273") << "a tenth nearer";
}

TEST_F(WellWindow, TakesTheWellAlongWithTheMouse) {
  Open();
  // Seen level from the north: the wellhead is where the mouse has taken it.
  well.Path.stations.resize(1);
  SetBox(0, "90");
  SetBox(1, "0");
  SetBox(5, "0");
  Drag(Qt::RightButton, {100, 50});
  WellView view;
  view.tilt = 90;
  view.azimuth = 0;
  view.distance = std::stod(Box(2));
  view.focalEast = std::stod(Box(3));
  view.focalNorth = std::stod(Box(4));
  view.focalDepth = std::stod(Box(5));
  const ScreenPoint head = OnScreen(ViewMatrix(view)({0, 0, 0}));
  const double pixels = 620 / kHalfWidth;
  EXPECT_NEAR(head.x * pixels, 410, 1.5);
  EXPECT_NEAR(head.y * pixels, 360, 1.5);
}

TEST_F(WellWindow, PrintsTheSceneBelowAHeading) {
  Open();
  test::WindowScript script;
  script.ThenClick("frmPrinterSelect", "Command1");
  Find<QAction>("mnuPrint").trigger();
  ASSERT_EQ(printers.documents.size(), 1U);
  const PrintedDocument& document = *printers.documents[0];
  EXPECT_TRUE(document.ended);
  EXPECT_EQ(document.title, "3D Well Profile");
  std::string all;
  for (const std::string& call : document.page.calls) all += call + "\n";
  for (const char* text : {"'3D Well Profile'", "'Client Name: Smith'", "'Well Name: '", "'Depth units are feet'"})
    EXPECT_NE(all.find(text), std::string::npos) << text;
  EXPECT_NE(all.find("00FF00"), std::string::npos);
}

TEST_F(WellWindow, IsSeenFromAllSides) {
  // Straight down, a bend to the south-east, and a long way that is nearly level.
  well.Survey = {{0, 0, 0}, {2500, 0, 0}, {6500, 60, 125}, {8500, 84, 140}, {13'000, 88, 150}};
  well.Path = CalculateTrajectory(well.Survey, well.CalculationInterval);
  well.Sections = {{0, 2500, 13.375, 12}, {2500, 8500, 9.625, 8.5}, {8500, 13'000, 7, 6}};
  Open();
  Find<QCheckBox>("chkCasing").setChecked(true);
  const QString folderOfPictures = qEnvironmentVariable("VELK_PICTURES");
  for (int turn = -180; turn < 180; turn += 45) {
    SetBox(1, std::to_string(turn).c_str());
    EXPECT_GT(Green(Shown()), 300) << turn;
    if (!folderOfPictures.isEmpty())
      window->grab().save(QStringLiteral("%1/well%2.png").arg(folderOfPictures).arg(turn));
  }
}

TEST_F(WellWindow, StandsAnythingInItsBoxes) {
  Open();
  for (const char* entry : {"", "abc", "1e400", "-1e400", "1e308", "0"})
    for (int box = 0; box < 9; ++box) {
      SetBox(box, entry);
      Find<QToolButton>("UpDown1_0").click();
      Drag(Qt::LeftButton, {10, 10});
      Drag(Qt::RightButton, {10, 10});
    }
  for (const auto& [box, sane] : {std::pair{0, "60"}, {1, "30"}, {2, "60000"}, {3, "0"}, {4, "0"}, {5, "-5000"}})
    SetBox(box, sane);
  for (int box = 6; box < 9; ++box) SetBox(box, "0");
  EXPECT_GT(Green(Shown()), 20) << "nothing of it stays";
}

TEST_F(WellWindow, FollowsThePathWhileItIsShown) {
  Open();
  const QImage before = Shown();
  well.Path.stations.back().east = -3000;
  window->Refresh();
  EXPECT_NE(Shown(), before);
}

}  // namespace
}  // namespace velk
