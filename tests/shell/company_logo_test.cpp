#include "shell/company_logo.h"

#include <gtest/gtest.h>

#include <QPainter>
#include <QToolButton>
#include <fstream>

#include "shell/shell_rig.h"

namespace velk {
namespace {

class Logo : public testing::Test {
 protected:
  std::string Picture(const char* name, QSize size, QColor colour) {
    QImage image(size, QImage::Format_RGB32);
    image.fill(colour);
    EXPECT_TRUE(image.save(QString::fromStdString(rig.folder.File(name))));
    return rig.folder.File(name);
  }
  std::string Text(const char* name, const char* text) {
    std::ofstream(rig.folder.File(name)) << text;
    return rig.folder.File(name);
  }
  void Set(const char* key, const std::string& value) {
    rig.settings->Save("VELK2", "General", key, value);
    rig.settings->Flush();
  }
  QToolButton& Button() { return *rig.Window().findChild<QToolButton*>("CompanyLogo"); }
  QColor Middle() {
    const QSize size = Button().iconSize();
    return Button().icon().pixmap(size).toImage().pixelColor(size.width() / 2, size.height() / 2);
  }
  void Exit() {
    rig.dialogs.Expect("Are you sure you want to exit VELK?", Answer::Yes);
    rig.Choose("mnuFileExit");
  }

  test::ShellRig rig;
};

TEST_F(Logo, IsOursUntilOneIsChosen) {
  rig.Start();
  EXPECT_TRUE(Button().isVisible());
  EXPECT_FALSE(Button().icon().isNull());
  EXPECT_EQ(Button().toolTip(), "Click here to change company logo");
}

TEST_F(Logo, StandsAtTheRightEndBesideTheToolbar) {
  rig.Start();
  const QPoint right = Button().mapTo(&rig.Window(), QPoint(Button().width(), 0));
  EXPECT_GT(right.x(), rig.Window().width() - 20);
  EXPECT_LE(right.x(), rig.Window().width());
  EXPECT_LT(right.y(), rig.Window().Toolbar().geometry().bottom());
}

TEST_F(Logo, IsLoadedAtStartUpAndScaledToTheBarsHeight) {
  Set("CompanyLogoFile", Picture("logo.png", {600, 200}, Qt::red));
  rig.Start();
  EXPECT_EQ(Button().iconSize(), QSize(84, 28));
  EXPECT_EQ(Middle(), QColor(Qt::red));
}

TEST_F(Logo, IsOursAgainWhenItsFileIsGoneAndTheSettingStays) {
  const std::string file = rig.folder.File("unplugged.png");
  Set("CompanyLogoFile", file);
  rig.Start();
  EXPECT_EQ(Button().iconSize(), QSize(96, 28));
  EXPECT_EQ(rig.State().CompanyLogoFile, file);
}

TEST_F(Logo, AClickChoosesAnotherOneWhichIsKept) {
  rig.Start();
  const std::string file = Picture("logo.png", {60, 60}, Qt::green);
  rig.State().DefaultDirectory = "/jobs";
  rig.dialogs.ExpectOpenFile(file);
  Button().click();
  EXPECT_EQ(rig.dialogs.filesAsked.back().directory, "/jobs");
  EXPECT_EQ(rig.dialogs.filesAsked.back().filter, "Pictures|*.bmp;*.gif;*.jpg;*.jpeg;*.png;*.svg");
  EXPECT_EQ(Button().iconSize(), QSize(28, 28));
  EXPECT_EQ(Middle(), QColor(Qt::green));
  EXPECT_EQ(rig.State().DefaultDirectory + "/logo.png", file) << "the next file dialog starts there";
  Exit();
  rig.Start();
  EXPECT_EQ(rig.State().CompanyLogoFile, file);
  EXPECT_EQ(Middle(), QColor(Qt::green));
}

TEST_F(Logo, FollowsATemplateAndIsOursAgainWhenTheSettingsAreCleared) {
  Set("CompanyLogoFile", Picture("green.png", {60, 60}, Qt::green));
  rig.Start();
  rig.dialogs.ExpectChoice("Save", "Job");
  rig.Choose("mnuEditSaveTemplate");
  rig.dialogs.ExpectOpenFile(Picture("red.png", {60, 60}, Qt::red));
  Button().click();
  EXPECT_EQ(Middle(), QColor(Qt::red));
  rig.dialogs.ExpectChoice("Load", "Job");
  rig.dialogs.Expect("Loading this template replaces:", Answer::Yes);
  rig.Choose("mnuEditLoadTemplate");
  EXPECT_EQ(Middle(), QColor(Qt::green));
  rig.Choose("mnuViewCompany");
  EXPECT_FALSE(Button().isVisible());
  rig.ClearSettings({0});
  EXPECT_EQ(Button().iconSize(), QSize(96, 28));
  EXPECT_TRUE(Button().isVisible());
  EXPECT_TRUE(rig.Window().MenuItem("mnuViewCompany")->isChecked());
}

TEST_F(Logo, CancelLeavesAllAsItWas) {
  Set("CompanyLogoFile", Picture("logo.png", {60, 60}, Qt::green));
  rig.Start();
  rig.dialogs.ExpectOpenFile(std::nullopt);
  Button().click();
  EXPECT_EQ(Middle(), QColor(Qt::green));
  EXPECT_EQ(rig.State().CompanyLogoFile, rig.folder.File("logo.png"));
}

TEST_F(Logo, AFileThatIsNoPictureIsToldAndTheOldOneStays) {
  Set("CompanyLogoFile", Picture("logo.png", {60, 60}, Qt::green));
  rig.Start();
  rig.dialogs.ExpectOpenFile(Text("letter.png", "Dear Sirs"));
  rig.dialogs.Expect("letter.png - CompanyLogo_Click", Answer::Cancel);
  Button().click();
  EXPECT_EQ(Middle(), QColor(Qt::green));
  EXPECT_EQ(rig.State().CompanyLogoFile, rig.folder.File("logo.png"));
}

TEST_F(Logo, RetryReadsTheFileAgain) {
  rig.Start();
  const std::string file = Text("late.png", "");
  rig.dialogs.ExpectOpenFile(file);
  rig.dialogs.Expect(" - CompanyLogo_Click", Answer::Retry, [&] { Picture("late.png", {60, 60}, Qt::blue); });
  Button().click();
  EXPECT_EQ(Middle(), QColor(Qt::blue));
  EXPECT_EQ(rig.State().CompanyLogoFile, file);
}

}  // namespace
}  // namespace velk
