#include "log/field_names.h"

#include <gtest/gtest.h>

namespace velk {
namespace {

using Names = std::vector<std::string>;

TEST(FieldNames, CleaningTakesOutEveryForbiddenCharacter) {
  EXPECT_EQ(CleanFieldName("a.b!c'd[e]f"), "abcdef");
  for (char code = 0; code < 32; ++code) EXPECT_EQ(CleanFieldName(std::string("x") + code + "y"), "xy") << int{code};
  EXPECT_EQ(CleanFieldName("...!!!"), "");
  EXPECT_EQ(CleanFieldName(""), "");
}

TEST(FieldNames, CleaningKeepsEverythingElse) {
  std::string kept;
  for (int code = 32; code < 256; ++code)
    if (std::string(".!'[]").find(static_cast<char>(code)) == std::string::npos) kept += static_cast<char>(code);
  EXPECT_EQ(CleanFieldName(kept), kept);
  EXPECT_EQ(CleanFieldName(" Давл. (кПа) \"№ 1\" "), " Давл (кПа) \"№ 1\" ");
}

TEST(FieldNames, BlankAndVanishedNamesGetTheirChannelsNumber) {
  EXPECT_EQ(LogColumnNames({"BLANK", "A", "[]", "BLANK.", "blank"}),
            (Names{"BLANK1", "A", "BLANK3", "BLANK4", "blank"}));
}

TEST(FieldNames, ColumnsDifferInMoreThanCase) {
  EXPECT_EQ(LogColumnNames({"BLANK2", "BLANK"}), (Names{"BLANK2", "BLANK2_2"}));
  EXPECT_EQ(LogColumnNames({"A.B", "ab"}), (Names{"AB", "ab_2"}));
  EXPECT_EQ(LogColumnNames({"a_2", "b", "A_2"}), (Names{"a_2", "b", "A_2_3"}));
  EXPECT_EQ(LogColumnNames({"a", "a", "a_2"}), (Names{"a", "a_2", "a_2_3"}));
  EXPECT_EQ(LogColumnNames({"a_2", "A", "a", "a_3"}), (Names{"a_2", "A", "a_3", "a_3_4"}));
}

TEST(FieldNames, BeginningWithBlankIsSeenInAnyCase) {
  EXPECT_TRUE(BeginsWithBlank("BLANK7"));
  EXPECT_TRUE(BeginsWithBlank("blanket"));
  EXPECT_FALSE(BeginsWithBlank("BLAN"));
  EXPECT_FALSE(BeginsWithBlank(" BLANK"));
  EXPECT_FALSE(BeginsWithBlank(""));
}

}  // namespace
}  // namespace velk
