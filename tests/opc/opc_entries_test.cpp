#include "opc/opc_entries.h"

#include <gtest/gtest.h>

namespace velk {
namespace {

TEST(OpcEntries, TakeAnUpdateRateAndReadAnEmptyOneAsNone) {
  EXPECT_EQ(EnteredUpdateRate("250"), 250);
  EXPECT_EQ(EnteredUpdateRate(""), 0);
  EXPECT_EQ(EnteredUpdateRate(" "), 0);
  EXPECT_EQ(EnteredUpdateRate("2147483647"), 2147483647);
  EXPECT_EQ(EnteredUpdateRate("2147483648"), std::nullopt);
  EXPECT_EQ(EnteredUpdateRate("-1"), std::nullopt);
  EXPECT_EQ(EnteredUpdateRate("1.5"), std::nullopt);
}

TEST(OpcEntries, TakeADeadbandOfUpToAHundredPercent) {
  EXPECT_EQ(EnteredDeadBand("2,5"), 2.5F);
  EXPECT_EQ(EnteredDeadBand(""), 0.0F);
  EXPECT_EQ(EnteredDeadBand("100"), 100.0F);
  EXPECT_EQ(EnteredDeadBand("100.1"), std::nullopt);
  EXPECT_EQ(EnteredDeadBand("-1"), std::nullopt);
}

TEST(OpcEntries, TakeADisplayIntervalFromFiftyToTenThousand) {
  EXPECT_EQ(EnteredDisplayInterval("50"), 50);
  EXPECT_EQ(EnteredDisplayInterval("10000"), 10000);
  EXPECT_EQ(EnteredDisplayInterval("49"), std::nullopt);
  EXPECT_EQ(EnteredDisplayInterval("10001"), std::nullopt);
  EXPECT_EQ(EnteredDisplayInterval("60.5"), std::nullopt);
  EXPECT_EQ(EnteredDisplayInterval(""), std::nullopt);
  EXPECT_EQ(EnteredDisplayInterval("word"), std::nullopt);
}

TEST(OpcEntries, TakeAValueAsATextAndAnArrayAsItsElements) {
  EXPECT_EQ(EnteredOpcValue("62.5", false), OpcValue(std::string("62.5")));
  EXPECT_EQ(EnteredOpcValue("a, b", false), OpcValue(std::string("a, b")));
  const std::vector<OpcElement> two = {std::string("1"), std::string("2")};
  EXPECT_EQ(EnteredOpcValue("1, 2", true), OpcValue(two));
  const std::vector<OpcElement> one = {std::string()};
  EXPECT_EQ(EnteredOpcValue("", true), OpcValue(one));
}

}  // namespace
}  // namespace velk
