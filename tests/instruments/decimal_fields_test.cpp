#include "instruments/reading/decimal_fields.h"

#include <gtest/gtest.h>

#include "support/frame_damage.h"

namespace velk {
namespace {

using namespace std::string_literals;

TEST(DecimalText, IsDigitsWithOnePointAndOneSignAndBlanksAround) {
  for (const std::string& text : {"0"s, "0012.375"s, "-2.25"s, "+7"s, "5."s, ".5"s, "  0042"s, "17  "s, " -1 "s})
    EXPECT_TRUE(IsDecimalText(text)) << text;
}

TEST(DecimalText, IsNoTextInWhichAByteWasDamaged) {
  for (const std::string& text : {"0000\x07"
                                  "375"s,
                                  "000012E7"s, "000012e7"s, "000012D7"s, "1.2.3"s, "1,5"s, "--1"s, "- 1"s, "1-"s,
                                  "12 5"s, "\t5"s, "5\t"s, "5\r"s, "0\0005"s, "1\xB0"s, "0x10"s, "nan"s, "inf"s})
    EXPECT_FALSE(IsDecimalText(text)) << text;
}

TEST(DecimalText, HasADigitAtLeast) {
  for (const char* text : {"", " ", ".", "-", "+.", "-."}) EXPECT_FALSE(IsDecimalText(text)) << text;
}

TEST(DecimalFields, AreAllFieldsBehindTheTimeUpToTheTerminator) {
  EXPECT_TRUE(HasDecimalFields("10:20:30 01.50 -2.25 00.00\r\n", " ", "\r\n"));
  EXPECT_TRUE(HasDecimalFields("ab:cd:ef 1\r\n", " ", "\r\n")) << "the time is another check's";
  EXPECT_TRUE(HasDecimalFields("10:20:30\r\n", " ", "\r\n"));
  EXPECT_TRUE(HasDecimalFields("", " ", "\r\n"));
  EXPECT_FALSE(HasDecimalFields("10:20:30 01.50 -2.25 00.0o\r\n", " ", "\r\n"));
  EXPECT_FALSE(HasDecimalFields("10:20:30 x1.50 -2.25 00.00\r\n", " ", "\r\n"));
  EXPECT_FALSE(HasDecimalFields("10:20:30  -2.25 00.00\r\n", " ", "\r\n"));
}

TEST(DecimalFields, LetADamagedByteOfAValuePassOnlyAsADigitASignOrAPoint) {
  const std::string sound = "10:20:30 01.50 -2.25 00.00\r\n";
  int passed = 0;
  test::ForEveryChangedByte(sound, [&](const std::string& changed) {
    const std::string values = changed.substr(8, sound.size() - 10);
    if (changed.substr(0, 9) != sound.substr(0, 9) || !changed.ends_with("\r\n")) return;
    if (!HasDecimalFields(changed, " ", "\r\n")) return;
    ++passed;
    EXPECT_EQ(values.find_first_not_of(" +-.0123456789"), std::string::npos) << changed;
  });
  // Each of the 11 digits as 9 others at least.
  EXPECT_GE(passed, 11 * 9);
}

}  // namespace
}  // namespace velk
