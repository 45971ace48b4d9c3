#include "base/text.h"

#include <gtest/gtest.h>

#include "base/text_qt.h"

namespace velk {
namespace {

const std::string kPressure = "Давление";  // 8 characters, 16 bytes

TEST(Text, CountsCharactersNotBytes) {
  EXPECT_EQ(CharacterCount(""), 0);
  EXPECT_EQ(CharacterCount("abc"), 3);
  EXPECT_EQ(CharacterCount(kPressure), 8);
  EXPECT_EQ(CharacterCount("20 °C"), 5);
  EXPECT_EQ(CharacterCount("\u20AC\U0001F6E2"), 2);
  EXPECT_EQ(CharacterCount(std::string("a\0b", 3)), 3);
}

TEST(Text, CountsEachByteThatIsNoUtf8AsOneCharacter) {
  EXPECT_EQ(CharacterCount("\xFF"), 1);
  EXPECT_EQ(CharacterCount("a\xB0"), 2);             // a Latin-1 degree sign
  EXPECT_EQ(CharacterCount("\x80\x80"), 2);          // continuation bytes alone
  EXPECT_EQ(CharacterCount("\xC0\xAF"), 2);          // overlong
  EXPECT_EQ(CharacterCount("\xE0\x80\xAF"), 3);      // overlong
  EXPECT_EQ(CharacterCount("\xED\xA0\x80"), 3);      // a surrogate
  EXPECT_EQ(CharacterCount("\xF0\x80\x80\x80"), 4);  // overlong
  EXPECT_EQ(CharacterCount("\xF4\x90\x80\x80"), 4);  // beyond U+10FFFF
  EXPECT_EQ(CharacterCount("\xF4\x8F\xBF\xBF"), 1);  // U+10FFFF
  EXPECT_EQ(CharacterCount("\xE2\x82"), 2);          // cut
  EXPECT_EQ(CharacterCount("\xD0"), 1);              // cut
  EXPECT_EQ(CharacterCount("\xE2\x82\xD0\x94"), 3);  // cut, then a letter
}

TEST(Text, LeftAndRightTakeCharacters) {
  EXPECT_EQ(Left("abc", 2), "ab");
  EXPECT_EQ(Left("abc", 0), "");
  EXPECT_EQ(Left("abc", 9), "abc");
  EXPECT_EQ(Left(kPressure, 3), "Дав");
  EXPECT_EQ(Left("a\xB0z", 2), "a\xB0");
  EXPECT_EQ(Right("abc", 2), "bc");
  EXPECT_EQ(Right("abc", 0), "");
  EXPECT_EQ(Right("abc", 9), "abc");
  EXPECT_EQ(Right(kPressure, 3), "ние");
  EXPECT_EQ(Right("", 3), "");
}

TEST(Text, MidCountsFrom1) {
  EXPECT_EQ(Mid("abcdef", 1, 2), "ab");
  EXPECT_EQ(Mid("abcdef", 3, 2), "cd");
  EXPECT_EQ(Mid("abcdef", 3), "cdef");
  EXPECT_EQ(Mid("abcdef", 6, 9), "f");
  EXPECT_EQ(Mid("abcdef", 7), "");
  EXPECT_EQ(Mid("abcdef", 99, 1), "");
  EXPECT_EQ(Mid("abcdef", 2, 0), "");
  EXPECT_EQ(Mid(kPressure, 3, 3), "вле");
}

TEST(Text, MapsTheCaseOfEveryAlphabet) {
  EXPECT_EQ(LowerCase("Rate 1 [L/MIN]"), "rate 1 [l/min]");
  EXPECT_EQ(UpperCase("Rate 1 [l/min]"), "RATE 1 [L/MIN]");
  EXPECT_EQ(LowerCase("ДАВЛЕНИЕ Ё"), "давление ё");
  EXPECT_EQ(UpperCase("давление ё"), "ДАВЛЕНИЕ Ё");
  EXPECT_EQ(LowerCase("ÀÉÎ"), "àéî");
  EXPECT_EQ(LowerCase("I"), "i");
  EXPECT_EQ(LowerCase(""), "");
}

TEST(Text, CaseMappingKeepsBytesThatAreNoUtf8) {
  EXPECT_EQ(LowerCase("A\xB0"
                      "Д\xD0"),
            "a\xB0"
            "д\xD0");
  EXPECT_EQ(UpperCase("\xFF"
                      "a\xFE"),
            "\xFF"
            "A\xFE");
  EXPECT_EQ(LowerCase(std::string("A\0Д", 4)), std::string("a\0д", 4));
}

TEST(Text, TrimTakesBlanksOnly) {
  EXPECT_EQ(Trim("  a b  "), "a b");
  EXPECT_EQ(Trim("\t a "), "\t a");
  EXPECT_EQ(Trim("    "), "");
  EXPECT_EQ(Trim(""), "");
  const std::string text = "  2 3 ";
  EXPECT_EQ(Trimmed(text), "2 3");
  EXPECT_EQ(Trimmed(text).data(), text.data() + 2) << "a part of it";
}

TEST(Text, ReplaceAllGoesOnBehindWhatItReplaced) {
  EXPECT_EQ(ReplaceAll("a.b.c", ".", "_"), "a_b_c");
  EXPECT_EQ(ReplaceAll("aaaa", "aa", "a"), "aa");
  EXPECT_EQ(ReplaceAll("aaa", "aa", "b"), "ba");
  EXPECT_EQ(ReplaceAll("a", "a", "aa"), "aa");
  EXPECT_EQ(ReplaceAll("abc", "", "x"), "abc");
  EXPECT_EQ(ReplaceAll("abc", "x", "y"), "abc");
  EXPECT_EQ(ReplaceAll("a;b;", ";", ""), "ab");
}

TEST(Text, ToQtAndBackKeepsTheText) {
  EXPECT_EQ(ToQt(kPressure).size(), 8);
  for (const std::string& text : {std::string(), kPressure, std::string("20 °C"), std::string("a\0b", 3)}) {
    EXPECT_EQ(FromQt(ToQt(text)), text);
  }
  EXPECT_EQ(ToQt("a\xB0"), QString("a\uFFFD"));
}

}  // namespace
}  // namespace velk
