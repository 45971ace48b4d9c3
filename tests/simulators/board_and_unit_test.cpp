// What the program says to a unit's board, against a unit of its own process on a pseudo-terminal.

#include <iterator>
#include <sstream>

#include "base/dates.h"
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
  rig.unit.MatchParameters();
  EXPECT_EQ(rig.session.OrbenSettings[0][unit_column::Gain], "1") << "behind the reset";
  EXPECT_EQ(rig.session.OrbenSettings[1][unit_column::Gain], "0.75");
  EXPECT_EQ(rig.Journal("mode").back(), "run");
  EXPECT_TRUE(rig.Streams());
  // A unit that streams has heard all that was sent before.
  const std::vector<std::string> heard = rig.Journal("heard");
  for (const std::string command : {"s ", "g 2 0.75", "c 1", "k", "f"})
    EXPECT_NE(std::find(heard.begin(), heard.end(), command), heard.end()) << command;
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
  cases.push_back({lumo, kRead, "sends on and on behind the table", {"--babble-after", "p"}, ""});
  cases.push_back({lumo, kSend, "sends on and on behind an offset", {"--babble-after", "o"}, ""});
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

// --- What the simulated unit does beside its table ---

struct SimulatedUnit : testing::Test {
  /// The fields of the last frame that was sent; the first one is its time.
  std::vector<std::string> Frame() {
    EXPECT_TRUE(rig.Streams());
    std::istringstream frame(rig.Journal("sound").back());
    return {std::istream_iterator<std::string>(frame), {}};
  }
  UnitRig rig;
};

TEST_F(SimulatedUnit, HasValuesThatFollowGainAndOffset) {
  rig.Start("LUMO version A", {});
  rig.unit.SendCommand("g 2 0");
  rig.unit.SendCommand("o 2 42.5");
  rig.unit.SendCommand("g 3 -1");
  const std::vector<std::string> frame = Frame();
  ASSERT_EQ(frame.size(), 5U);
  EXPECT_EQ(frame[2], "000042.500");
  EXPECT_EQ(frame[3][0], '-');
  EXPECT_NE(frame[1][0], '-');
}

TEST_F(SimulatedUnit, HasAClockThatIsSet) {
  rig.Start("LUMO version A", {});
  {
    bool cancelled = false;
    const UnitTalk talk(rig.access, cancelled);
    talk.Board().SetDate(46088 + TimeOfDay(3, 4, 5));
  }
  EXPECT_TRUE(Frame()[0].starts_with("03:04:")) << Frame()[0];
}

}  // namespace
}  // namespace velk
