// The search for an instrument, on four ports whose bytes are laid out here.

#include "instruments/detection/auto_detect.h"

#include "base/text.h"
#include "instruments/link_fixture.h"
#include "instruments/table/protocols.h"
#include "instruments/texts.h"
#include "model/status.h"
#include "model/texts.h"

namespace velk {
namespace {

/// Any devices that are there for sure; nobody opens them.
constexpr const char* kDevices[] = {"/dev/null", "/dev/zero", "/dev/full", "/dev/random"};

/// What the box of the search was told.
struct ShownSearch {
  bool appeared = false;
  std::vector<std::pair<std::string, double>> steps;
};

struct SearchBox : ProgressBox {
  SearchBox(bool& cancelled, ShownSearch& shown) : cancelled_(cancelled), shown_(shown) {}
  void Appear() override { shown_.appeared = true; }
  void Show(const std::string& doing, double share) override { shown_.steps.emplace_back(doing, share); }
  bool IsCancelled() const override { return cancelled_; }

 private:
  bool& cancelled_;
  ShownSearch& shown_;
};

struct AutoDetectTest : test::LinkTest {
  AutoDetectTest() {
    for (int i = 0; i < 4; ++i) settings.Save("VELK2", "Protocol", "PortDevice" + std::to_string(i + 1), kDevices[i]);
    session.SerialData = "LUMO version A";
    session.IsOwnUnit = false;
    session.NumberOfParameters = 3;
    session.Parameters[1].name = "Pressure";
    session.SamplingRate = 1.0 / 86400;
    session.CurrentStatus = text::StatusReady;
    clock.onYield = [this] { Round(); };
  }

  /// What happens in a round of a wait: whoever stands behind the port that is open has his turn.
  void Round() {
    if (onRound) onRound();
    if (!plain.open) return;
    const SerialSettings& settings = plain.openings.back();
    sent += plain.written;
    if (const auto unit = units.find(settings.device); unit != units.end()) unit->second(plain.written, settings);
    plain.written.clear();
  }
  /// A unit that streams this line whenever nothing waits, and answers "Trad" or doesn't.
  void Streams(const char* device, const std::string& line, bool answers, Handshake handshake = Handshake::None) {
    units[device] = [this, line, answers, handshake](const std::string& heard, const SerialSettings& port) {
      if (port.handshake != handshake || port.baudRate != 19200) return;
      if (heard == "Trad\r" && answers) {
        plain.waiting += "x OK\r\n";
        quiet = true;
      }
      if (!quiet && plain.waiting.empty()) plain.waiting += line;
    };
  }
  void Detect() {
    mnuEditAutoDetect_Click({session, platform, view, link, timers,
                             [this] { return std::make_unique<SearchBox>(cancelled, shown); }, [this] { ++kept; }});
    EXPECT_TRUE(StatusIs(session, text::StatusReady));
    EXPECT_FALSE(session.StopRequested);
    EXPECT_FALSE(plain.open);
  }
  std::string StoredCount() { return settings.Get("VELK2", "Parameters", "NumberOfParameters", ""); }
  /// The devices that were opened, one behind the other, without the folder.
  std::string Opened() const {
    std::string names;
    for (const SerialSettings& opening : plain.openings) names += opening.device.substr(5) + " ";
    return names;
  }

  std::map<std::string, std::function<void(const std::string& heard, const SerialSettings&)>> units;
  std::function<void()> onRound;
  std::string sent;
  ShownSearch shown;
  bool quiet = false;
  bool cancelled = false;
  int kept = 0;
};

TEST_F(AutoDetectTest, FindsAStreamingUnitThatGoesToCommandMode) {
  Streams("/dev/full", "12:00:01 1 2 3 4\r\n", true);
  dialogs.Expect("KESTA version 4 hardware detected", Answer::Ok);
  Detect();
  EXPECT_EQ(sent + plain.written, "Trad\rr \r");
  EXPECT_EQ(session.SerialData, "KESTA version 4");
  EXPECT_EQ(session.PortNumber, 3);
  EXPECT_EQ(session.NumberOfParameters, 4);
  EXPECT_EQ(session.Terminator, "\r\n");
  EXPECT_EQ(session.Delimiter, " ");
  EXPECT_EQ(session.BaudRate, 19200);
  EXPECT_EQ(session.Handshake, 0);
  EXPECT_EQ(session.SensitivityCriterion, 20);
  EXPECT_EQ(session.TheTimeOut, 15);
  EXPECT_TRUE(session.IsOwnUnit);
  EXPECT_EQ(session.Parameters[1].name, "Parameter 1");
  EXPECT_EQ(session.Parameters[4].name, "Parameter 4");
  EXPECT_EQ(session.Parameters[4].units, "Units");
  EXPECT_EQ(session.Parameters[4].format, "#0.000");
  EXPECT_EQ(session.Parameters[4].loweralarm, "None");
  EXPECT_EQ(session.Parameters[4].Gain, 1);
  EXPECT_EQ(session.Parameters[4].max, 100) << "a scale without a span would divide by zero";
  EXPECT_TRUE(session.Parameters[4].GraphVisible);
  EXPECT_EQ(session.Parameters[5].name, "");
  EXPECT_EQ(StoredCount(), "4");
  EXPECT_EQ(kept, 1);
  EXPECT_EQ(Opened(), "null zero full ");
  EXPECT_TRUE(link.ODataCom1.IsOpen()) << "the link stands for what was found";
  EXPECT_EQ(driver.openings.back().device, "/dev/full");
}

TEST_F(AutoDetectTest, TakesAUnitThatStaysSilentOnTradForTheOutsideInstrument) {
  Streams("/dev/null", "12:00:01 1 2\r\n", false);
  dialogs.Expect("National Oil Well hardware detected", Answer::Ok);
  const std::int64_t begun = clock.Ticks();
  Detect();
  EXPECT_GE(clock.Ticks() - begun, 70000);
  EXPECT_EQ(session.SerialData, "formatted and at regular intervals");
  EXPECT_EQ(session.Terminator, "\r\n");
  EXPECT_EQ(session.NumberOfParameters, 2);
  EXPECT_FALSE(session.IsOwnUnit);
}

TEST_F(AutoDetectTest, TakesLfCrForTheOutsideInstrumentWithoutASingleByte) {
  Streams("/dev/null", "12:00:01 1 2\n\r", true);
  dialogs.Expect("National Oil Well hardware detected", Answer::Ok);
  Detect();
  EXPECT_EQ(sent + plain.written, "");
  EXPECT_EQ(session.SerialData, "formatted and at regular intervals");
  EXPECT_EQ(session.NumberOfParameters, 2);
}

TEST_F(AutoDetectTest, FindsAUnitThatWantsTheHandshakeInTheSecondRound) {
  Streams("/dev/zero", "12:00:01 1 2 3\r\n", true, Handshake::Rts);
  dialogs.Expect("ORBEN version 3 hardware detected", Answer::Ok);
  Detect();
  EXPECT_EQ(session.SerialData, "KESTA version 3");
  EXPECT_EQ(session.Handshake, 2);
  EXPECT_EQ(session.PortNumber, 2);
  EXPECT_EQ(session.NumberOfParameters, 3);
  EXPECT_EQ(Opened(), "null zero full random null zero ");
  EXPECT_EQ(sent + plain.written, "") << "its protocol has told enough";
}

struct AsksVersion1 : AutoDetectTest {
  /// Answers its seven commands at 9600 baud, but one.
  void Answers(const char* device, const std::string& silentOn = "") {
    units[device] = [this, silentOn](const std::string& heard, const SerialSettings& port) {
      if (port.baudRate != 9600 || heard.empty() || heard == silentOn) return;
      plain.waiting += "12.5\r\n";
    };
  }
};

TEST_F(AsksVersion1, FindsTheUnitThatAnswersOnRequestAndInstallsItsChannels) {
  Answers("/dev/random");
  dialogs.Expect("Orben's hardware version 1 detected", Answer::Ok);
  Detect();
  EXPECT_EQ(session.SerialData, "sent when requested");
  EXPECT_EQ(session.PortNumber, 4);
  EXPECT_EQ(session.BaudRate, 9600);
  EXPECT_EQ(session.Handshake, 0);
  EXPECT_EQ(session.Delimiter, ",");
  EXPECT_EQ(session.NumberOfParameters, 7);
  constexpr const char* channels[][4] = {{"Depth", "m", "N3TE*", "N3VE*"},
                                         {"Speed", "m/min", "N3TH*", ""},
                                         {"Weight", "lbs", "N5TA*", ""},
                                         {"Pump Pressure", "psi", "N1TA*", ""},
                                         {"Well Head Pressure", "psi", "N2TA*", ""},
                                         {"Flow Rate", "ltrs/min", "N4TH*", ""},
                                         {"Flow Total", "ltrs", "N4TE*", "N4VE*"}};
  for (std::size_t i = 0; i < 7; ++i) {
    const Parameter& parameter = session.Parameters[i + 1];
    EXPECT_EQ(parameter.name, channels[i][0]);
    EXPECT_EQ(parameter.units, channels[i][1]);
    EXPECT_EQ(parameter.CommandString, channels[i][2]);
    EXPECT_EQ(parameter.ResetCommand, channels[i][3]);
    EXPECT_EQ(parameter.Gain, 1) << "else it would record zeros";
    EXPECT_TRUE(parameter.GraphVisible);
  }
  EXPECT_EQ(session.SamplingRate, 1.0 / 86400);
  EXPECT_EQ(StoredCount(), "7");
  EXPECT_EQ(sent.substr(sent.size() - 35), "N3TE*N3TH*N5TA*N1TA*N2TA*N4TH*N4TE*");
}

TEST_F(AsksVersion1, PassesOverAUnitThatStaysSilentOnOneOfTheCommands) {
  Answers("/dev/null", "N4TE*");
  dialogs.Expect("Hardware unknown", Answer::Ok);
  dialogs.Expect("Go back to the settings of before?", Answer::Yes);
  Detect();
}

TEST_F(AsksVersion1, PassesOverTheUnitWhereItsChannelsFindNoRoomBesideTheAdditionalOnes) {
  session.NumberOfFormulae = 58;
  Answers("/dev/null");
  dialogs.Expect("Hardware unknown", Answer::Ok);
  dialogs.Expect("Go back to the settings of before?", Answer::Yes);
  Detect();
}

TEST_F(AsksVersion1, LeavesASilentPortBehindFifteenSecondsHoweverSlowTheSampling) {
  session.SamplingRate = 1.0 / 24;
  for (int i = 1; i <= 3; ++i) settings.Save("VELK2", "Protocol", "PortDevice" + std::to_string(i), "/dev/none");
  dialogs.Expect("Hardware unknown", Answer::Ok);
  dialogs.Expect("Go back", Answer::No);
  const std::int64_t begun = clock.Ticks();
  Detect();
  EXPECT_LT(clock.Ticks() - begun, 5000 + 5000 + 15000 + 1000);
  EXPECT_EQ(session.SamplingRate, 1.0 / 24);
}

TEST_F(AsksVersion1, TakesNoUnitWhoseAnswersHaveMoreDelimitersThanThereAreChannels) {
  units["/dev/null"] = [this](const std::string& heard, const SerialSettings& port) {
    if (port.baudRate == 9600 && !heard.empty()) plain.waiting += "12,5\r\n";
  };
  dialogs.Expect("Hardware unknown", Answer::Ok);
  dialogs.Expect("Go back to the settings of before?", Answer::Yes);
  Detect();
}

TEST_F(AutoDetectTest, ShowsWhichPortIsSearchedAndHowFarItIs) {
  settings.Save("VELK2", "Protocol", "PortDevice2", "/dev/none");
  settings.Save("VELK2", "Protocol", "PortDevice4", "/dev/none");
  onRound = [&] { EXPECT_TRUE(StatusIs(session, text::DetectionInProgress)); };
  dialogs.Expect("Hardware unknown", Answer::Ok);
  dialogs.Expect("Go back to the settings of before?", Answer::Yes);
  Detect();
  EXPECT_TRUE(shown.appeared);
  ASSERT_EQ(shown.steps.size(), 6U);
  const char* doing[] = {"Listening to Com Port 1",
                         "Listening to Com Port 3",
                         "Listening with hardware handshake to Com Port 1",
                         "Listening with hardware handshake to Com Port 3",
                         "Asking at Com Port 1",
                         "Asking at Com Port 3"};
  for (std::size_t i = 0; i < 6; ++i) {
    EXPECT_EQ(shown.steps[i].first, doing[i]);
    EXPECT_DOUBLE_EQ(shown.steps[i].second, static_cast<double>(i) / 6);
  }
}

TEST_F(AutoDetectTest, ShowsThatAUnitIsAskedWhichItIs) {
  Streams("/dev/zero", "12:00:01 1 2\r\n", true);
  dialogs.Expect("KESTA version 4 hardware detected", Answer::Ok);
  Detect();
  EXPECT_EQ(shown.steps.back().first, "Asking which unit it is at Com Port 2");
}

TEST_F(AutoDetectTest, PassesOverAUnitThatIsUnpluggedWhileItIsAskedWhichItIs) {
  Streams("/dev/null", "12:00:01 1 2\r\n", false);
  bool isPulled = false;
  onRound = [&] {
    if (plain.written != "Trad\r" || std::exchange(isPulled, true)) return;
    plain.HangUp();
    units.clear();
    Streams("/dev/full", "12:00:01 1 2 3\r\n", true);
  };
  dialogs.Expect("KESTA version 4 hardware detected", Answer::Ok);
  Detect();
  EXPECT_EQ(Opened(), "null zero full ");
  EXPECT_EQ(session.PortNumber, 3);
  EXPECT_EQ(session.NumberOfParameters, 3);
}

/// Where the search fails or finds nothing the link is as it was, for the settings of before.
struct AutoDetectInAJob : AutoDetectTest {
  AutoDetectInAJob() {
    SetProtocolConstants(session);
    link.SetODataCom();
  }
  void ExpectAsBefore() {
    EXPECT_EQ(session.SerialData, "LUMO version A");
    EXPECT_EQ(session.NumberOfParameters, 3);
    EXPECT_EQ(session.Parameters[1].name, "Pressure");
    EXPECT_TRUE(driver.open);
    EXPECT_EQ(driver.openings.back().device, "/dev/null");
    EXPECT_TRUE(timers.Timer2->Enabled());
    EXPECT_EQ(kept, 0);
  }
};

TEST_F(AutoDetectInAJob, HasItsLinkBackWhereNothingWasFound) {
  onRound = [&] { EXPECT_FALSE(driver.open) << "nobody else is on the port"; };
  dialogs.Expect("Hardware unknown", Answer::Ok);
  dialogs.Expect("Go back to the settings of before?", Answer::Yes);
  Detect();
  ExpectAsBefore();
}

TEST_F(AutoDetectInAJob, TellsAFaultOfAPortWithTheNameOfTheCommandAndHasItsLinkBack) {
  onRound = [&] {
    if (clock.Ticks() > 7000) throw RuntimeError(ErrorNumber::PortNotOpen);
  };
  dialogs.Expect(" - mnuEditAutoDetect_Click", Answer::Cancel);
  Detect();
  ExpectAsBefore();
}

TEST_F(AutoDetectInAJob, SearchesFromTheFirstPortOnAgainOnRetry) {
  bool fails = true;
  onRound = [&] {
    if (fails && clock.Ticks() > 7000) throw RuntimeError(ErrorNumber::PortNotOpen);
  };
  dialogs.Expect(" - mnuEditAutoDetect_Click", Answer::Retry, [&] {
    fails = false;
    Streams("/dev/null", "12:00:01 1 2\r\n", true);
  });
  dialogs.Expect("KESTA version 4 hardware detected", Answer::Ok);
  Detect();
  EXPECT_EQ(session.PortNumber, 1);
  EXPECT_EQ(kept, 1);
}

TEST_F(AutoDetectTest, LeavesTheTableAsFarAsItWasFilledWhereACancelledSearchIsKept) {
  session.Parameters[5].name = "Rate";
  onRound = [&] { cancelled = clock.Ticks() > 45'000; };
  dialogs.Expect("Hardware unknown", Answer::Ok);
  dialogs.Expect("Go back to the settings of before?", Answer::No);
  Detect();
  EXPECT_EQ(session.SerialData, "sent when requested") << "the phase in which it was cancelled";
  EXPECT_EQ(session.NumberOfParameters, 1);
  EXPECT_EQ(session.Parameters[1].name, "Parameter 1");
  EXPECT_EQ(session.Parameters[2].CommandString, "N3TH*");
  EXPECT_EQ(session.Parameters[5].name, "");
  EXPECT_EQ(StoredCount(), "1");
  EXPECT_EQ(kept, 1);
}

TEST_F(AutoDetectTest, OffersTheSettingsOfBeforeWhereNothingWasFound) {
  dialogs.Expect("Hardware unknown", Answer::Ok);
  dialogs.Expect("Go back to the settings of before?", Answer::Yes);
  Detect();
  EXPECT_EQ(session.SerialData, "LUMO version A");
  EXPECT_EQ(session.NumberOfParameters, 3);
  EXPECT_EQ(session.Parameters[1].name, "Pressure");
  EXPECT_EQ(session.BaudRate, 19200);
  EXPECT_EQ(StoredCount(), "3");
  EXPECT_EQ(kept, 0);
  EXPECT_FALSE(dialogs.shown.back().safeDefault) << "Enter says Yes";
}

TEST_F(AutoDetectTest, HasOneParameterWhereNothingWasFoundAndTheOperatorWantsItSo) {
  dialogs.Expect("Hardware unknown", Answer::Ok);
  dialogs.Expect("Go back to the settings of before?", Answer::No);
  Detect();
  EXPECT_EQ(session.SerialData, "sent when requested");
  EXPECT_EQ(session.NumberOfParameters, 1);
  EXPECT_EQ(session.Parameters[1].name, "Parameter 1");
  EXPECT_EQ(StoredCount(), "1");
  EXPECT_EQ(kept, 1);
}

TEST_F(AutoDetectTest, PassesOverPortsThatAreMissingOrCannotBeOpenedAndNamesTheLatter) {
  settings.Save("VELK2", "Protocol", "PortDevice2", "/dev/none");
  plain.failOpen = [this] {
    if (plain.openings.back().device == "/dev/null") throw PortError(ErrorNumber::FileAlreadyOpen, "/dev/null");
  };
  Streams("/dev/full", "12:00:01 1 2\r\n", true);
  dialogs.Expect(
      "KESTA version 4 hardware detected\n\nThese ports could not be opened:\nCom Port 1: /dev/null: the "
      "serial device is in use by another program.",
      Answer::Ok);
  Detect();
  EXPECT_EQ(Opened(), "null full ");
  EXPECT_EQ(session.PortNumber, 3);
}

TEST_F(AutoDetectTest, EndsWithinASecondOfCancelInEachOfItsPhases) {
  for (const std::int64_t at : {1500, 22000, 45000}) {
    cancelled = false;
    const std::int64_t begun = clock.Ticks();
    onRound = [&] { cancelled = cancelled || clock.Ticks() - begun >= at; };
    dialogs.Expect("Hardware unknown", Answer::Ok);
    dialogs.Expect("Go back to the settings of before?", Answer::Yes);
    Detect();
    EXPECT_LT(clock.Ticks() - begun, at + 1000);
    EXPECT_EQ(session.NumberOfParameters, 3);
  }
}

TEST_F(AutoDetectTest, EndsWithinASecondOfCancelWhileAUnitIsAskedWhichItIs) {
  Streams("/dev/null", "12:00:01 1 2\r\n", false);
  const std::int64_t begun = clock.Ticks();
  onRound = [&] { cancelled = clock.Ticks() - begun >= 3000; };
  dialogs.Expect("Go back to the settings of before?", Answer::Yes);
  Detect();
  EXPECT_LT(clock.Ticks() - begun, 4000);
  EXPECT_EQ(sent + plain.written, "Trad\rr \r");
  EXPECT_EQ(session.SerialData, "LUMO version A");
}

TEST_F(AutoDetectTest, GoesBackToTheSettingsOfBeforeAtTheEndOfTheProgram) {
  onRound = [&] {
    if (clock.Ticks() > 3000) dialogs.SetEnding();
  };
  Detect();
  EXPECT_EQ(session.SerialData, "LUMO version A");
  EXPECT_EQ(session.NumberOfParameters, 3);
}

TEST_F(AutoDetectTest, TakesNoMoreChannelsThanThereAreParameters) {
  std::string line = "12:00:01";
  for (int i = 0; i < 65; ++i) line += " 1";
  Streams("/dev/null", line + "\r\n", true);
  dialogs.Expect("Hardware unknown", Answer::Ok);
  dialogs.Expect("Go back", Answer::Yes);
  Detect();
}

TEST_F(AutoDetectTest, CountsAfreshInTheSecondLineSinceTheFirstMayHaveBeenUnderWay) {
  units["/dev/null"] = [this, first = true](const std::string& heard, const SerialSettings& port) mutable {
    if (heard == "Trad\r") plain.waiting += "OK";
    if (port.handshake != Handshake::None || !plain.waiting.empty()) return;
    plain.waiting += std::exchange(first, false) ? "2 3\r\n" : "12:00:01 1 2 3\r\n";
  };
  dialogs.Expect("KESTA version 4 hardware detected", Answer::Ok);
  Detect();
  EXPECT_EQ(session.NumberOfParameters, 3);
}

}  // namespace
}  // namespace velk
