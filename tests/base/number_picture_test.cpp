#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <vector>

#include "base/number_picture.h"

namespace velk {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

struct Row {
  double value;
  std::string picture;
  std::string text;
};

void ExpectRows(const std::vector<Row>& rows) {
  for (const auto& [value, picture, text] : rows) EXPECT_EQ(Format(value, picture), text) << value << " by " << picture;
}

TEST(Format, RoundsHalfAwayFromZero) {
  ExpectRows({{0.0005, "#0.000", "0.001"},
              {0.00049, "#0.000", "0.000"},
              {-0.0005, "#0.000", "-0.001"},
              {1234.5678, "#0.000", "1234.568"},
              {-1.5, "#0.000", "-1.500"},
              {2.5, "0", "3"},
              {3.5, "0", "4"},
              {0.5, "0", "1"},
              {-0.5, "0", "-1"},
              {0.4, "0", "0"},
              {9.5, "0", "10"},
              {99.95, "0.0", "100.0"},
              {0.999, "0.00", "1.00"},
              {1e15, "#0.000", "1000000000000000.000"}});
}

TEST(Format, TakesTheValueTo15DigitsBeforeItRounds) {
  ExpectRows({{1.005, "0.00", "1.01"},  // the float lies just below
              {-1.005, "0.00", "-1.01"},
              {2.675, "0.00", "2.68"},
              {1.115, "0.00", "1.12"},
              {0.285, "0.00", "0.29"},
              {1234.565, "0.00", "1234.57"},
              {0.49999999999999994, "0", "1"},  // 0.500000000000000
              {1.0 / 3, "0.0000000000000000000", "0.3333333333333330000"},
              {123456789012345678.0, "0", "123456789012346000"},
              {0.1, "0.00000000000000000000", "0.10000000000000000000"}});
}

TEST(Format, GivesAResultOfZeroNoMinus) {
  ExpectRows({{-0.0004, "#0.000", "0.000"},
              {-0.0, "#0.000", "0.000"},
              {-0.4, "0", "0"},
              {-0.004, "0.0%", "-0.4%"},
              {-0.0004, "0.0%", "0.0%"},
              {-1e-300, "#.##", "."}});
}

TEST(Format, ShowsZerosAlwaysAndSharpsWhereNeeded) {
  ExpectRows({{0.5, "#.00", ".50"},
              {-0.5, "#.00", "-.50"},
              {0, "#.00", ".00"},
              {12, "#.00", "12.00"},
              {12.5, ".00", "12.50"},
              {5, "#.##", "5."},
              {0, "#.##", "."},
              {0.5, "#.##", ".5"},
              {1.25, "#.##", "1.25"},
              {0, "#", ""},
              {7, "#", "7"},
              {7, "000", "007"},
              {-7, "000", "-007"},
              {1234, "000", "1234"},
              {5, "0#", "05"},
              {5, "#0#", "05"},
              {1, "0.0##", "1.0"},
              {1.25, "0.0##", "1.25"},
              {1.2345, "0.0##", "1.235"},
              {1.5, "0.#0", "1.50"},
              {3, "0.", "3."}});
}

TEST(Format, GroupsThousandsWhereACommaStandsBetweenDigits) {
  ExpectRows({{1234567.891, "#,##0.00", "1,234,567.89"},
              {0, "#,##0", "0"},
              {999, "#,##0", "999"},
              {1000, "#,##0", "1,000"},
              {999999.5, "#,##0", "1,000,000"},
              {-1234, "#,##0", "-1,234"},
              {-123, "#,##0", "-123"},
              {7, "0,000", "0,007"},
              {1e15, "#,##0", "1,000,000,000,000,000"},
              {1.5, "0.0,", "1.5,"},
              {15, ",0", ",15"}});
}

TEST(Format, ShowsPercent) {
  ExpectRows({{0.5, "0%", "50%"},
              {0.126, "0.0%", "12.6%"},
              {0.005, "0%", "1%"},
              {-0.25, "0%", "-25%"},
              {0, "0%", "0%"},
              {12, "0%", "1200%"}});
}

TEST(Format, ShowsExponentForms) {
  ExpectRows({{12345.6789, "0.00e+00", "1.23e+04"},
              {9.999, "0.00e+00", "1.00e+01"},
              {9.994, "0.00e+00", "9.99e+00"},
              {0, "0.00e+00", "0.00e+00"},
              {-0.0, "0.00e+00", "0.00e+00"},
              {-0.00012, "0.00e+00", "-1.20e-04"},
              {1e100, "0.00e+00", "1.00e+100"},
              {5e-324, "0.00e+00", "4.94e-324"},
              {1.7976931348623157e308, "0.00e+00", "1.80e+308"},
              {12345, "0.00E-00", "1.23E04"},
              {0.001, "0.00E-00", "1.00E-03"},
              {5, "0.0E+0", "5.0E+0"},
              {1e12, "0.0E+0", "1.0E+12"},
              {12345, "00.0e+0", "12.3e+3"},
              {12345, "##0.0e+0", "123.5e+2"},
              {0.5, "##0.0e+0", "500.0e-3"},
              {12345, ".00e+00", ".12e+05"},
              {4000, "#e+#", "4e+3"},
              {4, "0e+00 kPa", "4e+00 kPa"},
              {5, "0e", "5e"},
              {5, "0e+", "5e+"},
              {5, "e+0", "e+5"}});
}

TEST(Format, ShowsOtherCharactersAsTheyStand) {
  ExpectRows({{5, "0 kPa", "5 kPa"},
              {-5, "$0.0", "-$5.0"},
              {21.5, "0.0 \u00B0", "21.5 \u00B0"},
              {21.5, "0.0\\\u00B0", "21.5\u00B0"},
              {5, "0\xB5", "5\xB5"},
              {5, "0\"0#.\"", "50#."},
              {5, "0\"open", "5open"},
              {5, "\\#0", "#5"},
              {5, "0\\", "5\\"},
              {5550123, "000-0000", "555-0123"},
              {5, "00-00", "00-05"},
              {5, "abc", "abc"},
              {-5, "abc", "abc"},
              {5, "m.s", "m.s"},
              {1.5, "0.0.0", "1.5.0"}});
}

TEST(Format, ChoosesTheSectionBySign) {
  ExpectRows({{5, "0;(0)", "5"},
              {-5, "0;(0)", "(5)"},
              {0, "0;(0)", "0"},
              {0, "0;(0);\"none\"", "none"},
              {5, "0;(0);\"none\"", "5"},
              {-0.3, "0;(0);\"none\"", "none"},
              {0.3, "0;(0);\"none\"", "none"},
              {-0.3, "0;(0)", "0"},
              {-1.5, "0.0;;\"none\"", "-1.5"},
              {0, "0;\"below\";", "0"},
              {-2, "0;\"below\";", "below"},
              {5, "\"a;b\"0", "a;b5"},
              {5, "0\\;0", "0;5"},
              {5, "0;-0;0;x", "5"},
              {5, ";0", ""},
              {-5, ";0", "5"}});
}

/// Nothing in quotes shows nothing, but makes a picture one that is taken apart token by token.
TEST(Format, ByAPlainPictureIsThatOfTheSamePictureWithNothingInQuotes) {
  std::mt19937_64 random(20);
  const std::vector<std::string> pictures = {"0",   "#",     "#0",     "#0.0", "#0.000", "0.0#", "0.##", "#.##",
                                             ".00", ".0#0#", "000.00", "0#0",  "#0#.",   "0.",   "##.0", "#.#0##"};
  for (int i = 0; i < 20'000; ++i) {
    const auto digits = static_cast<double>(random() % 2'000'001) - 1'000'000;
    const double value = digits * std::pow(10.0, static_cast<double>(random() % 24) - 15);
    const std::string& picture = pictures[random() % pictures.size()];
    ASSERT_EQ(Format(value, picture), Format(value, picture + "\"\"")) << value << " by " << picture;
  }
  EXPECT_EQ(Format(1e300, "#0.0"), Format(1e300, "#0.0\"\""));
}

TEST(Format, OfAnEmptyPictureIsTheNumberText) {
  ExpectRows({{0.1, "", "0.1"}, {-0.0, "", "0"}, {1e20, "", "1E+20"}});
}

TEST(Format, NamesWhatIsNoNumber) {
  for (const char* picture : {"#0.000", "0.00e+00", "", "0;(0);z"}) {
    EXPECT_EQ(Format(kNaN, picture), "nan");
    EXPECT_EQ(Format(-kNaN, picture), "nan");
    EXPECT_EQ(Format(kInfinity, picture), "inf");
    EXPECT_EQ(Format(-kInfinity, picture), "-inf");
  }
}

TEST(Format, ShowsTheLargestFloatInFull) {
  EXPECT_EQ(Format(1.7976931348623157e308, "0.0"), "179769313486232" + std::string(294, '0') + ".0");
}

TEST(Format, WidensA32BitFloat) {
  EXPECT_EQ(Format(0.1F, "0.0000000000"), "0.1000000015");
  EXPECT_EQ(Format(2.5F, "0"), "3");
}

TEST(FormatTo, AppendsWithoutAllocatingWhereThereIsRoom) {
  std::string out = "P = ";
  out.reserve(64);
  const char* const before = out.data();
  FormatTo(out, 1234.5678, "#0.000");
  EXPECT_EQ(out, "P = 1234.568");
  EXPECT_EQ(out.data(), before);
}

}  // namespace
}  // namespace velk
