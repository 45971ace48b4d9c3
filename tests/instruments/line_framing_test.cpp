#include "instruments/reading/line_framing.h"

#include <gtest/gtest.h>

namespace velk {
namespace {

using Lines = std::vector<std::string>;

constexpr std::size_t kLongest = LineFraming::kLongestLine;

void TakeAll(LineFraming& framing, Lines& lines) {
  while (framing.HasLine()) lines.push_back(framing.TakeLine());
}

Lines LinesOf(std::string_view terminator, const std::vector<std::string>& pieces) {
  LineFraming framing;
  framing.Reset(terminator);
  Lines lines;
  for (const std::string& piece : pieces) {
    framing.Append(piece);
    TakeAll(framing, lines);
  }
  return lines;
}

TEST(LineFraming, CutsBehindTheTerminatorAndKeepsItOnTheLine) {
  EXPECT_EQ(LinesOf("\r\n", {"one\r\ntwo\r\nthr"}), (Lines{"one\r\n", "two\r\n"}));
  EXPECT_EQ(LinesOf("\r", {"one\rtwo\r"}), (Lines{"one\r", "two\r"}));
  EXPECT_EQ(LinesOf("\n", {"one\r\ntwo\n"}), (Lines{"one\r\n", "two\n"}));
  EXPECT_EQ(LinesOf("\n\r", {"one\n\rtwo\n\r"}), (Lines{"one\n\r", "two\n\r"}));
}

TEST(LineFraming, AnEmptyTerminatorCountsAsCr) {
  EXPECT_EQ(LinesOf("", {"one\rtwo"}), (Lines{"one\r"}));
}

TEST(LineFraming, APartOfTheTerminatorEndsNoLine) {
  EXPECT_EQ(LinesOf("\r\n", {"a\rb\nc\r\r\n"}), (Lines{"a\rb\nc\r\r\n"}));
}

TEST(LineFraming, KeepsZeroControlAndEightBitBytes) {
  std::string bytes;
  for (int value = 0; value < 256; ++value) bytes += static_cast<char>(value);
  bytes += "\r\n";
  EXPECT_EQ(LinesOf("\r\n", {bytes}), (Lines{bytes}));
}

TEST(LineFraming, EmptyLinesAreLines) {
  EXPECT_EQ(LinesOf("\r\n", {"\r\n\r\n"}), (Lines{"\r\n", "\r\n"}));
}

TEST(LineFraming, EverySplitOfAStreamGivesTheSameLines) {
  const std::string stream("10:20:30 1 2\r\n\r\r\n\0\xFF\n\r\nlast\r\nhalf", 31);
  for (const char* terminator : {"\r", "\n", "\r\n", "\n\r"}) {
    const Lines whole = LinesOf(terminator, {stream});
    EXPECT_GE(whole.size(), 1U);
    for (std::size_t first = 0; first <= stream.size(); ++first)
      for (std::size_t second = first; second <= stream.size(); ++second)
        EXPECT_EQ(
            LinesOf(terminator, {stream.substr(0, first), stream.substr(first, second - first), stream.substr(second)}),
            whole);
    std::vector<std::string> singles;
    for (const char byte : stream) singles.emplace_back(1, byte);
    EXPECT_EQ(LinesOf(terminator, singles), whole);
  }
}

TEST(LineFraming, ALineOf64KiBPassesAndOneByteMoreIsDropped) {
  const std::string longest(kLongest, 'x');
  EXPECT_EQ(LinesOf("\r\n", {longest + "\r\nnext\r\n"}), (Lines{longest + "\r\n", "next\r\n"}));
  EXPECT_EQ(LinesOf("\r\n", {longest + "x\r\nnext\r\n"}), (Lines{"next\r\n"}));
}

TEST(LineFraming, TheLimitIsTheSameHoweverTheBytesAreSplit) {
  for (const std::size_t length : {kLongest - 1, kLongest, kLongest + 1, kLongest + 2, 3 * kLongest}) {
    const std::string stream = std::string(length, 'x') + "\r\nnext\r\n";
    const Lines whole = LinesOf("\r\n", {stream});
    EXPECT_EQ(whole.size(), length <= kLongest ? 2U : 1U) << length;
    for (std::size_t cut = kLongest - 3; cut < std::min(stream.size(), kLongest + 8); ++cut)
      EXPECT_EQ(LinesOf("\r\n", {stream.substr(0, cut), stream.substr(cut)}), whole) << length << " cut at " << cut;
    std::vector<std::string> chunks;
    for (std::size_t at = 0; at < stream.size(); at += 1000) chunks.push_back(stream.substr(at, 1000));
    EXPECT_EQ(LinesOf("\r\n", chunks), whole) << length;
  }
}

TEST(LineFraming, ALineThatNeverEndsHoldsNoMemory) {
  LineFraming framing;
  framing.Reset("\r\n");
  const std::string chunk(4096, 'x');
  for (int i = 0; i < 1000; ++i) {
    framing.Append(chunk);
    EXPECT_LE(framing.Size(), kLongest + chunk.size() + 2);
  }
  framing.Append("\r\nafter\r\n");
  EXPECT_EQ(framing.TakeLine(), "after\r\n");
  EXPECT_FALSE(framing.HasLine());
}

TEST(LineFraming, ManyLinesCanWaitAndComeInOrder) {
  LineFraming framing;
  framing.Reset("\n");
  for (int i = 0; i < 5000; ++i) framing.Append(std::to_string(i) + "\n");
  for (int i = 0; i < 5000; ++i) ASSERT_EQ(framing.TakeLine(), std::to_string(i) + "\n");
  EXPECT_EQ(framing.Size(), 0U);
}

TEST(LineFraming, DropUnfinishedKeepsWholeLinesOnly) {
  LineFraming framing;
  framing.Reset("\r\n");
  framing.Append("one\r\ntwo\r\nhalf\r");
  framing.DropUnfinished();
  framing.Append("\nthree\r\n");
  Lines lines;
  TakeAll(framing, lines);
  EXPECT_EQ(lines, (Lines{"one\r\n", "two\r\n", "\nthree\r\n"}));
}

TEST(LineFraming, DropUnfinishedWithoutAWholeLineLeavesNothing) {
  LineFraming framing;
  framing.Reset("\r\n");
  framing.Append("half");
  framing.DropUnfinished();
  EXPECT_EQ(framing.Size(), 0U);
  framing.Append("new\r\n");
  EXPECT_EQ(framing.TakeLine(), "new\r\n");
}

TEST(LineFraming, DropUnfinishedEndsTheDroppingOfALongLine) {
  LineFraming framing;
  framing.Reset("\r\n");
  framing.Append(std::string(kLongest + 100, 'x'));
  framing.DropUnfinished();
  framing.Append("new\r\n");
  EXPECT_EQ(framing.TakeLine(), "new\r\n");
}

TEST(LineFraming, ResetForgetsEverything) {
  LineFraming framing;
  framing.Reset("\r\n");
  framing.Append("one\r\ntwo");
  framing.Reset("\n");
  EXPECT_FALSE(framing.HasLine());
  framing.Append("three\n");
  EXPECT_EQ(framing.TakeLine(), "three\n");
}

}  // namespace
}  // namespace velk
