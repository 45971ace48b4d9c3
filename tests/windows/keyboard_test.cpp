#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>
#include <QTimer>
#include <QToolBar>

#include "instruments/windows/orben_settings.h"
#include "platform/windows/progress_window.h"
#include "settings/windows/parameters_table.h"
#include "wells/windows/edit_sur.h"
#include "windows/every_window.h"
#include "windows/keyboard_walk.h"
#include "windows/sample_program.h"

namespace velk {
namespace {

using namespace test;

/// Shows each window that is no main window and no graph; those have tests of their own below.
void ForEachForm(const std::function<void(const ListedWindow& listed, QWidget& window)>& look) {
  for (const ListedWindow& listed : EveryWindow()) {
    const auto window = listed.open("Russian");
    if (!window->isWindow() || listed.name == std::string("MainForm")) continue;
    window->show();
    window->activateWindow();
    QApplication::processEvents();
    look(listed, *window);
  }
}

void ForEachDialog(const std::function<void(const ListedWindow& listed, QDialog& window)>& look) {
  int dialogs = 0;
  ForEachForm([&](const ListedWindow& listed, QWidget& window) {
    auto* dialog = qobject_cast<QDialog*>(&window);
    if (dialog) look(listed, *dialog), ++dialogs;
  });
  EXPECT_GT(dialogs, 20);
}

TEST(EveryForm, IsReachedInAllItsPartsByKeyboard) {
  ForEachForm([](const ListedWindow& listed, QWidget& window) {
    EXPECT_NE(window.focusWidget(), nullptr) << listed.Title();
    EXPECT_EQ(ControlsOutOfReach(window), kNone) << listed.Title();
  });
}

TEST(EveryForm, IsWalkedByTabInTheOrderOfReading) {
  ForEachForm(
      [](const ListedWindow& listed, QWidget& window) { EXPECT_EQ(StepsBackward(window), kNone) << listed.Title(); });
}

TEST(EveryForm, NamesItsFields) {
  ForEachForm([](const ListedWindow& listed, QWidget& window) {
    EXPECT_EQ(FieldsWithoutAName(window), kNone) << listed.Title();
  });
}

TEST(EveryDialog, IsLeftByEscapeWithoutAnAnswer) {
  ForEachDialog([](const ListedWindow& listed, QDialog& dialog) {
    QTest::keyClick(dialog.focusWidget(), Qt::Key_Escape);
    if (const auto* progress = qobject_cast<ProgressWindow*>(&dialog)) {
      EXPECT_TRUE(progress->IsCancelled()) << "it stands until the task has seen it";
      return;
    }
    const auto* table = qobject_cast<ParametersTable*>(&dialog);
    if (table && table->Answer().FirstFault()) {
      EXPECT_TRUE(dialog.isVisible()) << "what was typed stays until it can be stored";
      return;
    }
    EXPECT_FALSE(dialog.isVisible()) << listed.Title();
    EXPECT_EQ(dialog.result(), QDialog::Rejected) << listed.Title();
  });
}

TEST(EveryDialog, IsAnsweredOnceByEnter) {
  ForEachDialog([](const ListedWindow& listed, QDialog& dialog) {
    QPushButton* answer = nullptr;
    for (QPushButton* button : dialog.findChildren<QPushButton*>())
      if (button->isDefault()) answer = button;
    ASSERT_NE(answer, nullptr) << listed.Title();
    if (!answer->isEnabled()) return;
    int pressed = 0;
    QObject::connect(answer, &QPushButton::clicked, &dialog, [&] { ++pressed; });
    const bool leadsDownAColumn = qobject_cast<ParametersTable*>(&dialog) || qobject_cast<EditSur*>(&dialog) ||
                                  qobject_cast<OrbenSettings*>(&dialog);
    QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
    EXPECT_EQ(pressed, leadsDownAColumn ? 0 : 1) << listed.Title();
  });
}

// --- The main window ---

class MainFormByKeyboard : public testing::TestWithParam<const char*> {
 protected:
  void SetUp() override { ASSERT_TRUE(QTest::qWaitForWindowActive(&Window())); }

  MainForm& Window() { return program.rig.Window(); }
  /// Alt and the letter that a menu of the bar marks, of whatever alphabet.
  void PressLetter(const QAction& menu) {
    const QKeyCombination marked = QKeySequence::mnemonic(menu.text())[0];
    QTest::sendKeyEvent(QTest::Click, &Window(), marked.key(), QString(QChar(marked.key())), Qt::AltModifier);
  }

  SampleProgram program{GetParam(), SampleProgram::State::Recording};
};

/// What the arrow keys lead to in a menu that stands open.
QSet<const QAction*> Walk(QMenu& menu) {
  QSet<const QAction*> reached;
  for (qsizetype i = 0; i <= menu.actions().size(); ++i) {
    QTest::keyClick(&menu, Qt::Key_Down);
    reached += menu.activeAction();
  }
  return reached;
}

TEST_P(MainFormByKeyboard, EachMenuOpensByItsLetterAndHasEachItemInReach) {
  for (const QAction* entry : Window().menuBar()->actions()) {
    QMenu& menu = *entry->menu();
    PressLetter(*entry);
    ASSERT_TRUE(menu.isVisible()) << entry->text().toStdString();
    const auto reached = Walk(menu);
    for (const QAction* item : menu.actions()) {
      if (item->isSeparator() || !item->isVisible()) continue;
      EXPECT_FALSE(QKeySequence::mnemonic(item->text()).isEmpty() && item->isEnabled() &&
                   item->objectName() != "mnuAcquireStart")
          << item->text().toStdString() << " marks no letter";
      EXPECT_EQ(reached.contains(item), item->isEnabled()) << item->text().toStdString();
    }
    menu.close();
  }
}

TEST_P(MainFormByKeyboard, EachToolbarFunctionIsInAMenu) {
  const std::map<std::string, const char*> menuOf = {
      {"Record", "mnuFileRecord"}, {"PlayBack", "mnuFilePlayback"},  {"Exit", "mnuFileExit"},
      {"Edit", "mnuEdit"},         {"Acquire", "mnuAcquireConnect"}, {"Tools", "mnuTools"},
      {"Help", "mnuHelpContents"}, {"Pause", "mnuAcquireStart"},     {"Stop", "mnuAcquireStop"},
      {"Alarms", "mnuViewAlarms"}, {"Command1", "mnuViewAlarms"},    {"RecordToDB", "mnuAcquireRecord"}};
  const std::set<std::string> shows = {"connect", "disconnect", "ScrollBar"};
  for (const QAction* button : Window().Toolbar().actions()) {
    const std::string key = button->objectName().toStdString();
    if (button->isSeparator() || shows.contains(key)) continue;
    const auto menu = menuOf.find(key);
    ASSERT_NE(menu, menuOf.end()) << key;
    EXPECT_NE(Window().MenuItem(menu->second), nullptr) << key;
  }
}

TEST_P(MainFormByKeyboard, KeysOfItsOwnWorkWithoutTheToolbar) {
  for (const bool toolbar : {true, false}) {
    Window().MenuItem("mnuViewToolBar")->setChecked(toolbar);
    ASSERT_EQ(program.rig.State().RecordToDB, true);
    QTest::keyClick(&Window(), Qt::Key_R, Qt::ControlModifier);
    EXPECT_FALSE(program.rig.State().RecordToDB);
    program.rig.dialogs.ExpectSaveFile(program.rig.folder.File(toolbar ? "second" : "third"));
    QTest::keyClick(&Window(), Qt::Key_R, Qt::ControlModifier);
    EXPECT_TRUE(program.rig.State().RecordToDB);
  }
}

TEST_P(MainFormByKeyboard, AKeyShowsTheAlarms) {
  bool seen = false;
  QTimer::singleShot(0, &Window(), [&] {
    QWidget* alarms = QApplication::activeModalWidget();
    ASSERT_NE(alarms, nullptr);
    seen = alarms->objectName() == "Alarms";
    QTest::keyClick(alarms, Qt::Key_Escape);
  });
  QTest::keyClick(&Window(), Qt::Key_F8);
  EXPECT_TRUE(seen);
}

TEST_P(MainFormByKeyboard, F6LeadsToTheLogoWhereTheToolbarIsHidden) {
  Window().MenuItem("mnuViewToolBar")->setChecked(false);
  QTest::keyClick(&Window(), Qt::Key_F6);
  ASSERT_NE(Window().focusWidget(), nullptr);
  EXPECT_EQ(Window().focusWidget()->objectName(), "CompanyLogo");
  QTest::keyClick(&Window(), Qt::Key_F6);
  EXPECT_NE(Window().focusWidget()->objectName(), "CompanyLogo");
}

TEST_P(MainFormByKeyboard, GraphWindowsTakeTurnsAndTheirLabelsScroll) {
  const QMdiArea& area = Window().GraphArea();
  ASSERT_EQ(area.subWindowList().size(), 2);
  for (int turn = 0; turn < 2; ++turn) {
    QMdiSubWindow* const before = area.activeSubWindow();
    auto* labels = before->findChild<QScrollArea*>("LabelArea");
    before->resize(before->width(), 110);
    QApplication::processEvents();
    QTest::keyClick(before->widget(), Qt::Key_Tab);
    EXPECT_TRUE(labels->hasFocus());
    for (int page = 0; page < 5; ++page) QTest::keyClick(labels, Qt::Key_PageDown);
    EXPECT_EQ(labels->verticalScrollBar()->value(), labels->verticalScrollBar()->maximum());
    QTest::keyClick(labels, Qt::Key_Tab, Qt::ControlModifier);
    QTest::keyRelease(labels, Qt::Key_Control);
    EXPECT_NE(area.activeSubWindow(), before);
  }
}

INSTANTIATE_TEST_SUITE_P(In, MainFormByKeyboard, testing::ValuesIn(kLanguages),
                         [](const auto& language) { return std::string(language.param); });

}  // namespace
}  // namespace velk
