#include "instruments/setup/parameter_commands.h"

#include <gtest/gtest.h>

namespace velk {
namespace {

TEST(CommandText, TellsWhatAStoredCommandEndsWith) {
  const std::pair<const char*, CommandText> rows[] = {
      {"", {"", false, false}},          {"P1", {"P1", false, false}},     {"P1\r", {"P1", true, false}},
      {"P1\n", {"P1", false, true}},     {"P1\r\n", {"P1", true, true}},   {"P1\n\r", {"P1\n", true, false}},
      {"\r\n", {"", true, true}},        {"P\r1", {"P\r1", false, false}}, {"P1\r\r\n", {"P1\r", true, true}},
      {"P1\n\n", {"P1\n", false, true}}, {"P1 \r\n", {"P1 ", true, true}},
  };
  for (const auto& [stored, shown] : rows) {
    EXPECT_EQ(SplitCommand(stored), shown);
    EXPECT_EQ(JoinCommand(shown), stored);
  }
}

TEST(CommandText, AddsCrAheadOfLfAsTheBoxesSay) {
  EXPECT_EQ(JoinCommand({"READ 3", false, false}), "READ 3");
  EXPECT_EQ(JoinCommand({"READ 3", true, false}), "READ 3\x0D");
  EXPECT_EQ(JoinCommand({"READ 3", false, true}), "READ 3\x0A");
  EXPECT_EQ(JoinCommand({"READ 3", true, true}), "READ 3\x0D\x0A");
}

TEST(ParameterCommands, AreListedForTheInputChannelsOnly) {
  Session session;
  session.Parameters[1].name = "Flow";
  session.Parameters[1].CommandString = "F?\r";
  session.Parameters[1].ResetCommand = "F=\r";
  session.Parameters[2].name = "Level";
  session.Parameters[3].name = "Beyond";
  const auto commands = CommandsOf(session.Parameters, 2);
  ASSERT_EQ(commands.size(), 2U);
  EXPECT_EQ(commands[0].name, "Flow");
  EXPECT_EQ(commands[0].CommandString, "F?\r");
  EXPECT_EQ(commands[0].ResetCommand, "F=\r");
  EXPECT_EQ(commands[1].name, "Level");
  EXPECT_TRUE(CommandsOf(session.Parameters, 0).empty());
  EXPECT_EQ(CommandsOf(session.Parameters, 64).size(), 64U);
}

TEST(ParameterCommands, GoToTheConfiguredAndTheWorkingParameters) {
  Session session;
  session.CurrentParameters[1].name = "working name";
  session.Parameters[3].CommandString = "kept";
  StoreCommands(session, {{"", "A\r\n", "R1"}, {"", "", "R2\n"}});
  for (const auto* parameters : {&session.Parameters, &session.CurrentParameters}) {
    EXPECT_EQ((*parameters)[1].CommandString, "A\r\n");
    EXPECT_EQ((*parameters)[1].ResetCommand, "R1");
    EXPECT_EQ((*parameters)[2].CommandString, "");
    EXPECT_EQ((*parameters)[2].ResetCommand, "R2\n");
  }
  EXPECT_EQ(session.Parameters[3].CommandString, "kept");
  EXPECT_EQ(session.CurrentParameters[1].name, "working name");
}

}  // namespace
}  // namespace velk
