#include "instruments/decoders/requested_data.h"

#include <gtest/gtest.h>

#include "support/byte_port.h"
#include "support/fake_clock.h"
#include "support/frame_damage.h"

namespace velk {
namespace {

class RequestedData : public testing::Test {
 protected:
  RequestedData() {
    session.NumberOfParameters = 2;
    session.Delimiter = ",";
    session.Terminator = "\r";
    session.SampleTime = 46095.25;
    session.TheTimeOut = 5;
    session.SamplingRate = 1.0 / 86400;
    session.Parameters[1].CommandString = "P?\r";
    session.Parameters[2].CommandString = "T?\r\n";
    port.onWrite = [this] {
      writtenAt.push_back(clock.Ticks());
      port.Feed(port.written.back() == "P?\r" ? first : second);
    };
  }

  RequestedLine Ask() { return Requested_data(port, clock, session); }

  Session session;
  Gate gate;
  test::FakeClock clock{gate};
  test::BytePort port;
  std::string first = "12.5\r\n", second = "70\n";
  std::vector<std::int64_t> writtenAt;
};

TEST_F(RequestedData, MakesALineOfTheSampleTimeAndTheAnswers) {
  const RequestedLine requested = Ask();
  EXPECT_EQ(requested.line, "46095.25,12.5,70\r");
  EXPECT_FALSE(requested.timedOut);
  EXPECT_EQ(port.written, (std::vector<std::string>{"P?\r", "T?\r\n"}));
}

TEST_F(RequestedData, Rests210MillisecondsAheadOfEachCommand) {
  Ask();
  EXPECT_EQ(writtenAt, (std::vector<std::int64_t>{210, 420}));
}

TEST_F(RequestedData, ForgetsWhatCameBeforeTheCommand) {
  port.Feed("old answer\n");
  EXPECT_EQ(Ask().line, "46095.25,12.5,70\r");
}

TEST_F(RequestedData, TakesOffEveryLineEndAtTheEndOfAnAnswerOnly) {
  first = "\r1\r2\r\r\r\n";
  second = "\r\n";
  EXPECT_EQ(Ask().line, "46095.25,\r1\r2,\r");
}

TEST_F(RequestedData, TakesAnyAnswerForTheValue) {
  first = "ERROR 7\n";
  second = "\xFF\x80\n";
  EXPECT_EQ(Ask().line, "46095.25,ERROR 7,\xFF\x80\r");
}

TEST_F(RequestedData, RunsOutOfTimeBehindTheTimeOutOfTheParameter) {
  second = "no end";
  const RequestedLine requested = Ask();
  EXPECT_EQ(requested.line, "");
  EXPECT_TRUE(requested.timedOut);
  EXPECT_EQ(requested.parameter, 2);
  EXPECT_EQ(requested.heard.bytes, 6) << "of its answer, without those of the one before";
  EXPECT_TRUE(session.StopRequested);
  // Five seconds from the beginning of the second parameter, which began at 210 and the few yields of the first.
  EXPECT_EQ(clock.Ticks(), 210 + 5001);
}

TEST_F(RequestedData, RunsOutOfTimeOnEveryPrefixOfAnAnswer) {
  const std::string answer = "12.5\r\n";
  for (std::size_t length = 0; length < answer.size(); ++length) {
    session.StopRequested = false;
    first = answer.substr(0, length);
    const RequestedLine requested = Ask();
    EXPECT_EQ(requested.line, "");
    EXPECT_TRUE(requested.timedOut) << first;
  }
}

TEST_F(RequestedData, TakesAnAnswerUpToItsFirstLfWhicheverByteChanges) {
  session.TheTimeOut = 1;
  test::ForEveryChangedByte("12.5\r\n", [&](const std::string& changed) {
    session.StopRequested = false;
    port.Restart("");
    first = changed;
    std::string answer = changed.substr(0, changed.find('\n'));
    while (!answer.empty() && (answer.back() == '\r' || answer.back() == '\n')) answer.pop_back();
    const bool ends = changed.find('\n') != std::string::npos;
    EXPECT_EQ(Ask().line, ends ? "46095.25," + answer + ",70\r" : "") << changed;
    EXPECT_EQ(session.StopRequested, !ends);
  });
}

TEST_F(RequestedData, GivesNothingWhenTheDeviceGoesAway) {
  second = "half";
  port.onDry = [&] { port.open = false; };
  const RequestedLine requested = Ask();
  EXPECT_EQ(requested.line, "");
  EXPECT_FALSE(requested.timedOut);
  EXPECT_FALSE(session.StopRequested);
  port.open = true;
  clock.onYield = [&] { port.open = false; };  // in the rest ahead of a command
  EXPECT_EQ(Ask().line, "");
}

TEST_F(RequestedData, RunsOutOfTimeWhileCharactersStillDribble) {
  first = "";
  int dry = 0;
  port.onDry = [&] {
    if (++dry % 100 == 0) port.Feed("9");
  };
  EXPECT_TRUE(Ask().timedOut);
  EXPECT_EQ(port.written.size(), 1U);
}

TEST_F(RequestedData, TakesAnAnswerThatCameWithinTheTime) {
  first = "";
  int dry = 0;
  port.onDry = [&] {
    if (++dry == 4000) port.Feed("1\n");
  };
  EXPECT_EQ(Ask().line, "46095.25,1,70\r");
}

TEST_F(RequestedData, GivesNothingAndAsksNoFurtherWhenStopped) {
  second = "half";
  port.onDry = [&] { session.StopRequested = true; };
  const RequestedLine requested = Ask();
  EXPECT_EQ(requested.line, "");
  EXPECT_FALSE(requested.timedOut);
}

TEST_F(RequestedData, WritesNoCommandOnceStopped) {
  clock.onYield = [&] { session.StopRequested = true; };
  EXPECT_EQ(Ask().line, "");
  EXPECT_TRUE(port.written.empty());
}

TEST_F(RequestedData, GivesNothingWhenStoppedInTheVeryLastYield) {
  session.NumberOfParameters = 1;
  clock.onYield = [&] {
    // One yield in the rest, one with each of the six characters, and the last.
    if (clock.yields == 8) session.StopRequested = true;
  };
  EXPECT_EQ(Ask().line, "");
  EXPECT_EQ(clock.yields, 8);
}

TEST_F(RequestedData, HoldsNoMoreThan64KiBOfAnAnswerAndKeepsItsFront) {
  session.NumberOfParameters = 1;
  first = "12.5 " + std::string(300'000, 'x') + "\n";
  const std::string line = Ask().line;
  EXPECT_LE(line.size(), PortReader::kLongestText + 20);
  EXPECT_TRUE(line.starts_with("46095.25,12.5 xxx"));
}

TEST_F(RequestedData, RaisesOnAClosedPort) {
  port.open = false;
  EXPECT_THROW(Ask(), RuntimeError);
}

TEST_F(RequestedData, WithoutParametersIsTheTimeAlone) {
  session.NumberOfParameters = 0;
  EXPECT_EQ(Ask().line, "46095.25\r");
}

}  // namespace
}  // namespace velk
