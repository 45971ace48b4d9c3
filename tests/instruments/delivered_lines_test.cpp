#include <gtest/gtest.h>

#include "instruments/decoders/any_serial_data.h"
#include "instruments/decoders/national_oil_well.h"
#include "support/frame_damage.h"

namespace velk {
namespace {

using namespace std::string_literals;

/// Three parameters, a line of 24 bytes with its CR.
Session ThreeParameters() {
  Session session;
  session.NumberOfParameters = 3;
  session.Delimiter = " ";
  session.Terminator = "\r";
  session.FormattedLineLength = 24;
  return session;
}

const std::string kLine = "09:30:15 12.5 003.0 -1.\r";

std::string Checked(std::string line, const Session& session) {
  NationalOilWell(line, session);
  return line;
}

TEST(NationalOilWellCheck, LeavesASoundLineAsItIs) {
  EXPECT_EQ(Checked(kLine, ThreeParameters()), kLine);
}

TEST(NationalOilWellCheck, RejectsByTheTerminatorInFront) {
  Session session = ThreeParameters();
  session.FormattedLineLength = 0;
  EXPECT_EQ(Checked(kLine, session), "\r" + kLine);
  session.Terminator = "\r\n";
  EXPECT_EQ(Checked(kLine, session), "\r\n" + kLine);
}

TEST(NationalOilWellCheck, ComparesTheLengthOnlyWhereTheDelimiterIsTheBlank) {
  Session session = ThreeParameters();
  session.FormattedLineLength = 25;
  EXPECT_EQ(Checked(kLine, session), "\r" + kLine);
  session.Delimiter = ",";
  const std::string line = "09:30:15,12.5,003.0,-1.0000\r";
  EXPECT_EQ(Checked(line, session), line);
}

TEST(NationalOilWellCheck, WantsADelimiterAParameter) {
  Session session = ThreeParameters();
  session.Delimiter = ";";
  EXPECT_EQ(Checked("09:30:15;1;2\r", session), "\r09:30:15;1;2\r");
  EXPECT_EQ(Checked("09:30:15;1;2;3;4\r", session), "\r09:30:15;1;2;3;4\r");
  EXPECT_EQ(Checked("09:30:15;1;2;3\r", session), "09:30:15;1;2;3\r");
}

TEST(NationalOilWellCheck, WantsATimeAtTheBeginning) {
  const Session session = ThreeParameters();
  EXPECT_EQ(Checked("25:00:00 12.5 003.0 -1.\r", session).front(), '\r');
  EXPECT_EQ(Checked("23:59:61 12.5 003.0 -1.\r", session), "23:59:61 12.5 003.0 -1.\r");
}

TEST(NationalOilWellCheck, RejectsEveryPrefixOfASoundLine) {
  for (std::size_t length = 0; length < kLine.size(); ++length)
    EXPECT_EQ(Checked(kLine.substr(0, length), ThreeParameters()).front(), '\r') << length;
}

TEST(NationalOilWellCheck, AcceptsAChangedByteOnlyWhereTimeAndFieldsStayWhole) {
  const Session session = ThreeParameters();
  test::ForEveryChangedByte(kLine, [&](const std::string& changed) {
    const std::string checked = Checked(changed, session);
    EXPECT_EQ(checked, test::IsTimedFrame(changed, ' ', 3) ? changed : "\r" + changed) << changed;
  });
}

TEST(NowPlc, SetsTheLineLengthAndNeverDeliversALine) {
  Session session = ThreeParameters();
  for (const std::string& sent : {kLine, ""s, "\0\0"s, "09:30:15 1\0 2 3\r"s}) {
    std::string line = sent;
    NOWPLC(line, session);
    EXPECT_EQ(line.find('\r'), 0U);
    EXPECT_EQ(line.find('\0'), std::string::npos);
  }
  EXPECT_EQ(session.FormattedLineLength, 50);  // 3 x 14 + 8
  session.NumberOfParameters = 64;
  std::string line = "09:30:15 1\0 2 3\r"s;
  NOWPLC(line, session);
  EXPECT_EQ(session.FormattedLineLength, 904);
  EXPECT_EQ(line, "\r09:30:15 1 2 3\r");
}

TEST(AnySerial, TakesOnlyTheZeroCharactersOut) {
  for (const auto& [sent, expected] :
       std::vector<std::pair<std::string, std::string>>{{"\0\0"
                                                         "09:30:15 1 2\r"s,
                                                         "09:30:15 1 2\r"},
                                                        {"no time, no fields"s, "no time, no fields"},
                                                        {""s, ""}}) {
    std::string line = sent;
    AnySerialData(line);
    EXPECT_EQ(line, expected);
  }
}

}  // namespace
}  // namespace velk
