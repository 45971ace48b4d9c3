#include "i18n/windows/toolkit_texts.h"

#include <gtest/gtest.h>

#include <QFileDialog>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QRegularExpression>

#include "i18n/windows/dialog_texts.h"
#include "support/translation_file.h"

namespace velk {
namespace {

TEST(ToolkitTexts, FileDialogSpeaksRussianWhileTheyAreInstalled) {
  {
    const auto russian = InstallToolkitTexts("Russian");
    ASSERT_NE(russian, nullptr) << "the package qt6-translations-l10n is missing";
    QFileDialog files;
    files.setOption(QFileDialog::DontUseNativeDialog);
    const QRegularExpression latin("[A-Za-z]");
    int labels = 0;
    for (const QLabel* label : files.findChildren<QLabel*>()) {
      if (label->text().isEmpty()) continue;
      ++labels;
      EXPECT_FALSE(label->text().contains(latin)) << label->text().toStdString();
    }
    EXPECT_GE(labels, 3);
  }
  EXPECT_EQ(QFileDialog::tr("Look in:"), "Look in:");
}

TEST(ToolkitTexts, NumbersKeepThePoint) {
  const auto russian = InstallToolkitTexts("Russian");
  EXPECT_EQ(QLocale().toString(0.5), "0.5");
}

TEST(ToolkitTexts, NothingIsInstalledForEnglishAndForWhatIsNoLanguage) {
  EXPECT_EQ(InstallToolkitTexts("English"), nullptr);
  EXPECT_EQ(InstallToolkitTexts("Latin"), nullptr);
  EXPECT_EQ(InstallToolkitTexts("Klingonese"), nullptr);
  EXPECT_EQ(InstallToolkitTexts(""), nullptr);
}

TEST(DialogTexts, AreThoseOfTheTranslator) {
  const test::TemporaryFolder folder;
  clstranslation translator;
  const DialogTexts english = DialogTextsIn(translator);
  EXPECT_EQ(english.programName, "VELK");
  EXPECT_EQ(english.ok, "OK");
  EXPECT_EQ(english.cancel, "Cancel");
  EXPECT_EQ(english.yes, "&Yes");
  EXPECT_EQ(english.no, "&No");
  EXPECT_EQ(english.retry, "&Retry");

  ASSERT_TRUE(translator.Load(
      test::MakeDatabase(folder, "m.mdb",
                         "CREATE TABLE Messages(Id,txtMessage,translatable,Russian);INSERT INTO Messages VALUES"
                         "(2040,'',1,'п'),(2046,'',1,'о'),(2047,'',1,'с'),(2048,'',1,'д'),(2049,'',1,'н'),"
                         "(2050,'',1,'р')"),
      "Russian"));
  const DialogTexts russian = DialogTextsIn(translator);
  EXPECT_EQ(russian.programName, "п");
  EXPECT_EQ(russian.ok, "о");
  EXPECT_EQ(russian.cancel, "с");
  EXPECT_EQ(russian.yes, "д");
  EXPECT_EQ(russian.no, "н");
  EXPECT_EQ(russian.retry, "р");
}

}  // namespace
}  // namespace velk
