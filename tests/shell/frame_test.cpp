#include "shell/frame.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QPlainTextEdit>
#include <QStatusBar>
#include <QTest>
#include <QTextBrowser>
#include <QTimer>

#include "shell/frm_about.h"
#include "shell/shell_rig.h"

namespace velk {
namespace {

/// The help window where it is open, or null.
HelpWindow* OpenHelp() {
  for (QWidget* window : QApplication::topLevelWidgets())
    if (auto* help = qobject_cast<HelpWindow*>(window); help && help->isVisible()) return help;
  return nullptr;
}

class FrameTest : public testing::Test {
 protected:
  QMenu* Menu(const char* name) { return rig.Window().MenuItem(name)->menu(); }
  bool IsShown(const char* widget) { return rig.Window().findChild<QWidget*>(widget)->isVisible(); }
  bool IsEnabled(const char* item) { return rig.Window().MenuItem(item)->isEnabled(); }
  void OpenTools() {
    rig.Press("Tools");
    Menu("mnuTools")->hide();
  }

  test::ShellRig rig;
};

// --- View ---

TEST_F(FrameTest, TogglesBarsWithTheirCheckMarks) {
  rig.Start();
  for (const auto& [item, bar] : {std::pair("mnuViewToolBar", "Toolbar1"),
                                  {"mnuViewStatusBar", "StatusBar1"},
                                  {"mnuViewCompany", "CompanyBar"}}) {
    EXPECT_TRUE(IsShown(bar) && rig.Window().MenuItem(item)->isChecked()) << item;
    rig.Choose(item);
    EXPECT_FALSE(IsShown(bar) || rig.Window().MenuItem(item)->isChecked()) << item;
    rig.Choose(item);
    EXPECT_TRUE(IsShown(bar) && rig.Window().MenuItem(item)->isChecked()) << item;
  }
}

TEST_F(FrameTest, KeepsOnlyTheLogosVisibilityOverARestart) {
  rig.Start();
  for (const char* item : {"mnuViewToolBar", "mnuViewStatusBar", "mnuViewCompany"}) rig.Choose(item);
  EXPECT_FALSE(rig.State().CompanyLogoVisible);
  rig.dialogs.Expect("Are you sure you want to exit VELK?", Answer::Yes);
  rig.Choose("mnuFileExit");
  rig.Start();
  EXPECT_FALSE(IsShown("CompanyBar"));
  EXPECT_FALSE(rig.Window().MenuItem("mnuViewCompany")->isChecked());
  EXPECT_TRUE(IsShown("Toolbar1"));
  EXPECT_TRUE(IsShown("StatusBar1"));
}

TEST_F(FrameTest, HasNoSecondWayToHideBars) {
  rig.Start();
  EXPECT_EQ(rig.Window().contextMenuPolicy(), Qt::NoContextMenu);
}

// --- Menus behind toolbar keys ---

TEST_F(FrameTest, ToolbarKeysPopUpTheirMenus) {
  rig.Start();
  for (const auto& [key, menu] : {std::pair("Edit", "mnuEdit"), {"Tools", "mnuTools"}}) {
    EXPECT_TRUE(rig.Window().Button(key)->isEnabled());
    rig.Press(key);
    EXPECT_TRUE(Menu(menu)->isVisible()) << key;
    Menu(menu)->hide();
  }
}

TEST_F(FrameTest, OffersRemoveAndIncludeOnlyWhereThereIsAComputedChannel) {
  rig.Start();
  rig.Connect();
  for (const char* item : {"mnuToolsRemove", "mnuToolsInclude"}) {
    rig.State().NumberOfFormulae = 0;
    OpenTools();
    EXPECT_FALSE(IsEnabled(item)) << item;
    rig.State().NumberOfFormulae = 1;
    OpenTools();
    EXPECT_TRUE(IsEnabled(item)) << item;
  }
}

TEST_F(FrameTest, OpeningToolsAllowsNothingThatTheStatusForbids) {
  rig.Start();
  rig.State().NumberOfFormulae = 1;
  rig.State().SerialData = "sent when requested";
  OpenTools();
  for (const char* item : {"mnuToolsRemove", "mnuToolsInclude", "mnuToolsReset"}) EXPECT_FALSE(IsEnabled(item)) << item;
}

TEST_F(FrameTest, OffersResetOnlyForTheUnitThatIsAsked) {
  rig.Start();
  rig.Connect();
  rig.State().SerialData = "KESTA version 3";
  OpenTools();
  EXPECT_FALSE(IsEnabled("mnuToolsReset"));
  rig.State().SerialData = "sent when requested";
  OpenTools();
  EXPECT_TRUE(IsEnabled("mnuToolsReset"));
}

// --- Keyboard ---

TEST_F(FrameTest, F6TakesTheKeyboardToTheToolbarAndBack) {
  rig.Start();
  rig.Connect();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&rig.Window()));
  rig.Window().GraphArea().setFocus();
  QTest::keyClick(&rig.Window(), Qt::Key_F6);
  ASSERT_NE(rig.Window().focusWidget(), nullptr);
  EXPECT_TRUE(rig.Window().Toolbar().isAncestorOf(rig.Window().focusWidget()));
  QTest::keyClick(&rig.Window(), Qt::Key_F6);
  EXPECT_FALSE(rig.Window().Toolbar().isAncestorOf(rig.Window().focusWidget()));
}

TEST_F(FrameTest, TabReachesEveryButtonAndTheLogo) {
  rig.Start();
  rig.Connect();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&rig.Window()));
  QCoreApplication::processEvents();  // the toolbar makes room for the buttons of the job
  QTest::keyClick(&rig.Window(), Qt::Key_F6);
  QSet<const QWidget*> reached;
  for (int i = 0; i < 40; ++i) {
    reached += rig.Window().focusWidget();
    QTest::keyClick(rig.Window().focusWidget(), Qt::Key_Tab);
  }
  for (const char* key : {"Record", "Exit", "Acquire", "Edit", "Tools", "Help", "Pause", "Stop"}) {
    QAction* button = rig.Window().Button(key);
    const bool seen = reached.contains(rig.Window().Toolbar().widgetForAction(button));
    EXPECT_EQ(seen, button->isEnabled()) << key;
  }
  EXPECT_TRUE(reached.contains(rig.Window().findChild<QWidget*>("CompanyLogo")));
}

// --- Help ---

TEST_F(FrameTest, MenuAndToolbarOpenTheHelpAtItsBeginning) {
  rig.Start();
  for (const bool menu : {true, false}) {
    if (menu)
      rig.Choose("mnuHelpContents");
    else
      rig.Press("Help");
    ASSERT_NE(OpenHelp(), nullptr);
    EXPECT_EQ(OpenHelp()->windowTitle(), "VELK Help");
    OpenHelp()->close();
  }
}

TEST_F(FrameTest, F1OpensTheTopicOfTheWindowThatHasTheKeyboard) {
  rig.Start();
  QWidget window;
  window.setProperty("helpTopic", 1500);
  auto* inside = new QWidget(&window);
  EXPECT_EQ(Help::TopicOf(inside), topic::StripChart);
  EXPECT_EQ(Help::TopicOf(&rig.Window()), topic::FirstStart);
  EXPECT_EQ(Help::TopicOf(nullptr), topic::FirstStart);
  window.show();
  QTest::keyClick(inside, Qt::Key_F1);
  ASSERT_NE(OpenHelp(), nullptr);
  EXPECT_NE(OpenHelp()->findChild<QTextBrowser*>("Browser")->toPlainText().indexOf("The strip chart"), -1);
}

TEST_F(FrameTest, F1InAGraphWindowOpensTheStripChart) {
  rig.Start();
  rig.Connect();
  QWidget* graph = rig.Window().GraphArea().subWindowList().first()->widget();
  QTest::keyClick(graph, Qt::Key_F1);
  ASSERT_NE(OpenHelp(), nullptr);
  EXPECT_EQ(OpenHelp()->findChild<QTextBrowser*>("Browser")->source().fileName(), "strip_chart.html");
}

TEST_F(FrameTest, F1InABoxOpensTheTopicOfTheWindowBelow) {
  rig.Start();
  rig.Connect();
  QWidget* graph = rig.Window().GraphArea().subWindowList().first()->widget();
  graph->setFocus();
  QInputDialog box(&rig.Window());
  box.show();
  auto* entry = box.findChild<QLineEdit*>();
  entry->setFocus();
  EXPECT_EQ(Help::TopicOf(entry), topic::StripChart);
  box.setProperty("helpTopic", topic::Recording);
  EXPECT_EQ(Help::TopicOf(entry), topic::Recording) << "its own";
  QInputDialog second(&box);
  EXPECT_EQ(Help::TopicOf(&second), topic::Recording);
}

TEST_F(FrameTest, AnOpenHelpDoesNotKeepTheProgramFromEnding) {
  rig.Start();
  rig.Choose("mnuHelpContents");
  EXPECT_FALSE(OpenHelp()->testAttribute(Qt::WA_QuitOnClose));
  rig.application.reset();
  EXPECT_EQ(OpenHelp(), nullptr);
}

// --- About ---

TEST_F(FrameTest, AboutTellsVersionLicencesAndPlaces) {
  rig.Start();
  rig.State().DefaultDirectory = "/jobs/well 7";
  bool seen = false;
  QTimer::singleShot(0, &rig.Window(), [&] {
    auto* about = qobject_cast<frmAbout*>(QApplication::activeModalWidget());
    ASSERT_NE(about, nullptr);
    seen = true;
    EXPECT_NE(about->findChild<QLabel*>("lblVersion")->text().indexOf(VELK_VERSION), -1);
    const QString licences = about->findChild<QPlainTextEdit*>("txtLibraries")->toPlainText();
    EXPECT_TRUE(licences.contains("Qt 6: GNU Lesser General Public License, version 3"));
    EXPECT_TRUE(licences.contains("SQLite 3: public domain"));
    EXPECT_EQ(about->findChild<QLineEdit*>("txtSettings")->text().toStdString(), rig.folder.File("settings"));
    EXPECT_EQ(about->findChild<QLineEdit*>("txtLogs")->text(), "/jobs/well 7");
    QTest::keyClick(about, Qt::Key_Escape);
  });
  rig.Choose("mnuHelpAbout");
  EXPECT_TRUE(seen);
}

}  // namespace
}  // namespace velk
