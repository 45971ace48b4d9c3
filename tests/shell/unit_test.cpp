// A unit's table, its tools and its calibration in the whole program, with a scripted board behind the plain port.

#include <gtest/gtest.h>

#include <QLabel>
#include <QPushButton>
#include <QTableView>

#include "graphs/label_reading.h"
#include "instruments/board_rig.h"
#include "instruments/unit/unit_table.h"
#include "model/status.h"
#include "model/texts.h"
#include "shell/shell_rig.h"

namespace velk {
namespace {

using test::Click;
using test::FindControl;

class UnitInTheProgram : public testing::Test {
 protected:
  void SetUp() override {
    rig.settings->Save("VELK2", "Protocol", "SerialData", "KESTA version 5");
    rig.settings->Flush();
    rig.Start();
    board.answers["p\r"] = {test::BoardRig::Table(22)};
    board.answers["k"] = {"=    4.000\r", "=   20.000\r"};
    Listen();
  }
  void TearDown() override { rig.clock.onYield = nullptr; }

  void Listen() {
    rig.clock.onYield = [this] { board.Listen(); };
  }
  void Connect() {
    rig.Connect();
    Listen();
    ASSERT_TRUE(StatusIs(rig.State(), text::StatusReadyToAcquire));
  }
  std::string Heard() {
    board.Listen();
    return std::exchange(board.heard, {});
  }
  void ExpectAsBefore(const MessageText& status) {
    EXPECT_TRUE(StatusIs(rig.State(), status));
    EXPECT_FALSE(rig.plainPort.open);
    EXPECT_TRUE(rig.linePort.open);
    EXPECT_EQ(rig.Window().ButtonImage("connect"), image::ConnectOn);
  }
  void Calibrate(const std::function<void()>& foresee) {
    rig.windows.Then("Properties", [&](QDialog& window) {
      foresee();
      Click(window, "Command3");
      Click(window, "cmdCancel");
    });
    for (GraphFormNew* form : rig.Window().findChildren<GraphFormNew*>())
      if (form->FormIndex() == 1) return test::ClickLabel(*form, "Label1_0", Qt::RightButton);
    FAIL() << "there is no graph of the first channel";
  }

  test::ShellRig rig;
  test::ScriptedBoard board{rig.plainPort};
};

TEST_F(UnitInTheProgram, HasItsTableReadEditedAndSentFromTheMenu) {
  rig.windows.Then("OrbenSettings", [&](QDialog& window) {
    EXPECT_EQ(Heard(), "Trad\rTrad\rp\rr\r");
    ExpectAsBefore(text::StatusReady);
    auto& model = *FindControl<QTableView>(window, "Grid1")->model();
    EXPECT_EQ(model.index(2, unit_column::Gain).data(), "1.5");
    EXPECT_EQ(model.index(2, unit_column::UpperAlarm).data(), "30");
    EXPECT_EQ(model.index(2, unit_column::LowerAlarm).data(), "");
    model.setData(model.index(2, unit_column::Gain), "2.5", Qt::EditRole);
    Click(window, "Command1");
    EXPECT_EQ(Heard(), "Trad\rg 3 2.5\rr\r");
    ExpectAsBefore(text::StatusReady);
    Click(window, "Command4");
    EXPECT_TRUE(Heard().starts_with("Trad\rC 6 14 3 2026 9 30 "));
    window.close();
  });
  rig.Choose("mnuToolsOrbenHardware");
  EXPECT_EQ(rig.State().OrbenSettings[2][unit_column::Gain], "2.5");
}

TEST_F(UnitInTheProgram, ReadsTheTableAgainAheadOfASendBehindACommandAndTheGridKeepsItsEdits) {
  rig.windows.Then("OrbenSettings", [&](QDialog& window) {
    auto& model = *FindControl<QTableView>(window, "Grid1")->model();
    model.setData(model.index(0, unit_column::Offset), "-4", Qt::EditRole);
    FindControl<QLineEdit>(window, "Text1")->setText("g 1 0.5");
    Heard();
    Click(window, "Command8");
    EXPECT_EQ(Heard(), "Trad\rg 1 0.5\rr\r");
    EXPECT_EQ(FindControl<QLabel>(window, "lblIssued")->text(), "Command issued: g 1 0.5");
    EXPECT_EQ(model.index(0, unit_column::Offset).data(), "-4");
    Click(window, "Command1");
    EXPECT_EQ(Heard(), "Trad\rp\rr\rTrad\ro 1 -4\rr\r");
    rig.dialogs.Expect("Reset it?", Answer::Yes);
    Click(window, "Command3");
    EXPECT_EQ(Heard(), "Trad\rs \rr\r");
    Click(window, "Command1");
    EXPECT_EQ(Heard(), "Trad\rp\rr\rTrad\ro 1 -4\rr\r");
    window.close();
  });
  rig.Choose("mnuToolsOrbenHardware");
}

TEST_F(UnitInTheProgram, AsksBeforeChangesAreLostAndNotWhereTheUnitHasThem) {
  rig.windows.Then("OrbenSettings", [&](QDialog& window) {
    auto& model = *FindControl<QTableView>(window, "Grid1")->model();
    model.setData(model.index(0, unit_column::Offset), "-4", Qt::EditRole);
    board.answers["Trad\r"] = {""};
    rig.dialogs.Expect("unable to establish communication with the hardware. - Command1_Click", Answer::Cancel);
    Click(window, "Command1");
    rig.dialogs.Expect("neither sent to the unit nor saved", Answer::No);
    window.close();
    EXPECT_TRUE(window.isVisible());
    board.answers["Trad\r"] = {"OK"};
    Click(window, "Command1");
    window.close();
    EXPECT_FALSE(window.isVisible());
  });
  rig.Choose("mnuToolsOrbenHardware");
}

TEST_F(UnitInTheProgram, LeavesAJobThatIsReadyAsItIs) {
  Connect();
  rig.windows.Then("OrbenSettings", [&](QDialog& window) {
    ExpectAsBefore(text::StatusReadyToAcquire);
    window.close();
  });
  rig.Choose("mnuToolsOrbenHardware");
  ExpectAsBefore(text::StatusReadyToAcquire);
}

TEST_F(UnitInTheProgram, TellsOnceThatTheTableCannotBeReadAndOpensWithoutIt) {
  board.answers["p\r"] = {"p\r\nhead"};
  rig.dialogs.Expect("nable to get channels data - MatchParameters", Answer::Cancel);
  rig.windows.Then("OrbenSettings", [&](QDialog& window) {
    ExpectAsBefore(text::StatusReady);
    auto& model = *FindControl<QTableView>(window, "Grid1")->model();
    EXPECT_EQ(model.rowCount(), 22);
    EXPECT_EQ(model.index(0, unit_column::Gain).data(), "");
    window.close();
  });
  rig.Choose("mnuToolsOrbenHardware");
  ExpectAsBefore(text::StatusReady);
}

TEST_F(UnitInTheProgram, TellsWhichCommandTheBoardDoesNotTakeAndSendsItAllAgainOnRetry) {
  board.answers["p\r"] = {test::BoardRig::Table(22, " 1 2")};
  rig.windows.Then("OrbenSettings", [&](QDialog& window) {
    auto& model = *FindControl<QTableView>(window, "Grid1")->model();
    model.setData(model.index(0, unit_column::Offset), "-4", Qt::EditRole);
    Heard();
    rig.dialogs.Expect("Unable to execute [o 1 -4] - Command1_Click", Answer::Retry, [&] {
      ExpectAsBefore(text::StatusReady);
      EXPECT_EQ(Heard(), "Trad\ro 1 -4\rr\r");
      board.answers["o 1 -4\r"] = {"o 1 -4\r\n"};
    });
    Click(window, "Command1");
    EXPECT_EQ(Heard(), "Trad\rp\rr\rTrad\ro 1 -4\rr\r") << "nobody knows what the board has taken";
    FindControl<QLineEdit>(window, "Text1")->setText("x");
    rig.dialogs.Expect("Error, Unable to execute [x]", Answer::Ok);
    Click(window, "Command8");
    ExpectAsBefore(text::StatusReady);
    window.close();
  });
  rig.Choose("mnuToolsOrbenHardware");
}

TEST_F(UnitInTheProgram, OpensItsToolsInCommandModeAndRunsBehindThem) {
  rig.windows.Then("OrbenSettings", [&](QDialog& window) {
    Heard();
    rig.windows.Then("ORBENHardware", [&](QDialog& tools) {
      EXPECT_EQ(Heard(), "Trad\r");
      EXPECT_TRUE(rig.plainPort.open);
      EXPECT_FALSE(rig.linePort.open);
      rig.dialogs.ExpectInput("Enter the new value", "7");
      rig.dialogs.Expect("Command sent", Answer::Ok);
      Click(tools, "Command2");
      Click(tools, "Command1");
    });
    rig.windows.Then("OrbenSettings", [](QDialog&) {});  // is on top again
    Click(window, "cmdTools");
    EXPECT_EQ(Heard(), "i 1 7\rr\r");
    ExpectAsBefore(text::StatusReady);
    window.close();
  });
  rig.Choose("mnuToolsOrbenHardware");
}

TEST_F(UnitInTheProgram, OffersNoCommandWhereTheToolsDoNotReachTheUnit) {
  rig.windows.Then("OrbenSettings", [&](QDialog& window) {
    board.answers["Trad\r"] = {""};
    rig.dialogs.Expect("unable to establish communication with the hardware. - Form_Load", Answer::Cancel);
    rig.windows.Then("ORBENHardware", [&](QDialog& tools) {
      EXPECT_FALSE(FindControl<QPushButton>(tools, "Command2")->isEnabled());
      ExpectAsBefore(text::StatusReady);
      Click(tools, "Command1");
    });
    rig.windows.Then("OrbenSettings", [](QDialog&) {});  // is on top again
    Click(window, "cmdTools");
    window.close();
  });
  rig.Choose("mnuToolsOrbenHardware");
}

TEST_F(UnitInTheProgram, IsCalibratedFromACurve) {
  Connect();
  Heard();
  Calibrate([&] {
    rig.dialogs.ExpectInput("Enter the first reference value", "0");
    rig.dialogs.Expect("Reading is 4", Answer::Ok);
    rig.dialogs.ExpectInput("Enter the second reference value", "100");
    rig.dialogs.Expect("Reading is 20", Answer::Ok);
    rig.dialogs.Expect("Gain = 6.25 and offset = -25 , do you wish to accept these values?", Answer::Yes);
  });
  EXPECT_EQ(rig.dialogs.inputTitles,
            (std::vector<std::string>{"Calibration - First Reference", "Calibration - Second Reference"}));
  EXPECT_EQ(Heard(), "Trad\rc 1\rkfTrad\rc 1\rkfTrad\rp\rr\rTrad\ro 1 -25\rg 1 6.25\rr\r");
  ExpectAsBefore(text::StatusReadyToAcquire);
  EXPECT_NE(rig.State().Parameters[1].Gain, 6.25) << "it is the board's";
}

TEST_F(UnitInTheProgram, HasZeroesInTheQuestionWhereBothReadingsAreTheSameAndEnterSaysNo) {
  board.answers["k"] = {"=    4.000\r"};
  Connect();
  Heard();
  Calibrate([&] {
    rig.dialogs.ExpectInput("Enter the first reference value", "0");
    rig.dialogs.Expect("Reading is 4", Answer::Ok);
    rig.dialogs.ExpectInput("Enter the second reference value", "100");
    rig.dialogs.Expect("Reading is 4", Answer::Ok);
    rig.dialogs.Expect("Gain = 0 and offset = 0 , do you wish to accept these values?", Answer::No);
  });
  EXPECT_TRUE(rig.dialogs.shown.back().safeDefault);
  EXPECT_EQ(Heard(), "Trad\rc 1\rkfTrad\rc 1\rkfr\r");
  ExpectAsBefore(text::StatusReadyToAcquire);
}

TEST_F(UnitInTheProgram, IsLeftAloneByAnEmptyReferenceAndTellsAReadingThatDoesNotCome) {
  Connect();
  Heard();
  Calibrate([&] { rig.dialogs.ExpectInput("Enter the first reference value", ""); });
  EXPECT_EQ(Heard(), "");
  ExpectAsBefore(text::StatusReadyToAcquire);
  board.answers["k"] = {""};
  Calibrate([&] {
    rig.dialogs.ExpectInput("Enter the first reference value", "1");
    rig.dialogs.Expect("unable to calibrate the channel. - Command3_Click", Answer::Cancel);
  });
  EXPECT_EQ(Heard(), "Trad\rc 1\rkfr\r");
  ExpectAsBefore(text::StatusReadyToAcquire);
}

TEST_F(UnitInTheProgram, IsAskedForWhereNoUnitOfTheCompanysOwnIsChosen) {
  rig.State().SerialData = "Data Taker a";
  rig.dialogs.Expect("This works with KESTA and LUMO units.", Answer::Ok);
  rig.Choose("mnuToolsOrbenHardware");
}

}  // namespace
}  // namespace velk
