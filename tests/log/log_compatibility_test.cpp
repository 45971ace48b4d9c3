#include <gtest/gtest.h>

#include "log/log_fixture.h"

namespace velk {
namespace {

/// A file made for one set of channels is asked about another.
class LogCompatibility : public test::LogFixture {
 protected:
  void MakeLogOf(const std::vector<std::string>& names) {
    NameChannels(names);
    CreateLog(path);
  }
  bool Fits(const std::vector<std::string>& names) {
    NameChannels(names);
    return files.IsCompatibleLog(path);
  }
  bool Ordered(const std::vector<std::string>& names) {
    NameChannels(names);
    return files.HasSameColumnOrder(path);
  }
};

TEST_F(LogCompatibility, AFileFitsTheChannelsItWasMadeFor) {
  const std::vector<std::string> names{"Pressure", "Rate.1", "BLANK", "!!", "rate1", "ID", "Date", "Давление"};
  MakeLogOf(names);
  EXPECT_TRUE(Fits(names));
  EXPECT_TRUE(Ordered(names));
}

TEST_F(LogCompatibility, AnExtraColumnDoesNoHarm) {
  MakeLogOf({"A", "B", "C"});
  EXPECT_TRUE(Fits({"A", "B"}));
  EXPECT_TRUE(Ordered({"A", "B"}));
}

TEST_F(LogCompatibility, OneMissingColumnIsEnough) {
  MakeLogOf({"A", "B", "C"});
  EXPECT_FALSE(Fits({"A", "B", "D"}));
  EXPECT_FALSE(Fits({"A", "B", "C", "D"}));
}

TEST_F(LogCompatibility, NamesAreComparedExactly) {
  MakeLogOf({"Pressure"});
  EXPECT_FALSE(Fits({"pressure"}));
  EXPECT_FALSE(Fits({"Pressure "}));
  EXPECT_TRUE(Fits({"[Pressure]"}));
}

TEST_F(LogCompatibility, AChannelCalledDateNeedsAColumnOfItsOwn) {
  MakeLogOf({"A", "B"});
  EXPECT_FALSE(Fits({"A", "Date"}));
}

TEST_F(LogCompatibility, BlankChannelsFitIntoAnyBlankColumn) {
  MakeLogOf({"A", "BLANK", "B"});
  EXPECT_TRUE(Fits({"A", "B", "BLANK"}));
  EXPECT_FALSE(Ordered({"A", "B", "BLANK"}));
  EXPECT_TRUE(Fits({"A", "blank 9"}));
  EXPECT_TRUE(Ordered({"A", "blank 9"}));
  MakeDatabase(folder.File("none.mdb"), "CREATE TABLE logData (ID INTEGER, Date DATE, Time DATE, A DOUBLE, B DOUBLE)");
  NameChannels({"A", "BLANK"});
  EXPECT_FALSE(files.IsCompatibleLog(folder.File("none.mdb")));
}

TEST_F(LogCompatibility, AChannelWithoutANamePasses) {
  MakeLogOf({"A", "B"});
  EXPECT_TRUE(Fits({"A", ""}));
  EXPECT_TRUE(Fits({"", ""}));
  EXPECT_TRUE(Fits({"!", "."}));
  EXPECT_FALSE(Fits({"", "", ""})) << "there is no third column";
}

TEST_F(LogCompatibility, AnotherOrderIsNoticed) {
  MakeLogOf({"A", "B"});
  EXPECT_TRUE(Fits({"B", "A"}));
  EXPECT_FALSE(Ordered({"B", "A"}));
  EXPECT_FALSE(Ordered({"B"}));
  EXPECT_TRUE(Ordered({"A"}));
}

TEST_F(LogCompatibility, TheOpenLogIsAskedThroughItsOwnConnection) {
  NameChannels({"A"});
  StartLog(path);
  EXPECT_TRUE(files.IsCompatibleLog(path));
  log.Finalise();
  EXPECT_EQ(FilesInFolder(), (std::vector<std::string>{"run.mdb"}));
}

TEST_F(LogCompatibility, LookingAtAFileLeavesNothingBesideIt) {
  MakeLogOf({"A"});
  EXPECT_TRUE(Fits({"A"}));
  EXPECT_EQ(FilesInFolder(), (std::vector<std::string>{"run.mdb"}));
}

TEST_F(LogCompatibility, ADuplicateIsRenamedAndTheComparisonStartsAgain) {
  MakeLogOf({"A", "B", "C"});
  NameChannels({"A", "A", "B"});
  session.CurrentParameters[2].FormIndex = 5;
  session.CurrentParameters[3].FormIndex = 9;
  // The new name is the third channel's, which is then the later one of two.
  dialogs.ExpectInput("Cannot have two parameters with the same name, please change name of (A)", "B");
  dialogs.ExpectInput("please change name of (B)", "C");
  EXPECT_TRUE(files.IsCompatibleLog(path));
  EXPECT_EQ(session.CurrentParameters[2].name, "B");
  EXPECT_EQ(session.CurrentParameters[3].name, "C");
  EXPECT_EQ(dialogs.inputTitles, (std::vector<std::string>{"Database error", "Database error"}));
  EXPECT_EQ(graphs.rebuilt, (std::vector<int>{5, 9}));
}

TEST_F(LogCompatibility, ANewNameIsComparedWithTheChannelsBeforeIt) {
  MakeLogOf({"A", "B", "C"});
  NameChannels({"A", "B", "B"});
  dialogs.ExpectInput("(B)", "A");
  dialogs.ExpectInput("(A)", "C");
  EXPECT_TRUE(files.IsCompatibleLog(path));
  EXPECT_EQ(session.CurrentParameters[3].name, "C");
}

TEST_F(LogCompatibility, TheQuestionSaysWhyAFileIsNotCompatibleAndNamesTheNewOne) {
  MakeLogOf({"A", "B"});
  NameChannels({"A", "Rate"});
  files.AppendOrCreate(path, folder.File("run#1.mdb"));
  EXPECT_EQ(questions.asked.back().whyNot, "It has no column for the channel Rate");
  EXPECT_EQ(questions.asked.back().newName, folder.File("run#1.mdb"));
  NameChannels({"A", "B"});
  files.AppendOrCreate(path, "");
  EXPECT_EQ(questions.asked.back().whyNot, "");
  MakeDatabase(folder.File("other.mdb"), "CREATE TABLE something (ID INTEGER)");
  files.AppendOrCreate(folder.File("other.mdb"), "");
  EXPECT_EQ(questions.asked.back().whyNot, "It holds no rows of data.");
}

TEST_F(LogCompatibility, AnEmptyReplyOrCancelRefusesTheFile) {
  MakeLogOf({"A", "B"});
  dialogs.ExpectInput("(A)", "");
  EXPECT_FALSE(Fits({"A", "A"}));
  EXPECT_EQ(session.CurrentParameters[2].name, "A");
  dialogs.ExpectInput("(A)", std::nullopt);
  EXPECT_FALSE(Fits({"A", "A"}));
  EXPECT_TRUE(graphs.rebuilt.empty());
}

TEST_F(LogCompatibility, ANewNameStaysWhenTheFileIsRefusedInTheEnd) {
  MakeLogOf({"A", "B"});
  dialogs.ExpectInput("(A)", "Z");
  EXPECT_FALSE(Fits({"A", "A"}));
  EXPECT_EQ(session.CurrentParameters[2].name, "Z");
}

TEST_F(LogCompatibility, TwoBlankChannelsAreNoDuplicates) {
  MakeLogOf({"BLANK", "BLANK", "..", "!!"});
  EXPECT_TRUE(Fits({"BLANK", "BLANK", "..", "!!"}));
}

TEST_F(LogCompatibility, NamesThatCleaningMakesTheSameAreDuplicates) {
  MakeLogOf({"AB", "C"});
  dialogs.ExpectInput("(A.B)", "C");
  EXPECT_TRUE(Fits({"AB", "A.B"}));
}

}  // namespace
}  // namespace velk
