#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QLineEdit>

#include "store/windows/clear_settings.h"
#include "store/windows/frm_user_options.h"
#include "store/windows/list_input_box.h"
#include "support/window_texts.h"

namespace velk {
namespace {

using namespace test;

const UserOptionTexts kOptions{"120", "15", "3600", "10", "64"};

frmUserOptions* MakeUserOptions(const clsLanguages& languages) {
  return new frmUserOptions(languages, kOptions, [](const UserOptionTexts&) { return true; });
}

ListQuestion SaveQuestion(const clstranslation& translator) {
  return {translator.Translate(MessageId::SaveTemplateTitle),
          translator.Translate(MessageId::SaveTemplatePrompt),
          {"Job 7", "Гидроразрыв пласта, скважина 1042"},
          true};
}

/// Keeps the picture of a window where VELK_PICTURES says.
void KeepPicture(QWidget& window, const char* name) {
  QApplication::processEvents();
  const QString folder = qEnvironmentVariable("VELK_PICTURES");
  if (!folder.isEmpty()) window.grab().save(QDir(folder).filePath(QString::fromLatin1(name) + ".png"));
}

TEST(ListInputBoxTexts, AreThereInRussian) {
  const ListInputBox english({}, SaveQuestion({}));
  EXPECT_EQ(TextsWithoutRussian(english, {"ListInputBox"}), kNone);
  const ListInputBox russian(RussianCaptions(), SaveQuestion(RussianMessages()));
  EXPECT_EQ(russian.windowTitle(), "Сохранить шаблон настроек");
  EXPECT_EQ(TextsLeftInEnglish(russian), kNone);
  EXPECT_EQ(KeysMarkedTwice(russian), kNone);
}

TEST(ListInputBoxTexts, FitWhereTextIsLarge) {
  const LargeText large(1.5);
  for (const bool mayEnter : {true, false}) {
    ListQuestion question = SaveQuestion(RussianMessages());
    question.mayEnter = mayEnter;
    ListInputBox window(RussianCaptions(), question);
    window.show();
    KeepPicture(window, mayEnter ? "ListInputBox-russian-large" : "ListInputBox-russian-large-list");
    EXPECT_EQ(TextsCutOff(window), kNone) << mayEnter;
  }
}

TEST(ClearSettingsTexts, AreThereInRussian) {
  const ClearSettings english({});
  EXPECT_EQ(TextsWithoutRussian(english), kNone);
  const ClearSettings russian(RussianCaptions());
  EXPECT_EQ(russian.windowTitle(), "Сброс настроек программы по разделам");
  EXPECT_EQ(TextsLeftInEnglish(russian), kNone);
  EXPECT_EQ(KeysMarkedTwice(russian), kNone);
}

TEST(ClearSettingsTexts, FitWhereTextIsLarge) {
  const LargeText large(1.5);
  ClearSettings window(RussianCaptions());
  window.show();
  KeepPicture(window, "ClearSettings-russian-large");
  EXPECT_EQ(TextsCutOff(window), kNone);
}

TEST(FrmUserOptionsTexts, AreThereInRussian) {
  const std::unique_ptr<frmUserOptions> english(MakeUserOptions({}));
  EXPECT_EQ(TextsWithoutRussian(*english), kNone);
  const std::unique_ptr<frmUserOptions> russian(MakeUserOptions(RussianCaptions()));
  EXPECT_EQ(russian->windowTitle(), "Параметры пользователя");
  EXPECT_EQ(TextsLeftInEnglish(*russian), kNone);
  EXPECT_EQ(KeysMarkedTwice(*russian), kNone);
}

TEST(FrmUserOptionsTexts, FitWhereTextIsLarge) {
  const LargeText large(1.5);
  const std::unique_ptr<frmUserOptions> window(MakeUserOptions(RussianCaptions()));
  window->show();
  KeepPicture(*window, "frmUserOptions-russian-large");
  EXPECT_EQ(TextsCutOff(*window), kNone);
}

}  // namespace
}  // namespace velk
