// Single commands to a unit and its calibration, against a unit of its own process on a pseudo-terminal.

#include "instruments/unit/board_calibration.h"
#include "instruments/unit/hardware_tools.h"
#include "simulators/board_rig.h"

namespace velk {
namespace {

using test::UnitRig;

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
  for (const char letter : {'L', 'U'}) {
    rig.dialogs.Expect("Command sent", Answer::Ok);
    tools->Send(Command(letter), 6, "");
  }
  for (const char letter : {'o', 'l', 'u', 'i'}) {
    rig.dialogs.ExpectInput("Enter the new value", "-7");
    rig.dialogs.Expect("Command sent", Answer::Ok);
    EXPECT_EQ(tools->Send(Command(letter), 9, ""), "-7");
  }
  rig.dialogs.ExpectInput("Enter the new value", "");
  tools->Send(Command('i'), 9, "");
  rig.dialogs.ExpectInput("Enter the new value", std::nullopt);
  tools->Send(Command('o'), 9, "");
  EXPECT_EQ(Heard(), (std::vector<std::string>{"Trad", "g 3 2.5", "n 4 0.", "n 5 0.000", "L 6", "U 6", "o 9 -7",
                                               "l 9 -7", "u 9 -7", "i 9 -7", "r"}));
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

TEST_F(Tools, SendNothingWhereACounterHasNoReadingAndWhereItsReferenceIsZero) {
  Start({"--reading", "0", "--reading", "50"});
  rig.dialogs.ExpectInput("Enter the reference value", "100");
  rig.dialogs.Expect("When you have finished", Answer::Ok);
  rig.dialogs.Expect("Reading is 0", Answer::Ok);
  rig.dialogs.Expect("Division by zero - Command2_Click", Answer::Cancel);
  tools->Send(Command('c'), 13, "");
  rig.dialogs.ExpectInput("Enter the reference value", "0");
  rig.dialogs.Expect("When you have finished", Answer::Ok);
  rig.dialogs.Expect("Reading is 50", Answer::Ok);
  rig.dialogs.Expect("Gain is zero", Answer::Ok);
  tools->Send(Command('c'), 13, "");
  EXPECT_EQ(Heard(), (std::vector<std::string>{"Trad", "c 13", "k", "f", "c 13", "k", "f", "r"}));
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

TEST_F(Tools, LeaveALossThatNobodyHasNoticedToTheLink) {
  Start({"--unplug-at", "L", "--return-after", "2"});
  rig.dialogs.Expect("Command sent", Answer::Ok, [&] { rig.RunUntil([&] { return !rig.link.MSComm1->IsOpen(); }); });
  tools->Send(Command('L'), 6, "");
  const std::size_t shown = rig.dialogs.shown.size();
  rig.dialogs.Expect("there is no such serial device", Answer::Ok);
  tools.reset();
  EXPECT_TRUE(rig.RunUntil([&] { return rig.dialogs.shown.size() > shown; }));
  EXPECT_TRUE(rig.Streams());
  EXPECT_EQ(rig.Journal("mode").back(), "run");
}

// --- Faults of the tools, and of a calibration from a curve ---

struct BoxedFault {
  const char* fault;
  std::vector<std::string> arguments;
  std::vector<std::pair<const char*, Answer>> boxes;  ///< in their order; references are asked for in between
};

/// Runs work that asks for references and tells what fails in its own boxes.
struct FaultWithBoxes : testing::Test, testing::WithParamInterface<BoxedFault> {
  void Start() {
    rig.Start("KESTA version 4", GetParam().arguments);
    before = rig.session.OrbenSettings;
    const char* const references[] = {"0", "100"};
    const char* const prompts[] = {"Enter the first reference value", "Enter the second reference value"};
    for (std::size_t i = 0; i < GetParam().boxes.size(); ++i) {
      if (i < 2) rig.dialogs.ExpectInput(prompts[i], references[i]);
      rig.dialogs.Expect(GetParam().boxes[i].first, GetParam().boxes[i].second);
    }
  }
  void ExpectAsBefore(const char* operation) {
    EXPECT_EQ(rig.dialogs.shown.size(), GetParam().boxes.size()) << "one box tells of the fault";
    EXPECT_FALSE(rig.link.MSComm1->IsOpen());
    EXPECT_TRUE(rig.RunUntil([&] { return rig.link.ODataCom1.IsOpen(); }));
    EXPECT_TRUE(rig.Streams());
    EXPECT_EQ(rig.Journal("mode").back(), "run");
    EXPECT_TRUE(StatusIs(rig.session, text::StatusReadyToAcquire));
    EXPECT_EQ(rig.session.OrbenSettings, before);
    std::printf("KESTA version 4 | %s | %s | %s\n", operation, GetParam().fault, GetParam().boxes.back().first);
  }

  UnitRig rig;
  UnitRows before;
};

struct CalibrationFromACurve : FaultWithBoxes {};

TEST_P(CalibrationFromACurve, LeavesTheUnitRunningTheDriverOpenAndTheSettingsAsTheyWere) {
  Start();
  CalibrateOnBoard(rig.access, 1);
  ExpectAsBefore("calibrate from a curve");
}

const std::pair<const char*, Answer> kFirstReading{"Reading is 4", Answer::Ok};
const std::pair<const char*, Answer> kSecondReading{"Reading is 20", Answer::Ok};
const std::pair<const char*, Answer> kAccepted{"Gain = 6.25 and offset = -25", Answer::Yes};
const std::vector<std::string> kReadings{"--reading", "4", "--reading", "20"};

std::vector<std::string> WithReadings(std::vector<std::string> arguments) {
  arguments.insert(arguments.end(), kReadings.begin(), kReadings.end());
  return arguments;
}

INSTANTIATE_TEST_SUITE_P(
    Of, CalibrationFromACurve,
    testing::Values(
        BoxedFault{"streams on", {"--keeps-running"}, {{"hardware. - Command3_Click", Answer::Cancel}}},
        BoxedFault{"no answer to k",
                   {"--no-answer-to", "k"},
                   {{"unable to calibrate the channel. - Command3_Click", Answer::Cancel}}},
        BoxedFault{"unplugged at the reading",
                   {"--unplug-at", "k", "--return-after", "1"},
                   {{"Is the cable plugged in? - Command3_Click", Answer::Cancel}}},
        BoxedFault{
            "unplugged while the table is read for the send",
            WithReadings({"--unplug-at", "p", "--return-after", "1"}),
            {kFirstReading, kSecondReading, kAccepted, {"Is the cable plugged in? - Command3_Click", Answer::Cancel}}},
        BoxedFault{"table cut",
                   WithReadings({"--cut-table", "30"}),
                   {kFirstReading,
                    kSecondReading,
                    kAccepted,
                    {"unable to get channels data - Command3_Click", Answer::Cancel}}},
        BoxedFault{"no echo of the gain",
                   WithReadings({"--echo", "--no-echo-for", "g"}),
                   {kFirstReading,
                    kSecondReading,
                    kAccepted,
                    {"Unable to execute [g 1 6.25] - Command3_Click", Answer::Cancel}}}));

struct CalibrationByTheTools : FaultWithBoxes {};

TEST_P(CalibrationByTheTools, LeavesTheUnitRunningTheDriverOpenAndTheSettingsAsTheyWere) {
  Start();
  {
    HardwareTools tools(rig.access);
    ASSERT_TRUE(tools.Enter());
    tools.Send(UnitCommands()[0], 1, "");
  }
  ExpectAsBefore("calibrate by the tools");
}

INSTANTIATE_TEST_SUITE_P(Of, CalibrationByTheTools,
                         testing::Values(BoxedFault{"no answer to k",
                                                    {"--no-answer-to", "k"},
                                                    {{"unable to calibrate the channel. - Command2_Click",
                                                      Answer::Cancel}}},
                                         BoxedFault{"unplugged at the request",
                                                    {"--unplug-at", "c", "--return-after", "1"},
                                                    {{"Is the cable plugged in? - Command2_Click", Answer::Cancel}}},
                                         BoxedFault{"unplugged at the reading",
                                                    {"--unplug-at", "k", "--return-after", "1"},
                                                    {{"Is the cable plugged in? - Command2_Click", Answer::Cancel}}}));

}  // namespace
}  // namespace velk
