// What a conversation with a board leaves behind: the link, what was read, and what the unit is still owed.

#include "instruments/unit/unit_talk.h"

#include "instruments/board_rig.h"
#include "instruments/link_fixture.h"
#include "instruments/unit/unit_settings.h"

namespace velk {
namespace {

struct UnitTalkTest : test::LinkTest {
  UnitTalkTest() {
    SetProtocolConstants(session);
    unit.answers["p\r"] = {Table()};
    clock.onYield = [this] {
      if (onRound) onRound();
      unit.Listen();
    };
    link.SetODataCom();
  }
  /// Of a KESTA version 4 that repeats commands; channel i has offset i.
  static std::string Table() { return test::BoardRig::Table(18, " 1 2"); }
  std::string Sent() {
    unit.Listen();
    return std::exchange(unit.heard, {});
  }
  /// The cable is pulled out a second after the clock is to be set.
  void LoseTheCableInACommand() {
    onRound = [this, end = clock.Ticks() + 1000] {
      if (!plain.open || clock.Ticks() < end) return;
      driver.Vanish();
      plain.HangUp();
    };
    EXPECT_THROW(table.SetClock(), RuntimeError);
    onRound = nullptr;
    EXPECT_FALSE(driver.open);
  }

  test::ScriptedBoard unit{plain};
  UnitSettings table{UnitAccess{session, platform, link, timers}};
  std::function<void()> onRound;
};

TEST_F(UnitTalkTest, ReadsTheTableAheadOfTheNextSendWhereOneHasFailed) {
  table.MatchParameters();
  UnitRows rows = session.OrbenSettings;
  rows[0][unit_column::Offset] = "-4";
  Sent();
  EXPECT_THROW(table.Send(rows), BoardError);
  EXPECT_EQ(Sent(), "Trad\ro 1 -4\rr\r");

  // The board has taken the command, and only its echo was lost.
  std::string changed = Table();
  changed.replace(changed.find("\n1 1 "), 5, "\n1 -4 ");
  unit.answers["p\r"] = {changed};
  unit.answers["o 1 1\r"] = {"o 1 1\r\n"};
  rows[0][unit_column::Offset] = "1";
  table.Send(rows);
  EXPECT_EQ(Sent(), "Trad\rp\rr\rTrad\ro 1 1\rr\r");
}

TEST_F(UnitTalkTest, ReadsTheTableAheadOfASendWhereItCouldNotBeReadLast) {
  table.MatchParameters();
  const UnitRows rows = session.OrbenSettings;
  unit.answers["Trad\r"] = {""};
  EXPECT_THROW(table.MatchParameters(), BoardError);
  unit.answers["Trad\r"] = {"OK"};
  Sent();
  table.Send(rows);
  EXPECT_EQ(Sent(), "Trad\rp\rr\rTrad\rr\r");
}

TEST_F(UnitTalkTest, ReadsTheTableAheadOfASendBehindALostCableSinceAnotherUnitMayStandThere) {
  table.MatchParameters();
  const UnitRows rows = session.OrbenSettings;
  Sent();
  table.Send(rows);
  EXPECT_EQ(Sent(), "Trad\rr\r");
  dialogs.Expect("the serial device is gone", Answer::Ok);
  driver.HangUp();
  clock.Advance(3000);
  ASSERT_TRUE(driver.open);
  table.Send(rows);
  EXPECT_EQ(Sent(), "Trad\rp\rr\rTrad\rr\r");
}

TEST_F(UnitTalkTest, TellsOnceOfAPortThatAnotherProgramHasAndGoesOnOnceItIsFree) {
  plain.failOpen = driver.failOpen = [] { throw PortError(ErrorNumber::FileAlreadyOpen, test::kDevice); };
  try {
    table.MatchParameters();
    ADD_FAILURE();
  } catch (const RuntimeError& error) {
    EXPECT_STREQ(error.what(), "/dev/ttyVelk: the serial device is in use by another program.");
  }
  clock.Advance(3000);
  EXPECT_TRUE(dialogs.shown.empty()) << "its own caller tells";
  EXPECT_FALSE(driver.open);
  plain.ComeBack();
  driver.ComeBack();
  clock.Advance(1500);
  EXPECT_TRUE(driver.open);
  table.MatchParameters();
  EXPECT_EQ(session.OrbenSettings[2][unit_column::Offset], "3");
}

TEST_F(UnitTalkTest, OwesTheUnitItsRunUntilItStreams) {
  LoseTheCableInACommand();
  EXPECT_TRUE(link.Board.OwesRun());
  driver.ComeBack();
  clock.Advance(1500);
  ASSERT_TRUE(driver.open);
  EXPECT_TRUE(std::exchange(driver.written, {}).starts_with("r\r"));
  EXPECT_TRUE(dialogs.shown.empty()) << "its own caller tells of the loss";
  link.SetODataCom();
  EXPECT_EQ(std::exchange(driver.written, {}), "r\r") << "no line has come yet";
  driver.Receive(test::kLine);
  clock.Advance(10);
  EXPECT_FALSE(link.Board.OwesRun());
  link.SetODataCom();
  EXPECT_EQ(driver.written, "");
}

TEST_F(UnitTalkTest, SendsNothingToAnotherInstrumentThatWasChosenMeanwhile) {
  LoseTheCableInACommand();
  driver.ComeBack();
  session.SerialData = "formatted and at regular intervals";
  link.SetODataCom();
  ASSERT_TRUE(driver.open);
  EXPECT_EQ(driver.written, "");
}

TEST_F(UnitTalkTest, ShowsNoTimeOfAnotherUnit) {
  driver.Receive("10:20:30 1 2\r\n");
  clock.Advance(10);
  EXPECT_TRUE(table.ClockText().ends_with("  10:20:30"));
  table.SetClock();
  EXPECT_TRUE(table.ClockText().ends_with("  10:20:30")) << "the same unit behind a conversation";
  session.SerialData = "LUMO version A";
  SetProtocolConstants(session);
  link.SetODataCom();
  EXPECT_EQ(table.ClockText(), "–");
}

}  // namespace
}  // namespace velk
