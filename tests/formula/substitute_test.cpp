#include "formula/substitute.h"

#include <gtest/gtest.h>

namespace velk {
namespace {

class Substitute : public testing::Test {
 protected:
  Substitute() {
    for (int i = 1; i <= kMaxParameters; ++i) session_.CurrentParameters[i].name = kBlankName;
    Set(1, "Depth", 1234.5F);
    Set(2, "Rate", -3.5F);
    Set(64, "last", 0.5F);
  }

  void Set(int slot, const char* name, float value) {
    session_.CurrentParameters[slot].name = name;
    session_.CurrentValue[slot] = value;
  }

  std::string Text(std::string_view formula) {
    std::string text = "left over";
    brackets_ = SubstituteParameters(session_, formula, text);
    return text;
  }

  Session session_;
  int brackets_ = -1;
};

TEST_F(Substitute, ReplacesReferencesByPresentValues) {
  EXPECT_EQ(Text("{depth}*2+{last}"), "1234.5*2+0.5");
}

TEST_F(Substitute, LeavesATextWithoutReferences) {
  EXPECT_EQ(Text("1+2"), "1+2");
  EXPECT_EQ(Text(""), "");
}

TEST_F(Substitute, MakesRoomForValuesThatAreLongerThanTheirReferences) {
  Set(1, "d", -1.234567e-20F);
  std::string formula;
  std::string expected;
  for (int i = 0; i < 500; ++i) {
    EXPECT_EQ(Text(formula + "1"), expected + "1") << i;
    formula += "{d}+";
    expected += "-1.234567E-20+";
  }
  EXPECT_EQ(Text(formula + "{none}*2"), expected + "{none}*2");
}

TEST_F(Substitute, KeepsTheMinusOfANegativeValue) {
  EXPECT_EQ(Text("2*{rate}"), "2*-3.5");
  EXPECT_EQ(Text("5-{rate}"), "5--3.5");
}

TEST_F(Substitute, WritesSevenDigits) {
  Set(1, "Depth", 0.1F);
  EXPECT_EQ(Text("{depth}"), "0.1");
  Set(1, "Depth", 16777216.0F);
  EXPECT_EQ(Text("{depth}"), "1.677722E+07");
  Set(1, "Depth", 3.4028235E+38F);
  EXPECT_EQ(Text("{depth}"), "3.402823E+38");
  Set(1, "Depth", 1E-05F);
  EXPECT_EQ(Text("{depth}"), "1E-05");
  Set(1, "Depth", -0.0F);
  EXPECT_EQ(Text("{depth}"), "0");
}

TEST_F(Substitute, CountsTheClosingBrackets) {
  Text("(({depth}+1)*2)");
  EXPECT_EQ(brackets_, 2);
  Text("1+2");
  EXPECT_EQ(brackets_, 0);
}

TEST_F(Substitute, StopsAtAReferenceThatNoChannelAnswersTo) {
  EXPECT_EQ(Text("({depth}+{gone})*({rate})"), "(1234.5+{gone})*({rate})");
  EXPECT_EQ(brackets_, 0);
}

TEST_F(Substitute, LowersTheNamesOfTheChannelsOnly) {
  EXPECT_EQ(Text("{Depth}"), "{Depth}");
  EXPECT_EQ(Text("{DEPTH}"), "{DEPTH}");
}

TEST_F(Substitute, TakesTheFirstOfChannelsWithOneName) {
  Set(5, "DEPTH", 99);
  EXPECT_EQ(Text("{depth}"), "1234.5");
}

TEST_F(Substitute, MatchesNamesExactly) {
  for (const char* formula : {"{dept}", "{depths}", "{ depth}", "{}"}) EXPECT_EQ(Text(formula), formula);
}

TEST_F(Substitute, StopsAtBracesThatDoNotMatch) {
  EXPECT_EQ(Text("{depth"), "{depth");
  EXPECT_EQ(Text("}{depth}(1)"), "}{depth}(1)");
  EXPECT_EQ(brackets_, 0);
  EXPECT_EQ(Text("{depth}}{rate}"), "1234.5}{rate}");
  EXPECT_EQ(Text("depth}(1)"), "depth}(1)");
  EXPECT_EQ(brackets_, 1);
}

TEST_F(Substitute, ReadsANameUpToTheFirstClosingBrace) {
  Set(3, "a{b", 7);
  EXPECT_EQ(Text("{a{b}+1"), "7+1");
}

TEST_F(Substitute, FindsNamesOfAnyLanguage) {
  Set(3, "ГЛУБИНА Ёж", 7);
  Set(4, "Température É", 8);
  Set(5, "\xD0", 9);
  EXPECT_EQ(Text("{глубина ёж}"), "7");
  EXPECT_EQ(Text("{température é}"), "8");
  EXPECT_EQ(Text("{\xD0}"), "9");
  EXPECT_EQ(Text("{глубина ёз}"), "{глубина ёз}");
  EXPECT_EQ(Text("{глубина}"), "{глубина}");
  EXPECT_EQ(Text("{ГЛУБИНА Ёж}"), "{ГЛУБИНА Ёж}");
}

TEST_F(Substitute, FindsEachRussianLetter) {
  const std::string upper = "АБВГДЕЁЖЗИЙКЛМНОПРСТУФХЦЧШЩЪЫЬЭЮЯЂЃЄЅІЇЈЉЊЋЌЎЏ";
  const std::string lower = "абвгдеёжзийклмнопрстуфхцчшщъыьэюяђѓєѕіїјљњћќўџ";
  for (std::size_t i = 0; i < upper.size(); i += 2) {
    session_.CurrentParameters[3].name = upper.substr(i, 2);
    EXPECT_EQ(FindChannel(session_, lower.substr(i, 2)), 3) << upper.substr(i, 2);
    session_.CurrentParameters[3].name = lower.substr(i, 2);
    EXPECT_EQ(FindChannel(session_, lower.substr(i, 2)), 3) << lower.substr(i, 2);
    EXPECT_EQ(FindChannel(session_, upper.substr(i, 2)), 0);
  }
}

TEST_F(Substitute, FindsNamesThatChangeTheirLengthInLowerCase) {
  Set(3, "deg \xE2\x84\xAA", 7);  // the sign for kelvin, whose lower case is an ASCII letter
  EXPECT_EQ(Text("{deg k}"), "7");
}

TEST_F(Substitute, FindsTheFirstNamelessChannelByAnEmptyName) {
  Set(7, "", 5);
  EXPECT_EQ(Text("{}"), "5");
}

TEST_F(Substitute, FindsEveryChannelFrom1To64) {
  EXPECT_EQ(FindChannel(session_, "depth"), 1);
  EXPECT_EQ(FindChannel(session_, "last"), 64);
  session_.CurrentParameters[0].name = "none";
  EXPECT_EQ(FindChannel(session_, "none"), 0);
}

TEST_F(Substitute, TakesOnlyLettersForOneAnotherInCase) {
  Set(7, "p@", 5);  // bit by bit, "@" is to "`" what "A" is to "a"
  EXPECT_EQ(FindChannel(session_, "p@"), 7);
  EXPECT_EQ(FindChannel(session_, "p`"), 0);
  EXPECT_EQ(FindChannel(session_, "P@"), 0);
}

TEST_F(Substitute, TakesOtherValuesThanThePresentOnes) {
  Session::PerParameter<float> values{};
  values[1] = 7.25F;
  std::string text;
  EXPECT_EQ(SubstituteParameters(session_, values, "({depth}+{last})", text), 1);
  EXPECT_EQ(text, "(7.25+0)");
}

TEST_F(Substitute, TellsTheChannelsThatAFormulaRefersTo) {
  EXPECT_EQ(ReferencesOf(session_, "avg({last})-{depth}*{no such}+{depth}"), (std::vector<int>{64, 1, 1}));
  EXPECT_TRUE(ReferencesOf(session_, "1+2").empty());
  EXPECT_TRUE(ReferencesOf(session_, "{depth").empty());
}

}  // namespace
}  // namespace velk
