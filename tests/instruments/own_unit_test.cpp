#include "instruments/decoders/own_unit.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

namespace velk {
namespace {

const std::string kSound = "10:20:30 01.50 -2.25 00.00\r\n";

struct OrbenVer3 : testing::Test {
  OrbenVer3() {
    session.NumberOfParameters = 3;
    session.Delimiter = " ";
  }

  /// Whether the line is sound when the line before was `before` bytes long.
  bool Accepts(const std::string& line, std::size_t before) {
    decoder.LastLineLength = static_cast<std::int32_t>(before);
    std::string decoded = line;
    decoder.Orben_ver_3(decoded, session);
    EXPECT_EQ(decoder.LastLineLength, static_cast<std::int32_t>(line.size()));
    if (decoded == line) return true;
    EXPECT_EQ(decoded, "\r\n" + line);
    return false;
  }
  bool Accepts(const std::string& line) { return Accepts(line, line.size()); }

  Session session;
  OwnUnitDecoder decoder;
};

/// The check once more, by other means.
bool ShouldBeSound(const std::string& line, std::size_t before, int parameters) {
  const auto value = [&](std::size_t at) { return std::strtod(line.substr(at, 2).c_str(), nullptr); };
  return line.size() == before && std::count(line.begin(), line.end(), ' ') == parameters && line.size() > 5 &&
         line[2] == ':' && line[5] == ':' && value(0) >= 0 && value(0) < 24 && value(3) >= 0 && value(3) < 60;
}

TEST_F(OrbenVer3, ASoundLineOfTheSameLengthAsTheOneBeforeIsLeftAsItIs) {
  EXPECT_TRUE(Accepts(kSound));
}

TEST_F(OrbenVer3, TheFirstLineIsAlwaysRejected) {
  std::string line = kSound;
  decoder.Orben_ver_3(line, session);
  EXPECT_EQ(line, "\r\n" + kSound);
  EXPECT_EQ(decoder.LastLineLength, static_cast<std::int32_t>(kSound.size()));
}

TEST_F(OrbenVer3, AfterAChangeOfLengthTheFirstLineFailsAndTheNextPasses) {
  EXPECT_TRUE(Accepts(kSound));
  const std::string longer = "10:20:31 101.50 -2.25 00.00\r\n";
  std::string line = longer;
  decoder.Orben_ver_3(line, session);
  EXPECT_EQ(line, "\r\n" + longer);
  line = longer;
  decoder.Orben_ver_3(line, session);
  EXPECT_EQ(line, longer);
}

TEST_F(OrbenVer3, ARejectedLineCountsAsTheLineBeforeToo) {
  EXPECT_TRUE(Accepts(kSound));
  std::string damaged = "10:20:31 01.50 -2.25\r\n";
  decoder.Orben_ver_3(damaged, session);
  EXPECT_EQ(damaged, "\r\n10:20:31 01.50 -2.25\r\n");
  std::string sound = kSound;
  decoder.Orben_ver_3(sound, session);
  EXPECT_EQ(sound, "\r\n" + kSound);
}

TEST_F(OrbenVer3, TheNumberOfDelimitersMustBeTheNumberOfParameters) {
  for (const int parameters : {0, 1, 2, 4, 64}) {
    session.NumberOfParameters = static_cast<std::int16_t>(parameters);
    EXPECT_FALSE(Accepts(kSound)) << parameters;
  }
}

TEST_F(OrbenVer3, HoursRunFrom0To23) {
  for (int hour = 0; hour < 100; ++hour) {
    const std::string digits = {static_cast<char>('0' + hour / 10), static_cast<char>('0' + hour % 10)};
    EXPECT_EQ(Accepts(digits + ":20:30 1 2 3\r\n"), hour < 24) << hour;
  }
}

TEST_F(OrbenVer3, MinutesRunFrom0To59) {
  for (int minute = 0; minute < 100; ++minute) {
    const std::string digits = {static_cast<char>('0' + minute / 10), static_cast<char>('0' + minute % 10)};
    EXPECT_EQ(Accepts("10:" + digits + ":30 1 2 3\r\n"), minute < 60) << minute;
  }
}

TEST_F(OrbenVer3, SecondsAreNotLookedAt) {
  EXPECT_TRUE(Accepts("23:59:61 1 2 3\r\n"));
  EXPECT_TRUE(Accepts("23:59:99 1 2 3\r\n"));
  EXPECT_TRUE(Accepts("23:59:ab 1 2 3\r\n"));
  EXPECT_FALSE(Accepts("25:00:00 1 2 3\r\n"));
}

TEST_F(OrbenVer3, NegativeHoursAndMinutesFail) {
  EXPECT_FALSE(Accepts("-1:20:30 1 2 3\r\n"));
  EXPECT_FALSE(Accepts("10:-1:30 1 2 3\r\n"));
  EXPECT_TRUE(Accepts("-0:20:30 1 2 3\r\n"));
}

TEST_F(OrbenVer3, TextInPlaceOfDigitsCountsAsZero) {
  EXPECT_TRUE(Accepts("ab:cd:30 1 2 3\r\n"));
}

TEST_F(OrbenVer3, TheColonsMustStandInTheirPlaces) {
  EXPECT_FALSE(Accepts("10.20:30 1 2 3\r\n"));
  EXPECT_FALSE(Accepts("10:20.30 1 2 3\r\n"));
  EXPECT_FALSE(Accepts("1:20:30 1 2 3\r\n"));
}

TEST_F(OrbenVer3, ValuesAreNotLookedAt) {
  EXPECT_TRUE(Accepts("10:20:30 1e999 nan \x80\xFF\r\n"));
}

TEST_F(OrbenVer3, NoPrefixOfASoundFrameIsAcceptedBehindWholeFrames) {
  for (std::size_t length = 0; length < kSound.size(); ++length)
    EXPECT_FALSE(Accepts(kSound.substr(0, length), kSound.size())) << length;
}

TEST_F(OrbenVer3, PrefixesOfEqualLengthFollowTheCheckAlone) {
  for (int parameters = 0; parameters <= 3; ++parameters) {
    session.NumberOfParameters = static_cast<std::int16_t>(parameters);
    for (std::size_t length = 0; length <= kSound.size(); ++length) {
      const std::string prefix = kSound.substr(0, length);
      EXPECT_EQ(Accepts(prefix), ShouldBeSound(prefix, length, parameters)) << prefix;
    }
  }
}

TEST_F(OrbenVer3, EveryChangeOfASingleByteIsAcceptedOnlyWhereTheCheckLetsIt) {
  int accepted = 0;
  for (std::size_t at = 0; at < kSound.size(); ++at)
    for (int value = 0; value < 256; ++value) {
      std::string changed = kSound;
      changed[at] = static_cast<char>(value);
      const bool sound = Accepts(changed);
      EXPECT_EQ(sound, ShouldBeSound(changed, changed.size(), 3)) << at << ": " << value;
      accepted += sound ? 1 : 0;
    }
  // Of 28 x 256 the three delimiters and the two colons leave one value each; the others all but the blank, and of
  // the four digits of the time some less.
  EXPECT_GT(accepted, 23 * 240);
  EXPECT_LT(accepted, 23 * 255 + 5);
}

TEST_F(OrbenVer3, EveryLostAndEveryAddedByteIsRejectedByTheLength) {
  for (std::size_t at = 0; at < kSound.size(); ++at) {
    std::string shorter = kSound;
    shorter.erase(at, 1);
    EXPECT_FALSE(Accepts(shorter, kSound.size()));
    std::string longer = kSound;
    longer.insert(at, 1, '7');
    EXPECT_FALSE(Accepts(longer, kSound.size()));
  }
}

TEST_F(OrbenVer3, ALongerDelimiterIsCountedBehindTheLastHit) {
  session.Delimiter = ",,";
  session.NumberOfParameters = 1;
  EXPECT_TRUE(Accepts("10:20:30,,,x"));
  session.NumberOfParameters = 2;
  EXPECT_FALSE(Accepts("10:20:30,,,x"));
  EXPECT_TRUE(Accepts("10:20:30,,,,x"));
}

TEST_F(OrbenVer3, AnEmptyDelimiterIsFoundNowhere) {
  session.Delimiter = "";
  EXPECT_FALSE(Accepts(kSound));
  session.NumberOfParameters = 0;
  EXPECT_TRUE(Accepts(kSound));
}

TEST_F(OrbenVer3, AnEmptyLineIsRejected) {
  session.NumberOfParameters = 0;
  EXPECT_FALSE(Accepts(""));
}

}  // namespace
}  // namespace velk
