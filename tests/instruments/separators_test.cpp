#include "instruments/setup/separators.h"

#include <gtest/gtest.h>

namespace velk {
namespace {

TEST(Separators, AreThoseOfTheOptions) {
  constexpr const char* kDelimiters[] = {"\x20", "\x09", ",", ";"};
  constexpr const char* kTerminators[] = {"\x0D", "\x0A", "\x0D\x0A", "\x0A\x0D"};
  for (int i = 0; i < 4; ++i) {
    EXPECT_EQ(DelimiterOf(i), kDelimiters[i]);
    EXPECT_EQ(DelimiterOption(kDelimiters[i]), i);
    EXPECT_EQ(TerminatorOf(i), kTerminators[i]);
    EXPECT_EQ(TerminatorOption(kTerminators[i]), i);
  }
}

TEST(Separators, AnyOtherDelimiterIsATypedOneAndAnyOtherTerminatorNone) {
  EXPECT_EQ(DelimiterOption("|"), 4);
  EXPECT_EQ(DelimiterOption(",,"), 4);
  EXPECT_EQ(TerminatorOption("\x03"), std::nullopt);
  EXPECT_EQ(TerminatorOption("\r\n\r"), std::nullopt);
}

TEST(Separators, EmptyOnesBecomeTheBlankAndCr) {
  Session session;
  session.Delimiter = "";
  session.Terminator = "";
  EXPECT_EQ(SeparatorsOf(session).Delimiter, " ");
  EXPECT_EQ(SeparatorsOf(session).Terminator, "\r");
  session.Delimiter = ";";
  session.Terminator = "\n\r";
  EXPECT_EQ(SeparatorsOf(session).Delimiter, ";");
  EXPECT_EQ(SeparatorsOf(session).Terminator, "\n\r");
}

TEST(Separators, TypedDelimiterIsOneCharacter) {
  EXPECT_TRUE(IsDelimiter("|"));
  EXPECT_TRUE(IsDelimiter(" "));
  EXPECT_TRUE(IsDelimiter("§"));
  EXPECT_FALSE(IsDelimiter(""));
  EXPECT_FALSE(IsDelimiter("::"));
  EXPECT_FALSE(IsDelimiter("| "));
}

}  // namespace
}  // namespace velk
