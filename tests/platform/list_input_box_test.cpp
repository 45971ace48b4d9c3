#include "platform/windows/list_input_box.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>

#include "support/in_english.h"
#include "support/window_driving.h"
#include "support/window_texts.h"

namespace velk {
namespace {

using test::ShowWindow;

template <class Control>
Control* Find(const QWidget& window, const char* name) {
  return test::FindControl<Control>(window, name);
}

void Press(Qt::Key key) {
  QTest::keyClick(QApplication::focusWidget(), key);
}

const ShownListQuestion kSave{
    "Save Settings Template", "Select or enter the template name", {"Job", "Цементирование"}, true};
const ShownListQuestion kLoad{"Load Settings Template", "Select the template to load", {"Job", "Цементирование"}};

TEST(ListInputBox, ShowsItsTitlePromptAndList) {
  ListInputBox window(kSave, test::English());
  ShowWindow(window, "ListInputBox-save");
  EXPECT_EQ(window.objectName(), "ListInputBox");
  EXPECT_EQ(window.windowTitle(), "Save Settings Template");
  EXPECT_EQ(Find<QLabel>(window, "lblPrompt")->text(), "Select or enter the template name");
  ASSERT_EQ(Find<QListWidget>(window, "List1")->count(), 2);
  EXPECT_EQ(Find<QListWidget>(window, "List1")->item(1)->text(), "Цементирование");
  EXPECT_EQ(Find<QPushButton>(window, "cmdOK")->text(), "OK");
  EXPECT_EQ(Find<QPushButton>(window, "cmdCancel")->text(), "Cancel");
}

TEST(ListInputBox, ShowsEightEntriesWithoutScrolling) {
  const test::LargeText large(2);
  std::vector<std::string> entries(8, "123456.1");
  entries.push_back("a ninth");
  ListInputBox window({"Number Format", "Select Number Format", entries}, test::English());
  window.show();
  const auto& list = *Find<QListWidget>(window, "List1");
  const QRect inSight = list.viewport()->rect();
  EXPECT_TRUE(inSight.contains(list.visualItemRect(list.item(7))));
  EXPECT_FALSE(inSight.contains(list.visualItemRect(list.item(8))));
}

TEST(ListInputBox, HasItsTextBoxOnlyWhereATextMayBeEntered) {
  ListInputBox saving(kSave, test::English());
  ShowWindow(saving, "saving");
  EXPECT_TRUE(Find<QLineEdit>(saving, "Text1")->isVisible());
  ListInputBox loading(kLoad, test::English());
  ShowWindow(loading, "ListInputBox-load");
  EXPECT_FALSE(Find<QLineEdit>(loading, "Text1")->isVisible());
}

TEST(ListInputBox, HasNoPromptWhereNoneIsGiven) {
  ListInputBox window({"Select language", "", {"English", "Russian"}}, test::English());
  ShowWindow(window, "ListInputBox-language");
  EXPECT_FALSE(Find<QLabel>(window, "lblPrompt")->isVisible());
  EXPECT_EQ(Find<QListWidget>(window, "List1")->accessibleName(), "Select language");
}

TEST(ListInputBox, EnablesOkWhileTheTextIsNotEmpty) {
  ListInputBox window(kSave, test::English());
  ShowWindow(window, "enabling");
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
  ListInputBox window(kSave, test::English());
  ShowWindow(window, "clicking");
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
  ListInputBox window(kSave, test::English());
  ShowWindow(window, "typing");
  QTest::keyClicks(QApplication::focusWidget(), "job 2 ");
  Press(Qt::Key_Return);
  EXPECT_FALSE(window.isVisible());
  EXPECT_EQ(window.Chosen(), "job 2 ") << "as typed, blanks included";
}

TEST(ListInputBox, IsUsedByKeyboardAlone) {
  ListInputBox window(kLoad, test::English());
  ShowWindow(window, "keyboard");
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
  ListInputBox window(kLoad, test::English());
  ShowWindow(window, "double");
  auto* list = Find<QListWidget>(window, "List1");
  const QPoint first = list->visualItemRect(list->item(0)).center();
  QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, first);
  QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, first);
  EXPECT_FALSE(window.isVisible());
  EXPECT_EQ(window.Chosen(), "Job");
}

TEST(ListInputBox, GivesNothingOnCancel) {
  ListInputBox escaped(kSave, test::English());
  ShowWindow(escaped, "escaped");
  QTest::keyClicks(QApplication::focusWidget(), "x");
  Press(Qt::Key_Escape);
  EXPECT_FALSE(escaped.isVisible());
  EXPECT_EQ(escaped.Chosen(), "");

  ListInputBox cancelled(kLoad, test::English());
  ShowWindow(cancelled, "cancelled");
  Press(Qt::Key_Down);
  Find<QPushButton>(cancelled, "cmdCancel")->click();
  EXPECT_EQ(cancelled.Chosen(), "");
}

TEST(ListInputBox, GivesANameThatCanNotBeShownAsItStands) {
  const std::string name = "bad \xFF\x01 name";
  ListInputBox window({"Load", "", {name}}, test::English());
  Find<QListWidget>(window, "List1")->setCurrentRow(0);
  Find<QPushButton>(window, "cmdOK")->click();
  EXPECT_EQ(window.Chosen(), name);
}

TEST(ListInputBox, CanNotBeAnsweredWithAnEmptyList) {
  ListInputBox window({"Load", "prompt", {}}, test::English());
  ShowWindow(window, "ListInputBox-empty");
  Press(Qt::Key_Down);
  EXPECT_FALSE(Find<QPushButton>(window, "cmdOK")->isEnabled());
}

TEST(ListInputBox, ShowsItsButtonsInTheLanguageOfTheBoxes) {
  const test::InBrackets language;
  ListInputBox window(kSave, language);
  EXPECT_EQ(Find<QPushButton>(window, "cmdOK")->text(), "<OK>");
  EXPECT_EQ(Find<QPushButton>(window, "cmdCancel")->text(), "<Cancel>");
}

}  // namespace
}  // namespace velk
