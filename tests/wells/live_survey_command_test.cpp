#include "wells/windows/live_survey_command.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

#include "platform/database/catalog.h"
#include "platform/files/file_errors.h"
#include "platform/files/whole_file.h"
#include "platform/settings/settings.h"
#include "support/fake_clock.h"
#include "support/host.h"
#include "support/temporary_folder.h"
#include "support/window_script.h"
#include "support/window_texts.h"
#include "wells/windows/frm_import_survey.h"

namespace velk {
namespace {

class LiveSurveyMenu : public testing::Test {
 protected:
  LiveSurveyMenu() { log = {file, {"Speed", "Depth", "Inclination", "Azimuth", "RPM"}}; }

  void Choose(const char* button = "cmdOK") {
    test::WindowScript script;
    script.ThenClick("frmImportSurvey", button);
    command.mnuToolsLiveSurvey_Click();
  }
  void Step(double depth, double inclination = 5) { command.Step({100, {1, depth, inclination, 20, 60}, ++number}); }

  const test::TemporaryFolder folder;
  SettingsStore settings{folder.Path().string()};
  test::Host host;
  test::FakeClock clock{host.gate};
  Platform platform{clock, host.gate, host.dialogs, settings, host.translation.Translator};
  MainTimers timers{clock};
  std::shared_ptr<Connection> file = Connection::Open(folder.File("log.mdb"), OpenMode::CreateNew);
  LiveLog log;
  Well well;
  int paths = 0;
  std::int64_t number = 0;
  LiveSurveyCommand command{host, well, platform, timers, [this] { return log; }, [this] { ++paths; }};
};

TEST_F(LiveSurveyMenu, StartsTheSurveyAndComputesItsPathEveryFiveSeconds) {
  Choose();
  EXPECT_TRUE(command.IsOn());
  EXPECT_TRUE(timers.Timer6->Enabled());
  Step(250);
  clock.Advance(4999);
  EXPECT_EQ(paths, 0);
  clock.Advance(1);
  EXPECT_EQ(paths, 1);
  EXPECT_EQ(well.Survey.size(), 2U);
  EXPECT_EQ(well.Path.stations.size(), 4U);
}

TEST_F(LiveSurveyMenu, EndsItByStop) {
  Choose();
  Choose("Command1");
  EXPECT_FALSE(command.IsOn());
  EXPECT_FALSE(timers.Timer6->Enabled());
}

TEST_F(LiveSurveyMenu, ChangesNothingByCancel) {
  Choose("cmdCancel");
  EXPECT_FALSE(command.IsOn());
  Choose();
  Choose("cmdCancel");
  EXPECT_TRUE(command.IsOn());
}

TEST_F(LiveSurveyMenu, EndsWithItsLog) {
  Choose();
  Step(250);
  log = {};
  file.reset();
  clock.Advance(5000);
  EXPECT_FALSE(command.IsOn());
  EXPECT_FALSE(timers.Timer6->Enabled());
  EXPECT_EQ(paths, 0);
}

TEST_F(LiveSurveyMenu, GoesOnWhileAPauseKeepsRowsFromTheLog) {
  Choose();
  Step(250);
  log = {};
  clock.Advance(5000);
  EXPECT_TRUE(command.IsOn());
  EXPECT_EQ(paths, 1);
}

TEST_F(LiveSurveyMenu, ComputesThePathOnceMoreAtItsEnd) {
  Choose();
  Step(250);
  command.Stop();
  EXPECT_EQ(paths, 1);
  EXPECT_EQ(well.Path.stations.size(), 4U);
  command.Stop();
  EXPECT_EQ(paths, 1);
}

TEST_F(LiveSurveyMenu, LetsGoOfAConnectionThatIsClosed) {
  Choose();
  const std::weak_ptr<Connection> held = file;
  log.to.reset();
  file.reset();
  EXPECT_TRUE(held.expired()) << "the end of the recording must not wait for it";
  EXPECT_FALSE(command.IsOn());
}

TEST_F(LiveSurveyMenu, AsksBeforeRowsThatAreInNoFileGo) {
  well.Survey = {{0, 0, 0}, {500, 1, 2}};
  well.SurveyIsKept = false;
  host.dialogs.Expect("The survey holds rows that are in no file.", Answer::No);
  Choose();
  EXPECT_FALSE(command.IsOn());
  EXPECT_EQ(well.Survey.size(), 2U);
  host.dialogs.Expect("The survey holds rows that are in no file.", Answer::Yes);
  Choose();
  EXPECT_TRUE(command.IsOn());
  EXPECT_EQ(well.Survey.size(), 1U);
}

TEST_F(LiveSurveyMenu, TellsOnceOfAPathThatCanNotBeComputed) {
  Choose();
  Step(40'000);
  host.dialogs.Expect("Overflow - Timer6_Timer", Answer::Ok);
  clock.Advance(5000);
  clock.RunPosted();
  clock.Advance(5000);
  clock.RunPosted();
  EXPECT_TRUE(command.IsOn());
  EXPECT_EQ(paths, 0);
}

TEST_F(LiveSurveyMenu, EndsWhereARowCanNotBeWrittenAndSaysThatTheRecordingGoesOn) {
  Choose();
  file->Execute("DROP TABLE surveyData");
  host.dialogs.Expect("The live survey has ended; the recording goes on.", Answer::Ok);
  Step(250);
  EXPECT_FALSE(command.IsOn());
  clock.RunPosted();
}

TEST_F(LiveSurveyMenu, SurveysAFileThatPlaysIntoOneOfItsOwn) {
  log.to.reset();
  Choose();
  Step(250);
  EXPECT_TRUE(FileExists(folder.File("Survey.mdb")));
  EXPECT_FALSE(Catalog(*file).Find("surveyData")) << "the played file stays as it is";
  clock.Advance(5000);
  EXPECT_EQ(well.Survey.size(), 2U);
  // Again: the rows of before go.
  host.dialogs.Expect("Stations of that one: 1. Begin it?", Answer::Yes);
  Choose();
  clock.Advance(5000);
  EXPECT_EQ(well.Survey.size(), 1U);
}

TEST_F(LiveSurveyMenu, AsksBeforeTheStationsOfASurveyThatRunsGo) {
  Choose();
  Step(250);
  Step(450);
  host.dialogs.Expect("Stations of that one: 2. Begin it?", Answer::No);
  Choose();
  EXPECT_TRUE(host.dialogs.shown.back().safeDefault);
  EXPECT_TRUE(command.IsOn());
  clock.Advance(5000);
  EXPECT_EQ(well.Survey.size(), 3U) << "it goes on";
  host.dialogs.Expect("Stations of that one: 2. Begin it?", Answer::Yes);
  Choose();
  clock.Advance(5000);
  EXPECT_EQ(well.Survey.size(), 1U);
  host.dialogs.Expect("Stations of that one: 0. Begin it?", Answer::No);
  Choose();
}

TEST_F(LiveSurveyMenu, AsksBeforeTheStationsOfASurveyThatHasEndedGo) {
  Choose();
  Step(250);
  command.Stop();
  host.dialogs.Expect("Stations of that one: 1. Begin it?", Answer::No);
  Choose();
  EXPECT_FALSE(command.IsOn());
  const Catalog tables(*file);
  EXPECT_TRUE(tables.Find("surveyData"));
  well.SurveyIsKept = false;
  host.dialogs.Expect("The survey holds rows that are in no file.", Answer::No);
  Choose();
  EXPECT_NE(host.dialogs.shown.back().text.find("Stations of that one: 1."), std::string::npos);
}

TEST_F(LiveSurveyMenu, BeginsWithoutAQuestionWhereAnEarlierOneHasNoStation) {
  Choose();
  command.Stop();
  Choose();
  EXPECT_TRUE(command.IsOn());
}

TEST_F(LiveSurveyMenu, BeginsWhereTheFileOfAnEarlierOneIsDamaged) {
  WriteWholeFile(folder.File("Survey.mdb"), std::string(5000, 'x'));
  Choose();
  EXPECT_TRUE(command.IsOn());
  EXPECT_FALSE(FileExists(folder.File("Survey.mdb")));
}

TEST_F(LiveSurveyMenu, LeavesNoFileOfAnEarlierSurveyBehind) {
  const LiveLog recorded = log;
  log.to.reset();
  Choose();
  Step(250);
  command.Stop();
  EXPECT_TRUE(FileExists(folder.File("Survey.mdb")));
  log = recorded;
  host.dialogs.Expect("Stations of that one: 1. Begin it?", Answer::Yes);
  Choose();
  EXPECT_FALSE(FileExists(folder.File("Survey.mdb")));
}

class MatchWindow : public testing::Test {
 protected:
  void Open(const std::vector<std::string>& fields, const LiveSurveyChoice& choice = {}, bool isRunning = false) {
    window = std::make_unique<frmImportSurvey>(host, fields, choice, isRunning);
    window->show();
    window->activateWindow();
    QApplication::processEvents();
  }
  std::string Box(int i) const {
    return test::FindControl<QLineEdit>(*window, ("txtField_" + std::to_string(i)).c_str())->text().toStdString();
  }

  test::Host host;
  std::unique_ptr<frmImportSurvey> window;
};

TEST_F(MatchWindow, TakesFieldsThatHaveTheNameOfWhatIsNeeded) {
  Open({"Date", "Time", "Depth", "Deviation", "Azimuth", "Speed", "Pressure"});
  const std::vector<std::string> wanted = {"Speed", "Date", "Time", "Depth", "Deviation", "Azimuth", ""};
  for (int i = 0; i < 7; ++i) EXPECT_EQ(Box(i), wanted[static_cast<std::size_t>(i)]) << i;
  Open({"Inclination", "Deviation"});
  EXPECT_EQ(Box(4), "Inclination");
}

TEST(MatchWindowInRussian, KnowsTheColumnsThatHaveEnglishNamesInAnyLanguage) {
  test::Host russian(test::RussianWindows());
  const frmImportSurvey window(russian, {"Date", "Time", "Глубина"}, {}, false);
  EXPECT_EQ(test::FindControl<QLineEdit>(window, "txtField_1")->text(), "Date");
  EXPECT_EQ(test::FindControl<QLineEdit>(window, "txtField_2")->text(), "Time");
  EXPECT_EQ(test::FindControl<QLineEdit>(window, "txtField_3")->text(), "Глубина");
}

TEST_F(MatchWindow, KeepsWhatWasChosenBeforeWhereTheLogHasIt) {
  LiveSurveyChoice choice;
  choice.fields = {"Line speed", "", "", "Gone", "", "", ""};
  choice.filter = SpeedFilter::All;
  choice.interval = 25;
  Open({"Speed", "Line speed", "Depth"}, choice);
  EXPECT_EQ(Box(0), "Line speed");
  EXPECT_EQ(Box(3), "Depth");
  EXPECT_TRUE(test::FindControl<QRadioButton>(*window, "optSpeed_2")->isChecked());
  EXPECT_EQ(test::FindControl<QLineEdit>(*window, "Text1")->text(), "25");
}

TEST_F(MatchWindow, CopiesAFieldOnce) {
  Open({"Line speed", "Hole depth"});
  auto* list = test::FindControl<QListWidget>(*window, "List1");
  test::Click(*window, "cmdAssign_0");
  EXPECT_EQ(Box(0), "Line speed");
  test::Click(*window, "cmdAssign_3");
  EXPECT_EQ(Box(3), "") << "it stands in a box";
  list->setCurrentRow(1);
  test::Click(*window, "cmdAssign_3");
  EXPECT_EQ(Box(3), "Hole depth");
}

TEST_F(MatchWindow, StaysWhileABoxIsEmpty) {
  Open({"Date", "Time", "Depth", "Inclination", "Azimuth", "Speed"});
  host.dialogs.Expect("No parameters to import", Answer::Ok);
  test::Click(*window, "cmdOK");
  EXPECT_TRUE(window->isVisible());
}

TEST_F(MatchWindow, LeavesASurveyThatRunsAloneByEnter) {
  const std::vector<std::string> fields = {"Date", "Time", "Depth", "Inclination", "Azimuth", "Speed", "RPM"};
  for (const bool isRunning : {false, true}) {
    Open(fields, {}, isRunning);
    EXPECT_EQ(test::FindControl<QPushButton>(*window, "Command1")->isEnabled(), isRunning);
    QTest::keyClick(window->focusWidget(), Qt::Key_Return);
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(window->result(), isRunning ? QDialog::Rejected : QDialog::Accepted);
    EXPECT_FALSE(window->Answer().stops);
  }
}

TEST_F(MatchWindow, TakesTheWholeIntervalAndRefusesNone) {
  Open({"Date", "Time", "Depth", "Inclination", "Azimuth", "Speed", "RPM"});
  auto* interval = test::FindControl<QLineEdit>(*window, "Text1");
  for (const char* bad : {"0", "-5", "", "abc", "40000"}) {
    interval->setText(QString::fromLatin1(bad));
    host.dialogs.Expect("The calculation interval has to be from 1 to 32767.", Answer::Ok);
    test::Click(*window, "cmdOK");
    EXPECT_TRUE(window->isVisible());
  }
  interval->setText("30.9");
  test::FindControl<QRadioButton>(*window, "optSpeed_1")->click();
  test::Click(*window, "cmdOK");
  EXPECT_FALSE(window->isVisible());
  EXPECT_EQ(window->Answer().choice.interval, 30);
  EXPECT_EQ(window->Answer().choice.filter, SpeedFilter::PullingOut);
  EXPECT_EQ(window->Answer().choice.fields[3], "Depth");
}

}  // namespace
}  // namespace velk
