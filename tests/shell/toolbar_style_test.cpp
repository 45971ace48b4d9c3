#include "shell/toolbar_style.h"

#include <gtest/gtest.h>

#include <QStyleFactory>
#include <QToolBar>
#include <QToolButton>

#include "shell/icons.h"
#include "shell/main_form.h"
#include "support/in_english.h"

namespace velk::test {
namespace {

QImage Shown(const QIcon& icon) {
  return icon.pixmap(QSize(16, 16), 1.0).toImage();
}

/// The main window brings the pictures into the program.
struct ToolbarStyleTest : testing::Test {
  Session session;
  MainForm form{test::English(), session};
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

TEST_F(ToolbarStyleTest, MeasuresAreTheStylesOwn) {
  const std::unique_ptr<QStyle> plain(QStyleFactory::create("Fusion"));
  for (const QStyle::PixelMetric measure :
       {QStyle::PM_ToolBarIconSize, QStyle::PM_ButtonMargin, QStyle::PM_MenuBarHMargin})
    EXPECT_EQ(style.pixelMetric(measure), plain->pixelMetric(measure));
}

}  // namespace
}  // namespace velk::test
