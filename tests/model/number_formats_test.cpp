#include "model/number_formats.h"

#include <gtest/gtest.h>

namespace velk {
namespace {

TEST(NumberFormats, HaveASampleEachAndTheWayBack) {
  EXPECT_EQ(NumberFormatSamples(), (std::vector<std::string>{"12345678", "123456.1", "12345.12", "1234.123", "123.1234",
                                                             "12.12345", "1.23456E+01"}));
  for (const NumberFormat& row : kNumberFormats) {
    EXPECT_EQ(SampleOfFormat(row.format), row.sample);
    EXPECT_EQ(FormatOfSample(row.sample), row.format);
  }
}

TEST(NumberFormats, GiveThreeDecimalsForWhatNoSampleStandsFor) {
  EXPECT_EQ(FormatOfSample(""), "#0.000");
  EXPECT_EQ(FormatOfSample("12.5"), "#0.000");
}

TEST(NumberFormats, ShowAnUnknownPictureAsItStands) {
  EXPECT_EQ(SampleOfFormat("0.0%"), "0.0%");
}

}  // namespace
}  // namespace velk
