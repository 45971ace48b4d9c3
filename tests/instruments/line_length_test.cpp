#include "instruments/reading/line_length.h"

#include <gtest/gtest.h>

#include "support/byte_port.h"
#include "support/fake_clock.h"

namespace velk {
namespace {

class LineLengths : public testing::Test {
 protected:
  LineLengths() {
    session.TheTimeOut = 5;
    session.SamplingRate = 1.0 / 86400;
  }

  LineLength Learn(const std::string& terminator, std::string_view bytes) {
    session.Terminator = terminator;
    session.FormattedLineLength = 0;
    session.StopRequested = false;
    port.Restart(bytes);
    return LearnLineLength(reader, session, TimeLimit(clock, session));
  }

  Session session;
  Gate gate;
  test::FakeClock clock{gate};
  test::BytePort port;
  PortReader reader{port, clock, session};
};

TEST_F(LineLengths, CountsTheSecondLineWithItsTerminator) {
  for (const char* terminator : {"\r", "\n", "\r\n", "\n\r"}) {
    const std::string end = terminator;
    EXPECT_EQ(Learn(end, "0:15 1 2" + end + "09:30:16 1 2" + end + "09:30"), LineLength::Learned);
    EXPECT_EQ(session.FormattedLineLength, static_cast<int>(12 + end.size()));
    EXPECT_EQ(port.Rest(), "09:30");
  }
}

TEST_F(LineLengths, DoesNotCountTheLineThatIsUnderWay) {
  EXPECT_EQ(Learn("\r", "\r1234\r"), LineLength::Learned);
  EXPECT_EQ(session.FormattedLineLength, 5);
}

TEST_F(LineLengths, LooksForALongerTerminatorFromTheSecondCharacterOn) {
  // The CR LF at the very front does not end the line under way.
  EXPECT_EQ(Learn("\r\n", "\r\nabc\r\n12345\r\n"), LineLength::Learned);
  EXPECT_EQ(session.FormattedLineLength, 7);
  EXPECT_EQ(Learn("\r\n", "x\r\n12345\r\n"), LineLength::Learned);
  EXPECT_EQ(session.FormattedLineLength, 7);
}

TEST_F(LineLengths, TakesAnEmptyLineForOne) {
  EXPECT_EQ(Learn("\r", "abc\r\r"), LineLength::Learned);
  EXPECT_EQ(session.FormattedLineLength, 1);
}

TEST_F(LineLengths, AsksToCheckTheHardwareWhenNoLineEnds) {
  for (const char* bytes : {"", "09:30:15 1 2"}) {
    const std::int64_t begun = clock.Ticks();
    EXPECT_EQ(Learn("\r", bytes), LineLength::TimedOutCheckHardware);
    EXPECT_TRUE(session.StopRequested);
    EXPECT_EQ(session.FormattedLineLength, 0);
    EXPECT_EQ(clock.Ticks() - begun, 5001);
  }
}

TEST_F(LineLengths, AsksToCheckTheSettingsWhenNoSecondLineEnds) {
  EXPECT_EQ(Learn("\r", "abc\r09:30:15 1 2"), LineLength::TimedOutCheckSettings);
  EXPECT_TRUE(session.StopRequested);
  EXPECT_EQ(session.FormattedLineLength, 0);
}

TEST_F(LineLengths, CountsTheTimeOfBothLinesTogether) {
  int dry = 0;
  port.onDry = [&] {
    if (++dry == 4000) port.Feed("\r");
  };
  const std::int64_t begun = clock.Ticks();
  EXPECT_EQ(Learn("\r", "abc"), LineLength::TimedOutCheckSettings);
  EXPECT_EQ(clock.Ticks() - begun, 5001);
}

TEST_F(LineLengths, RunsOutOfTimeWhileBytesFloodIn) {
  clock.onYield = [&] { clock.Advance(1); };
  port.onDry = [&] { port.Feed(std::string(100, 'x')); };
  EXPECT_EQ(Learn("\r", "abc\r"), LineLength::TimedOutCheckSettings);
}

TEST_F(LineLengths, EndsWhenStopIsAsked) {
  port.onDry = [&] { session.StopRequested = true; };
  EXPECT_EQ(Learn("\r\n", ""), LineLength::Stopped);
  EXPECT_EQ(Learn("\r\n", "abc"), LineLength::Stopped);
  EXPECT_EQ(Learn("\r\n", "abc\r\n12"), LineLength::Stopped);
  EXPECT_EQ(session.FormattedLineLength, 0);
}

TEST_F(LineLengths, EndsWhenTheDeviceGoesAway) {
  port.onDry = [&] { port.open = false; };
  for (const char* bytes : {"", "abc", "abc\r\n12"}) {
    port.open = true;
    EXPECT_EQ(Learn("\r\n", bytes), LineLength::Stopped);
    EXPECT_FALSE(session.StopRequested);
  }
}

TEST_F(LineLengths, LearnsTheLengthOfEveryLineFromItsShortestToItsLongest) {
  for (int length = 1; length <= 300; ++length) {
    EXPECT_EQ(Learn("\r", "x\r" + std::string(static_cast<std::size_t>(length) - 1, '7') + "\r"), LineLength::Learned);
    EXPECT_EQ(session.FormattedLineLength, length);
  }
}

TEST_F(LineLengths, LearnsNothingWithoutATerminator) {
  EXPECT_EQ(Learn("", "abc\rabc\r"), LineLength::TimedOutCheckHardware);
}

TEST_F(LineLengths, RefusesALineBeyondTheRange) {
  EXPECT_EQ(Learn("\r", "\r" + std::string(32'766, 'x') + "\r"), LineLength::Learned);
  EXPECT_EQ(session.FormattedLineLength, 32'767);
  EXPECT_THROW(Learn("\r", "\r" + std::string(32'767, 'x') + "\r"), RuntimeError);
}

}  // namespace
}  // namespace velk
