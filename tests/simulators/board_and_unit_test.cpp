// What the program says to a unit's board, against a unit of its own process on a pseudo-terminal.

#include "instruments/unit/hardware_tools.h"
#include "simulators/board_rig.h"

namespace velk {
namespace {

using test::UnitRig;

UnitRows SampleTable(const Session& session) {
  UnitRows table = EmptyUnitTable(session);
  for (std::size_t i = 0; i < table.size(); ++i) {
    table[i][unit_column::Offset] = std::to_string(i) + ".5";
    table[i][unit_column::Gain] = "-0.25";
    if (i % 2 == 0) table[i][unit_column::UpperAlarm] = "100";
    if (i % 3 == 0) table[i][unit_column::LowerAlarm] = "-7";
  }
  return table;
}

// --- Every unit, with and without echo ---

struct UnitCase {
  const char* unit;
  std::vector<std::string> arguments;
};

class EachUnit : public testing::TestWithParam<UnitCase> {
 protected:
  void SetUp() override { rig.Start(GetParam().unit, GetParam().arguments); }
  UnitRig rig;
};

TEST_P(EachUnit, HasItsTableReadChangedAndReadAgainWhileItStreamsInBetween) {
  rig.unit.MatchParameters();
  EXPECT_EQ(rig.session.OrbenSettings.back()[unit_column::Gain], "1");
  EXPECT_EQ(rig.session.OrbenSettings.back()[unit_column::UpperAlarm], "");
  EXPECT_TRUE(rig.Streams());
  const UnitRows table = SampleTable(rig.session);
  rig.unit.Send(table);
  EXPECT_TRUE(rig.Streams());
  rig.link.Board.ForgetChannels();
  rig.unit.MatchParameters();
  EXPECT_EQ(rig.session.OrbenSettings, table);
  EXPECT_EQ(rig.Journal("mode").back(), "run");
  EXPECT_TRUE(StatusIs(rig.session, text::StatusReadyToAcquire));
}

TEST_P(EachUnit, TakesEachCommand) {
  rig.unit.Send(SampleTable(rig.session));
  rig.unit.ResetToSystemDefault();
  rig.unit.SetClock();
  rig.unit.SendCommand("  g 2 0.75 ");
  EXPECT_EQ(rig.unit.CommandIssued(), "g 2 0.75");
  {
    bool cancelled = false;
    const UnitTalk talk(rig.access, cancelled);
    talk.Board().ResetCounter(rig.session.LastAnalogChannel + 1, 12);
    talk.Board().StartCalibrateChannel(1);
    EXPECT_EQ(talk.Board().EndCalibrateChannel(), 1);
  }
  EXPECT_EQ(rig.Journal("clock").size(), 1U);
  const std::vector<std::string> heard = rig.Journal("heard");
  for (const std::string command : {"s ", "g 2 0.75", "c 1", "k", "f"})
    EXPECT_NE(std::find(heard.begin(), heard.end(), command), heard.end()) << command;
  rig.unit.MatchParameters();
  EXPECT_EQ(rig.session.OrbenSettings[0][unit_column::Gain], "1") << "behind the reset";
  EXPECT_EQ(rig.session.OrbenSettings[1][unit_column::Gain], "0.75");
  EXPECT_EQ(rig.Journal("mode").back(), "run");
  EXPECT_TRUE(rig.Streams());
}

INSTANTIATE_TEST_SUITE_P(Of, EachUnit,
                         testing::Values(UnitCase{"KESTA version 3", {}}, UnitCase{"KESTA version 3", {"--echo"}},
                                         UnitCase{"KESTA version 4", {}}, UnitCase{"KESTA version 4", {"--echo"}},
                                         UnitCase{"KESTA version 5", {}}, UnitCase{"KESTA version 5", {"--echo"}},
                                         UnitCase{"LUMO version A", {}}, UnitCase{"LUMO version A", {"--echo"}},
                                         UnitCase{"LUMO version B", {}}, UnitCase{"LUMO version B", {"--echo"}},
                                         UnitCase{"KESTA version 4", {"--piece", "7", "--piece-rest", "0.002"}},
                                         UnitCase{"KESTA version 4", {"--odd-characters"}},
                                         UnitCase{"KESTA version 5", {"--ok-after-run"}}),
                         [](const auto& instance) {
                           std::string name = instance.param.unit;
                           for (const std::string& argument : instance.param.arguments) name += argument;
                           std::erase_if(name, [](char c) { return std::isalnum(static_cast<unsigned char>(c)) == 0; });
                           return name;
                         });

// --- Faults ---

constexpr const char* kNotReached = "unable to establish communication with the hardware.";
constexpr const char* kNoChannels = "Unable to get the channels data";
constexpr const char* kGone = ": the serial device is gone. Is the cable plugged in?";

using Work = void (*)(UnitRig&);

struct Operation {
  const char* name;
  Work work;
};

const Operation kRead{"read the table", [](UnitRig& rig) { rig.unit.MatchParameters(); }};
const Operation kSend{"send the table", [](UnitRig& rig) { rig.unit.Send(SampleTable(rig.session)); }};
const Operation kReset{"reset", [](UnitRig& rig) { rig.unit.ResetToSystemDefault(); }};
const Operation kClock{"set the clock", [](UnitRig& rig) { rig.unit.SetClock(); }};
const Operation kCommand{"type a command", [](UnitRig& rig) { rig.unit.SendCommand("g 1 2"); }};
const Operation kCalibrate{"calibrate", [](UnitRig& rig) {
                             bool cancelled = false;
                             const UnitTalk talk(rig.access, cancelled);
                             talk.Board().StartCalibrateChannel(1);
                             talk.Board().EndCalibrateChannel();
                           }};

struct FaultCase {
  const char* unit;
  Operation operation;
  const char* fault;
  std::vector<std::string> arguments;
  const char* told;     ///< at the end of the error; empty: it succeeds all the same
  bool returns = true;  ///< the unit can be reached behind it
};

class EachFault : public testing::TestWithParam<FaultCase> {
 protected:
  UnitRig rig;
};

TEST_P(EachFault, LeavesTheUnitRunningTheDriverOpenAndTheSettingsAsTheyWere) {
  const FaultCase& fault = GetParam();
  rig.Start(fault.unit, fault.arguments);
  const UnitRows before = rig.session.OrbenSettings;
  std::string told;
  try {
    fault.operation.work(rig);
  } catch (const std::exception& error) {
    told = error.what();
  }
  EXPECT_TRUE(told.ends_with(fault.told)) << told;
  EXPECT_EQ(told.empty(), *fault.told == '\0') << told;
  EXPECT_TRUE(StatusIs(rig.session, text::StatusReadyToAcquire));
  if (!told.empty()) EXPECT_EQ(rig.session.OrbenSettings, before);
  EXPECT_FALSE(rig.link.MSComm1->IsOpen());
  if (fault.returns) {
    EXPECT_TRUE(rig.RunUntil([&] { return rig.link.ODataCom1.IsOpen(); }));
    EXPECT_TRUE(rig.Streams());
    EXPECT_EQ(rig.Journal("mode").back(), "run");
  }
  std::printf("%s | %s | %s | %s\n", fault.unit, fault.operation.name, fault.fault,
              told.empty() ? "succeeds" : fault.told);
}

std::vector<FaultCase> Faults() {
  const char* const kesta4 = "KESTA version 4";
  const char* const kesta3 = "KESTA version 3";
  const char* const lumo = "LUMO version A";
  std::vector<FaultCase> cases;
  for (const Operation& operation : {kReset, kClock, kCalibrate, kSend})
    cases.push_back({kesta4,
                     operation,
                     "streams on",
                     {"--keeps-running"},
                     operation.work == kSend.work ? kNoChannels : kNotReached});
  for (const Operation& operation : {kRead, kReset, kClock, kCalibrate, kSend, kCommand}) {
    cases.push_back({kesta4,
                     operation,
                     "stands between modes at first",
                     {"--ok-after-run"},
                     operation.work == kCommand.work
                         ? "You can not run command while the hardware running. Please execute SendTrad befor."
                         : ""});
    cases.push_back(
        {kesta4, operation, "unplugged at the request", {"--unplug-at", "Trad", "--return-after", "1"}, kGone});
    cases.push_back({lumo, operation, "OK comes late", {"--late-ok", "0.5"}, ""});
  }
  cases.push_back({kesta4, kRead, "streams on", {"--keeps-running"}, kNoChannels});
  cases.push_back({lumo, kRead, "no answer to p", {"--no-answer-to", "p"}, "unable to get channels data"});
  cases.push_back({lumo, kRead, "table cut in the headings", {"--cut-table", "30"}, "unable to get channels data"});
  cases.push_back({lumo, kRead, "table cut in a channel", {"--cut-table", "90"}, "Unable to get channels data"});
  cases.push_back({lumo, kRead, "no line behind the channels", {"--no-end"}, ""});
  cases.push_back(
      {kesta3, kRead, "unplugged at the table, back later", {"--unplug-at", "p", "--return-after", "1"}, kGone});
  cases.push_back({kesta4,
                   kRead,
                   "unplugged in the middle of the table",
                   {"--cut-table", "200", "--unplug-at", "table", "--return-after", "1"},
                   kGone});
  cases.push_back({kesta4, kRead, "unplugged for good", {"--unplug-at", "p"}, kGone, false});
  cases.push_back(
      {lumo, kSend, "no echo of a gain", {"--echo", "--no-echo-for", "g"}, "Unable to execute [g 1 -0.25]"});
  cases.push_back({kesta4, kSend, "unplugged at an offset", {"--unplug-at", "o", "--return-after", "1"}, kGone});
  cases.push_back({kesta4, kReset, "unplugged", {"--unplug-at", "s", "--return-after", "1"}, kGone});
  cases.push_back({kesta4, kClock, "unplugged", {"--unplug-at", "C", "--return-after", "1"}, kGone});
  cases.push_back({kesta4, kCommand, "unplugged", {"--unplug-at", "g", "--return-after", "1"}, kGone});
  cases.push_back({kesta4, kCalibrate, "no answer to k", {"--no-answer-to", "k"}, "unable to calibrate the channel."});
  cases.push_back({kesta3, kCalibrate, "unplugged at the reading", {"--unplug-at", "k", "--return-after", "1"}, kGone});
  return cases;
}

INSTANTIATE_TEST_SUITE_P(Of, EachFault, testing::ValuesIn(Faults()));

TEST(AUnitThatIsSilent, IsToldOfAndTheDriverIsOpenBehindIt) {
  UnitRig rig;
  rig.Start("KESTA version 4", {"--silent"});
  EXPECT_THROW(rig.unit.ResetToSystemDefault(), BoardError);
  EXPECT_TRUE(rig.link.ODataCom1.IsOpen());
  EXPECT_TRUE(StatusIs(rig.session, text::StatusReadyToAcquire));
}

TEST(AUnitThatIsSpokenTo, ShowsTheTimeOfItsLastFrame) {
  UnitRig rig;
  EXPECT_EQ(rig.unit.ClockText(), "–");
  rig.Start("KESTA version 4", {});
  ASSERT_TRUE(rig.Streams());
  const std::string shown = rig.unit.ClockText();
  EXPECT_EQ(shown.substr(shown.size() - 8), rig.link.LastFrameTime());
  EXPECT_EQ(shown.size(), 11U + 2 + 8);
}

// --- The tools ---

struct Tools : testing::Test {
  void Start(std::vector<std::string> arguments) {
    rig.Start("KESTA version 4", std::move(arguments));
    ASSERT_TRUE(tools->Enter());
    ASSERT_TRUE(tools->IsReady());
  }
  const UnitCommand& Command(char letter) {
    for (const UnitCommand& command : UnitCommands())
      if (command.letter == letter) return command;
    throw std::logic_error("no such command");
  }
  /// The commands that the unit has heard once the tools are gone.
  std::vector<std::string> Heard() {
    tools.reset();
    rig.Streams();
    return rig.Journal("heard");
  }

  UnitRig rig;
  std::unique_ptr<HardwareTools> tools = std::make_unique<HardwareTools>(rig.access);
};

TEST_F(Tools, SendEachCommandAndLeaveTheUnitRunning) {
  Start({});
  rig.dialogs.ExpectInput("Enter the new value", "2,5");
  rig.dialogs.Expect("Command sent", Answer::Ok);
  EXPECT_EQ(tools->Send(Command('g'), 3, ""), "2.5");
  rig.dialogs.ExpectInput("Enter the number decimal places", "0");
  rig.dialogs.Expect("Command sent", Answer::Ok);
  tools->Send(Command('n'), 4, "");
  rig.dialogs.ExpectInput("Enter the number decimal places", "3");
  rig.dialogs.Expect("Command sent", Answer::Ok);
  tools->Send(Command('n'), 5, "");
  rig.dialogs.Expect("Command sent", Answer::Ok);
  tools->Send(Command('L'), 6, "");
  rig.dialogs.ExpectInput("Enter the new value", "");
  tools->Send(Command('i'), 9, "");
  rig.dialogs.ExpectInput("Enter the new value", std::nullopt);
  tools->Send(Command('o'), 9, "");
  EXPECT_EQ(Heard(), (std::vector<std::string>{"Trad", "g 3 2.5", "n 4 0.", "n 5 0.000", "L 6", "r"}));
  EXPECT_EQ(rig.Journal("mode").back(), "run");
}

TEST_F(Tools, AskAgainForWhatIsNoNumberAndWarnOfAnExponent) {
  Start({});
  rig.dialogs.ExpectInput("Enter the new value", "half");
  rig.dialogs.Expect("This is no number", Answer::Ok);
  rig.dialogs.ExpectInput("Enter the new value", "0.00005");
  rig.dialogs.Expect("5E-05: the unit's table has no exponents", Answer::No);
  EXPECT_EQ(tools->Send(Command('o'), 1, ""), "");
  rig.dialogs.ExpectInput("Enter the number decimal places", "1.5");
  rig.dialogs.Expect("The number of decimal places is a whole number from 0 to 15.", Answer::Ok);
  rig.dialogs.ExpectInput("Enter the number decimal places", "");
  tools->Send(Command('n'), 1, "");
  EXPECT_EQ(Heard(), (std::vector<std::string>{"Trad", "r"}));
}

TEST_F(Tools, CalibrateAnAnalogChannelByTwoReferences) {
  Start({"--reading", "4", "--reading", "20"});
  rig.dialogs.ExpectInput("Enter the first reference value", "0");
  rig.dialogs.Expect("Reading is 4", Answer::Ok);
  rig.dialogs.ExpectInput("Enter the second reference value", "100");
  rig.dialogs.Expect("Reading is 20", Answer::Ok);
  tools->Send(Command('c'), 8, "");
  EXPECT_EQ(rig.dialogs.inputTitles.front(), "Calibration of channel 8");
  EXPECT_EQ(Heard(), (std::vector<std::string>{"Trad", "c 8", "k", "f", "c 8", "k", "f", "g 8 6.25", "o 8 -25", "r"}));
}

TEST_F(Tools, CalibrateACounterByOneReference) {
  Start({"--reading", "50"});
  rig.dialogs.ExpectInput("Enter the reference value", "100");
  rig.dialogs.Expect("When you have finished, click the OK button", Answer::Ok);
  rig.dialogs.Expect("Reading is 50", Answer::Ok);
  tools->Send(Command('c'), 9, "");
  EXPECT_EQ(rig.dialogs.inputTitles.front(), "Calibrate counter channel 9");
  EXPECT_EQ(Heard(), (std::vector<std::string>{"Trad", "c 9", "k", "f", "g 9 2", "o 9 0", "r"}));
}

TEST_F(Tools, SendNothingWhereBothReadingsAreTheSame) {
  Start({"--reading", "4"});
  rig.dialogs.ExpectInput("Enter the first reference value", "0");
  rig.dialogs.Expect("Reading is 4", Answer::Ok);
  rig.dialogs.ExpectInput("Enter the second reference value", "100");
  rig.dialogs.Expect("Reading is 4", Answer::Ok);
  rig.dialogs.Expect("Gain is zero", Answer::Ok);
  tools->Send(Command('c'), 1, "");
  EXPECT_EQ(Heard(), (std::vector<std::string>{"Trad", "c 1", "k", "f", "c 1", "k", "f", "r"}));
}

TEST_F(Tools, CancelEndsAReadingThatDoesNotCome) {
  Start({"--no-answer-to", "k"});
  rig.dialogs.ExpectInput("Enter the first reference value", "0");
  auto timer = rig.clock.MakeTimer();
  timer->SetInterval(100);
  timer->SetHandler([&] { tools->Cancel(); });
  timer->SetEnabled(true);
  const std::int64_t begun = rig.clock.SystemClock::Ticks();
  tools->Send(Command('c'), 1, "");
  timer->SetEnabled(false);
  EXPECT_LT(rig.clock.SystemClock::Ticks() - begun, 600) << "a reading is waited for a second here";
  EXPECT_EQ(Heard(), (std::vector<std::string>{"Trad", "c 1", "k", "f", "r"}));
}

TEST_F(Tools, TellWhereTheUnitCannotBeBroughtToCommandMode) {
  rig.Start("KESTA version 4", {"--keeps-running"});
  rig.dialogs.Expect("unable to establish communication with the hardware. - Form_Load", Answer::Cancel);
  EXPECT_FALSE(tools->Enter());
  EXPECT_FALSE(tools->IsReady());
  EXPECT_TRUE(rig.link.ODataCom1.IsOpen());
  EXPECT_TRUE(rig.Streams());
}

TEST_F(Tools, TellOnceOfACableThatIsPulledOut) {
  Start({"--unplug-at", "L"});
  rig.dialogs.Expect("Command sent", Answer::Ok, [&] { rig.RunUntil([&] { return !rig.link.MSComm1->IsOpen(); }); });
  tools->Send(Command('L'), 6, "");
  rig.dialogs.ExpectInput("Enter the new value", "1");
  rig.dialogs.Expect(" - Command2_Click", Answer::Cancel);
  tools->Send(Command('g'), 6, "");
  EXPECT_FALSE(tools->IsReady());
  tools.reset();
  rig.RunUntil([] { return false; }, 1.5);  // a second box would come with the first try to open it again
}

}  // namespace
}  // namespace velk
