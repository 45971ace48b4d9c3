// The decoders against the simulators, over a pseudo-terminal or loopback. The simulators were written from what the
// instruments send and share no code with the decoders.

#include <gtest/gtest.h>

#include <QCoreApplication>

#include "base/dates.h"
#include "instruments/decoders/intermittent.h"
#include "instruments/link/line_driver.h"
#include "instruments/link/networked_unit.h"
#include "instruments/reading/line_length.h"
#include "instruments/table/decoders.h"
#include "platform/loop/system_clock.h"
#include "platform/settings/settings.h"
#include "support/child_program.h"
#include "support/fake_clock.h"
#include "support/scripted_dialogs.h"
#include "support/temporary_folder.h"

namespace velk {
namespace {

using Arguments = std::vector<std::string>;

class OtherInstruments : public testing::Test {
 protected:
  OtherInstruments() {
    session.NumberOfParameters = 3;
    session.Delimiter = " ";
    session.TheTimeOut = 5;
    session.SamplingRate = 1.0 / 86400;
    for (int i = 1; i <= 3; ++i) {
      session.Parameters[i].Gain = 1;
      session.Parameters[i].CommandString = "R" + std::to_string(i) + "\r";
    }
  }

  /// Starts a simulator with three channels and a journal; gives what it prints first.
  std::string Start(const std::string& name, Arguments arguments) {
    for (const char* common : {"--channels", "3", "--interval", "0.02", "--baud", "0"}) arguments.emplace_back(common);
    return StartPlain(name, std::move(arguments));
  }
  std::string StartPlain(const std::string& name, Arguments arguments) {
    arguments.insert(arguments.end(), {"--journal", directory.File("sent")});
    simulator = std::make_unique<test::ChildProgram>(VELK_SIMULATORS + ("/velk_sim_" + name), arguments);
    return simulator->NextLine();
  }
  void Open(const std::string& device) {
    SerialSettings given;
    given.device = device;
    port->Open(given);
  }
  std::vector<test::SentFrame> Sent() { return test::ReadJournal(directory.File("sent")); }

  /// Lines that the line driver delivers, so many of them.
  std::vector<std::string> Driven(const std::string& device, std::size_t count) {
    LineDriver driver(clock, gate, MakeSerialPort());
    std::vector<std::string> lines;
    driver.onDataReady = [&](const std::string& received) { lines.push_back(received); };
    LineDriverSettings given;
    given.port.device = device;
    given.terminator = session.Terminator;
    driver.Open(given);
    for (int rounds = 0; lines.size() < count && rounds < 20'000; ++rounds) clock.WaitRound();
    return lines;
  }

  bool IsTaken(const std::string& line) const {
    const std::size_t place = line.find(session.Terminator);
    return place != std::string::npos && place > 8;
  }

  test::TemporaryFolder directory;
  std::unique_ptr<test::ChildProgram> simulator;
  Session session;
  Gate gate;
  SystemClock clock{gate};
  test::ScriptedDialogs dialogs{gate};
  SettingsStore settings{directory.File("settings")};
  Platform platform{clock, gate, dialogs, settings, test::English()};
  Decoders decoders{session, platform};
  std::unique_ptr<SerialPort> port = MakeSerialPort();
};

TEST_F(OtherInstruments, FormattedLinesPassOnceTheirLengthIsLearned) {
  session.SerialData = "formatted and at regular intervals";
  for (const auto& [end, terminator] : std::vector<std::pair<std::string, std::string>>{
           {"cr", "\r"}, {"lf", "\n"}, {"crlf", "\r\n"}, {"lfcr", "\n\r"}}) {
    session.Terminator = terminator;
    const std::string device = Start("formatted", {"--end", end, "--wrong-count-every", "7"});
    Open(device);
    PortReader reader(*port, clock, session);
    ASSERT_EQ(LearnLineLength(reader, session, TimeLimit(clock, session)), LineLength::Learned);
    port->Close();
    // "hh:mm:ss", and a blank and nine characters three times.
    EXPECT_EQ(session.FormattedLineLength, static_cast<int>(38 + terminator.size()));

    int taken = 0;
    const std::vector<std::string> lines = Driven(device, 10);
    ASSERT_GE(lines.size(), 10U);
    for (std::string line : lines) {
      const std::string sent = line;
      decoders.DecodeDelivered(line);
      EXPECT_EQ(line == sent, sent.size() == 38 + terminator.size()) << sent;
      taken += IsTaken(line) ? 1 : 0;
    }
    EXPECT_GE(taken, 8);
    EXPECT_LT(taken, static_cast<int>(lines.size()));
  }
}

TEST_F(OtherInstruments, ThePlcNeverDeliversALineAndAnySerialDataAlwaysDoes) {
  session.Terminator = "\r\n";
  const std::string device = Start("formatted", {"--width", "13", "--zeros"});
  for (const std::string& sent : Driven(device, 5)) {
    std::string line = sent;
    session.SerialData = "National Oil Well PLC";
    decoders.DecodeDelivered(line);
    EXPECT_FALSE(IsTaken(line));
    line = sent;
    session.SerialData = "Any Serial Data";
    decoders.DecodeDelivered(line);
    EXPECT_EQ(line.size(), static_cast<std::size_t>(session.FormattedLineLength) + 2);
    EXPECT_TRUE(IsTaken(line));
  }
}

TEST_F(OtherInstruments, DataTakerLinesAreReadAsTheyWereSent) {
  session.SerialData = "Data Taker a";
  session.Terminator = "\n";
  Open(Start("data_taker", {"--frames", "12", "--wrong-count-every", "5"}));
  std::vector<std::string> read;
  for (int i = 0; i < 12; ++i) read.push_back(decoders.ReadPolled(*port));
  EXPECT_EQ(simulator->ExitCode(), 0);
  const auto sent = Sent();
  ASSERT_EQ(sent.size(), 12U);
  for (std::size_t i = 0; i < 12; ++i) {
    const bool sound = sent[i].kind == "sound";
    EXPECT_EQ(read[i], sound ? sent[i].text : "\n" + sent[i].text);
    EXPECT_EQ(sound, (i + 1) % 5 != 0);
  }
}

TEST_F(OtherInstruments, DataTakerBlocksBecomeLinesOfTheirValues) {
  session.SerialData = "Data Taker b";
  session.Terminator = "\r";
  Open(Start("data_taker", {"--form", "b", "--frames", "6", "--wrong-count-every", "4"}));
  std::vector<std::string> read;
  for (int i = 0; i < 6; ++i) read.push_back(decoders.ReadPolled(*port));
  EXPECT_EQ(simulator->ExitCode(), 0);
  const auto sent = Sent();
  ASSERT_EQ(sent.size(), 6U);
  for (std::size_t i = 0; i < 6; ++i) {
    EXPECT_EQ(IsTaken(read[i]), sent[i].kind == "sound");
    if (i == 3) continue;
    EXPECT_EQ(read[i].substr(0, 8), sent[i].text.substr(22, 8));
    std::istringstream fields(read[i].substr(8)), rows(sent[i].text.substr(32));
    for (int channel = 1; channel <= 3; ++channel) {
      int name = 0;
      double value = -1, expected = -2;
      fields >> value;
      rows >> name >> expected;
      EXPECT_EQ(name, channel);
      EXPECT_EQ(value, expected);
    }
  }
}

TEST_F(OtherInstruments, Das104FramesAreTakenFromBetweenTheCrs) {
  session.SerialData = "S&S DAS 104";
  session.Terminator = "\r";
  Open(Start("das104", {"--frames", "60"}));
  std::vector<std::string> read;
  for (int i = 0; i < 8; ++i) read.push_back(decoders.ReadPolled(*port));
  const auto sent = Sent();
  for (const std::string& frame : read) {
    const bool wasSent = std::any_of(sent.begin(), sent.end(), [&](const test::SentFrame& each) {
      return each.text == frame || each.text == "\r" + frame;
    });
    EXPECT_TRUE(wasSent || frame.empty() || frame.front() == '\r') << frame;
  }
  EXPECT_GE(std::count_if(read.begin(), read.end(), [this](const std::string& frame) { return IsTaken(frame); }), 4);
}

TEST_F(OtherInstruments, SendAFrameForEachSignalWhereTheyAreStepped) {
  Open(Start("das104", {"--step"}));
  for (std::size_t frames = 0; frames < 3; ++frames) {
    clock.WaitMilliseconds(60);
    EXPECT_EQ(Sent().size(), frames);
    simulator->Signal(SIGUSR1);
    for (int rounds = 0; Sent().size() == frames && rounds < 5000; ++rounds) clock.WaitRound();
    EXPECT_EQ(Sent().size(), frames + 1);
  }
}

TEST_F(OtherInstruments, RequestsAreAnswered) {
  session.SerialData = "sent when requested";
  session.Terminator = "\r";
  session.SampleTime = 46095.5;
  Open(StartPlain("request", {"--baud", "0", "--delay", "0.02"}));
  const std::string line = decoders.ReadPolled(*port);
  const auto sent = Sent();
  ASSERT_EQ(sent.size(), 3U);
  std::string expected = "46095.5";
  for (const test::SentFrame& answer : sent) expected += " " + answer.text.substr(0, answer.text.size() - 2);
  EXPECT_EQ(line, expected + "\r");
}

TEST_F(OtherInstruments, WhatAnAskedInstrumentSaysIsTheValueSoundOrNot) {
  session.SerialData = "sent when requested";
  session.Terminator = "\r";
  session.SampleTime = 46095.5;
  // The journal holds each answer with its CR LF, in the order of the commands.
  const std::pair<Arguments, const char*> faults[] = {{{"--garbage-every", "2"}, "damaged"},
                                                      {{"--wrong-count-every", "2"}, "damaged"},
                                                      {{"--dribble", "0.002", "--delay", "0.05"}, "sound"}};
  for (const auto& [fault, kind] : faults) {
    Arguments arguments = {"--baud", "0"};
    arguments.insert(arguments.end(), fault.begin(), fault.end());
    Open(StartPlain("request", arguments));
    const std::string line = decoders.ReadPolled(*port);
    const auto sent = Sent();
    ASSERT_EQ(sent.size(), 3U);
    std::string expected = "46095.5";
    for (const test::SentFrame& answer : sent) expected += " " + answer.text.substr(0, answer.text.size() - 2);
    EXPECT_EQ(line, expected + "\r") << fault[0];
    EXPECT_EQ(sent[1].kind, kind);
    EXPECT_EQ(sent[0].kind, "sound");
    const auto isNoise = [](char c) { return static_cast<unsigned char>(c) >= 128; };
    EXPECT_EQ(std::count_if(line.begin(), line.end(), isNoise), fault[0] == "--garbage-every" ? 9 : 0);
    EXPECT_EQ(std::count(line.begin(), line.end(), ' '), fault[0] == "--wrong-count-every" ? 4 : 3);
  }
}

TEST_F(OtherInstruments, AnInstrumentThatIsSilentOrBabblesRunsOutOfTime) {
  session.SerialData = "sent when requested";
  session.TheTimeOut = 1;
  session.SamplingRate = 0.4 / 86400;
  for (const Arguments& fault : std::vector<Arguments>{{"--silent-every", "2"}, {"--babble"}, {"--cut-every", "1"}}) {
    session.StopRequested = false;
    Arguments arguments = {"--baud", "0"};
    arguments.insert(arguments.end(), fault.begin(), fault.end());
    Open(StartPlain("request", arguments));
    dialogs.Expect("Time Out Error, check hardware settings", Answer::Ok);
    EXPECT_EQ(decoders.ReadPolled(*port), "") << fault[0];
    EXPECT_TRUE(session.StopRequested);
  }
}

TEST_F(OtherInstruments, BufferedLinesBringTheirOwnTimes) {
  session.Delimiter = ",";
  session.Terminator = "\r";
  Open(Start("intermittent", {"--burst", "4", "--frames", "3", "--clock", "23:59:55"}));
  IntermittentLines lines;
  lines.Reset(session.Terminator);
  std::string joined;
  std::vector<double> times;
  for (int rounds = 0; times.size() < 12 && rounds < 20'000; ++rounds) {
    clock.WaitRound();
    if (!lines.Receive(*port)) continue;
    for (int i = 1; i <= lines.BufferedLineCount; ++i) {
      joined += lines.BufferedLines[i];
      const BufferedSample sample = ReadBufferedLine(session, lines.BufferedLines[i]);
      EXPECT_TRUE(sample.IsAccepted());
      times.push_back(sample.sampleTime);
    }
  }
  ASSERT_EQ(times.size(), 12U);
  for (std::size_t i = 1; i < times.size(); ++i) EXPECT_EQ(SecondsBetween(times[i - 1], times[i]), 1);
  EXPECT_EQ(DatePart(times[11]), DatePart(times[0]) + 1);
  simulator->ExitCode();
  std::string sent;
  for (const test::SentFrame& burst : Sent()) sent += burst.text;
  EXPECT_EQ(joined, sent);
}

// --- Networked units ---

class NetworkedUnits : public OtherInstruments {
 protected:
  /// The line of a page, or the text of the error.
  std::string Read(const std::string& kind, Arguments arguments) {
    arguments.insert(arguments.end(), {"--page", kind, "--channels", "3", "--clock", "10:20:30"});
    session.daqIPAddress = StartPlain("web", arguments);
    session.daqHTML = "pens.htm";
    session.SerialData = kind == "panel" ? "ORBEN LUMO through HMI" : "HPT - Honeywell eZtrend";
    session.Terminator = "\r";
    return ReadAgain(kind);
  }
  std::string ReadAgain(const std::string& kind) {
    std::string told;
    fetch->Begin(UnitPageAddress(session), [&](const FetchedPage& page) { told = LineOf(kind, page); });
    while (fetch->IsUnderWay()) waits->WaitRound();
    return told;
  }
  std::string LineOf(const std::string& kind, const FetchedPage& page) {
    try {
      const std::string& text = TextOfPage(page);
      return kind == "table" ? LineOfTablePage(session, text) : LineOfValuesPage(session, text, clock.Now());
    } catch (const RuntimeError& error) {
      return error.what();
    }
  }

  Clock* waits = &clock;

  std::unique_ptr<PageFetch> fetch = MakePageFetch(clock);
};

TEST_F(NetworkedUnits, ServeTheirValuesInEveryForm) {
  for (const char* kind : {"named", "table", "panel"})
    for (const Arguments& style :
         std::vector<Arguments>{{}, {"--chunked"}, {"--header-bytes"}, {"--fault", "redirect"}}) {
      std::istringstream line(Read(kind, style));
      std::string time;
      // The job begins with 50 psi, no rate, and water.
      double pressure = 0, rate = -1, density = 0;
      line >> time >> pressure >> rate >> density;
      EXPECT_EQ(pressure, 50) << line.str();
      EXPECT_EQ(rate, 0);
      EXPECT_EQ(density, 8.34);
      EXPECT_TRUE(line.str().ends_with("\r"));
      EXPECT_EQ(time == "10:20:30", std::string(kind) == "table");
    }
}

TEST_F(NetworkedUnits, GiveNoValuesUnderTheirFaults) {
  for (const char* fault : {"oversized", "endless", "redirect-loop", "redirect-elsewhere", "cut", "error"}) {
    const std::string told = Read("named", {"--fault", fault});
    EXPECT_TRUE(told.starts_with(session.daqIPAddress + "/pens.htm: ")) << told;
  }
  for (const char* kind : {"named", "panel"})
    for (const Arguments& style : std::vector<Arguments>{{"--fault", "no-cells"}, {"--capitals"}})
      EXPECT_EQ(Read(kind, style), ErrorText(ErrorNumber::InvalidArgument).English());
  EXPECT_FALSE(IsTaken(Read("table", {"--fault", "no-cells"})));
}

TEST_F(NetworkedUnits, RunOutOfTimeWhereTheyAreSilentOrDribble) {
  // Five seconds of a clock that moves with each round; the network under it is the real one.
  test::FakeClock quick(gate);
  quick.onYield = [] { QCoreApplication::processEvents(); };
  fetch = MakePageFetch(quick);
  waits = &quick;
  for (const char* fault : {"silence", "dribble"}) {
    const std::int64_t begun = quick.Ticks();
    const std::string told = Read("named", {"--fault", fault});
    EXPECT_NE(told.find("not answer"), std::string::npos) << told;
    EXPECT_EQ(quick.Ticks() - begun, 5000) << fault;
  }
  fetch.reset();  // ahead of its clock
}

TEST_F(NetworkedUnits, WithARowTooFewOrNoiseGiveNothingThatTheCheckTakes) {
  session.Delimiter = " ";
  for (const char* kind : {"named", "table", "panel"}) {
    const std::string line = Read(kind, {"--fault", "wrong-count"});
    // The table gives its two values; the other pages raise.
    EXPECT_EQ(std::count(line.begin(), line.end(), ' ') == 2, std::string(kind) == "table") << line;
    EXPECT_EQ(line == ErrorText(ErrorNumber::InvalidArgument).English(), std::string(kind) != "table");
    OwnUnitDecoder check;
    check.LastLineLength = static_cast<std::int32_t>(line.size());
    std::string checked = line;
    check.Orben_ver_3(checked, session);
    EXPECT_FALSE(IsTaken(checked)) << line;
  }
  EXPECT_NE(Read("named", {"--fault", "noise", "--seed", "3"}), "");
  const auto sent = Sent();
  ASSERT_EQ(sent.size(), 1U);
  EXPECT_EQ(sent[0].kind, "damaged");
}

TEST_F(NetworkedUnits, GoOnBehindAFault) {
  EXPECT_TRUE(IsTaken(Read("named", {"--fault", "error", "--fault-every", "2"})));
  EXPECT_FALSE(IsTaken(ReadAgain("named")));
  EXPECT_TRUE(IsTaken(ReadAgain("named")));
}

// --- The programs themselves ---

TEST(Simulators, RefuseOptionsThatTheyDoNotKnow) {
  for (const char* name : {"formatted", "das104", "data_taker", "intermittent", "request", "web"}) {
    const std::string program = VELK_SIMULATORS + ("/velk_sim_" + std::string(name));
    testing::internal::CaptureStderr();
    EXPECT_EQ(test::ChildProgram(program, {"--no-such", "1"}).ExitCode(), 2);
    EXPECT_EQ(test::ChildProgram(program, {"--seed", "x"}).ExitCode(), 2);
    EXPECT_NE(testing::internal::GetCapturedStderr().find("wrong option"), std::string::npos);
    test::ChildProgram help(program, {"--help"});
    EXPECT_NE(help.NextLine().find(name), std::string::npos);
    EXPECT_EQ(help.ExitCode(), 0);
  }
}

TEST(Simulators, EndCleanlyOnASignal) {
  for (const char* name : {"formatted", "das104", "data_taker", "intermittent", "request", "web"}) {
    test::ChildProgram program(VELK_SIMULATORS + ("/velk_sim_" + std::string(name)), {});
    EXPECT_FALSE(program.NextLine().empty());
    program.Signal(SIGTERM);
    EXPECT_EQ(program.ExitCode(), 0) << name;
  }
}

}  // namespace
}  // namespace velk
