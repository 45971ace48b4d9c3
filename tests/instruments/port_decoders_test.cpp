// The decoders that frame their instrument's text themselves.

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "instruments/decoders/data_taker.h"
#include "instruments/decoders/national_oil_well.h"
#include "instruments/decoders/stewart_stevenson.h"
#include "support/byte_port.h"
#include "support/fake_clock.h"
#include "support/frame_damage.h"

namespace velk {
namespace {

using namespace std::string_literals;

class PortDecoders : public testing::Test {
 protected:
  PortDecoders() {
    session.NumberOfParameters = 2;
    session.Delimiter = " ";
    session.Terminator = "\n";
    // A line that nothing follows on ends its wait, as Stop would.
    port.onDry = [this] { session.StopRequested = true; };
  }

  std::string NationalOilWellOf(std::string_view bytes) {
    Begin(bytes);
    std::string line = ReadNationalOilWell(reader, session);
    NationalOilWell(line, session);
    return line;
  }
  std::string DataTakerLineOf(std::string_view bytes) {
    Begin(bytes);
    return DataTaker_a(reader, session);
  }
  std::string DataTakerBlockOf(std::string_view bytes) {
    Begin(bytes);
    return DataTaker_b(reader, session);
  }
  std::string FrameOf(std::string_view bytes) {
    Begin(bytes);
    return Stewart_stevenson(reader);
  }

  void Begin(std::string_view bytes) {
    session.StopRequested = false;
    port.Restart(bytes);
  }

  Session session;
  Gate gate;
  test::FakeClock clock{gate};
  test::BytePort port;
  PortReader reader{port, clock, session};
};

// --- National Oil Well ---

class NationalOilWellPort : public PortDecoders {
 protected:
  NationalOilWellPort() { session.FormattedLineLength = 20; }
  const std::string line = "09:30:15 12.5 3.0\r\n";
};

TEST_F(NationalOilWellPort, PassesALineWhoseOneCharacterTerminatorIsItsVeryLast) {
  session.FormattedLineLength = static_cast<std::int16_t>(line.size());
  EXPECT_EQ(NationalOilWellOf(line), line);
  session.Terminator = "\r";
  EXPECT_EQ(NationalOilWellOf("09:30:15 12.5 3.0\n\r"), "09:30:15 12.5 3.0\n\r");
}

TEST_F(NationalOilWellPort, CutsTheLineAheadOfATerminatorOfTwo) {
  session.Terminator = "\r\n";
  session.Delimiter = ",";
  EXPECT_EQ(NationalOilWellOf("09:30:15,1,2\r\n"), "09:30:15,1,2");
}

TEST_F(NationalOilWellPort, TrimsWhatItCutsAndComparesThatLength) {
  session.Terminator = "\r";  // CR LF: the CR is not the last
  session.FormattedLineLength = 16;
  EXPECT_EQ(NationalOilWellOf("  09:30:15 12 3.5  \r\n"), "09:30:15 12 3.5"s.insert(0, "\r"));
  session.FormattedLineLength = 15;
  EXPECT_EQ(NationalOilWellOf("  09:30:15 12 3.5  \r\n"), "09:30:15 12 3.5");
}

TEST_F(NationalOilWellPort, TakesTheZeroCharactersOutBeforeItMeasures) {
  session.FormattedLineLength = static_cast<std::int16_t>(line.size());
  EXPECT_EQ(NationalOilWellOf("\0\0"
                              "09:30:15 12.5\0 3.0\r\n"s),
            line);
}

TEST_F(NationalOilWellPort, RejectsALineWithoutItsTerminator) {
  session.Terminator = "#";
  EXPECT_EQ(NationalOilWellOf(line), "#");
}

TEST_F(NationalOilWellPort, LeavesTheNextLineInThePort) {
  session.FormattedLineLength = static_cast<std::int16_t>(line.size());
  EXPECT_EQ(NationalOilWellOf(line + "09:30:16 1"), line);
  EXPECT_EQ(port.Rest(), "09:30:16 1");
}

TEST_F(NationalOilWellPort, DeliversNoPrefixOfASoundLine) {
  session.FormattedLineLength = static_cast<std::int16_t>(line.size());
  // Only the mark of a rejected line: there is nothing behind it.
  for (std::size_t length = 0; length < line.size(); ++length)
    EXPECT_EQ(NationalOilWellOf(line.substr(0, length)), "\n") << length;
}

TEST_F(NationalOilWellPort, AcceptsAChangedByteOnlyWhereLengthTimeAndFieldsStayWhole) {
  session.FormattedLineLength = static_cast<std::int16_t>(line.size());
  test::ForEveryChangedByte(line, [&](const std::string& changed) {
    // A second LF ends the line, or its text, too early; a zero character is taken out. Both make it shorter.
    const bool asLong = changed.ends_with("\r\n") && std::count(changed.begin(), changed.end(), '\n') == 1 &&
                        changed.find('\0') == std::string::npos;
    const std::string checked = NationalOilWellOf(changed);
    if (asLong && test::IsTimedFrame(changed, ' ', 2))
      EXPECT_EQ(checked, changed);
    else
      EXPECT_EQ(checked.front(), '\n') << changed;
  });
}

TEST_F(NationalOilWellPort, WaitsAsLongAsNothingStopsIt) {
  session.FormattedLineLength = static_cast<std::int16_t>(line.size());
  int rounds = 0;
  port.onDry = [&] {
    if (++rounds == 100'000) port.Feed(line);
  };
  EXPECT_EQ(NationalOilWellOf(""), line);
  // The first look at the port does not wait.
  EXPECT_EQ(clock.Ticks(), 99'998);
}

TEST_F(NationalOilWellPort, GivesNothingWhenItsWaitIsStopped) {
  Begin("09:30:15 1");
  EXPECT_EQ(ReadNationalOilWell(reader, session), "");
}

TEST_F(NationalOilWellPort, HoldsNoMoreThan64KiBOfALineWithoutAnEnd) {
  EXPECT_EQ(NationalOilWellOf(std::string(200'000, '7')), "\n");
  EXPECT_EQ(port.Rest().size(), 200'000 - PortReader::kLongestText);
  EXPECT_FALSE(session.StopRequested);
}

TEST_F(NationalOilWellPort, RaisesOnAClosedPortInsteadOfWaiting) {
  port.open = false;
  EXPECT_THROW(NationalOilWellOf(line), RuntimeError);
}

TEST_F(NationalOilWellPort, LetsEventsRunWithEveryCharacter) {
  NationalOilWellOf(line);
  EXPECT_EQ(clock.yields, static_cast<int>(line.size()) - 2);
  EXPECT_EQ(clock.Ticks(), 0);
}

// --- Data Taker, lines ---

class DataTakerLine : public PortDecoders {};

TEST_F(DataTakerLine, TakesALineOfAnyLength) {
  EXPECT_EQ(DataTakerLineOf("09:30:15 1 2\r\n"), "09:30:15 1 2\r\n");
  EXPECT_EQ(DataTakerLineOf("09:30:15 1.00000 2\r\n"), "09:30:15 1.00000 2\r\n");
}

TEST_F(DataTakerLine, RejectsAWrongCountAndAWrongTime) {
  EXPECT_EQ(DataTakerLineOf("09:30:15 1\r\n"), "\n09:30:15 1\r\n");
  EXPECT_EQ(DataTakerLineOf("09:30:15 1 2 3\r\n"), "\n09:30:15 1 2 3\r\n");
  EXPECT_EQ(DataTakerLineOf("29:30:15 1 2\r\n"), "\n29:30:15 1 2\r\n");
}

TEST_F(DataTakerLine, CutsAheadOfTheTerminatorWithoutTrimming) {
  session.Terminator = "\r";
  session.NumberOfParameters = 4;
  EXPECT_EQ(DataTakerLineOf("09:30:15 1 2  \r\n"), "09:30:15 1 2  ");
  session.Terminator = "\r\n";
  EXPECT_EQ(DataTakerLineOf("09:30:15 1 2  \r\n"), "09:30:15 1 2  ");
}

TEST_F(DataTakerLine, GivesWhatHasComeUnmarkedWhen2100RoundsAreGone) {
  port.onDry = nullptr;
  EXPECT_EQ(DataTakerLineOf("09:30:15 1 2\r"), "09:30:15 1 2\r");
  // Two characters were read ahead of the rounds, eleven rounds found one each, the others rested.
  EXPECT_EQ(clock.Ticks(), 2100 - 11);
}

TEST_F(DataTakerLine, CountsTheRoundsThatFindACharacterToo) {
  port.onDry = nullptr;
  const std::string fits = "09:30:15 1 " + std::string(2102 - 13, '2') + "\r\n";
  EXPECT_EQ(DataTakerLineOf(fits), fits);
  const std::string tooLong = "09:30:15 1 " + std::string(2102 - 12, '2') + "\r\n";
  EXPECT_EQ(DataTakerLineOf(tooLong), tooLong.substr(0, 2102));
}

TEST_F(DataTakerLine, GivesNothingWhenItsWaitIsStopped) {
  EXPECT_EQ(DataTakerLineOf("09:30:15 1 2"), "");
}

TEST_F(DataTakerLine, DeliversNoPrefixOfASoundLine) {
  const std::string sound = "09:30:15 1 2\r\n";
  for (std::size_t length = 0; length < sound.size(); ++length) EXPECT_EQ(DataTakerLineOf(sound.substr(0, length)), "");
}

TEST_F(DataTakerLine, AcceptsAChangedByteOnlyWhereTimeAndFieldsStayWhole) {
  session.Terminator = "\n";
  test::ForEveryChangedByte("09:30:15 1 2\r\n", [&](const std::string& changed) {
    const std::string line = DataTakerLineOf(changed);
    // Without its line end the line goes on: it is stopped, and gives nothing.
    if (line.empty()) {
      EXPECT_FALSE(changed.ends_with("\r\n") || changed.ends_with("\n\r"));
      return;
    }
    const bool accepted = line.front() != '\n' && line.find('\n') != std::string::npos;
    EXPECT_TRUE(!accepted || test::IsTimedFrame(line, ' ', 2)) << line;
  });
}

// --- Data Taker, blocks ---

class DataTakerBlock : public PortDecoders {
 protected:
  DataTakerBlock() { session.Terminator = "\r"; }
  // 17 characters of heading and 5 ahead of the time; each channel's line is "name value".
  const std::string lead = "Datataker 0 run 1Time=";
  const std::string block = lead + "09:30:15\r\n1 12.5\r\n2 -3.25\r\n\r\n";
};

TEST_F(DataTakerBlock, MakesOneLineWithADelimiterMoreAndTheTerminator) {
  EXPECT_EQ(DataTakerBlockOf(block), "09:30:15 12.5 -3.25 \r");
}

TEST_F(DataTakerBlock, ReadsItsValuesAsNumbers) {
  EXPECT_EQ(DataTakerBlockOf(lead + "09:30:15\r\n1 0012.500 V\r\n2 xyz\r\n\r\n"), "09:30:15 12.5 0 \r");
}

TEST_F(DataTakerBlock, DropsBlanksAheadOfTheBlockAndOfTheTime) {
  EXPECT_EQ(DataTakerBlockOf("   " + lead + "  09:30:15\r\n1 12.5\r\n2 -3.25\r\n\r\n"), "09:30:15 12.5 -3.25 \r");
}

TEST_F(DataTakerBlock, DropsTheFirstCharacterOfEachFurtherLine) {
  // The 10 of "10 7" would be a value if its 1 were not dropped with the line end.
  EXPECT_EQ(DataTakerBlockOf(lead + "09:30:15\r\n1 5\r\n\x01 7.5\r\n\r\n"), "09:30:15 5 7.5 \r");
}

TEST_F(DataTakerBlock, EndsAtATextWithoutALineEndBehindTheLastValue) {
  EXPECT_EQ(LineFromDataTakerBlock(lead + "09:30:15\r\n1 12.5\r\n2 -3.25", session), "09:30:15 12.5 -3.25 \r");
}

TEST_F(DataTakerBlock, ReadsZeroBehindADelimiterThatIsNotABlank) {
  session.Delimiter = ",";
  EXPECT_EQ(DataTakerBlockOf(lead + "09:30:15\r\n1,12.5\r\n2,-3.25\r\n\r\n"), "09:30:15,0,0,\r");
}

TEST_F(DataTakerBlock, ReadsZeroWhereNoDelimiterFollowsAnyMore) {
  EXPECT_EQ(DataTakerBlockOf(lead + "09:30:15\r\n1 12.5\r\n2-3.25\r\n\r\n"), "09:30:15 12.5 0 \r");
}

TEST_F(DataTakerBlock, LooksForTheDelimiterInAllThatIsLeft) {
  // The first channel has no value of its own, so it gets the next one's.
  EXPECT_EQ(DataTakerBlockOf(lead + "09:30:15\r\n1\r\n2 -3.25\r\n\r\n"), "09:30:15 -3.25 -3.25 \r");
}

TEST_F(DataTakerBlock, BeginsWithTheValuesAtTheEleventhCharacter) {
  // The tenth one is the blank ahead of the 7.
  EXPECT_EQ(DataTakerBlockOf(lead + "09:30:15\r 7 8\r\n2 -3.25\r\n\r\n"), "09:30:15 8 -3.25 \r");
}

TEST_F(DataTakerBlock, LeavesOutALineThatIsTooShortForAValue) {
  // The x goes with the line end ahead of it. Then "\r\n\r\n" is too short with its four characters.
  session.NumberOfParameters = 1;
  EXPECT_EQ(DataTakerBlockOf(lead + "09:30:15\r\n1 5\r\nx\r\n\r\n"), "09:30:15 5 \r");
  session.NumberOfParameters = 2;
  // "6\r\n\r\n" has five.
  EXPECT_EQ(DataTakerBlockOf(lead + "09:30:15\r\n1 5\r\nx6\r\n\r\n"), "09:30:15 5 0 \r");
}

TEST_F(DataTakerBlock, RejectsAWrongCountAndAWrongTime) {
  session.NumberOfParameters = 3;
  EXPECT_EQ(DataTakerBlockOf(block), "\r09:30:15 12.5 -3.25 ");
  session.NumberOfParameters = 1;
  EXPECT_EQ(DataTakerBlockOf(block), "\r09:30:15 12.5 -3.25 ");
  session.NumberOfParameters = 2;
  EXPECT_EQ(DataTakerBlockOf(lead + "24:30:15\r\n1 12.5\r\n2 -3.25\r\n\r\n"), "\r24:30:15 12.5 -3.25 ");
}

TEST_F(DataTakerBlock, RejectsAValueBeyondAllNumbers) {
  EXPECT_EQ(DataTakerBlockOf(lead + "09:30:15\r\n1 1e999\r\n2 -3.25\r\n\r\n").front(), '\r');
}

TEST_F(DataTakerBlock, RejectsABlockThatIsNearlyEmpty) {
  for (const char* text : {"\r\n\r\n", "x\r\n\r\n", "Datataker 0 run 1Time=\r\n\r\n"})
    EXPECT_EQ(DataTakerBlockOf(text).front(), '\r') << text;
  EXPECT_EQ(LineFromDataTakerBlock("", session), "\r ");
}

TEST_F(DataTakerBlock, ReadsNothingBehindTheBlankLine) {
  DataTakerBlockOf("\r\n\r\nrest");
  EXPECT_EQ(port.Rest(), "rest");
  DataTakerBlockOf(block + "rest");
  EXPECT_EQ(port.Rest(), "rest");
}

TEST_F(DataTakerBlock, ReadsNothingOnceStopIsAsked) {
  Begin(block);
  session.StopRequested = true;
  EXPECT_EQ(DataTaker_b(reader, session), "");
  EXPECT_EQ(port.Rest(), block);
}

TEST_F(DataTakerBlock, GivesNothingForAnyPrefixOfABlock) {
  for (std::size_t length = 0; length < block.size(); ++length)
    EXPECT_EQ(DataTakerBlockOf(block.substr(0, length)), "");
}

TEST_F(DataTakerBlock, GivesUpBehind71000Rounds) {
  port.onDry = nullptr;
  EXPECT_EQ(DataTakerBlockOf("abcd"), "");
  EXPECT_EQ(clock.Ticks(), 71'000);
  EXPECT_FALSE(session.StopRequested);
}

TEST_F(DataTakerBlock, AcceptsAChangedByteOnlyWhereTimeAndFieldsStayWhole) {
  test::ForEveryChangedByte(block, [&](const std::string& changed) {
    const std::string line = DataTakerBlockOf(changed);
    const bool accepted = line.rfind('\r') != std::string::npos && line.rfind('\r') > 9;
    EXPECT_TRUE(!accepted || test::IsTimedFrame(line, ' ', 3)) << line;
  });
}

// --- S&S DAS 104 ---

class Das104 : public PortDecoders {};

TEST_F(Das104, TakesTheTextBetweenTwoCrsWithTheSecondOne) {
  EXPECT_EQ(FrameOf("tail\r09:30:15 1 2\r09:30:16"), "09:30:15 1 2\r");
}

TEST_F(Das104, DropsWhatItReadBehindTheFrame) {
  FrameOf("\rone\rtwo\rthree");
  EXPECT_EQ(port.Rest(), "");
}

TEST_F(Das104, ReadsOnCharacterByCharacterToTheSecondCr) {
  int dry = 0;
  port.onDry = [&] {
    if (++dry == 3) port.Feed("5 1 2\rmore");
  };
  EXPECT_EQ(FrameOf("x\r09:30:1"), "09:30:15 1 2\r");
  EXPECT_EQ(port.Rest(), "more");
}

TEST_F(Das104, BeginsWithWhatWaitsWhereNoCrDoes) {
  port.onDry = [&] { port.Feed("5 1 2\r\r"); };
  EXPECT_EQ(FrameOf("09:30:1"), "09:30:15 1 2\r");
  EXPECT_EQ(port.Rest(), "\r");
}

TEST_F(Das104, SeesACrDirectlyBehindTheFirstOnlyWhereBothWait) {
  EXPECT_EQ(FrameOf("\r\r"), "\r");
  bool fed = false;
  port.onDry = [&] {
    if (!std::exchange(fed, true)) port.Feed("\rabc\r");
  };
  EXPECT_EQ(FrameOf("\r"), "\rabc\r");
}

TEST_F(Das104, BeginsTheFrameAtACrThatComesFirstIntoAnEmptyPort) {
  int dry = 0;
  port.onDry = [&] {
    if (++dry == 3) port.Feed("\rabc\rmore");
  };
  EXPECT_EQ(FrameOf(""), "abc\r");
  EXPECT_EQ(port.Rest(), "more");
}

TEST_F(Das104, BeginsTheFrameAtTextThatComesFirstIntoAnEmptyPort) {
  int dry = 0;
  port.onDry = [&] {
    if (++dry == 3) port.Feed("abc\rmore");
  };
  EXPECT_EQ(FrameOf(""), "abc\r");
  EXPECT_EQ(port.Rest(), "more");
}

TEST_F(Das104, GivesNothingForAnyPrefixOfAFrame) {
  const std::string frame = "\r09:30:15 1 2\r";
  for (std::size_t length = 0; length < frame.size(); ++length)
    EXPECT_EQ(FrameOf(frame.substr(0, length)), "") << length;
}

TEST_F(Das104, GivesWhatStandsBetweenTheFirstTwoCrsWhicheverByteChanges) {
  test::ForEveryChangedByte("\r09:30:15 1 2\r", [&](const std::string& changed) {
    std::istringstream parts(changed.substr(0, changed.rfind('\r')));
    std::string ahead, frame;
    std::getline(parts, ahead, '\r');
    const bool whole = std::count(changed.begin(), changed.end(), '\r') >= 2;
    if (whole) std::getline(parts, frame, '\r');
    EXPECT_EQ(FrameOf(changed), whole ? frame + "\r" : "") << changed;
  });
}

TEST_F(Das104, ChecksNothing) {
  EXPECT_EQ(FrameOf("\rgarbage \xFF\x01\r"), "garbage \xFF\x01\r");
}

TEST_F(Das104, GivesNothingWhenItsWaitIsStopped) {
  EXPECT_EQ(FrameOf("x\r09:30:15 1 2"), "");
  EXPECT_EQ(FrameOf(""), "");
}

TEST_F(Das104, HoldsNoMoreThan64KiBOfAFrameWithoutAnEnd) {
  bool fed = false;
  port.onDry = [&] {
    if (!std::exchange(fed, true)) port.Feed(std::string(200'000, '7'));
  };
  EXPECT_EQ(FrameOf("\r"), "");
  EXPECT_EQ(port.Rest().size(), 200'000 - PortReader::kLongestText);
}

// --- A device that goes away ---

TEST_F(PortDecoders, GiveNothingWhenTheDeviceGoesAwayUnderTheirWait) {
  port.onDry = [this] { port.open = false; };
  // What NationalOilWell rejects has the terminator in front.
  const std::pair<std::string, std::function<std::string()>> waits[] = {
      {"\n", [this] { return NationalOilWellOf("09:30:15 1"); }},
      {"", [this] { return DataTakerLineOf("09:30:15 1"); }},
      {"", [this] { return DataTakerBlockOf("Datataker 0 run"); }},
      {"", [this] { return FrameOf("\r09:30:15 1"); }},
      {"", [this] { return FrameOf(""); }}};
  for (const auto& [expected, read] : waits) {
    port.open = true;
    const std::int64_t begun = clock.Ticks();
    EXPECT_EQ(read(), expected);
    EXPECT_LE(clock.Ticks() - begun, 1);
    EXPECT_FALSE(session.StopRequested);
  }
}

}  // namespace
}  // namespace velk
