#include "log/record_file.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>

#include "log/log_fixture.h"
#include "model/status.h"
#include "model/texts.h"
#include "support/locking_program.h"
#include "support/recording_view.h"

namespace velk {
namespace {

struct NameCase {
  std::string chosen;
  std::set<std::string> existing;
  std::string oldName;
  std::string newName;  ///< empty: the old one does not exist
};

TEST(RecordFileNames, FollowTheRulesOfNumbering) {
  const NameCase cases[] = {
      {"/d/run.mdb", {}, "/d/run.mdb", ""},
      {"/d/run", {}, "/d/run.mdb", ""},
      {"/d/run.dat", {}, "/d/run.dat", ""},
      {"/d/run", {"/d/run.mdb"}, "/d/run.mdb", "/d/run#1.mdb"},
      {"/d/run.mdb", {"/d/run.mdb"}, "/d/run.mdb", "/d/run#1.mdb"},
      {"/d/run.mdb", {"/d/run.mdb", "/d/run#1.mdb", "/d/run#2.mdb"}, "/d/run.mdb", "/d/run#3.mdb"},
      {"/d/run#7.mdb", {"/d/run#7.mdb"}, "/d/run#7.mdb", "/d/run#8.mdb"},
      {"/d/run#7.mdb", {"/d/run#7.mdb", "/d/run#8.mdb", "/d/run#9.mdb"}, "/d/run#7.mdb", "/d/run#10.mdb"},
      {"/d/run#7", {"/d/run#7.mdb"}, "/d/run#7.mdb", "/d/run#8.mdb"},
      {"/d/run#7.mdb", {}, "/d/run#7.mdb", ""},
      {"/d/run#x.mdb", {"/d/run#x.mdb"}, "/d/run#x.mdb", "/d/run#1.mdb"},
      {"/d/run#.mdb", {"/d/run#.mdb"}, "/d/run#.mdb", "/d/run#1.mdb"},
      {"/d/a#1#2.mdb", {"/d/a#1#2.mdb"}, "/d/a#1#2.mdb", "/d/a#2.mdb"},
      {"/d/run#99999999999999999999.mdb",
       {"/d/run#99999999999999999999.mdb"},
       "/d/run#99999999999999999999.mdb",
       "/d/run#1.mdb"},
      // Cut at the first point: the name that is left may be free.
      {"/d/run.3.mdb", {"/d/run.3.mdb"}, "/d/run.mdb", ""},
      {"/d/run.003", {"/d/run.003", "/d/run.mdb"}, "/d/run.mdb", "/d/run#1.mdb"},
      // Points and "#" of folders are none of the file's.
      {"/jobs.2026/pad #3/run.mdb",
       {"/jobs.2026/pad #3/run.mdb"},
       "/jobs.2026/pad #3/run.mdb",
       "/jobs.2026/pad #3/run#1.mdb"},
      {"/jobs.2026/run", {}, "/jobs.2026/run.mdb", ""},
      {"run.mdb", {"run.mdb"}, "run.mdb", "run#1.mdb"},
      {"/d/скв.mdb", {"/d/скв.mdb"}, "/d/скв.mdb", "/d/скв#1.mdb"},
  };
  for (const NameCase& each : cases) {
    const RecordFileNames names =
        NamesFor(each.chosen, [&](const std::string& name) { return each.existing.contains(name); });
    EXPECT_EQ(names.oldName, each.oldName) << each.chosen;
    EXPECT_EQ(names.newName, each.newName) << each.chosen;
    EXPECT_EQ(names.oldExists, !each.newName.empty()) << each.chosen;
  }
}

class RecordFile : public test::LogFixture {
 protected:
  void SetUp() override {
    NameChannels({"Pressure", "Rate"});
    session.DefaultDirectory = "/before";
    session.PageCount = 12;
    ChangeCurrentStatus(session, view, text::StatusReady);
  }
  bool Choose(const std::string& picked) {
    dialogs.ExpectSaveFile(picked);
    return mnuFileRecord_Click(session, platform, view, files);
  }
  void ExpectNothingChosen() {
    EXPECT_EQ(session.CurrentFile, "");
    EXPECT_EQ(session.DefaultDirectory, "/before");
    EXPECT_EQ(session.PageCount, 12);
    EXPECT_FALSE(session.RecordToDB);
    EXPECT_FALSE(view.panels.contains(2));
  }

  test::RecordingView view;
};

TEST_F(RecordFile, IsAskedForInTheFolderOfTheLastOne) {
  dialogs.ExpectSaveFile(std::nullopt);
  EXPECT_FALSE(mnuFileRecord_Click(session, platform, view, files));
  ASSERT_EQ(dialogs.filesAsked.size(), 1u);
  EXPECT_EQ(dialogs.filesAsked[0].filter, "Data files (*.mdb)|*.mdb");
  EXPECT_EQ(dialogs.filesAsked[0].directory, "/before");
  EXPECT_EQ(dialogs.filesAsked[0].name, "2026-03-14 09-30.mdb") << "the date and the time of the clock";
  ExpectNothingChosen();
}

TEST_F(RecordFile, ThatIsNewIsTakenAsItIsAndNotMadeYet) {
  EXPECT_TRUE(Choose(folder.File("run")));
  EXPECT_EQ(session.CurrentFile, path);
  EXPECT_EQ(session.DefaultDirectory, folder.Path().string());
  EXPECT_EQ(session.PageCount, 0);
  EXPECT_EQ(view.panels[2], "Current File: " + path);
  EXPECT_TRUE(questions.asked.empty());
  EXPECT_TRUE(FilesInFolder().empty());
}

TEST_F(RecordFile, SwitchesRecordingOnOnlyInReadyToAcquire) {
  EXPECT_TRUE(Choose(path));
  EXPECT_FALSE(session.RecordToDB);
  EXPECT_EQ(view.ButtonImage("RecordToDB"), 0);
  ChangeCurrentStatus(session, view, text::StatusReadyToAcquire);
  EXPECT_TRUE(Choose(path));
  EXPECT_TRUE(session.RecordToDB);
  EXPECT_EQ(view.ButtonImage("RecordToDB"), 13);
}

TEST_F(RecordFile, ThatExistsIsAppendedTo) {
  CreateLog(path);
  questions.choice = FileChoice::Append;
  EXPECT_TRUE(Choose(path));
  EXPECT_EQ(session.CurrentFile, path);
  ASSERT_EQ(questions.asked.size(), 1u);
  EXPECT_EQ(questions.asked[0].oldName, path);
  EXPECT_TRUE(questions.asked[0].compatible);
  EXPECT_TRUE(questions.asked[0].sameOrder);
}

TEST_F(RecordFile, ThatExistsLeadsToANumberedOne) {
  CreateLog(path);
  questions.choice = FileChoice::CreateNew;
  EXPECT_TRUE(Choose(path));
  EXPECT_EQ(session.CurrentFile, folder.File("run#1.mdb"));
  EXPECT_EQ(FilesInFolder(), (std::vector<std::string>{"run.mdb"}));
}

TEST_F(RecordFile, ThatAnotherProgramRecordsToIsToldAndNotChosen) {
  CreateLog(path);
  const test::LockingProgram other(path);
  dialogs.ExpectSaveFile(path);
  dialogs.Expect("The log [" + path + "] is being recorded by another VELK (process " + other.Process() + " on ",
                 Answer::Cancel);
  EXPECT_FALSE(mnuFileRecord_Click(session, platform, view, files));
  EXPECT_TRUE(questions.asked.empty());
  ExpectNothingChosen();
}

TEST_F(RecordFile, ThatThisProgramHasOpenIsAskedForAsAnyOther) {
  StartLog(path);
  questions.choice = FileChoice::Append;
  EXPECT_TRUE(Choose(path));
  EXPECT_EQ(questions.asked.size(), 1u);
}

TEST_F(RecordFile, IsClearedOfThePartsThatKilledProgramsHaveLeft) {
  for (const char* left : {"run.mdb.part1", "run.mdb.part1-journal", "run.mdb.part1-lock", "run.mdb.part2"})
    std::ofstream(folder.File(left)) << "half";
  for (const char* other : {"run.mdb.part", "run.mdb.part3x", "run.mdb.partial", "other.mdb.part1", "run.mdb.part12"})
    std::ofstream(folder.File(other)) << "somebody's";
  const test::LockingProgram atWork(folder.File("run.mdb.part12"));
  EXPECT_TRUE(Choose(path));
  EXPECT_EQ(FilesInFolder(), (std::vector<std::string>{"other.mdb.part1", "run.mdb.part", "run.mdb.part12",
                                                       "run.mdb.part12-lock", "run.mdb.part3x", "run.mdb.partial"}));
}

TEST_F(RecordFile, TellsOnceOfAPartThatCannotBeRemoved) {
  std::filesystem::create_directory(folder.File("run.mdb.part1"));
  dialogs.ExpectSaveFile(path);
  dialogs.Expect(
      "What a broken-off program left of a file with this name could not be removed: " + folder.File("run.mdb.part1"),
      Answer::Ok);
  EXPECT_TRUE(mnuFileRecord_Click(session, platform, view, files));
  EXPECT_TRUE(Choose(path)) << "the second time without a word";
}

TEST_F(RecordFile, IsNotChosenWhenTheQuestionIsClosed) {
  CreateLog(path);
  questions.choice = FileChoice::None;
  EXPECT_FALSE(Choose(path));
  ExpectNothingChosen();
}

TEST_F(RecordFile, TellsTheQuestionOfAnotherOrderOrColumns) {
  CreateLog(path);
  NameChannels({"Rate", "Pressure"});
  Choose(path);
  EXPECT_TRUE(questions.asked.back().compatible);
  EXPECT_FALSE(questions.asked.back().sameOrder);
  NameChannels({"Rate", "Depth"});
  Choose(path);
  EXPECT_FALSE(questions.asked.back().compatible);
}

TEST_F(RecordFile, ThatIsNoDatabaseIsToldAndCanBeLeft) {
  std::ofstream(path) << "This is a letter, not a database." << std::string(2000, '.');
  dialogs.ExpectSaveFile(path);
  dialogs.Expect(" - mnuFileRecord_Click", Answer::Retry);
  dialogs.Expect(path, Answer::Cancel);
  EXPECT_FALSE(mnuFileRecord_Click(session, platform, view, files));
  EXPECT_EQ(dialogs.shown[0].title, "Record to ... error");
  EXPECT_EQ(dialogs.shown[0].buttons, Buttons::RetryCancel);
  ExpectNothingChosen();
}

TEST_F(RecordFile, OfAnotherProgramIsNotCompatible) {
  MakeDatabase(path, "CREATE TABLE music (title TEXT)");
  questions.choice = FileChoice::CreateNew;
  EXPECT_TRUE(Choose(path));
  EXPECT_FALSE(questions.asked[0].compatible);
  EXPECT_EQ(session.CurrentFile, folder.File("run#1.mdb"));
}

}  // namespace
}  // namespace velk
