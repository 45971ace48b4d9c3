#include "opc/opc_texts.h"

#include <gtest/gtest.h>

#include "base/dates.h"
#include "opc/opc_keys.h"

namespace velk {
namespace {

const double kMoment = DateSerial(2026, 3, 14) + TimeOfDay(9, 5, 7);

OpcValue ArrayOf(std::vector<OpcElement> elements) {
  return OpcValue(std::move(elements));
}

TEST(OpcKeys, HaveABlankInFrontOfAPositiveNumber) {
  EXPECT_EQ(OpcServerKey(1), "Server 1");
  EXPECT_EQ(OpcGroupKey(2, 1), "Group 2 1");
  EXPECT_EQ(OpcItemKey(5), "Item 5");
  EXPECT_EQ(OpcItemKey(-5), "Item-5");
}

TEST(OpcKeys, TellTheNumberBehindTheirFirstBlank) {
  EXPECT_EQ(NumberOfOpcKey("Item 5"), 5);
  EXPECT_EQ(NumberOfOpcKey("Group 2 1"), 2);
  for (const char* key : {"", "Item", "Item ", "Item five", "Item 2147483648"})
    EXPECT_EQ(NumberOfOpcKey(key), std::nullopt);
}

TEST(OpcDisplay, ShowsValuesAsTexts) {
  EXPECT_EQ(OpcDisplayText(OpcValue()), "");
  EXPECT_EQ(OpcDisplayText(OpcValue(true)), "True");
  EXPECT_EQ(OpcDisplayText(OpcValue(false)), "False");
  EXPECT_EQ(OpcDisplayText(OpcValue(2.5)), "2.5");
  EXPECT_EQ(OpcDisplayText(OpcValue(0.1F)), "0.1");
  EXPECT_EQ(OpcDisplayText(OpcValue(std::uint8_t{65})), "65");
  EXPECT_EQ(OpcDisplayText(OpcValue(std::string("Насос"))), "Насос");
  EXPECT_EQ(OpcDisplayText(OpcValue(OpcDate{kMoment})), "2026-03-14 09:05:07");
  EXPECT_EQ(OpcDisplayText(ArrayOf({std::int16_t{1}, std::int16_t{-2}, std::int16_t{3}})), "1, -2, 3");
  EXPECT_EQ(OpcDisplayText(ArrayOf({std::string(), std::string("x")})), ", x");
  EXPECT_EQ(OpcDisplayText(ArrayOf({})), "");
}

TEST(OpcDisplay, ShowsAThousandElementsOfALongArray) {
  const std::string whole = OpcDisplayText(ArrayOf(std::vector<OpcElement>(1000, true)));
  EXPECT_EQ(whole.size(), 1000 * 4U + 999 * 2U);
  EXPECT_EQ(OpcDisplayText(ArrayOf(std::vector<OpcElement>(1001, true))), whole + ", \u2026");
}

TEST(OpcDisplay, TellsGoodAndUncertainFromBad) {
  EXPECT_EQ(OpcStatusText(192).English(), "Good");
  EXPECT_EQ(OpcStatusText(64).English(), "Good");
  EXPECT_EQ(OpcStatusText(216).English(), "Good");
  EXPECT_EQ(OpcStatusText(0).English(), "Bad 0");
  EXPECT_EQ(OpcStatusText(24).English(), "Bad 24");
}

TEST(OpcLine, TakesTheFirstElementAndDigitsForFlags) {
  EXPECT_EQ(OpcLineText(OpcValue(true), ",", "\r"), "1");
  EXPECT_EQ(OpcLineText(OpcValue(false), ",", "\r"), "0");
  EXPECT_EQ(OpcLineText(OpcValue(-0.25), ",", "\r"), "-0.25");
  EXPECT_EQ(OpcLineText(ArrayOf({7.0, 8.0}), ",", "\r"), "7");
  EXPECT_EQ(OpcLineText(ArrayOf({}), ",", "\r"), "");
}

TEST(OpcLine, KeepsDelimiterAndTerminatorOutOfTexts) {
  EXPECT_EQ(OpcLineText(OpcValue(std::string("a,b\rc")), ",", "\r"), "abc");
  EXPECT_EQ(OpcLineText(OpcValue(std::string("x<<>>y")), "<>", "\r"), "xy");
  EXPECT_EQ(OpcLineText(OpcValue(std::string("a\r,\nb")), ",", "\r\n"), "ab");
  EXPECT_EQ(OpcLineText(OpcValue(std::string("a b")), ",", "\r"), "a b");
}

TEST(OpcLine, JoinsTimeAndValuesInTheirOrder) {
  const OpcLineItem items[] = {{.hasReported = true, .value = OpcValue(1.5)},
                               {.hasReported = true, .value = OpcValue(true)}};
  EXPECT_EQ(JoinOpcLine(kMoment, items, " ", "\r"), "09:05:07 1.5 1\r");
}

TEST(OpcLine, HoldsTheTimeAloneWithoutItems) {
  EXPECT_EQ(JoinOpcLine(kMoment, {}, " ", "\r"), "09:05:07\r");
}

TEST(OpcLine, WaitsUntilEachItemHasReportedOrFailed) {
  OpcLineItem items[] = {
      {.hasReported = true, .value = OpcValue(1.5)}, {}, {.hasReported = true, .value = OpcValue(2.5)}};
  EXPECT_EQ(JoinOpcLine(kMoment, items, ",", "\r"), std::nullopt);
  items[1].hasFailed = true;
  EXPECT_EQ(JoinOpcLine(kMoment, items, ",", "\r"), "09:05:07,1.5,,2.5\r");
}

}  // namespace
}  // namespace velk
