#include "shell/toolbar_style.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QStatusBar>
#include <QStyleFactory>
#include <QTest>
#include <QToolBar>
#include <QToolButton>
#include <algorithm>
#include <cmath>
#include <map>

#include "model/status.h"
#include "model/texts.h"
#include "shell/icons.h"
#include "shell/main_form.h"
#include "support/dark_desktop.h"
#include "support/in_english.h"
#include "support/still_screen.h"

namespace velk::test {
namespace {

QImage Shown(const QIcon& icon) {
  return icon.pixmap(QSize(16, 16), 1.0).toImage();
}

void SavePicture(const QImage& picture, const char* name) {
  const QString folder = qEnvironmentVariable("VELK_PICTURES");
  if (!folder.isEmpty()) picture.save(folder + '/' + QString::fromLatin1(name) + QStringLiteral(".png"));
}

double Luminance(QRgb colour) {
  const auto linear = [](int part) {
    const double share = part / 255.0;
    return share <= 0.03928 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(qRed(colour)) + 0.7152 * linear(qGreen(colour)) + 0.0722 * linear(qBlue(colour));
}

/// The main window brings the pictures into the program.
struct ToolbarStyleTest : testing::Test {
  Session session;
  test::StillScreen screen;
  MainForm form{test::English(), session, screen.refresh};
  ToolbarStyle style{QStyleFactory::create("Fusion")};
};

TEST_F(ToolbarStyleTest, AToolbarWithoutRoomShowsOurPicture) {
  EXPECT_FALSE(Shown(Icon("more")).isNull());
  EXPECT_EQ(Shown(style.standardIcon(QStyle::SP_ToolBarHorizontalExtensionButton, nullptr, nullptr)),
            Shown(Icon("more")));
}

TEST_F(ToolbarStyleTest, EveryOtherPictureIsTheStylesOwn) {
  const std::unique_ptr<QStyle> plain(QStyleFactory::create("Fusion"));
  for (const QStyle::StandardPixmap picture :
       {QStyle::SP_ToolBarVerticalExtensionButton, QStyle::SP_TitleBarCloseButton, QStyle::SP_MessageBoxCritical,
        QStyle::SP_DirOpenIcon})
    EXPECT_EQ(Shown(style.standardIcon(picture, nullptr, nullptr)), Shown(plain->standardIcon(picture)));
}

/// How far the letters and buttons of an inactive window's title stand out from what is below them, as a ratio of
/// luminances.
double ContrastOfInactiveTitle(QStyle& style) {
  QMdiArea area;
  area.resize(700, 300);
  QMdiSubWindow* const inactive = area.addSubWindow(new QWidget);
  QMdiSubWindow* const active = area.addSubWindow(new QWidget);
  for (QMdiSubWindow* window : {inactive, active}) window->setStyle(&style);
  area.show();
  inactive->setGeometry(0, 0, 300, 200);
  active->setGeometry(320, 0, 300, 200);
  area.setActiveSubWindow(active);
  QApplication::processEvents();
  const QImage picture = inactive->grab().toImage();
  SavePicture(picture,
              QApplication::palette().color(QPalette::Window).lightness() < 128 ? "title-dark" : "title-light");
  // The close button; the ground is the colour that most of its dots have.
  const QRect button(picture.width() - 24, 6, 18, 14);
  std::map<QRgb, int> counts;
  for (int y = button.top(); y <= button.bottom(); ++y)
    for (int x = button.left(); x <= button.right(); ++x) ++counts[picture.pixel(x, y)];
  const auto more = [](const auto& a, const auto& b) { return a.second < b.second; };
  const double ground = Luminance(std::max_element(counts.begin(), counts.end(), more)->first);
  double contrast = 1;
  for (const auto& [colour, count] : counts) {
    const double ink = Luminance(colour);
    contrast = std::max(contrast, (std::max(ink, ground) + 0.05) / (std::min(ink, ground) + 0.05));
  }
  return contrast;
}

TEST_F(ToolbarStyleTest, ButtonsOfInactiveWindowsCanBeSeenOnALightAndOnADarkDesktop) {
  EXPECT_GT(ContrastOfInactiveTitle(style), 3);
  const DarkDesktop dark;
  EXPECT_GT(ContrastOfInactiveTitle(style), 3);
}

TEST_F(ToolbarStyleTest, TheKeyboardReachesAMenuItemThatIsOffAndTheStatusBarSaysWhyItIs) {
  form.Table().Bind("mnuEditTable", [] {});
  ChangeCurrentStatus(session, form, text::StatusReady);
  form.show();
  QAction* const off = form.MenuItem("mnuEditTable");
  ASSERT_FALSE(off->isEnabled());
  QMenu* const menu = form.MenuItem("mnuEdit")->menu();
  menu->setStyle(&style);
  menu->popup(QPoint(0, 0));
  for (int press = 0; press < 20 && menu->activeAction() != off; ++press) QTest::keyClick(menu, Qt::Key_Down);
  EXPECT_EQ(menu->activeAction(), off);
  EXPECT_EQ(form.statusBar()->currentMessage(), "Not possible in the status Ready");
  menu->close();
  menu->setStyle(nullptr);
}

TEST_F(ToolbarStyleTest, MeasuresAreTheStylesOwn) {
  const std::unique_ptr<QStyle> plain(QStyleFactory::create("Fusion"));
  for (const QStyle::PixelMetric measure :
       {QStyle::PM_ToolBarIconSize, QStyle::PM_ButtonMargin, QStyle::PM_MenuBarHMargin})
    EXPECT_EQ(style.pixelMetric(measure), plain->pixelMetric(measure));
}

}  // namespace
}  // namespace velk::test
