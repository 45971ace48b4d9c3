// What instruments send, as it was seen on their lines, and the line that the sample's road is handed for it. A line is
// taken if the terminator stands in it behind character 9.

#include <gtest/gtest.h>

#include "instruments/table/decoders.h"
#include "platform/settings/settings.h"
#include "support/byte_port.h"
#include "support/fake_clock.h"
#include "support/memory_folder.h"
#include "support/scripted_dialogs.h"

namespace velk {
namespace {

using namespace std::string_literals;

struct Captured {
  const char* what;
  std::string sent;
  std::string line;
};

class CapturedTexts : public testing::Test {
 protected:
  void Use(const char* serialData, const char* delimiter, const char* terminator, int parameters) {
    session.SerialData = serialData;
    session.Delimiter = delimiter;
    session.Terminator = terminator;
    session.NumberOfParameters = static_cast<std::int16_t>(parameters);
    session.FormattedLineLength = 0;
    session.StopRequested = false;
  }

  /// As the line driver hands them over, one behind the other.
  void ExpectDelivered(const std::vector<Captured>& texts) {
    for (const Captured& text : texts) {
      std::string line = text.sent;
      decoders.DecodeDelivered(line);
      EXPECT_EQ(line, text.line) << text.what;
    }
  }

  /// Read from the port by a tick. Where the text does not end a wait, Stop does.
  void ExpectPolled(const std::vector<Captured>& texts) {
    port.onDry = [this] { session.StopRequested = true; };
    for (const Captured& text : texts) {
      session.StopRequested = false;
      port.Restart(text.sent);
      EXPECT_EQ(decoders.ReadPolled(port), text.line) << text.what;
    }
  }

  Session session;
  Gate gate;
  test::FakeClock clock{gate};
  test::ScriptedDialogs dialogs{gate};
  test::MemoryFolder folder;
  SettingsStore settings{folder.Path()};
  Platform platform{clock, gate, dialogs, settings, test::English()};
  Decoders decoders{session, platform};
  test::BytePort port;
};

TEST_F(CapturedTexts, OfAKestaOrLumoUnit) {
  for (const char* unit :
       {"KESTA version 3", "KESTA version 4", "KESTA version 5", "LUMO version A", "LUMO version B"}) {
    Use(unit, " ", "\r\n", 4);
    ExpectDelivered({
        {"the end of a frame", "02.125 0.000\r\n", "\r\n02.125 0.000\r\n"},
        {"the first whole frame", "11:59:57 0012 -003 0.25 1E3\r\n", "\r\n11:59:57 0012 -003 0.25 1E3\r\n"},
        {"a sound frame", "11:59:58 0013 -003 0.25 1E3\r\n", "11:59:58 0013 -003 0.25 1E3\r\n"},
        {"seconds that no clock shows", "11:59:61 0013 -003 0.25 1E3\r\n", "11:59:61 0013 -003 0.25 1E3\r\n"},
        {"the hour 25", "25:59:58 0013 -003 0.25 1E3\r\n", "\r\n25:59:58 0013 -003 0.25 1E3\r\n"},
        {"the hour 24", "24:00:00 0013 -003 0.25 1E3\r\n", "\r\n24:00:00 0013 -003 0.25 1E3\r\n"},
        {"the minute 60", "11:60:00 0013 -003 0.25 1E3\r\n", "\r\n11:60:00 0013 -003 0.25 1E3\r\n"},
        {"midnight", "00:00:00 0013 -003 0.25 1E3\r\n", "00:00:00 0013 -003 0.25 1E3\r\n"},
        {"a blank in place of a digit", "00:00:01 0 13 -003 0.25 1E3\r\n", "\r\n00:00:01 0 13 -003 0.25 1E3\r\n"},
        {"one digit more", "00:00:02 00130 -003 0.25 1E3\r\n", "\r\n00:00:02 00130 -003 0.25 1E3\r\n"},
        {"the next frame of that length", "00:00:03 00130 -003 0.25 1E3\r\n", "00:00:03 00130 -003 0.25 1E3\r\n"},
        {"a longer value for a lost one", "00:00:04 00130  0.25 1E30\r\n", "\r\n00:00:04 00130  0.25 1E30\r\n"},
        {"a value lost", "00:00:04 00130 -003 0.25\r\n", "\r\n00:00:04 00130 -003 0.25\r\n"},
        {"noise for a colon", "00;00:05 00130 -003 0.25\r\n", "\r\n00;00:05 00130 -003 0.25\r\n"},
        {"nothing but the line end", "\r\n", "\r\n\r\n"},
    });
  }
}

TEST_F(CapturedTexts, OfFormattedLinesFromTheLineDriver) {
  Use("formatted and at regular intervals", " ", "\r", 2);
  session.FormattedLineLength = 20;  // "hh:mm:ss 00.50 -1.2" and its CR
  ExpectDelivered({
      {"a sound line", "09:30:15 00.50 -1.2\r", "09:30:15 00.50 -1.2\r"},
      {"a shorter one", "09:30:16 0.50 -1.2\r", "\r09:30:16 0.50 -1.2\r"},
      {"a value too many", "09:30:17 0 50 -1.23\r", "\r09:30:17 0 50 -1.23\r"},
      {"no time", "xx-30-17 00.50 -1.2\r", "\rxx-30-17 00.50 -1.2\r"},
      {"the LF of a CR LF in front", "\n09:30:17 0.50 -1.2\r", "\r\n09:30:17 0.50 -1.2\r"},
  });
  Use("formatted and at regular intervals", ",", "\r\n", 2);
  ExpectDelivered({
      {"commas: any length", "09:30:15,00.50,-1.2\r\n", "09:30:15,00.50,-1.2\r\n"},
      {"commas: another length", "09:30:16,0.5,-1\r\n", "09:30:16,0.5,-1\r\n"},
      {"empty fields", "09:30:16,,\r\n", "09:30:16,,\r\n"},
      {"a comma for a point", "09:30:17,0,5,-1\r\n", "\r\n09:30:17,0,5,-1\r\n"},
  });
}

TEST_F(CapturedTexts, OfAPlcAndOfAnySerialData) {
  Use("National Oil Well PLC", " ", "\r\n", 2);
  ExpectDelivered({
      {"a sound line", "09:30:15 0000000012.50 00000000003.0\r\n", "\r\n09:30:15 0000000012.50 00000000003.0\r\n"},
      {"zeros of an idle line", "\0\00009:30:15 1\0 2\r\n"s, "\r\n09:30:15 1 2\r\n"},
      {"nothing", "", "\r\n"},
  });
  EXPECT_EQ(session.FormattedLineLength, 36);  // 2 x 14 + 8
  Use("Any Serial Data", " ", "\r\n", 2);
  ExpectDelivered({
      {"a sound line", "09:30:15 1 2\r\n", "09:30:15 1 2\r\n"},
      {"zeros of an idle line", "\0\00009:30:15 1\0 2\r\n"s, "09:30:15 1 2\r\n"},
      {"a value too many", "09:30:15 1 2 3\r\n", "09:30:15 1 2 3\r\n"},
      {"no time", "ready.\r\n", "ready.\r\n"},
  });
}

TEST_F(CapturedTexts, OfFormattedLinesFromThePort) {
  Use("formatted and at regular intervals", ",", "\n", 2);
  ExpectPolled({
      {"CR LF, its LF the terminator", "09:30:15,1.5,-2\r\n", "09:30:15,1.5,-2\r\n"},
      {"LF CR, cut ahead of its LF", "09:30:15,1.5,-2 \n\r", "09:30:15,1.5,-2"},
      {"LF LF CR: the first LF cuts", "09:30:15,1.5,-2\n\n\r", "09:30:15,1.5,-2"},
      {"zeros of an idle line", "\0\00009:30:15,1.5,-2\r\n"s, "09:30:15,1.5,-2\r\n"},
      {"a value too few", "09:30:15,1.5\r\n", "\n09:30:15,1.5\r\n"},
      {"a line end alone", "\r\n", "\n\r\n"},
  });
  Use("formatted and at regular intervals", ",", "\r\n", 2);
  ExpectPolled({{"CR LF as the terminator never stays", "09:30:15,1.5,-2\r\n", "09:30:15,1.5,-2"}});
  Use("formatted and at regular intervals", ",", "\r", 2);
  ExpectPolled({{"CR as the last of LF CR stays", "09:30:15,1.5,-2\n\r", "09:30:15,1.5,-2\n\r"},
                {"CR as the first of CR LF does not", "09:30:15,1.5,-2\r\n", "09:30:15,1.5,-2"}});
}

TEST_F(CapturedTexts, OfADas104) {
  Use("S&S DAS 104", " ", "\r", 2);
  ExpectPolled({
      {"the rest of a frame, then a whole one", ".5 2\r09:30:15 1 2\r", "09:30:15 1 2\r"},
      {"frames with a CR on both sides", "\r09:30:15 1 2\r\r09:30:16 1 2\r", "09:30:15 1 2\r"},
      {"a line end of CR LF", "\r\n09:30:15 1 2\r\n", "\n09:30:15 1 2\r"},
      {"a value lost, which nobody checks", "\r09:30:15 1\r", "09:30:15 1\r"},
      {"no second CR", "\r09:30:15 1 2", ""},
      {"silence", "", ""},
  });
}

TEST_F(CapturedTexts, OfADataTakersLines) {
  Use("Data Taker a", " ", "\n", 2);
  ExpectPolled({
      {"CR LF", "09:30:15 1.5 -2\r\n", "09:30:15 1.5 -2\r\n"},
      {"the rest of a line", ".5 -2\r\n", "\n.5 -2\r\n"},
      {"a value too many", "09:30:15 1.5 -2 3\r\n", "\n09:30:15 1.5 -2 3\r\n"},
      {"LF CR: cut, so nothing ends the line", "09:30:15 1.5 -2\n\r", "09:30:15 1.5 -2"},
      {"zeros stay", "09:30:15 1\0005 -2\r\n"s, "09:30:15 1\0005 -2\r\n"s},
      {"the hour 24", "24:30:15 1.5 -2\r\n", "\n24:30:15 1.5 -2\r\n"},
      {"no line end", "09:30:15 1.5 -2\r", ""},
  });
}

TEST_F(CapturedTexts, OfADataTakersBlocks) {
  Use("Data Taker b", " ", "\r", 3);
  // 17 characters of heading; "Time " is the 5 that lead the time.
  const std::string lead = "Schedule A   at\r\nTime ";
  ExpectPolled({
      {"a block", lead + "09:30:15\r\n1 12.50 psi\r\n2 -3\r\n3 1E3\r\n\r\n", "09:30:15 12.5 -3 1000 \r"},
      {"a channel too few", lead + "09:30:15\r\n1 12.50 psi\r\n2 -3\r\n\r\n", "\r09:30:15 12.5 -3 "},
      {"a channel too many", lead + "09:30:15\r\n1 1\r\n2 2\r\n3 3\r\n4 4\r\n\r\n", "\r09:30:15 1 2 3 4 "},
      {"a heading of one character more", "S" + lead + "09:30:15\r\n1 1\r\n2 2\r\n3 3\r\n\r\n", "09:30:15 1 2 3 \r"},
      {"a heading of one character less", lead.substr(1) + "09:30:15\r\n1 1\r\n2 2\r\n3 3\r\n\r\n",
       "\r9:30:15\r 1 2 3 "},
      {"the minute 99", lead + "09:99:15\r\n1 1\r\n2 2\r\n3 3\r\n\r\n", "\r09:99:15 1 2 3 "},
      {"no blank line", lead + "09:30:15\r\n1 1\r\n2 2\r\n3 3\r\n", ""},
  });
}

TEST_F(CapturedTexts, OfAnInstrumentThatIsAsked) {
  Use("sent when requested", ",", "\r", 3);
  session.SampleTime = 46095.5;
  session.SamplingRate = 1.0 / 86400;
  for (int i = 1; i <= 3; ++i) session.Parameters[i].CommandString = "R" + std::to_string(i) + "\r";
  const std::vector<std::pair<std::vector<std::string>, std::string>> tables = {
      {{"12.5\r\n", "-3\n", "0\r\r\n"}, "46095.5,12.5,-3,0\r"},
      {{"\r\n", "\n", " 7 \r\n"}, "46095.5,,, 7 \r"},
      {{"?\r\n", "1,2\n", "1\r2\n"}, "46095.5,?,1,2,1\r2\r"},
  };
  for (const auto& [answers, line] : tables) {
    port.Restart("");
    port.written.clear();
    port.onWrite = [this, &answers = answers] { port.Feed(answers[port.written.size() - 1]); };
    EXPECT_EQ(decoders.ReadPolled(port), line);
    EXPECT_EQ(port.written, (std::vector<std::string>{"R1\r", "R2\r", "R3\r"}));
  }
}

}  // namespace
}  // namespace velk
