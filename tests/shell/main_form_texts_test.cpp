#include <gtest/gtest.h>

#include "i18n/windows/translate_form.h"
#include "shell/main_form.h"
#include "support/window_texts.h"

namespace velk {
namespace {

using namespace test;

TEST(MainFormTexts, AreThereInRussian) {
  const Session session;
  MainForm form(session);
  EXPECT_EQ(TextsWithoutRussian(form), kNone);
  TranslateForm(form, RussianCaptions());
  EXPECT_EQ(TextsLeftInEnglish(form), kNone);
  EXPECT_EQ(KeysMarkedTwice(form), kNone);
}

TEST(MainFormTexts, FitWhereTextIsLarge) {
  const LargeText large(1.5);
  const Session session;
  MainForm form(session);
  TranslateForm(form, RussianCaptions());
  form.show();
  EXPECT_EQ(TextsCutOff(form), kNone);
}

}  // namespace
}  // namespace velk
