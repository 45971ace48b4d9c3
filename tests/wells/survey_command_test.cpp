#include "wells/windows/survey_command.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QTableView>
#include <QTest>

#include "platform/settings/settings.h"
#include "support/fake_clock.h"
#include "support/host.h"
#include "support/temporary_folder.h"
#include "support/window_script.h"

namespace velk {
namespace {

using Rows = std::vector<SurveyStation>;

class SurveyMenu : public testing::Test {
 protected:
  SurveyMenu() {
    well.Survey = {{0, 0, 0}, {500, 1, 2}};
    well.SavedSurveyCount = 2;
    well.SurveyIsKept = false;
    well.Path.maxTvd = 77;
  }
  void Choose() {
    mnuToolsSurvey_Click(
        host, well, platform, folder.Path().string(), [] {}, [this] { return isLive; });
  }
  void SaveAs(QDialog& editor, const std::string& path) {
    host.dialogs.ExpectSaveFile(path);
    test::Click(editor, "cmdSaveAs");
  }
  static void Paste(QDialog& editor, const char* rows) {
    QApplication::clipboard()->setText(rows);
    auto* grid = test::FindControl<QTableView>(editor, "Grid1");
    grid->setCurrentIndex(grid->model()->index(0, 0));
    QTest::keyClick(grid, Qt::Key_V, Qt::ControlModifier);
  }

  const test::TemporaryFolder folder;
  SettingsStore settings{folder.Path().string()};
  test::Host host;
  test::FakeClock clock{host.gate};
  Platform platform{clock, host.gate, host.dialogs, settings, host.translation.Translator};
  test::WindowScript script;
  Well well;
  bool isLive = false;
  const std::string file = folder.File("a.d15");
};

TEST_F(SurveyMenu, TakesTheRowsByOk) {
  script.Then("EditSur", [](QDialog& editor) {
    Paste(editor, "0\t0\t0\n100\t3\t4\n200\t3\t4\n");
    test::Click(editor, "cmdOK");
  });
  Choose();
  EXPECT_EQ(well.Survey, (Rows{{0, 0, 0}, {100, 3, 4}, {200, 3, 4}}));
  EXPECT_EQ(well.Path.stations.size(), 3U);
  EXPECT_EQ(well.SavedSurveyCount, 3);
}

TEST_F(SurveyMenu, LeavesTheWellAsItIsByCancel) {
  script.Then("EditSur", [this](QDialog& editor) {
    Paste(editor, "0\t0\t0\n100\t3\t4\n");
    host.dialogs.Expect("Leave the survey without what you have changed?", Answer::Yes);
    test::Click(editor, "cmdCancel");
  });
  Choose();
  EXPECT_EQ(well.Survey, (Rows{{0, 0, 0}, {500, 1, 2}}));
  EXPECT_EQ(well.Path.maxTvd, 77);
  EXPECT_EQ(well.SurveyFileName, "");
  EXPECT_FALSE(well.SurveyAccepted);
  EXPECT_FALSE(well.SurveyIsKept);
}

TEST_F(SurveyMenu, KnowsTheFileThatItsRowsWereSavedToBehindCancel) {
  script.Then("EditSur", [this](QDialog& editor) {
    SaveAs(editor, file);
    test::Click(editor, "cmdCancel");
  });
  Choose();
  EXPECT_EQ(well.SurveyFileName, file);
  EXPECT_TRUE(well.SurveyIsKept);
}

TEST_F(SurveyMenu, ForgetsTheFileThatOtherRowsWereSavedTo) {
  well.SurveyFileName = file;
  well.SurveyIsKept = true;
  script.Then("EditSur", [](QDialog& editor) {
    Paste(editor, "0\t0\t0\n100\t3\t4\n");
    test::Click(editor, "cmdSave");
    test::Click(editor, "cmdCancel");
  });
  Choose();
  EXPECT_EQ(well.Survey, (Rows{{0, 0, 0}, {500, 1, 2}}));
  EXPECT_EQ(well.SurveyFileName, "");
  EXPECT_FALSE(well.SurveyIsKept);
}

TEST_F(SurveyMenu, TiesNoFileToTheRowsOfALiveSurvey) {
  well.SurveyIsKept = true;
  isLive = true;
  script.Then("EditSur", [this](QDialog& editor) {
    SaveAs(editor, file);
    test::Click(editor, "cmdCancel");
  });
  Choose();
  EXPECT_EQ(well.SurveyFileName, "");
}

}  // namespace
}  // namespace velk
