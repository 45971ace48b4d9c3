#include "settings/user_options.h"
#include "platform/texts.h"
#include "settings/texts.h"

#include <gtest/gtest.h>

#include <string>

namespace velk {
namespace {

MessageText FaultOf(const UserOptionTexts& texts) {
  const auto checked = CheckUserOptions(texts);
  return std::holds_alternative<MessageText>(checked) ? std::get<MessageText>(checked) : text::ButtonOk;
}

constexpr MessageText kNone = text::ButtonOk;

TEST(UserOptions, AreShownAsTheSessionHasThem) {
  Session session;
  session.pixelslength = 60;
  session.MaximumTime = 7200.5;
  session.intFontSize = 12;
  EXPECT_EQ(TextsOfUserOptions(session), (UserOptionTexts{"60", "15", "7200.5", "12", "64"}));
}

TEST(UserOptions, NeedAGraphHeightOfWholeBlockPairs) {
  // 120 x 15 x 2 = 3600 is one pair.
  for (const char* height : {"3600", "7200", "36000", " 3600 ", "3.6E3"})
    EXPECT_EQ(FaultOf({"120", "15", height, "10", "64"}), kNone) << height;
  for (const char* height : {"3599", "3601", "1800", "5400"})
    EXPECT_EQ(FaultOf({"120", "15", height, "10", "64"}), text::UnacceptableValues) << height;
  EXPECT_EQ(FaultOf({"7", "3", "42", "10", "64"}), kNone);
  EXPECT_EQ(FaultOf({"7", "3", "43", "10", "64"}), text::UnacceptableValues);
}

TEST(UserOptions, TakeTheWholePartOfTheMeasures) {
  const auto checked = CheckUserOptions({"120.9", "15.9", "3600.9", "10", "64"});
  ASSERT_TRUE(std::holds_alternative<UserOptions>(checked));
  const auto& options = std::get<UserOptions>(checked);
  EXPECT_EQ(options.pixelslength, 120);
  EXPECT_EQ(options.pixeldivide, 15);
  EXPECT_EQ(options.MaximumTime, 3600);
  EXPECT_EQ(options.intFontSize, 10);
}

TEST(UserOptions, TakeTheNumberAtTheFrontOfAText) {
  const auto checked = CheckUserOptions({"120 s", "15px", "3600,5", "12pt", "64 curves"});
  ASSERT_TRUE(std::holds_alternative<UserOptions>(checked));
  const auto& options = std::get<UserOptions>(checked);
  EXPECT_EQ(options.pixelslength, 120);
  EXPECT_EQ(options.pixeldivide, 15);
  EXPECT_EQ(options.MaximumTime, 3600);
  EXPECT_EQ(options.intFontSize, 12);
}

TEST(UserOptions, RefuseMeasuresThatNoGraphCanHave) {
  for (const std::string bad : {"", " ", "0", "0.9", "-120", "abc", "x12", "1E999", "nan"}) {
    EXPECT_EQ(FaultOf({bad, "15", "3600", "10", "64"}), text::UnacceptableValues) << bad;
    EXPECT_EQ(FaultOf({"120", bad, "3600", "10", "64"}), text::UnacceptableValues) << bad;
    EXPECT_EQ(FaultOf({"120", "15", bad, "10", "64"}), text::UnacceptableValues) << bad;
  }
  EXPECT_EQ(FaultOf({"-120", "-15", "3600", "10", "64"}), text::UnacceptableValues);
  EXPECT_EQ(FaultOf({"120", "15", "3600000000", "10", "64"}), text::UnacceptableValues) << "no surface is so high";
  // 16000 rows of 15 twips.
  EXPECT_EQ(FaultOf({"1", "1", "240000", "10", "64"}), kNone);
  EXPECT_EQ(FaultOf({"1", "1", "240002", "10", "64"}), text::UnacceptableValues);
}

TEST(UserOptions, NeedAFontSizeFromSixToTwenty) {
  for (const char* size : {"6", "20", "6.4", "19.9"}) EXPECT_EQ(FaultOf({"120", "15", "3600", size, "64"}), kNone);
  for (const char* size : {"5", "5.9", "0", "-7", "", "x"})
    EXPECT_EQ(FaultOf({"120", "15", "3600", size, "64"}), text::MinimumFontSize) << size;
  for (const char* size : {"21", "20.1", "1E99"})
    EXPECT_EQ(FaultOf({"120", "15", "3600", size, "64"}), text::MaximumFontSize) << size;
}

TEST(UserOptions, NeedOneCurveAGraph) {
  for (const char* curves : {"1", "64", "1000"}) EXPECT_EQ(FaultOf({"120", "15", "3600", "10", curves}), kNone);
  for (const char* curves : {"0", "-1", "0.5", "", "x"})
    EXPECT_EQ(FaultOf({"120", "15", "3600", "10", curves}), text::MinimumCurves) << curves;
}

TEST(UserOptions, TellTheFirstFault) {
  EXPECT_EQ(FaultOf({"0", "0", "0", "0", "0"}), text::UnacceptableValues);
  EXPECT_EQ(FaultOf({"120", "15", "3600", "0", "0"}), text::MinimumFontSize);
}

}  // namespace
}  // namespace velk
