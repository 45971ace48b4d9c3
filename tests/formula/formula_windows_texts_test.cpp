#include <gtest/gtest.h>

#include "formula/computed_session.h"
#include "formula/windows/computed_parameters.h"
#include "formula/windows/eq_editor.h"
#include "formula/windows/frm_inc_params.h"
#include "support/window_driving.h"
#include "support/window_texts.h"

namespace velk {
namespace {

using test::KeysMarkedTwice;
using test::kNone;
using test::ShowWindow;
using test::TextsCutOff;
using test::TextsLeftInEnglish;
using test::TextsWithoutRussian;

/// The keys of the keypad say what they write, which is the same in every language.
const std::set<std::string> kKeypad = {"cmdOperator_4", "cmdFunction_0", "cmdFunction_1", "cmdFunction_2",
                                       "cmdFunction_3", "cmdFunction_4", "cmdFunction_5", "cmdFunction_6",
                                       "cmdFunction_7", "cmdFunction_8", "cmdFunction_9"};

class FormulaWindowsTexts : public testing::Test, protected test::ComputedSession {
 protected:
  void UseRussian() {
    state.Languages = test::RussianCaptions();
    state.Translator = test::RussianMessages();
    state.CurrentParameters[1].name = "Давление на входе насоса";
    Add("({давление на входе насоса}-{pump rate})*2.5", "Разность давлений");
  }

  EqEditor Calculator() {
    return {state, FormulaReport{dialogs, state.Translator, [] {}}, graphs};
  }
  ComputedParameters Boxes() {
    return {state.Languages, ComputedChannels(state), [](QWidget*) {}};
  }
};

TEST_F(FormulaWindowsTexts, StandInTheTranslation) {
  EXPECT_EQ(TextsWithoutRussian(Calculator(), kKeypad), kNone);
  EXPECT_EQ(TextsWithoutRussian(Boxes()), kNone);
  EXPECT_EQ(TextsWithoutRussian(frmIncParams(state)), kNone);
}

TEST_F(FormulaWindowsTexts, AreRussianUnderRussian) {
  UseRussian();
  EqEditor calculator = Calculator();
  EXPECT_EQ(TextsLeftInEnglish(calculator), kNone);
  EXPECT_EQ(KeysMarkedTwice(calculator), kNone);
  ShowWindow(calculator, "ru-EqEditor");
  ComputedParameters boxes = Boxes();
  EXPECT_EQ(TextsLeftInEnglish(boxes), kNone);
  EXPECT_EQ(KeysMarkedTwice(boxes), kNone);
  ShowWindow(boxes, "ru-ComputedParameters");
  frmIncParams list(state);
  EXPECT_EQ(TextsLeftInEnglish(list), kNone);
  ShowWindow(list, "ru-frmIncParams");
}

TEST_F(FormulaWindowsTexts, FitWhenTheyAreLarge) {
  UseRussian();
  for (const double scale : {1.0, 1.5, 2.0}) {
    const test::LargeText text(scale);
    EqEditor calculator = Calculator();
    calculator.show();
    EXPECT_EQ(TextsCutOff(calculator), kNone) << scale;
    ComputedParameters boxes = Boxes();
    boxes.show();
    EXPECT_EQ(TextsCutOff(boxes), kNone) << scale;
    frmIncParams list(state);
    list.show();
    EXPECT_EQ(TextsCutOff(list), kNone) << scale;
  }
}

}  // namespace
}  // namespace velk
