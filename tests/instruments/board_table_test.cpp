// The table of channels: read, kept, changed and sent back.

#include "instruments/board_rig.h"
#include "support/byte_port.h"
#include "support/quick_clock.h"

namespace velk {
namespace {

// --- A line ---

TEST(ChannelLineOfABoard, HasNumberOffsetGainAndBothAlarms) {
  const auto line = ParseChannelLine("  3\t-1.5  0.25 100 -20.5 ", 22);
  ASSERT_TRUE(line);
  EXPECT_EQ(line->number, 3);
  EXPECT_EQ(line->channel.offset, -1.5);
  EXPECT_EQ(line->channel.gain, 0.25);
  EXPECT_EQ(line->channel.upperAlarm, 100);
  EXPECT_TRUE(line->channel.upperAlarmSet);
  EXPECT_EQ(line->channel.lowerAlarm, -20.5);
  EXPECT_TRUE(line->channel.lowerAlarmSet);
}

TEST(ChannelLineOfABoard, HasNoAlarmWhereNsStands) {
  const auto line = ParseChannelLine("1 0 1 NS NS", 1);
  ASSERT_TRUE(line);
  EXPECT_FALSE(line->channel.upperAlarmSet);
  EXPECT_EQ(line->channel.upperAlarm, 0);
  EXPECT_FALSE(line->channel.lowerAlarmSet);
}

TEST(ChannelLineOfABoard, LosesEveryCharacterThatNoneHas) {
  const auto line = ParseChannelLine("Ch#2: +4x.5, g=3 \x01NS* al:7", 4);
  ASSERT_TRUE(line);
  EXPECT_EQ(line->number, 2);
  EXPECT_EQ(line->channel.offset, 4.5);
  EXPECT_EQ(line->channel.gain, 3);
  EXPECT_FALSE(line->channel.upperAlarmSet);
  EXPECT_EQ(line->channel.lowerAlarm, 7);
}

TEST(ChannelLineOfABoard, LosesAnExponent) {
  EXPECT_EQ(ParseChannelLine("1 5E-05 1 NS NS", 1)->channel.offset, 5);
}

TEST(ChannelLineOfABoard, ReadsZeroForMoreDigitsThanAnyNumberHas) {
  const std::string digits(400, '9');
  const auto line = ParseChannelLine("1 " + digits + " -" + digits + " " + digits + " 7", 1);
  ASSERT_TRUE(line);
  EXPECT_EQ(line->channel.offset, 0);
  EXPECT_EQ(line->channel.gain, 0);
  EXPECT_EQ(line->channel.upperAlarm, 0);
  EXPECT_EQ(line->channel.lowerAlarm, 7);
  EXPECT_FALSE(ParseChannelLine(digits + " 1 2 3 4", 18));
}

TEST(ChannelLineOfABoard, IsIgnoredWithoutANumberOfTheUnit) {
  for (const char* line :
       {"", "   ", "0 1 2 3 4", "5 1 2 3 4", "-1 1 2 3 4", "1.5 1 2 3 4", "NS 1 2", "OK", "........"})
    EXPECT_FALSE(ParseChannelLine(line, 4)) << line;
}

TEST(ChannelLineOfABoard, ReadsZeroForWhatItDoesNotHave) {
  const auto line = ParseChannelLine("4 1.5", 4);
  ASSERT_TRUE(line);
  EXPECT_EQ(line->channel.offset, 1.5);
  EXPECT_EQ(line->channel.gain, 0);
  EXPECT_FALSE(line->channel.upperAlarmSet);
  EXPECT_FALSE(line->channel.lowerAlarmSet);
}

TEST(ChannelLineOfABoard, TellsAnEchoBySevenTokensAndNotBySix) {
  EXPECT_FALSE(ParseChannelLine("1 0 1 NS NS", 1)->hasMore);
  EXPECT_FALSE(ParseChannelLine("1 0 1 NS NS 6", 1)->hasMore);
  EXPECT_TRUE(ParseChannelLine("1 0 1 NS NS 6 7", 1)->hasMore);
  EXPECT_TRUE(ParseChannelLine("1 0 1 NS NS 6 7 8", 1)->hasMore);
}

// --- The table ---

struct BoardTable : test::BoardRig {
  void ExpectAllChannels() { ExpectAllChannels(board); }
  void ExpectAllChannels(CAdc12nCom& read) {
    for (int i = 1; i <= session.NumberOfChannels; ++i) {
      double level = -1;
      EXPECT_EQ(read.GetOffset(i), i);
      EXPECT_EQ(read.GetGain(i), i / 2.0);
      EXPECT_TRUE(read.GetUpperAlarm(i, level));
      EXPECT_EQ(level, 10 * i);
      EXPECT_FALSE(read.GetLowerAlarm(i, level));
      EXPECT_EQ(level, 0);
    }
  }
  /// Hands a text over in pieces of so many bytes, one a round.
  void InPieces(std::string text, std::size_t piece) {
    unit.answers["p\r"] = {""};
    const auto rest = std::make_shared<std::string>(std::move(text));
    onRound = [this, rest, piece] {
      if (unit.heard.find("p\r") == std::string::npos || unit.heard.ends_with("r\r")) return;
      device.waiting += rest->substr(0, piece);
      rest->erase(0, piece);
    };
  }
};

TEST_F(BoardTable, IsReadInOnePieceAndTheUnitRunsBehindIt) {
  unit.answers["p\r"] = {Table(22)};
  EXPECT_FALSE(board.GetChannelsData());
  EXPECT_EQ(Sent(), "Trad\rp\rr\r");
  EXPECT_FALSE(board.InTradMode());
  ExpectAllChannels();
  EXPECT_EQ(Sent(), "");
  EXPECT_FALSE(board.CommandsEchoed());
}

TEST_F(BoardTable, IsReadInPiecesOfAnyLength) {
  for (const std::size_t piece : {std::size_t{1}, std::size_t{2}, std::size_t{7}, std::size_t{100}}) {
    InPieces(Table(22), piece);
    board.ForgetChannels();
    EXPECT_FALSE(board.GetChannelsData());
    onRound = nullptr;
    Sent();
    ExpectAllChannels();
  }
}

TEST_F(BoardTable, ShowsHowFarItIs) {
  unit.answers["p\r"] = {Table(22)};
  board.GetChannelsData();
  ASSERT_EQ(dialogs.progress.size(), 1U);
  const auto& shown = dialogs.progress[0];
  EXPECT_TRUE(shown.appeared);
  EXPECT_TRUE(shown.gone);
  EXPECT_EQ(shown.steps.front(), (std::pair<std::string, double>("Connecting to hardawre", 0)));
  std::string all;
  for (const auto& [text, share] : shown.steps) all += text + "|";
  for (const char* text : {"Communication with hardware established|", "Requesting channels data|",
                           "Reading input data for channel : 1|", "Reading input data for channel : 22|",
                           "Extracting data for channel : 0|", "Extracting data for channel : 22|"})
    EXPECT_NE(all.find(text), std::string::npos) << text;
  EXPECT_EQ(all.find("Reading input data for channel : 0|"), std::string::npos);
  EXPECT_DOUBLE_EQ(shown.steps.back().second, 1);
}

TEST_F(BoardTable, OfAUnitThatRepeatsTheRequestHasTheHeadingAsItsFirstLine) {
  unit.answers["p\r"] = {"p\r\n" + Table(22)};
  EXPECT_FALSE(board.GetChannelsData());
  ExpectAllChannels();
}

TEST_F(BoardTable, SkipsARepeatedRequestBehindTheHeadings) {
  unit.answers["p\r"] = {"a\r\nb\r\n p\r\n" + Table(22).substr(Table(22).find("1 1"))};
  EXPECT_FALSE(board.GetChannelsData());
  ExpectAllChannels();
}

TEST_F(BoardTable, OfKesta3LosesTheAnswerToTheRequestAndOneHeading) {
  Become("KESTA version 3");
  unit.answers["p\r"] = {Table(18)};
  EXPECT_FALSE(board.GetChannelsData());
  EXPECT_EQ(Sent(), "Trad\rp\rr\r") << "asked once";
  ExpectAllChannels();
}

TEST_F(BoardTable, OfKesta4LosesTheRequestOnlyWhereItIsRepeated) {
  Become("KESTA version 4");
  for (const char* echo : {"", "p\r\n", " p\r\n"}) {
    unit.answers["p\r"] = {echo + Table(18)};
    board.ForgetChannels();
    EXPECT_FALSE(board.GetChannelsData());
    ExpectAllChannels();
  }
}

TEST_F(BoardTable, LeavesChannelsAtZeroWhoseNumbersNeverCame) {
  unit.answers["p\r"] = {Table(22)};
  board.GetChannelsData();
  std::string other = "a\r\nb\r\n";
  for (int i = 1; i <= 22; ++i) other += "99 1 1 1 1\r\n";
  unit.answers["p\r"] = {other + "7 1 2 3 4\r\n"};
  EXPECT_FALSE(board.GetChannelsData());
  double level = -1;
  EXPECT_EQ(board.GetGain(7), 2);
  EXPECT_EQ(board.GetGain(1), 0);
  EXPECT_EQ(board.GetOffset(1), 0);
  EXPECT_FALSE(board.GetUpperAlarm(1, level));
  EXPECT_EQ(level, 0);
  Sent();
  board.SaveDataToBoard();
  EXPECT_EQ(Sent(), "Trad\rr\r") << "nor are they sent";
}

TEST_F(BoardTable, WithoutAnAnswerIsError12AtTheRequest) {
  ExpectError(12, "GetChannelsData", "unable to get channels data", [&] { board.GetChannelsData(); });
  EXPECT_EQ(Sent(), "Trad\rp\rr\r");
  EXPECT_EQ(clock.Ticks(), 3000 + 70000 + 3000);
  EXPECT_FALSE(board.ChannelsLoaded());
  EXPECT_TRUE(dialogs.progress.back().gone);
}

TEST_F(BoardTable, OfAUnitThatIsNotReachedIsAFailureWithoutAnError) {
  unit.answers["Trad\r"] = {""};
  EXPECT_TRUE(board.GetChannelsData());
  EXPECT_EQ(Sent(), "Trad\rr\rTrad\rr\r");
  EXPECT_TRUE(dialogs.progress.back().gone);
  ExpectError(8, "GetGain", "Unable to get the channels data", [&] { board.GetGain(1); });
}

/// A board behind a port of bytes, on a clock whose rounds are over at once: a cut table is waited for by 70,000.
class QuickBoard : public BoardTable {
 protected:
  QuickBoard() {
    bytes.onWrite = [this] {
      sent += bytes.written.back();
      if (bytes.written.back() == "Trad\r") bytes.Feed("OK");
      if (bytes.written.back() == "p\r") bytes.Feed(table);
      if (bytes.written.back() == "r\r") bytes.Feed(std::string(140, 'x'));
    };
  }

  /// Reads a table that ends behind so many bytes.
  void ExpectCut(const std::string& whole, std::size_t length) {
    table = whole.substr(0, length);
    sent.clear();
    quickBoard.SetupComPort(&bytes, 1, 19200, 0);
    quickBoard.ForgetChannels();
    if (length < whole.find("OK")) {
      const char* text = length < whole.find("1 1") ? "unable to get channels data" : "Unable to get channels data";
      ExpectError(12, "GetChannelsData", text, [&] { quickBoard.GetChannelsData(); });
      EXPECT_FALSE(quickBoard.ChannelsLoaded());
    } else {
      EXPECT_FALSE(quickBoard.GetChannelsData()) << length;
      ExpectAllChannels(quickBoard);
    }
    EXPECT_EQ(sent, "Trad\rp\rr\r") << length;
    EXPECT_FALSE(quickBoard.InTradMode());
  }

  test::QuickClock quick;
  test::BytePort bytes;
  Platform quickly{quick, gate, dialogs, settings, test::English()};
  CAdc12nCom quickBoard{session, quickly, [](int) { return std::string("/dev/quick"); }};
  std::string table, sent;
};

struct TableOfAUnit {
  const char* name;
  const char* unit;
  int channels;
  const char* echo = "";
};

class EveryPrefix : public QuickBoard, public testing::WithParamInterface<TableOfAUnit> {};

TEST_P(EveryPrefix, IsReadWholeOrRefused) {
  Become(GetParam().unit);
  const std::string whole = GetParam().echo + Table(GetParam().channels);
  for (std::size_t length = 0; length <= whole.size(); ++length) ExpectCut(whole, length);
}

INSTANTIATE_TEST_SUITE_P(Of, EveryPrefix,
                         testing::Values(TableOfAUnit{"Kesta3", "KESTA version 3", 18},
                                         TableOfAUnit{"Kesta4", "KESTA version 4", 18},
                                         TableOfAUnit{"Kesta4ThatRepeatsTheRequest", "KESTA version 4", 18, "p\r\n"},
                                         TableOfAUnit{"Kesta5", "KESTA version 5", 22},
                                         TableOfAUnit{"LumoA", "LUMO version A", 4},
                                         TableOfAUnit{"LumoB", "LUMO version B", 10}),
                         [](const auto& instance) { return std::string(instance.param.name); });

// --- Getters and setters ---

TEST_F(BoardTable, IsReadByTheFirstGetterAndSetter) {
  unit.answers["p\r"] = {Table(22)};
  double level = 0;
  const std::vector<std::function<void()>> firsts = {[&] { EXPECT_EQ(board.GetGain(4), 2); },
                                                     [&] { EXPECT_EQ(board.GetOffset(4), 4); },
                                                     [&] { EXPECT_TRUE(board.GetUpperAlarm(4, level)); },
                                                     [&] { EXPECT_FALSE(board.GetLowerAlarm(4, level)); },
                                                     [&] { board.SetGain(1, 5); },
                                                     [&] { board.SetUpperAlarm(1, true, 5); },
                                                     [&] { board.SetLowerAlarm(1, true, 5); },
                                                     [&] { board.SetOffset(1, 5); }};
  for (std::size_t i = 0; i < firsts.size(); ++i) {
    board.ForgetChannels();
    firsts[i]();
    EXPECT_EQ(Sent(), "Trad\rp\rr\r") << i;
    EXPECT_EQ(board.DataChanged(), i >= 4) << i;
  }
  EXPECT_EQ(board.GetOffset(1), 5);
  EXPECT_EQ(Sent(), "");
}

TEST_F(BoardTable, HasChannelsFrom0ToTheUnitsLast) {
  unit.answers["p\r"] = {Table(22)};
  double level = 3;
  EXPECT_EQ(board.GetGain(0), 0);
  EXPECT_EQ(board.GetOffset(0), 0);
  EXPECT_FALSE(board.GetUpperAlarm(0, level));
  EXPECT_EQ(level, 0);
  const std::string text = "Invalid channel number should be 1 .. 22 only";
  ExpectError(9, "GetGain", text, [&] { board.GetGain(23); });
  ExpectError(9, "GetOffset", text, [&] { board.GetOffset(-1); });
  ExpectError(9, "GetUpperAlarm", text, [&] { board.GetUpperAlarm(23, level); });
  ExpectError(9, "GetLowerAlarm", text, [&] { board.GetLowerAlarm(23, level); });
  ExpectError(9, "SetGain", text, [&] { board.SetGain(23, 1); });
  ExpectError(9, "SetOffset", text, [&] { board.SetOffset(23, 1); });
  ExpectError(9, "SetUpperAlarm", text, [&] { board.SetUpperAlarm(23, true, 1); });
  ExpectError(9, "SetLowerAlarm", text, [&] { board.SetLowerAlarm(23, true, 1); });
}

TEST_F(BoardTable, CountsAsChangedOnlyByAnotherValueOrFlag) {
  unit.answers["p\r"] = {Table(22)};
  board.GetChannelsData();
  board.SetGain(4, 2);
  board.SetOffset(4, 4);
  board.SetUpperAlarm(4, true, 40);
  board.SetLowerAlarm(4, false, 0);
  EXPECT_FALSE(board.DataChanged());
  const std::vector<std::function<void()>> changes = {
      [&] { board.SetGain(4, 2.5); }, [&] { board.SetOffset(4, 4.5); }, [&] { board.SetUpperAlarm(4, true, 41); },
      [&] { board.SetUpperAlarm(5, false, 50); }, [&] { board.SetLowerAlarm(4, true, 0); }};
  for (const auto& change : changes) {
    board.ForgetChannels();
    board.GetChannelsData();
    EXPECT_FALSE(board.DataChanged());
    change();
    EXPECT_TRUE(board.DataChanged());
  }
}

TEST_F(BoardTable, OfAnotherUnitIsReadAnew) {
  unit.answers["p\r"] = {Table(22)};
  board.GetChannelsData();
  Become("LUMO version A");
  unit.answers["p\r"] = {Table(4)};
  Sent();
  EXPECT_EQ(board.GetGain(4), 2);
  EXPECT_EQ(Sent(), "Trad\rp\rr\r");
}

TEST_F(BoardTable, IsReadAnewWhereAnotherUnitMayStandBehindThePort) {
  const auto read = [&](int channels) {
    unit.answers["p\r"] = {Table(channels)};
    board.GetChannelsData();
    ASSERT_TRUE(board.ChannelsLoaded());
  };
  read(22);
  board.SetupComPort(&port, 1, 19200, 0);
  EXPECT_TRUE(board.ChannelsLoaded()) << "the same unit at the same port";
  board.SetupComPort(&port, 2, 19200, 0);
  EXPECT_FALSE(board.ChannelsLoaded());
  Become("KESTA version 3");
  board.SetupComPort(&port, 2, 19200, 0);
  read(18);
  Become("KESTA version 4");
  board.SetupComPort(&port, 2, 19200, 0);
  EXPECT_FALSE(board.ChannelsLoaded()) << "as many channels, and another unit";
  read(18);
  device.HangUp();
  EXPECT_THROW(board.SendRun(), RuntimeError);
  EXPECT_FALSE(board.ChannelsLoaded());
}

// --- Sending it back ---

TEST_F(BoardTable, SendsNothingWhereNothingChangedAndPassesThroughCommandMode) {
  unit.answers["p\r"] = {Table(22)};
  board.GetChannelsData();
  Sent();
  EXPECT_EQ(board.SaveDataToBoard(), 0);
  EXPECT_EQ(Sent(), "Trad\rr\r");
}

TEST_F(BoardTable, SendsWhatDiffersChannelByChannelInItsOrder) {
  unit.answers["p\r"] = {Table(22)};
  board.GetChannelsData();
  Sent();
  board.SetLowerAlarm(22, true, -0.5);
  board.SetUpperAlarm(22, false, 0);
  board.SetGain(1, 0.125);
  board.SetOffset(1, -3);
  board.SetUpperAlarm(1, true, 1e-5);
  board.SetUpperAlarm(2, false, 20);
  EXPECT_EQ(board.SaveDataToBoard(), 0);
  EXPECT_EQ(Sent(), "Trad\ro 1 -3\rg 1 0.125\ru 1 1E-05\rU 2\rU 22\rl 22 -0.5\rr\r");
  EXPECT_FALSE(board.DataChanged());
  EXPECT_EQ(board.SaveDataToBoard(), 0);
  EXPECT_EQ(Sent(), "Trad\rr\r") << "it is the baseline";
  board.SetLowerAlarm(22, false, -0.5);
  EXPECT_EQ(board.SaveDataToBoard(), 0);
  EXPECT_EQ(Sent(), "Trad\rL 22\rr\r");
}

TEST_F(BoardTable, KeepsTheBaselineWhereTheBoardDoesNotTakeACommand) {
  unit.answers["p\r"] = {Table(22, " 1 2")};
  board.GetChannelsData();
  Sent();
  unit.answers["o 1 7\r"] = {"o 1 7\r"};
  board.SetOffset(1, 7);
  board.SetGain(1, 8);
  board.SetGain(2, 9);
  EXPECT_EQ(board.SaveDataToBoard(), -4);
  EXPECT_EQ(Sent(), "Trad\ro 1 7\rg 1 8\rr\r");
  EXPECT_EQ(board.RefusedCommand().Code(), 0x8004000AU);
  EXPECT_STREQ(board.RefusedCommand().what(), "Unable to execute [g 1 8]");
  EXPECT_TRUE(board.DataChanged());
  unit.answers["g 1 8\r"] = {"g 1 8\r"};
  unit.answers["g 2 9\r"] = {"g 2 9\r"};
  EXPECT_EQ(board.SaveDataToBoard(), 0);
  EXPECT_EQ(Sent(), "Trad\ro 1 7\rg 1 8\rg 2 9\rr\r") << "all of it again";
}

}  // namespace
}  // namespace velk
