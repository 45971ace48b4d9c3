#include "model/select_file.h"

#include <gtest/gtest.h>

#include <vector>

#include "support/scripted_dialogs.h"
#include "support/temporary_folder.h"

namespace velk {
namespace {

class SelectFileTest : public testing::Test {
 protected:
  std::optional<std::string> Select(FileUse use, std::vector<std::string_view> extensions = {"d15"}) {
    return SelectFile(dialogs, {"Title", "Survey Files (*.d15) |*.d15", folder.Path().string()}, extensions, use,
                      [this] { ++beeps; });
  }

  const test::TemporaryFolder folder;
  Gate gate;
  test::ScriptedDialogs dialogs{gate};
  int beeps = 0;
};

TEST_F(SelectFileTest, GivesWhatWasChosen) {
  const std::string path = folder.Touch("a.D15");
  dialogs.ExpectOpenFile(path);
  EXPECT_EQ(Select(FileUse::Open), path);
  dialogs.ExpectSaveFile(folder.File("new.d15"));
  EXPECT_EQ(Select(FileUse::Save), folder.File("new.d15"));
  EXPECT_EQ(beeps, 0);
}

TEST_F(SelectFileTest, GivesNothingOnCancel) {
  dialogs.ExpectOpenFile(std::nullopt);
  EXPECT_EQ(Select(FileUse::Open), std::nullopt);
}

TEST_F(SelectFileTest, AddsTheExtensionThatIsNeeded) {
  dialogs.ExpectSaveFile(folder.File("well"));
  EXPECT_EQ(Select(FileUse::Save), folder.File("well.d15"));
  dialogs.ExpectSaveFile(folder.File("well.txt"));
  EXPECT_EQ(Select(FileUse::Save), folder.File("well.txt.d15"));
  const std::string path = folder.Touch("there.d15");
  dialogs.ExpectOpenFile(folder.File("there"));
  EXPECT_EQ(Select(FileUse::Open), path);
}

TEST_F(SelectFileTest, TakesAnyExtensionWhereThatIsAllowed) {
  const std::string path = folder.Touch("a.xyz");
  dialogs.ExpectOpenFile(path);
  EXPECT_EQ(Select(FileUse::Open, {"d15", "dt5", "*"}), path);
}

TEST_F(SelectFileTest, AsksAgainForANameWithoutAnExtension) {
  dialogs.ExpectSaveFile(folder.File("well"));
  dialogs.Expect("Filename -  " + folder.File("well") + "  has no extension", Answer::Ok);
  dialogs.ExpectSaveFile(folder.File(".well"));
  dialogs.Expect("Filename -  " + folder.File(".well") + "  has no extension", Answer::Ok);
  dialogs.ExpectSaveFile(folder.File("well.txt"));
  EXPECT_EQ(Select(FileUse::Save, {"*"}), folder.File("well.txt"));
  EXPECT_EQ(beeps, 2);
  ASSERT_EQ(dialogs.filesAsked.size(), 3U);
  EXPECT_EQ(dialogs.filesAsked[1].name, "well");
  EXPECT_EQ(dialogs.filesAsked[1].directory, folder.Path().string());
}

TEST_F(SelectFileTest, AsksAgainForAFolder) {
  dialogs.ExpectSaveFile("/tmp/");
  dialogs.Expect("File name -  /tmp/  incomplete", Answer::Ok);
  dialogs.ExpectSaveFile(std::nullopt);
  EXPECT_EQ(Select(FileUse::Save), std::nullopt);
  EXPECT_EQ(beeps, 1);
}

TEST_F(SelectFileTest, AsksAgainForAFileThatIsNotThere) {
  dialogs.ExpectOpenFile(folder.File("none.d15"));
  dialogs.Expect("File -  " + folder.File("none.d15") + "  does not exist", Answer::Ok);
  dialogs.ExpectOpenFile(std::nullopt);
  EXPECT_EQ(Select(FileUse::Open), std::nullopt);
  EXPECT_EQ(beeps, 1);
}

TEST_F(SelectFileTest, AsksBeforeAFileIsReplaced) {
  const std::string path = folder.Touch("a.d15");
  dialogs.ExpectSaveFile(path);
  dialogs.Expect("[" + path + "] is there already. Replace it?", Answer::No);
  dialogs.ExpectSaveFile(path);
  dialogs.Expect("Replace it?", Answer::Yes);
  EXPECT_EQ(Select(FileUse::Save), path);
}

}  // namespace
}  // namespace velk
