#include "shell/company_logo.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QPainter>
#include <QToolButton>
#include <fstream>

#include "shell/shell_rig.h"

namespace velk {
namespace {

constexpr QSize kBound(900, 112);

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

// --- Reading a picture ---

TEST_F(Logo, IsReadFromTheUsualFormatsWhateverTheFileIsCalled) {
  for (const char* name : {"logo.png", "logo.bmp", "logo.jpg"})
    EXPECT_EQ(ReadPicture(Picture(name, {90, 30}, Qt::red), kBound)->size(), QSize(90, 30)) << name;
  const std::string png = Picture("logo.png", {90, 30}, Qt::red);
  std::filesystem::rename(png, rig.folder.File("logo.jpg"));
  EXPECT_TRUE(ReadPicture(rig.folder.File("logo.jpg"), kBound));
}

TEST_F(Logo, IsScaledDownInProportionAndNeverUp) {
  EXPECT_EQ(ReadPicture(Picture("wide.png", {3600, 112}, Qt::red), kBound)->size(), QSize(900, 28));
  EXPECT_EQ(ReadPicture(Picture("high.png", {100, 1120}, Qt::red), kBound)->size(), QSize(10, 112));
  EXPECT_EQ(ReadPicture(Picture("line.png", {5000, 1}, Qt::red), kBound)->size(), QSize(900, 1));
  EXPECT_EQ(ReadPicture(Picture("small.png", {9, 3}, Qt::red), kBound)->size(), QSize(9, 3));
}

TEST_F(Logo, IsDrawnSharplyFromAVectorFile) {
  const std::string svg = Text(
      "logo.svg", "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='3'><rect width='9' height='3'/></svg>");
  EXPECT_EQ(ReadPicture(svg, kBound)->size(), QSize(336, 112));
}

TEST_F(Logo, IsNotReadFromWhatIsNoPicture) {
  EXPECT_FALSE(ReadPicture("", kBound));
  EXPECT_FALSE(ReadPicture(rig.folder.File("missing.png"), kBound));
  EXPECT_FALSE(ReadPicture(rig.folder.File(""), kBound));
  EXPECT_FALSE(ReadPicture(Text("empty.png", ""), kBound));
  EXPECT_FALSE(ReadPicture(Text("text.png", "no picture"), kBound));
  ASSERT_EQ(mkfifo(rig.folder.File("pipe.png").c_str(), 0600), 0);
  EXPECT_FALSE(ReadPicture(rig.folder.File("pipe.png"), kBound)) << "and does not wait for it";
}

TEST_F(Logo, IsReadUpTo64Megapixels) {
  QImage image(8000, 8000, QImage::Format_Mono);
  image.fill(1);
  ASSERT_TRUE(image.save(QString::fromStdString(rig.folder.File("largest.png"))));
  EXPECT_TRUE(ReadPicture(rig.folder.File("largest.png"), kBound));
  image = QImage(8001, 8000, QImage::Format_Mono);
  image.fill(1);
  ASSERT_TRUE(image.save(QString::fromStdString(rig.folder.File("larger.png"))));
  EXPECT_FALSE(ReadPicture(rig.folder.File("larger.png"), kBound));
}

TEST_F(Logo, IsNotReadFromAFileCutAnywhere) {
  const std::string whole = Picture("logo.png", {90, 30}, Qt::red);
  std::ifstream file(whole, std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(file), {}};
  for (std::size_t length = 0; length < bytes.size() / 2; length += 5) {
    std::ofstream(rig.folder.File("cut.png"), std::ios::binary) << bytes.substr(0, length);
    EXPECT_FALSE(ReadPicture(rig.folder.File("cut.png"), kBound)) << length;
  }
}

// --- In the window ---

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
