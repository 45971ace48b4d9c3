#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include "settings/windows/clear_settings.h"
#include "settings/windows/frm_user_options.h"
#include "support/host.h"

namespace velk {
namespace {

template <class Control>
Control* Find(const QWidget& window, const char* name) {
  auto* control = window.findChild<Control*>(QLatin1String(name));
  EXPECT_NE(control, nullptr) << name;
  return control;
}

/// Shows a window, and keeps its picture where VELK_PICTURES says.
void Show(QWidget& window, const char* picture) {
  window.show();
  window.activateWindow();
  QApplication::processEvents();
  const QString folder = qEnvironmentVariable("VELK_PICTURES");
  if (!folder.isEmpty()) window.grab().save(QDir(folder).filePath(QString::fromLatin1(picture) + ".png"));
}

void Press(Qt::Key key) {
  QTest::keyClick(QApplication::focusWidget(), key);
}

// --- ClearSettings ---

TEST(ClearSettings, NamesEachGroup) {
  ClearSettings window(test::EnglishHost(), false);
  Show(window, "ClearSettings");
  EXPECT_EQ(window.objectName(), "ClearSettings");
  EXPECT_EQ(window.windowTitle(), "Clear Program Settings by Section");
  const char* const texts[] = {"General: includes font, logo, sensitivity, sampling rate, etc",
                               "Protocol: includes port, baud rate, parity, stop bits, etc",
                               "Graph printing: includes logo inserted, text position, etc",
                               "Parameters: includes all parameter properties",
                               "Playback: includes all playback parameter properties",
                               "Additional parameters: includes all additional parameter properties"};
  for (int i = 0; i < kSettingsGroups; ++i) {
    const auto* box = Find<QCheckBox>(window, ("Check1_" + std::to_string(i)).c_str());
    EXPECT_EQ(box->text(), texts[i]);
    EXPECT_FALSE(box->isChecked());
  }
}

TEST(ClearSettings, GivesEachBoxByKeyboard) {
  for (std::size_t checked = 0; checked < kSettingsGroups; ++checked) {
    ClearSettings window(test::EnglishHost(), false);
    Show(window, "checking");
    for (std::size_t i = 0; i < checked; ++i) Press(Qt::Key_Tab);
    Press(Qt::Key_Space);
    Press(Qt::Key_Return);
    EXPECT_EQ(window.result(), QDialog::Accepted);
    for (std::size_t i = 0; i < kSettingsGroups; ++i) EXPECT_EQ(window.Answer().groups[i], i == checked);
  }
}

// --- frmUserOptions ---

const UserOptionTexts kTexts{"120", "15", "3600", "10", "64"};

TEST(FrmUserOptions, ShowsFiveBoxesInOrder) {
  frmUserOptions window(test::EnglishHost(), kTexts);
  Show(window, "frmUserOptions");
  EXPECT_EQ(window.objectName(), "frmUserOptions");
  const char* const labels[] = {"Number of seconds between time ticks", "Second height in pixels",
                                "Graph height in pixels", "Graph Font Size", "Maximum number of parameters per graph"};
  for (std::size_t i = 0; i < kTexts.size(); ++i) {
    EXPECT_EQ(Find<QLabel>(window, ("Label1_" + std::to_string(i)).c_str())->text(), labels[i]);
    EXPECT_EQ(Find<QLineEdit>(window, ("Text1_" + std::to_string(i)).c_str())->text().toStdString(), kTexts[i]);
  }
  EXPECT_EQ(Find<QPushButton>(window, "cmdOK")->text(), "O.K.");
}

TEST(FrmUserOptions, StaysOpenUntilTheTextsAreAccepted) {
  test::Host host;
  frmUserOptions window(host, kTexts);
  Show(window, "accepting");
  QTest::keyClicks(QApplication::focusWidget(), "7");
  host.dialogs.Expect("Unacceptable values", Answer::Ok);
  Press(Qt::Key_Return);
  EXPECT_TRUE(window.isVisible());
  Press(Qt::Key_Backspace);
  QTest::keyClicks(QApplication::focusWidget(), "60");
  for (int i = 0; i < 3; ++i) Press(Qt::Key_Tab);
  QTest::keyClicks(QApplication::focusWidget(), "8");
  Press(Qt::Key_Return);
  EXPECT_FALSE(window.isVisible());
  EXPECT_EQ(window.result(), QDialog::Accepted);
  EXPECT_EQ(window.Answer().pixelslength, 60);
  EXPECT_EQ(window.Answer().intFontSize, 8);
}

TEST(FrmUserOptions, LooksAtNothingOnCancel) {
  frmUserOptions window(test::EnglishHost(), {"7", "", "", "", ""});
  Show(window, "leaving");
  Press(Qt::Key_Escape);
  EXPECT_FALSE(window.isVisible());
}

TEST(FrmUserOptions, CanBeDestroyedWhileItsMessageStands) {
  test::Host host;
  auto* window = new frmUserOptions(host, {"7", "15", "3600", "10", "64"});
  host.dialogs.Expect("Unacceptable values", Answer::Ok, [window] { delete window; });
  Show(*window, "destroying");
  Find<QPushButton>(*window, "cmdOK")->click();
}

}  // namespace
}  // namespace velk
