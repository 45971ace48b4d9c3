#include "i18n/windows/toolkit_texts.h"

#include <gtest/gtest.h>

#include <QFileDialog>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QRegularExpression>

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

}  // namespace
}  // namespace velk
