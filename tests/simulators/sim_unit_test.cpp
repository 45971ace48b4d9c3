#include <gtest/gtest.h>

#include <csignal>
#include <regex>
#include <sstream>

#include "simulators/simulator.h"
#include "support/temporary_folder.h"

namespace velk {
namespace {

using namespace test;
using SteadyClock = std::chrono::steady_clock;

std::vector<std::string> Frames(const std::string& text) {
  std::vector<std::string> frames;
  for (std::size_t at = 0, end = 0; (end = text.find("\r\n", at)) != std::string::npos; at = end + 2)
    frames.push_back(text.substr(at, end - at));
  return frames;
}

/// All that the simulator sends with these arguments until it ends.
std::string AllOf(Arguments arguments) {
  Simulator simulator(std::move(arguments));
  simulator.Open(simulator.NextDevice());
  std::string text = simulator.ReadToTheEnd();
  EXPECT_EQ(simulator.End(0), 0);
  return text;
}

const Arguments kFast = {"--interval", "0.01", "--baud", "0"};

Arguments Fast(Arguments more) {
  more.insert(more.end(), kFast.begin(), kFast.end());
  return more;
}

bool IsSoundFrame(const std::string& frame, int channels) {
  const std::regex picture("([01][0-9]|2[0-3]):[0-5][0-9]:[0-5][0-9]( [0-9]+(\\.[0-9]+)?){" + std::to_string(channels) +
                           "}");
  return std::regex_match(frame, picture);
}

TEST(SimUnit, EachUnitSendsAValueForEachOfItsChannelsInFramesOfOneLength) {
  const std::pair<const char*, int> units[] = {
      {"kesta3", 18}, {"KESTA version 4", 18}, {"kesta5", 22}, {"LUMO version A", 4}, {"lumob", 10}};
  for (const auto& [unit, channels] : units) {
    const std::string text = AllOf(Fast({"--unit", unit, "--frames", "40"}));
    const auto frames = Frames(text);
    ASSERT_EQ(frames.size(), 40U) << unit;
    for (const std::string& frame : frames) {
      EXPECT_TRUE(IsSoundFrame(frame, channels)) << frame;
      EXPECT_EQ(frame.size(), frames[0].size());
    }
  }
}

TEST(SimUnit, SendsAsManyChannelsAsAskedFor) {
  for (const int channels : {1, 64}) {
    const auto frames = Frames(AllOf(Fast({"--channels", std::to_string(channels), "--frames", "3"})));
    ASSERT_EQ(frames.size(), 3U);
    EXPECT_TRUE(IsSoundFrame(frames[2], channels));
  }
}

TEST(SimUnit, TheClockOfTheUnitRunsThroughMidnight) {
  // Without a pause between the frames the unit's second is still a second.
  const auto frames = Frames(AllOf({"--flood", "--interval", "1", "--clock", "23:59:58", "--frames", "4"}));
  ASSERT_EQ(frames.size(), 4U);
  EXPECT_EQ(frames[0].substr(0, 8), "23:59:58");
  EXPECT_EQ(frames[1].substr(0, 8), "23:59:59");
  EXPECT_EQ(frames[2].substr(0, 8), "00:00:00");
  EXPECT_EQ(frames[3].substr(0, 8), "00:00:01");
}

TEST(SimUnit, ThePumpingJobMovesAndItsTotalsRise) {
  const auto frames = Frames(AllOf({"--flood", "--unit", "kesta3", "--frames", "200"}));
  ASSERT_EQ(frames.size(), 200U);
  const auto value = [&](std::size_t frame, int channel) {
    std::istringstream fields(frames[frame]);
    std::string field;
    for (int i = 0; i <= channel; ++i) fields >> field;
    return std::stod(field);
  };
  double highest = 0;
  for (std::size_t i = 1; i < frames.size(); ++i) {
    highest = std::max(highest, value(i, 1));
    EXPECT_GE(value(i, 15), value(i - 1, 15));  // total of the job
    EXPECT_GE(value(i, 9), value(i - 1, 9));    // strokes
  }
  EXPECT_GT(highest, 4000);               // psi, the pressure test
  EXPECT_GT(value(199, 15), 5);           // bbl
  EXPECT_GT(value(150, 3), value(5, 3));  // slurry is heavier than water
}

TEST(SimUnit, TheSameSeedSendsTheSameValues) {
  const Arguments arguments = {"--flood", "--clock", "10:00:00", "--frames", "50", "--seed", "7", "--damage", "0.3"};
  EXPECT_EQ(AllOf(arguments), AllOf(arguments));
}

TEST(SimUnit, TheJournalHoldsWhatWasSent) {
  const test::TemporaryFolder folder;
  const auto frames = Frames(AllOf(Fast({"--journal", folder.File("sent"), "--frames", "30"})));
  const auto journal = ReadJournal(folder.File("sent"));
  ASSERT_EQ(journal.size(), 30U);
  ASSERT_EQ(frames.size(), 30U);
  for (std::size_t i = 0; i < frames.size(); ++i) {
    EXPECT_EQ(journal[i].kind, "sound");
    EXPECT_EQ(journal[i].text, frames[i] + "\r\n");
  }
}

TEST(SimUnit, TheAskedShareOfTheFramesIsDamagedAndMarkedInTheJournal) {
  const test::TemporaryFolder folder;
  AllOf({"--flood", "--journal", folder.File("sent"), "--frames", "2000", "--damage", "0.1"});
  const auto journal = ReadJournal(folder.File("sent"));
  ASSERT_EQ(journal.size(), 2000U);
  int damaged = 0;
  for (const SentFrame& entry : journal) {
    damaged += entry.kind == "damaged" ? 1 : 0;
    const bool isSound = entry.text.ends_with("\r\n") && IsSoundFrame(entry.text.substr(0, entry.text.size() - 2), 18);
    EXPECT_TRUE(isSound || entry.kind == "damaged") << entry.text;
  }
  // Four standard deviations around 200.
  EXPECT_GT(damaged, 146);
  EXPECT_LT(damaged, 254);
}

TEST(SimUnit, TheLengthChangesWhereAskedFor) {
  const auto frames = Frames(AllOf(Fast({"--unit", "lumoa", "--frames", "10", "--change-length-after", "6"})));
  ASSERT_EQ(frames.size(), 10U);
  for (std::size_t i = 0; i < 10; ++i) EXPECT_EQ(frames[i].size(), frames[0].size() + (i < 6 ? 0 : 4)) << i;
}

TEST(SimUnit, PausesWhereAskedFor) {
  Simulator simulator(Fast({"--pause-after", "3", "--pause", "0.4", "--frames", "6"}));
  simulator.Open(simulator.NextDevice());
  simulator.ReadUntil([](const std::string& text) { return Frames(text).size() == 3; });
  const auto start = SteadyClock::now();
  const std::string rest = simulator.ReadUntil([](const std::string& text) { return !text.empty(); });
  EXPECT_FALSE(rest.empty());
  EXPECT_GT(SteadyClock::now() - start, std::chrono::milliseconds(300));
}

TEST(SimUnit, HangsUpAndReturnsBehindTheSameLink) {
  const test::TemporaryFolder folder;
  const std::string link = folder.File("unit");
  Simulator simulator(Fast({"--link", link, "--hangup-after", "5", "--return-after", "0.2", "--frames", "8"}));
  simulator.NextDevice();
  simulator.Open(link);
  EXPECT_EQ(Frames(simulator.ReadToTheEnd()).size(), 5U);
  simulator.Close();
  const std::string device = simulator.NextDevice();
  EXPECT_EQ(std::filesystem::read_symlink(link), device);
  simulator.Open(link);
  EXPECT_EQ(Frames(simulator.ReadToTheEnd()).size(), 3U);
  EXPECT_EQ(simulator.End(0), 0);
  EXPECT_FALSE(std::filesystem::exists(std::filesystem::symlink_status(link)));
}

TEST(SimUnit, HangsUpWithinAFrameAndReturnsBehindAnotherLink) {
  const test::TemporaryFolder folder;
  const std::string before = folder.File("one"), behind = folder.File("two");
  Simulator simulator(Fast({"--link", before, "--return-as", behind, "--hangup-within", "--hangup-after", "5",
                            "--return-after", "0.2", "--frames", "8", "--journal", folder.File("sent")}));
  simulator.NextDevice();
  simulator.Open(before);
  const std::string text = simulator.ReadToTheEnd();
  simulator.Close();
  const std::string device = simulator.NextDevice();
  EXPECT_FALSE(std::filesystem::exists(std::filesystem::symlink_status(before)));
  EXPECT_EQ(std::filesystem::read_symlink(behind), device);
  simulator.Open(behind);
  EXPECT_EQ(Frames(simulator.ReadToTheEnd()).size(), 3U);
  EXPECT_EQ(simulator.End(0), 0);
  const auto journal = test::ReadJournal(folder.File("sent"));
  ASSERT_EQ(journal.size(), 10U);
  EXPECT_EQ(journal[5].kind, "cut");
  EXPECT_EQ(journal[6].kind, "gone");
  EXPECT_EQ(journal[5].text.size(), journal[4].text.size() / 2);
  EXPECT_TRUE(text.ends_with("\r\n" + journal[5].text)) << text;
}

TEST(SimUnit, KeepsThePaceOfTheLine) {
  // 18 values of 10 characters, 8 of time and 2 at the end, but 5 counters of 8: 180 bytes, 94 ms at 19200 baud.
  const auto start = SteadyClock::now();
  const std::string text = AllOf({"--interval", "0", "--frames", "5", "--unit", "kesta4"});
  const double seconds = std::chrono::duration<double>(SteadyClock::now() - start).count();
  EXPECT_GE(seconds, static_cast<double>(text.size()) * 10 / 19200);
  EXPECT_EQ(Frames(text).size(), 5U);
}

TEST(SimUnit, AFloodIsFasterThanTheLine) {
  const auto start = SteadyClock::now();
  const std::string text = AllOf({"--flood", "--frames", "500"});
  const double seconds = std::chrono::duration<double>(SteadyClock::now() - start).count();
  EXPECT_EQ(Frames(text).size(), 500U);
  EXPECT_LT(seconds, static_cast<double>(text.size()) * 10 / 19200 / 2);
}

TEST(SimUnit, TellsOfATripDownAndUpInFramesOfOneLength) {
  // A second a frame, ten of them down to 1,000, one of rest, ten up, one of rest.
  const auto frames = Frames(AllOf(
      {"--flood", "--frames", "24", "--interval", "1", "--unit", "kesta5", "--trip", "1000", "--trip-time", "10"}));
  ASSERT_EQ(frames.size(), 24U);
  struct Place {
    double depth, speed, inclination, azimuth, rpm;
  };
  const auto at = [&](std::size_t frame) {
    std::istringstream fields(frames[frame].substr(8));
    Place place{};
    fields >> place.depth >> place.speed >> place.inclination >> place.azimuth >> place.rpm;
    return place;
  };
  for (const std::string& frame : frames) EXPECT_EQ(frame.size(), frames[0].size());
  // Vertical down to 200, 60 degrees from 700 on; it turns from 340 degrees across north to 30.
  const auto expect = [&](std::size_t frame, const Place& wanted) {
    const Place found = at(frame);
    EXPECT_NEAR(found.depth, wanted.depth, 1e-3) << frame;
    EXPECT_NEAR(found.speed, wanted.speed, 1e-3) << frame;
    EXPECT_NEAR(found.inclination, wanted.inclination, 1e-3) << frame;
    EXPECT_NEAR(found.azimuth, wanted.azimuth, 1e-3) << frame;
    EXPECT_EQ(found.rpm, wanted.rpm) << frame;
  };
  expect(0, {100, 6000, 0, 340, 40});
  expect(2, {300, 6000, 12, 350, 40});
  expect(7, {800, 6000, 60, 30, 40});
  expect(9, {1000, 0, 60, 30, 40});
  expect(11, {900, -6000, 60, 30, 0});
  expect(17, {300, -6000, 12, 350, 0});
  expect(22, {100, 6000, 0, 340, 40});
}

TEST(SimUnit, EndsCleanlyOnSignals) {
  for (const int signal : {SIGTERM, SIGINT}) {
    const test::TemporaryFolder folder;
    Simulator simulator({"--link", folder.File("unit"), "--interval", "100"});
    simulator.NextDevice();
    simulator.Open(folder.File("unit"));
    EXPECT_EQ(simulator.End(signal), 0);
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
  }
}

TEST(SimUnit, RefusesOptionsThatItDoesNotKnow) {
  for (const Arguments& wrong : std::vector<Arguments>{
           {"--speed", "1"}, {"--unit", "KESTA version 6"}, {"--frames", "x"}, {"--frames"}, {"--baud", "-1"}}) {
    testing::internal::CaptureStderr();
    Simulator simulator(wrong);
    EXPECT_EQ(simulator.End(0), 2);
    EXPECT_NE(testing::internal::GetCapturedStderr().find("wrong option"), std::string::npos);
  }
}

}  // namespace
}  // namespace velk
