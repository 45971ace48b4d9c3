#include "model/parameter_questions.h"

#include <gtest/gtest.h>

#include "support/scripted_dialogs.h"

namespace velk {
namespace {

TEST(ParameterQuestions, TellNamesApartThatAreTheSame) {
  EXPECT_EQ(TellApart({"A", "B"}), (std::vector<std::string>{"A", "B"}));
  EXPECT_EQ(TellApart({"A", "A"}), (std::vector<std::string>{"1: A", "2: A"}));
  EXPECT_EQ(TellApart({"A", ""}), (std::vector<std::string>{"1: A", "2: "}));
}

TEST(ParameterQuestions, GiveThePlaceOfTheChosenName) {
  Gate gate;
  test::ScriptedDialogs dialogs(gate);
  dialogs.ExpectChoice("Which", "2: A");
  EXPECT_EQ(AskWhich(dialogs, "Which", "Select", {"A", "A"}), 2);
  dialogs.ExpectChoice("Which", std::nullopt);
  EXPECT_EQ(AskWhich(dialogs, "Which", "Select", {"A", "B"}), std::nullopt);
}

}  // namespace
}  // namespace velk
