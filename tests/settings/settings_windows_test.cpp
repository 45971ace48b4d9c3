#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "platform/windows/qt_dialogs.h"
#include "settings/windows/clear_settings.h"
#include "settings/windows/frm_user_options.h"
#include "settings/windows/list_input_box.h"
#include "settings/windows/settings_questions_qt.h"
#include "support/in_english.h"

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

// --- ListInputBox ---

const ListQuestion kSave{
    "Save Settings Template", "Select or enter the template name", {"Job", "Цементирование"}, true};
const ListQuestion kLoad{"Load Settings Template", "Select the template to load", {"Job", "Цементирование"}};

TEST(ListInputBox, ShowsItsTitlePromptAndList) {
  ListInputBox window(test::EnglishWindows(), kSave);
  Show(window, "ListInputBox-save");
  EXPECT_EQ(window.objectName(), "ListInputBox");
  EXPECT_EQ(window.windowTitle(), "Save Settings Template");
  EXPECT_EQ(Find<QLabel>(window, "lblPrompt")->text(), "Select or enter the template name");
  ASSERT_EQ(Find<QListWidget>(window, "List1")->count(), 2);
  EXPECT_EQ(Find<QListWidget>(window, "List1")->item(1)->text(), "Цементирование");
  EXPECT_EQ(Find<QPushButton>(window, "cmdOK")->text(), "OK");
  EXPECT_EQ(Find<QPushButton>(window, "cmdCancel")->text(), "Cancel");
}

TEST(ListInputBox, HasItsTextBoxOnlyWhereATextMayBeEntered) {
  ListInputBox saving(test::EnglishWindows(), kSave);
  Show(saving, "saving");
  EXPECT_TRUE(Find<QLineEdit>(saving, "Text1")->isVisible());
  ListInputBox loading(test::EnglishWindows(), kLoad);
  Show(loading, "ListInputBox-load");
  EXPECT_FALSE(Find<QLineEdit>(loading, "Text1")->isVisible());
}

TEST(ListInputBox, HasNoPromptWhereNoneIsGiven) {
  ListInputBox window(test::EnglishWindows(), {"Select language", "", {"English", "Russian"}});
  Show(window, "ListInputBox-language");
  EXPECT_FALSE(Find<QLabel>(window, "lblPrompt")->isVisible());
  EXPECT_EQ(Find<QListWidget>(window, "List1")->accessibleName(), "Select language");
}

TEST(ListInputBox, EnablesOkWhileTheTextIsNotEmpty) {
  ListInputBox window(test::EnglishWindows(), kSave);
  Show(window, "enabling");
  const auto* ok = Find<QPushButton>(window, "cmdOK");
  auto* text = Find<QLineEdit>(window, "Text1");
  EXPECT_FALSE(ok->isEnabled());
  text->setText(" ");
  EXPECT_TRUE(ok->isEnabled());
  text->clear();
  EXPECT_FALSE(ok->isEnabled());
  Find<QListWidget>(window, "List1")->setCurrentRow(0);
  EXPECT_TRUE(ok->isEnabled());
  text->clear();
  EXPECT_FALSE(ok->isEnabled()) << "the text counts, not the list";
}

TEST(ListInputBox, ShowsTheClickedEntryInTheTextBox) {
  ListInputBox window(test::EnglishWindows(), kSave);
  Show(window, "clicking");
  auto* list = Find<QListWidget>(window, "List1");
  auto* text = Find<QLineEdit>(window, "Text1");
  const auto click = [list](int row) {
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(row)).center());
  };
  click(1);
  EXPECT_EQ(text->text(), "Цементирование");
  text->setText("other");
  click(1);
  EXPECT_EQ(text->text(), "Цементирование") << "a second click on it counts, too";
  click(0);
  EXPECT_EQ(text->text(), "Job");
}

TEST(ListInputBox, GivesWhatWasTyped) {
  ListInputBox window(test::EnglishWindows(), kSave);
  Show(window, "typing");
  QTest::keyClicks(QApplication::focusWidget(), "job 2 ");
  Press(Qt::Key_Return);
  EXPECT_FALSE(window.isVisible());
  EXPECT_EQ(window.Chosen(), "job 2 ") << "as typed, blanks included";
}

TEST(ListInputBox, IsUsedByKeyboardAlone) {
  ListInputBox window(test::EnglishWindows(), kLoad);
  Show(window, "keyboard");
  EXPECT_FALSE(Find<QPushButton>(window, "cmdOK")->isEnabled()) << "nothing is chosen for the operator";
  Press(Qt::Key_Return);
  ASSERT_TRUE(window.isVisible());
  Press(Qt::Key_Down);
  EXPECT_EQ(Find<QListWidget>(window, "List1")->selectedItems().value(0)->text(), "Job");
  Press(Qt::Key_Down);
  Press(Qt::Key_Return);
  EXPECT_FALSE(window.isVisible());
  EXPECT_EQ(window.Chosen(), "Цементирование");
}

TEST(ListInputBox, TakesADoubleClickForOk) {
  ListInputBox window(test::EnglishWindows(), kLoad);
  Show(window, "double");
  auto* list = Find<QListWidget>(window, "List1");
  const QPoint first = list->visualItemRect(list->item(0)).center();
  QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, first);
  QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, first);
  EXPECT_FALSE(window.isVisible());
  EXPECT_EQ(window.Chosen(), "Job");
}

TEST(ListInputBox, GivesNothingOnCancel) {
  ListInputBox escaped(test::EnglishWindows(), kSave);
  Show(escaped, "escaped");
  QTest::keyClicks(QApplication::focusWidget(), "x");
  Press(Qt::Key_Escape);
  EXPECT_FALSE(escaped.isVisible());
  EXPECT_EQ(escaped.Chosen(), "");

  ListInputBox cancelled(test::EnglishWindows(), kLoad);
  Show(cancelled, "cancelled");
  Press(Qt::Key_Down);
  Find<QPushButton>(cancelled, "cmdCancel")->click();
  EXPECT_EQ(cancelled.Chosen(), "");
}

TEST(ListInputBox, GivesANameThatCanNotBeShownAsItStands) {
  const std::string name = "bad \xFF\x01 name";
  ListInputBox window(test::EnglishWindows(), {"Load", "", {name}});
  Find<QListWidget>(window, "List1")->setCurrentRow(0);
  Find<QPushButton>(window, "cmdOK")->click();
  EXPECT_EQ(window.Chosen(), name);
}

TEST(ListInputBox, CanNotBeAnsweredWithAnEmptyList) {
  ListInputBox window(test::EnglishWindows(), {"Load", "prompt", {}});
  Show(window, "ListInputBox-empty");
  Press(Qt::Key_Down);
  EXPECT_FALSE(Find<QPushButton>(window, "cmdOK")->isEnabled());
}

// --- ClearSettings ---

TEST(ClearSettings, NamesEachGroup) {
  ClearSettings window(test::EnglishWindows());
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
    ClearSettings window(test::EnglishWindows());
    Show(window, "checking");
    for (std::size_t i = 0; i < checked; ++i) Press(Qt::Key_Tab);
    Press(Qt::Key_Space);
    Press(Qt::Key_Return);
    EXPECT_EQ(window.result(), QDialog::Accepted);
    for (std::size_t i = 0; i < kSettingsGroups; ++i) EXPECT_EQ(window.Choice()[i], i == checked);
  }
}

// --- frmUserOptions ---

const UserOptionTexts kTexts{"120", "15", "3600", "10", "64"};

TEST(FrmUserOptions, ShowsFiveBoxesInOrder) {
  frmUserOptions window(test::EnglishWindows(), kTexts, [](const UserOptionTexts&) { return true; });
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
  std::vector<UserOptionTexts> asked;
  frmUserOptions window(test::EnglishWindows(), kTexts, [&asked](const UserOptionTexts& texts) {
    asked.push_back(texts);
    return asked.size() == 2;
  });
  Show(window, "accepting");
  QTest::keyClicks(QApplication::focusWidget(), "7");
  for (int i = 0; i < 4; ++i) Press(Qt::Key_Tab);
  QTest::keyClicks(QApplication::focusWidget(), "8");
  Press(Qt::Key_Return);
  EXPECT_TRUE(window.isVisible());
  Press(Qt::Key_Return);
  EXPECT_FALSE(window.isVisible());
  ASSERT_EQ(asked.size(), 2U);
  EXPECT_EQ(asked[1], (UserOptionTexts{"7", "15", "3600", "10", "8"}));
}

TEST(FrmUserOptions, AsksNobodyOnCancel) {
  frmUserOptions window(test::EnglishWindows(), kTexts, [](const UserOptionTexts&) {
    ADD_FAILURE();
    return true;
  });
  Show(window, "leaving");
  Press(Qt::Key_Escape);
  EXPECT_FALSE(window.isVisible());
}

TEST(FrmUserOptions, CanBeDestroyedWhileItsMessageStands) {
  frmUserOptions* window = nullptr;
  window = new frmUserOptions(test::EnglishWindows(), kTexts, [&window](const UserOptionTexts&) {
    delete window;
    return false;
  });
  Show(*window, "destroying");
  Find<QPushButton>(*window, "cmdOK")->click();
}

// --- The questions on the screen ---

class SettingsQuestionsOnScreen : public testing::Test {
 protected:
  SettingsQuestionsOnScreen() { questions.SetParent(&parent); }

  /// Acts on the window once it stands.
  template <class Window>
  void WhenShown(std::function<void(Window&)> act) {
    QTimer::singleShot(0, &parent, [this, act] {
      auto* window = parent.findChild<Window*>();
      ASSERT_NE(window, nullptr);
      gateStoodOpen = gate.IsOpen();
      act(*window);
    });
  }

  QWidget parent;
  Gate gate;
  QtDialogs dialogs{gate, test::English()};
  SettingsQuestionsQt questions{dialogs, test::EnglishWindows()};
  bool gateStoodOpen = false;
};

TEST_F(SettingsQuestionsOnScreen, LetSamplesGoOnWhileTheyStand) {
  const GateState shut(gate, GateState::Shut);
  WhenShown<ListInputBox>([](ListInputBox& window) {
    Find<QListWidget>(window, "List1")->setCurrentRow(1);
    Find<QPushButton>(window, "cmdOK")->click();
  });
  EXPECT_EQ(questions.Choose(kLoad), "Цементирование");
  EXPECT_TRUE(gateStoodOpen);
  EXPECT_FALSE(gate.IsOpen());
  EXPECT_EQ(parent.findChild<ListInputBox*>(), nullptr);
}

TEST_F(SettingsQuestionsOnScreen, GiveTheGroupsToClear) {
  WhenShown<ClearSettings>([](ClearSettings& window) {
    Find<QCheckBox>(window, "Check1_3")->click();
    Find<QPushButton>(window, "cmdOK")->click();
  });
  const auto groups = questions.GroupsToClear();
  ASSERT_TRUE(groups.has_value());
  EXPECT_EQ(*groups, (GroupChoice{false, false, false, true, false, false}));

  WhenShown<ClearSettings>([](ClearSettings& window) {
    Find<QCheckBox>(window, "Check1_3")->click();
    Find<QPushButton>(window, "cmdCancel")->click();
  });
  EXPECT_FALSE(questions.GroupsToClear().has_value());
}

TEST_F(SettingsQuestionsOnScreen, HandTheOptionsOn) {
  WhenShown<frmUserOptions>([](frmUserOptions& window) {
    Find<QLineEdit>(window, "Text1_3")->setText("12");
    Find<QPushButton>(window, "cmdOK")->click();
  });
  UserOptionTexts got;
  questions.UserOptions(kTexts, [&got](const UserOptionTexts& texts) {
    got = texts;
    return true;
  });
  EXPECT_EQ(got[3], "12");
}

TEST_F(SettingsQuestionsOnScreen, AreLeftWithoutAnAnswerAtTheEndOfTheProgram) {
  WhenShown<ListInputBox>([this](ListInputBox& window) {
    Find<QLineEdit>(window, "Text1")->setText("x");
    dialogs.SetEnding();
  });
  EXPECT_EQ(questions.Choose(kSave), "");
  EXPECT_EQ(questions.Choose(kSave), "");
  EXPECT_FALSE(questions.GroupsToClear().has_value());
}

}  // namespace
}  // namespace velk
