#include "instruments/decoders/intermittent.h"

#include <gtest/gtest.h>

#include <cctype>
#include <optional>
#include <regex>

#include "base/dates.h"
#include "base/errors.h"
#include "support/byte_port.h"
#include "support/frame_damage.h"

namespace velk {
namespace {

// --- Collecting lines ---

std::vector<std::string> Received(IntermittentLines& lines, test::BytePort& port) {
  lines.Receive(port);
  EXPECT_EQ(lines.BufferedLines.size(), static_cast<std::size_t>(lines.BufferedLineCount) + 1);
  return {lines.BufferedLines.begin() + 1, lines.BufferedLines.end()};
}

using Lines = std::vector<std::string>;

TEST(IntermittentLines, TakesEveryWholeLineThatWaitsWithItsTerminator) {
  IntermittentLines lines;
  lines.Reset("\r");
  test::BytePort port("one\r\rtwo\r");
  EXPECT_EQ(Received(lines, port), (Lines{"one\r", "\r", "two\r"}));
}

TEST(IntermittentLines, BeginsTheCountAnewWithEachBurst) {
  IntermittentLines lines;
  lines.Reset("\r");
  test::BytePort port("one\rtwo\r");
  Received(lines, port);
  port.Feed("three\r");
  EXPECT_EQ(Received(lines, port), (Lines{"three\r"}));
  EXPECT_EQ(Received(lines, port), Lines{});
  EXPECT_EQ(lines.BufferedLineCount, 0);
}

TEST(IntermittentLines, KeepsTheRestOfALineForTheNextBurst) {
  const std::string sent = "14-Mar-2026 09:30:00,1\r14-Mar-2026 09:30:01,2\r";
  for (std::size_t cut = 0; cut <= sent.size(); ++cut) {
    IntermittentLines lines;
    lines.Reset("\r");
    test::BytePort port(sent.substr(0, cut));
    Lines all = Received(lines, port);
    port.Feed(sent.substr(cut));
    for (const std::string& line : Received(lines, port)) all.push_back(line);
    EXPECT_EQ(all, (Lines{"14-Mar-2026 09:30:00,1\r", "14-Mar-2026 09:30:01,2\r"})) << cut;
  }
}

TEST(IntermittentLines, NeverEndsALineAtATerminatorOfTwoCharacters) {
  IntermittentLines lines;
  lines.Reset("\r\n");
  test::BytePort port("one\r\ntwo\r\n");
  EXPECT_FALSE(lines.Receive(port));
  EXPECT_EQ(lines.BufferedLineCount, 0);
  EXPECT_EQ(port.Rest(), "");
}

TEST(IntermittentLines, DropsALineLongerThan64KiB) {
  IntermittentLines lines;
  lines.Reset("\r");
  test::BytePort port("one\r" + std::string(70'000, 'x') + "\rtwo\r");
  EXPECT_EQ(Received(lines, port), (Lines{"one\r", "two\r"}));
}

TEST(IntermittentLines, TakesNoMoreThan256KiBAtOnce) {
  IntermittentLines lines;
  lines.Reset("\r");
  test::BytePort port(std::string(300'000, '\r'));
  EXPECT_EQ(Received(lines, port).size(), 262'144U);
  EXPECT_EQ(Received(lines, port).size(), 300'000U - 262'144U);
}

TEST(IntermittentLines, HoldsWhatComesWhileALineIsWorkedOn) {
  IntermittentLines lines;
  lines.Reset("\r");
  test::BytePort port("one\rtw");
  EXPECT_EQ(Received(lines, port), (Lines{"one\r"}));
  port.Feed("o\rthree\rfo");
  lines.Hold(port);
  EXPECT_EQ(port.Rest(), "");
  EXPECT_EQ(lines.BufferedLines[1], "one\r");
  EXPECT_EQ(lines.BufferedLineCount, 1);
  EXPECT_EQ(Received(lines, port), (Lines{"two\r", "three\r"}));
  port.Feed("ur\r");
  EXPECT_EQ(Received(lines, port), (Lines{"four\r"}));
}

TEST(IntermittentLines, HoldsNoMoreThanOneMebibyte) {
  IntermittentLines lines;
  lines.Reset("\r");
  std::string burst;
  for (int i = 0; i < 300'000; ++i) burst += "1234567\r";
  test::BytePort port(burst);
  for (int i = 0; i < 20; ++i) lines.Hold(port);
  EXPECT_EQ(port.Rest().size(), burst.size() - 1024 * 1024);
}

TEST(IntermittentLines, ForgetsHalfALineWhenThePortIsOpenedAnew) {
  IntermittentLines lines;
  lines.Reset("\r");
  test::BytePort port("hal");
  Received(lines, port);
  lines.Reset("\r");
  port.Feed("one\r");
  EXPECT_EQ(Received(lines, port), (Lines{"one\r"}));
}

// --- Reading a line ---

Session TwoParameters() {
  Session session;
  session.NumberOfParameters = 2;
  session.Delimiter = ",";
  session.Terminator = "\r";
  session.Parameters[1].Gain = session.Parameters[2].Gain = 1;
  session.CurrentValue[1] = session.CurrentValue[2] = 77;
  return session;
}

const double kWhen = DateSerial(2026, 3, 14) + TimeOfDay(9, 30, 15);

TEST(BufferedLine, BringsItsOwnDateTimeAndValues) {
  Session session = TwoParameters();
  session.Parameters[2].Gain = 2;
  session.Parameters[2].Offset = -10;
  const BufferedSample sample = ReadBufferedLine(session, "14-Mar-2026 09:30:15,12.5,3\r");
  EXPECT_TRUE(sample.IsAccepted());
  EXPECT_EQ(sample.sampleTime, kWhen);
  EXPECT_EQ(session.CurrentValue[1], 12.5F);
  EXPECT_EQ(session.CurrentValue[2], -4.0F);
}

TEST(BufferedLine, TakesGainAndOffsetAt32BitsByTheirDecimalText) {
  Session session = TwoParameters();
  session.Parameters[1].Gain = 0.1;
  session.Parameters[1].Offset = 1.0 / 3;
  ReadBufferedLine(session, "14-Mar-2026 09:30:15,3,0\r");
  // Worked out at 64 bits from the 32-bit numbers 0.1f and 0.333333333333333f.
  EXPECT_EQ(session.CurrentValue[1],
            static_cast<float>(3 * static_cast<double>(0.1F) + static_cast<double>(0.333333333333333F)));
}

TEST(BufferedLine, IsNotAveraged) {
  Session session = TwoParameters();
  session.SmoothValue[1] = 3;
  ReadBufferedLine(session, "14-Mar-2026 09:30:15,12.5,3\r");
  EXPECT_EQ(session.CurrentValue[1], 12.5F);
}

TEST(BufferedLine, IsSkippedWholeWithoutItsTerminator) {
  Session session = TwoParameters();
  EXPECT_FALSE(ReadBufferedLine(session, "14-Mar-2026 09:30:15,12.5,3").IsAccepted());
  EXPECT_EQ(session.CurrentValue[1], 77.0F);
}

TEST(BufferedLine, WithADateAloneIsOfMidnight) {
  Session session = TwoParameters();
  EXPECT_EQ(ReadBufferedLine(session, "14-Mar-2026,12.5,3\r").sampleTime, DateSerial(2026, 3, 14));
}

TEST(BufferedLine, ReadsTheTimeForAValueWhereTheDelimiterIsTheBlank) {
  Session session = TwoParameters();
  session.Delimiter = " ";
  EXPECT_EQ(ReadBufferedLine(session, "14-Mar-2026 09:30:15 12.5\r").sampleTime, DateSerial(2026, 3, 14));
  EXPECT_EQ(session.CurrentValue[1], 9.0F);
  EXPECT_EQ(session.CurrentValue[2], 12.5F);
}

TEST(BufferedLine, WithoutAWholeDateIsNotAccepted) {
  Session session = TwoParameters();
  for (const char* line : {"09:30:15,1,2\r", "46095.5,1,2\r", "31-Feb-2026 09:30:15,1,2\r",
                           "14-Mar-2026 25:00:00,1,2\r", ",1,2\r", "\r", "x,1,2\r", "4-Mar-20 26 09:30:15,1,2\r"}) {
    EXPECT_FALSE(ReadBufferedLine(session, line).IsAccepted()) << line;
    EXPECT_EQ(session.CurrentValue[1], 77.0F);
  }
}

TEST(BufferedLine, BringsItsDateInAnyFormOfTheField) {
  Session session = TwoParameters();
  for (const char* date :
       {"14-Mar-2026 09:30:15", "14-MAR-2026 09:30:15", "14/03/2026 09:30:15", "2026-03-14 09:30:15",
        "14.03.2026 09:30:15", "14.3.2026 9:30:15", "14/03/26 09:30:15", "2026/03/14 09:30:15", "2026-03-14T09:30:15",
        "2026/3/14 09:30:15", " 14.03.2026  09:30:15 ", "14.03.2026 09:30:15 AM"}) {
    const BufferedSample sample = ReadBufferedLine(session, std::string(date) + ",1,2\r");
    EXPECT_TRUE(sample.IsAccepted()) << date;
    EXPECT_EQ(sample.sampleTime, kWhen) << date;
  }
}

TEST(BufferedLine, BringsTheDayAheadOfTheMonthWhereBothCouldBe) {
  Session session = TwoParameters();
  const double expected = DateSerial(2012, 4, 3);
  for (const char* date : {"03.04.2012", "03/04/2012", "03/04/12", "2012/04/03", "3-Apr-2012"})
    EXPECT_EQ(ReadBufferedLine(session, std::string(date) + ",1,2\r").sampleTime, expected) << date;
  EXPECT_EQ(ReadBufferedLine(session, "26/11/21,1,2\r").sampleTime, DateSerial(2021, 11, 26));
}

TEST(BufferedLine, MayBeLedByTheRestOfALineEnd) {
  Session session = TwoParameters();
  session.Terminator = "\n";
  for (const char* lead : {"\r", "\r\r", "\r "})
    EXPECT_EQ(ReadBufferedLine(session, lead + std::string("14-Mar-2026 09:30:15,1,2\n")).sampleTime, kWhen);
  session.Terminator = "\r";
  EXPECT_EQ(ReadBufferedLine(session, "\n14.03.2026 09:30:15,1,2\r").sampleTime, kWhen);
}

TEST(BufferedLine, WithADateOfNoKnownFormIsNotAccepted) {
  Session session = TwoParameters();
  for (const char* date : {"11/21/2026 09:30:15",
                           "21.13.2026 09:30:15",
                           "31.02.2026",
                           "30/02/26",
                           "2026/02/30",
                           "2026-03-14T",
                           "2026-03-14T09",
                           "2026-03-14t09:30:15",
                           "14.03.2026T09:30:15",
                           "14-Mar-2026T09:30:15",
                           "14.03/2026",
                           "14/03.2026",
                           "14 03 2026",
                           "2026.03.14",
                           "14/03/026",
                           "14/03/6",
                           "14.03",
                           "20260314",
                           "14.03.2026.",
                           "14.03.2026 25:00:00",
                           "14.03.2026 x",
                           "x14.03.2026",
                           "14.0\x07.2026",
                           "114.03.2026",
                           "14.003.2026",
                           "14.03.20260",
                           "2026-03-14T09:30:15Z",
                           "2026-03-14T09:30:15+03:00",
                           "2026-03-14T09:30:15-0300",
                           "2026-03-14 09:30:15 Z"}) {
    EXPECT_EQ(ReadBufferedLine(session, std::string(date) + ",1,2\r").fault, LineFault::NoDate) << date;
    EXPECT_EQ(session.CurrentValue[1], 77.0F) << date;
  }
}

TEST(BufferedLine, WithTooFewFieldsIsNotAccepted) {
  Session session = TwoParameters();
  EXPECT_FALSE(ReadBufferedLine(session, "14-Mar-2026 09:30:15,12.5\r").IsAccepted());
  EXPECT_EQ(session.CurrentValue[1], 77.0F);
  EXPECT_TRUE(ReadBufferedLine(session, "14-Mar-2026 09:30:15,12.5,\r").IsAccepted());
  EXPECT_EQ(session.CurrentValue[2], 0.0F);
}

TEST(BufferedLine, LeavesFurtherFieldsOut) {
  Session session = TwoParameters();
  EXPECT_TRUE(ReadBufferedLine(session, "14-Mar-2026 09:30:15,1,2,3,4\r").IsAccepted());
  EXPECT_EQ(session.CurrentValue[2], 2.0F);
  EXPECT_EQ(session.CurrentValue[3], 0.0F);
}

TEST(BufferedLine, BeyondThe32BitRangeChangesNothing) {
  Session session = TwoParameters();
  for (const char* line : {"14-Mar-2026 09:30:15,1,1e39\r", "14-Mar-2026 09:30:15,1,-1e999\r"})
    EXPECT_FALSE(ReadBufferedLine(session, line).IsAccepted());
  session.Parameters[2].Gain = 1e30;
  EXPECT_FALSE(ReadBufferedLine(session, "14-Mar-2026 09:30:15,1,1e20\r").IsAccepted());
  EXPECT_EQ(session.CurrentValue[1], 77.0F);
}

TEST(BufferedLine, RaisesForAGainThatNo32BitNumberHolds) {
  Session session = TwoParameters();
  session.Parameters[1].Gain = 1e300;
  EXPECT_THROW(ReadBufferedLine(session, "14-Mar-2026 09:30:15,1,2\r"), RuntimeError);
}

TEST(BufferedLine, NoPrefixOfASoundLineIsAccepted) {
  Session session = TwoParameters();
  const std::string sound = "14-Mar-2026 09:30:15,12.5,3\r";
  for (std::size_t length = 0; length < sound.size(); ++length)
    EXPECT_FALSE(ReadBufferedLine(session, sound.substr(0, length)).IsAccepted());
}

/// The date and time of a field as a person reads it: "dd-mmm-yyyy", then hours, perhaps minutes and seconds.
std::optional<double> Read(const std::string& field) {
  static const std::regex picture(
      "[\r\n]* *(\\d?\\d)-([A-Za-z]{3})-(\\d{4})(?: +(\\d?\\d):(\\d?\\d)(?::(\\d?\\d))?)? *");
  static const std::string months = "JanFebMarAprMayJunJulAugSepOctNovDec";
  std::smatch parts;
  if (!std::regex_match(field, parts, picture)) return {};
  std::string month = parts[2];
  for (std::size_t i = 0; i < 3; ++i)
    month[i] = static_cast<char>(i == 0 ? std::toupper(month[i]) : std::tolower(month[i]));
  const std::size_t at = months.find(month);
  if (at == std::string::npos) return {};
  const auto number = [&](std::size_t part) { return parts[part].matched ? std::stoi(parts[part]) : 0; };
  if (number(1) < 1 || number(1) > 31 || number(4) > 23 || number(5) > 59 || number(6) > 59) return {};
  const double day = DateSerial(number(3), static_cast<int>(at / 3) + 1, number(1));
  const double time = TimeOfDay(number(4), number(5), number(6));
  return day < 0 ? day - time : day + time;  // ahead of day 0 the fraction still counts from midnight on
}

TEST(BufferedLine, WithAChangedByteIsAcceptedOnlyWhereDateAndFieldsStayWhole) {
  Session session = TwoParameters();
  int accepted = 0;
  test::ForEveryChangedByte("14-Mar-2026 09:30:15,12.5,3\r", [&](const std::string& changed) {
    const BufferedSample sample = ReadBufferedLine(session, changed);
    if (!sample.IsAccepted()) return;
    EXPECT_NE(changed.find('\r'), std::string::npos);
    EXPECT_GE(std::count(changed.begin(), changed.end(), ','), 2);
    EXPECT_EQ(Read(changed.substr(0, changed.find(','))), sample.sampleTime) << changed;
    ++accepted;
  });
  EXPECT_GT(accepted, 5 * 250);  // the characters of the values may be any but a comma
}

}  // namespace
}  // namespace velk
