#include "instruments/reading/get_field.h"

#include <gtest/gtest.h>

namespace velk {
namespace {

TEST(GetField, GivesTheTextFromThePositionToTheNextDelimiterAndMovesOn) {
  const std::string line = "10:20:30 1.5 -2\r\n";
  std::size_t position = 0;
  EXPECT_EQ(GetField(line, " ", position), "10:20:30");
  EXPECT_EQ(position, 9U);
  EXPECT_EQ(GetField(line, " ", position), "1.5");
  EXPECT_EQ(position, 13U);
}

TEST(GetField, TheLastFieldIsTheRestOfTheLineAndThePositionBecomesZero) {
  std::size_t position = 13;
  EXPECT_EQ(GetField("10:20:30 1.5 -2\r\n", " ", position), "-2\r\n");
  EXPECT_EQ(position, 0U);
}

TEST(GetField, BehindTheLastFieldItBeginsAtTheFrontAgain) {
  std::size_t position = 0;
  GetField("a b", " ", position);
  GetField("a b", " ", position);
  EXPECT_EQ(GetField("a b", " ", position), "a");
  EXPECT_EQ(position, 2U);
}

TEST(GetField, ALineWithoutDelimiterIsOneField) {
  std::size_t position = 0;
  EXPECT_EQ(GetField("alone", ",", position), "alone");
  EXPECT_EQ(position, 0U);
}

TEST(GetField, ADelimiterAsFirstCharacterGivesTheWholeLineAndIsThenPassed) {
  std::size_t position = 0;
  EXPECT_EQ(GetField(",a,b", ",", position), ",a,b");
  EXPECT_EQ(position, 1U);
  EXPECT_EQ(GetField(",a,b", ",", position), "a");
  EXPECT_EQ(position, 3U);
  EXPECT_EQ(GetField(",a,b", ",", position), "b");
  EXPECT_EQ(position, 0U);
}

TEST(GetField, TwoDelimitersInARowEncloseAnEmptyField) {
  std::size_t position = 0;
  EXPECT_EQ(GetField("a,,b", ",", position), "a");
  EXPECT_EQ(GetField("a,,b", ",", position), "");
  EXPECT_EQ(position, 3U);
  EXPECT_EQ(GetField("a,,b", ",", position), "b");
}

TEST(GetField, ADelimiterAtTheEndIsFollowedByAnEmptyField) {
  std::size_t position = 0;
  EXPECT_EQ(GetField("a,", ",", position), "a");
  EXPECT_EQ(position, 2U);
  EXPECT_EQ(GetField("a,", ",", position), "");
  EXPECT_EQ(position, 0U);
}

TEST(GetField, AnEmptyLineGivesAnEmptyField) {
  std::size_t position = 0;
  EXPECT_EQ(GetField("", " ", position), "");
  EXPECT_EQ(position, 0U);
}

TEST(GetField, APositionBehindTheLineGivesAnEmptyField) {
  std::size_t position = 50;
  EXPECT_EQ(GetField("a b", " ", position), "");
  EXPECT_EQ(position, 0U);
}

TEST(GetField, KeepsZeroAndEightBitCharacters) {
  const std::string line("\0\xFF,\x80", 4);
  std::size_t position = 0;
  EXPECT_EQ(GetField(line, ",", position), std::string_view("\0\xFF", 2));
  EXPECT_EQ(GetField(line, ",", position), "\x80");
}

TEST(GetField, FieldsOfALineAreTheSameAsASimpleSplit) {
  const std::string line = "12:00:00;0;-1.5;;1e999;nan;\t;end";
  const std::vector<std::string> expected = {"12:00:00", "0", "-1.5", "", "1e999", "nan", "\t", "end"};
  std::size_t position = 0;
  for (const std::string& field : expected) EXPECT_EQ(GetField(line, ";", position), field);
}

TEST(CleanUp, RemovesEveryCharacterOfCodeZeroAndNoOther) {
  EXPECT_EQ(CleanUp(std::string("\0a\0\0b\x01\xFF\r\n\0", 10)), "ab\x01\xFF\r\n");
  EXPECT_EQ(CleanUp(std::string("\0\0", 2)), "");
  EXPECT_EQ(CleanUp(""), "");
  EXPECT_EQ(CleanUp("plain 0"), "plain 0");
}

}  // namespace
}  // namespace velk
