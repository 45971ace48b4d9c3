#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>
#include <QTextBrowser>

#include "shell/help.h"
#include "support/host.h"
#include "windows/every_window.h"
#include "windows/sample_program.h"

namespace velk {
namespace {

using namespace test;

/// The page that stands in the help window; empty where none is open.
std::string PageShown() {
  for (const QWidget* window : QApplication::topLevelWidgets())
    if (window->objectName() == "HelpWindow" && window->isVisible())
      return window->findChild<QTextBrowser*>("Browser")->source().path().toStdString();
  return {};
}

TEST(EveryWindow, OpensItsPageOfTheHelpByF1) {
  const auto pages = ReadHelpPages("English");
  for (const ListedWindow& listed : EveryWindow()) {
    const auto window = listed.open("English");
    if (listed.name == std::string("MainForm") || listed.name == std::string("HelpWindow")) continue;
    window->show();
    window->activateWindow();
    QWidget* keyboard = window->focusWidget() ? window->focusWidget() : window.get();
    ASSERT_EQ(PageShown(), "") << listed.Title();
    Host host;
    Help help(host);
    QTest::keyClick(keyboard, Qt::Key_F1);
    const HelpPage& page = pages[static_cast<std::size_t>(FindTopic(pages, listed.topic))];
    EXPECT_EQ(page.number, listed.topic) << listed.Title() << ": the help has no such page";
    EXPECT_EQ(PageShown(), page.address.path().toStdString()) << listed.Title();
    EXPECT_TRUE(window->isVisible()) << listed.Title();
  }
}

TEST(EveryWindow, IsNamedByATopicThatOneOfThemOpens) {
  std::set<int> opened;
  for (const ListedWindow& listed : EveryWindow()) opened.insert(listed.topic);
  for (const int number : {topic::Recording, topic::StripChart, topic::Connecting, topic::Instruments, topic::Formulas,
                           topic::Alarms, topic::Templates, topic::Languages, topic::Files})
    EXPECT_TRUE(opened.contains(number)) << number;
}

// --- The language of the help ---

TEST(HelpInRussian, StaysRussianWhenTheSettingsAreClearedWhileTheProgramRuns) {
  SampleProgram program("Russian", SampleProgram::State::Ready);
  program.rig.ClearSettings({0});
  ASSERT_EQ(program.rig.State().Current_language, "English");
  program.rig.Choose("mnuHelpContents");
  EXPECT_EQ(PageShown(), "/help/ru/first_start.html");
}

TEST(HelpInEnglish, StaysEnglishWhenRussianIsChosenForTheNextStart) {
  SampleProgram program("English", SampleProgram::State::Ready);
  program.rig.State().Current_language = "Russian";
  program.rig.Choose("mnuHelpContents");
  EXPECT_EQ(PageShown(), "/help/en/first_start.html");
}

}  // namespace
}  // namespace velk
