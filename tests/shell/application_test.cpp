#include "shell/application.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QCoreApplication>
#include <QDir>
#include <QEvent>
#include <QLabel>
#include <QMdiArea>
#include <QTimer>
#include <filesystem>

#include "formula/additional_parameters.h"
#include "graphs/label_reading.h"
#include "graphs/windows/graph_form_new.h"
#include "i18n/translation.h"
#include "shell/shell_rig.h"

namespace velk {
namespace {

using test::ShellRig;

namespace fs = std::filesystem;

/// The translation databases where start-up looks for them, while it lives.
class TextsBesideTheProgram {
 public:
  TextsBesideTheProgram() {
    for (const char* file : {kCaptionsFile, kMessagesFile})
      fs::copy_file(fs::path(VELK_TRANSLATIONS_DIR) / file, folder_ / file, fs::copy_options::overwrite_existing);
  }
  ~TextsBesideTheProgram() {
    for (const char* file : {kCaptionsFile, kMessagesFile}) fs::remove(folder_ / file);
  }
  TextsBesideTheProgram(const TextsBesideTheProgram&) = delete;
  TextsBesideTheProgram& operator=(const TextsBesideTheProgram&) = delete;

 private:
  fs::path folder_ = QCoreApplication::applicationDirPath().toStdString();
};

class Program : public testing::Test {
 protected:
  void ExpectStatus(const char* status) {
    EXPECT_EQ(rig.State().CurrentStatus.english, status);
    EXPECT_EQ(rig.Window().Panel(1), status);
  }
  std::string Stored(const char* section, const char* key) {
    SettingsStore store(rig.folder.File("settings"));
    return store.Get("VELK2", section, key, "missing");
  }
  void BreakSetting(const char* section, const char* key, const char* value) {
    rig.settings->Save("VELK2", section, key, value);
    rig.settings->Flush();
  }

  ShellRig rig;
};

// --- Start-up ---

TEST_F(Program, ComesUpReadyWithItsTitleAndWithoutTheAcquireTimeButtons) {
  rig.Start();
  ExpectStatus("Ready");
  EXPECT_EQ(rig.Window().windowTitle(), "Velk Acquisition Console (VELK) - version " VELK_VERSION);
  EXPECT_TRUE(rig.Window().isVisible());
  for (const char* key : {"Pause", "Stop", "RecordToDB", "Alarms", "ScrollBar"})
    EXPECT_FALSE(rig.Window().Button(key)->isVisible()) << key;
  EXPECT_TRUE(rig.State().AskOnExit);
  EXPECT_TRUE(rig.State().FirstPoint);
}

TEST_F(Program, OpensTheLinkOfAnOwnUnitWithoutAsking) {
  rig.Start();
  EXPECT_TRUE(rig.linePort.open);
  EXPECT_EQ(rig.Window().ButtonImage("connect"), image::ConnectOn);
  EXPECT_EQ(rig.State().Terminator, "\r\n");
}

TEST_F(Program, AsksBeforeItOpensTheLineOfAnOutsideInstrument) {
  for (const char* protocol : {"formatted and at regular intervals", "National Oil Well PLC", "Any Serial Data"}) {
    BreakSetting("Protocol", "SerialData", protocol);
    rig.dialogs.Expect("Continue with current serial port settings?", Answer::Yes);
    rig.Start();
    EXPECT_TRUE(rig.linePort.open) << protocol;
    EXPECT_EQ(rig.dialogs.shown.back().buttons, Buttons::YesNo);
  }
}

/// Counts how often the main window paints itself.
class PaintsOfTheMainWindow : public QObject {
 public:
  PaintsOfTheMainWindow() { qApp->installEventFilter(this); }
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint && qobject_cast<MainForm*>(watched)) ++count;
    return false;
  }
  int count = 0;
};

TEST_F(Program, TheWindowIsPaintedBeforeAQuestionCoversIt) {
  BreakSetting("Protocol", "SerialData", "Any Serial Data");
  PaintsOfTheMainWindow paints;
  int before = 0;
  rig.dialogs.Expect("Continue with current serial port settings?", Answer::Yes, [&] { before = paints.count; });
  rig.Start();
  EXPECT_GT(before, 0);
}

TEST_F(Program, StartsOnAnEmptyStoreWithOneParameter) {
  std::filesystem::remove_all(rig.folder.File("settings"));
  rig.dialogs.Expect("Continue with current serial port settings?", Answer::No);
  rig.windows.ThenClick("HardwareSettings", "cmdCancel");
  rig.Start();
  EXPECT_FALSE(rig.linePort.open);
  EXPECT_TRUE(rig.windows.IsDone()) << "No leads to the dialogs of the serial port";
  EXPECT_EQ(rig.State().NumberOfParameters, 1);
  EXPECT_EQ(rig.State().Parameters[1].name, "Parameter 1");
  EXPECT_EQ(rig.State().Parameters[1].max, 100.0);
  EXPECT_EQ(rig.State().Parameters[1].FormIndex, 1);
}

TEST_F(Program, NamesTheKeyThatCannotBeReadAndGoesOn) {
  BreakSetting("Protocol", "BaudRate", "fast");
  rig.dialogs.Expect("BaudRate", Answer::Ok);
  rig.Start();
  EXPECT_EQ(rig.dialogs.shown[0].title, "Start Up Error");
  EXPECT_NE(rig.dialogs.shown[0].text.find("Protocol"), std::string::npos);
  EXPECT_NE(rig.dialogs.shown[0].text.find("Line = 5"), std::string::npos);
  ExpectStatus("Ready");
  EXPECT_TRUE(rig.linePort.open) << "the remaining steps ran";
}

TEST_F(Program, TellsErrorsInRussianInARussianSession) {
  const TextsBesideTheProgram texts;
  BreakSetting("General", "Current_language", "Russian");
  BreakSetting("Protocol", "BaudRate", "fast");
  rig.dialogs.Expect("Protocol/BaudRate: Несоответствие типов (\"fast\")\n\n\nСтрока = 5", Answer::Ok);
  rig.Start();
  ASSERT_EQ(rig.dialogs.shown.size(), 1U);
  EXPECT_EQ(rig.dialogs.shown[0].title, "Ошибка при запуске");

  rig.dialogs.ExpectChoice("", "Job");
  rig.dialogs.Expect("Загрузка шаблона заменит:", Answer::Yes);
  rig.dialogs.Expect("VELKJob.ini: Файл не найден - mnuEditLoadTemplate_Click", Answer::Cancel);
  rig.Choose("mnuEditLoadTemplate");
}

TEST_F(Program, FindsParametersPortAndFolderAgainAfterARestart) {
  rig.Start();
  rig.State().Parameters[2].name = "Расход";
  rig.State().Parameters[2].max = 12.5;
  rig.State().PortNumber = 3;
  rig.State().DefaultDirectory = "/jobs/well 7";
  rig.dialogs.Expect("Are you sure you want to exit VELK?", Answer::Yes);
  rig.Choose("mnuFileExit");
  rig.Start();
  EXPECT_EQ(rig.State().Parameters[2].name, "Расход");
  EXPECT_EQ(rig.State().Parameters[2].max, 12.5);
  EXPECT_EQ(rig.State().PortNumber, 3);
  EXPECT_EQ(rig.State().DefaultDirectory, "/jobs/well 7");
}

// --- A job by the buttons ---

TEST_F(Program, RunsAJobFromTheToolbar) {
  rig.Start();
  rig.Connect();
  ExpectStatus("Ready to Acquire");
  EXPECT_EQ(rig.Window().GraphArea().subWindowList().size(), 3) << "each channel has a graph of its own";
  EXPECT_TRUE(rig.Window().Button("Pause")->isVisible());
  EXPECT_EQ(rig.Window().Button("Pause")->toolTip(), "Start");

  rig.dialogs.ExpectSaveFile(rig.folder.File("job"));
  rig.Press("Record");
  EXPECT_EQ(rig.Window().Panel(2), QString::fromStdString("Current File: " + rig.folder.File("job.mdb")));
  EXPECT_EQ(rig.Window().ButtonImage("RecordToDB"), image::RecordOn);

  rig.Press("Pause");
  ExpectStatus("Acquiring Data");
  EXPECT_TRUE(rig.Window().Button("RecordToDB")->isVisible());
  for (int i = 0; i < 5; ++i) rig.Frame(10 + i, 20, 30);
  EXPECT_EQ(rig.application->RowsRecorded(), 4) << "the first frame only shows the length of the next ones";

  rig.Press("Pause");
  ExpectStatus("Acquiring Paused");
  rig.Frame(50, 60, 70);
  EXPECT_EQ(rig.application->RowsRecorded(), 4);
  rig.Press("Pause");
  rig.Frame(51, 61, 71);
  EXPECT_EQ(rig.application->RowsRecorded(), 5);
  EXPECT_EQ(rig.Window().Panel(4), QString::fromStdString(FormatDate(rig.clock.Now(), "hh:mm:ss")));

  rig.Press("Stop");
  ExpectStatus("Ready");
  EXPECT_FALSE(std::filesystem::exists(rig.folder.File("job.mdb-wal")));
  EXPECT_FALSE(rig.Window().Button("Stop")->isVisible());
}

TEST_F(Program, LetsNothingButStopWorkWhileTheHardwareIsChecked) {
  rig.Start();
  bool checked = false;
  rig.clock.onYield = [&] {
    if (rig.State().CurrentStatus.english != "Checking Hardware" || std::exchange(checked, true)) return;
    rig.Choose("mnuFileRecord");
    rig.Choose("mnuFileExit");
    rig.Choose("mnuAcquireStart");
    rig.Press("Pause");
    rig.Press("RecordToDB");
    EXPECT_TRUE(rig.dialogs.shown.empty());
    EXPECT_TRUE(rig.dialogs.filesAsked.empty());
    EXPECT_EQ(rig.State().CurrentStatus.english, "Checking Hardware");
    rig.Press("Stop");
  };
  rig.Press("Acquire");
  EXPECT_TRUE(checked);
  ExpectStatus("Ready");
  rig.clock.onYield = nullptr;
  rig.Connect();
  ExpectStatus("Ready to Acquire");
}

// --- Settings and computed channels, from their menus ---

TEST_F(Program, SavesATemplateAndFindsItInALaterRun) {
  rig.Start();
  rig.State().Parameters[1].name = "Давление";
  rig.dialogs.ExpectChoice("Save Settings Template", "job of May");
  rig.Choose("mnuEditSaveTemplate");
  rig.State().Parameters[1].name = "Other";
  rig.Start();
  rig.dialogs.ExpectChoice("Load Settings Template", "job of May");
  rig.dialogs.Expect("Loading this template replaces:", Answer::Yes);
  rig.Choose("mnuEditLoadTemplate");
  EXPECT_EQ(rig.dialogs.listsAsked.back().entries, std::vector<std::string>{"job of May"});
  EXPECT_EQ(rig.State().Parameters[1].name, "Давление");
  EXPECT_TRUE(rig.linePort.open) << "the connection is reset for the template's unit";
  rig.dialogs.ExpectChoice("Delete Settings Template", "job of May");
  rig.Choose("mnuEditDeleteTemplate");
  rig.Start();
  rig.dialogs.ExpectChoice("Load Settings Template", std::nullopt);
  rig.Choose("mnuEditLoadTemplate");
  EXPECT_TRUE(rig.dialogs.listsAsked.back().entries.empty());
}

TEST_F(Program, AGraphThatWasClosedIsOpenedAgainFromTheMenuAndDrawsOn) {
  rig.Start();
  rig.Connect();
  rig.Press("Pause");
  rig.Frame(1, 2, 3);
  const int graph = rig.State().GraphList[1];
  rig.Window().GraphArea().subWindowList().first()->close();
  rig.clock.RunPosted();
  ASSERT_EQ(rig.State().GraphForms[graph], nullptr);
  QMenu* list = rig.Window().MenuItem("mnuWindow1")->menu();
  emit rig.Window().MenuItem("mnuWindow")->menu()->aboutToShow();
  ASSERT_TRUE(list->actions().last()->text().startsWith("Open Again: "));
  list->actions().last()->trigger();
  ASSERT_NE(rig.State().GraphForms[graph], nullptr);
  rig.Frame(1, 2, 3);
  rig.Frame(1, 2, 3);
  EXPECT_EQ(rig.State().GraphForms[graph]->TimeOrigin(), rig.State().Times.GraphPageTime);
}

/// The pages of a job of twenty minutes, with a sample a second or with those at its ends alone.
int PagesOfTwentyMinutes(bool withGap) {
  test::ShellRig rig;
  rig.Start();
  rig.Connect();
  rig.dialogs.ExpectSaveFile(rig.folder.File("job"));
  rig.Choose("mnuFileRecord");
  rig.Press("Pause");
  rig.Frame(1, 2, 3);
  if (withGap) rig.clock.Advance(1'198'000);
  for (int second = 2; second < 1200 && !withGap; ++second) rig.Frame(1, 2, 3);
  rig.Frame(1, 2, 3);
  return rig.State().PageCount;
}

TEST_F(Program, AGapCountsItsPagesAsIfItsSamplesHadCome) {
  const int pages = PagesOfTwentyMinutes(false);
  EXPECT_GE(pages, 8) << "ten blocks, a page with each but the first two at most";
  EXPECT_EQ(PagesOfTwentyMinutes(true), pages);
}

TEST_F(Program, AGapOfManyPagesAsksForAFileOnce) {
  rig.Start();
  rig.Connect();
  rig.Press("Pause");
  rig.Frame(1, 2, 3);
  rig.clock.Advance(3'600'000);
  rig.dialogs.Expect("File name not supplied, save the data now?", Answer::No);
  rig.Frame(1, 2, 3);
  EXPECT_GE(rig.State().PageCount, 28);
}

TEST_F(Program, ABoxOfAChartComesAgainBehindTenSecondsAndIsNamedMeanwhile) {
  rig.Start();
  rig.Connect();
  rig.Press("Pause");
  rig.Frame(1, 2, 3);
  Parameter& channel = rig.State().CurrentParameters[2];
  channel.min = channel.max = 7;
  rig.dialogs.Expect("Division by zero - PlotValue", Answer::Cancel);
  for (int second = 0; second < 9; ++second) {
    rig.Frame(1, 2, 3);
    EXPECT_EQ(rig.State().Data.failure.English(), "Division by zero (" + channel.name + ")");
  }
  rig.dialogs.Expect("Division by zero - PlotValue", Answer::Cancel);
  for (int second = 0; second < 3; ++second) rig.Frame(1, 2, 3);
  channel.max = 8;
  rig.Frame(1, 2, 3);
  EXPECT_TRUE(rig.State().Data.failure.IsEmpty());
}

TEST_F(Program, SetsTheLinkUpAgainForAnotherUnit) {
  rig.Start();
  rig.windows.Then("HardwareSettings", [](QDialog& window) {
    test::FindControl<QComboBox>(window, "cboSerialData")->setCurrentIndex(8);
    test::FindControl<QLineEdit>(window, "txtNumberOfParameters")->setText("4");
    test::Click(window, "cmdOK");
  });
  rig.Choose("mnuEditSerialPort");
  EXPECT_EQ(rig.State().SerialData, "LUMO version A");
  EXPECT_EQ(rig.State().NumberOfChannels, 4);
  EXPECT_TRUE(rig.linePort.open);
  EXPECT_EQ(Stored("Protocol", "SerialData"), "LUMO version A");
  EXPECT_EQ(Stored("Parameters", "NumberOfParameters"), "4");
}

TEST_F(Program, EndsWithoutAQuestionWhenTheLanguageWasChosen) {
  rig.Start();
  rig.dialogs.ExpectChoice("Select language", "Russian");
  rig.dialogs.Expect("VELK MUST NOW END for this change to take effect", Answer::Ok);
  rig.Choose("mnuEditLanguage");
  EXPECT_FALSE(rig.Window().isVisible());
  EXPECT_EQ(Stored("General", "Current_language"), "Russian");
}

TEST_F(Program, StaysInEnglishWhereTheTranslationFilesLackTheLanguage) {
  BreakSetting("General", "Current_language", "Klingon");
  rig.Start();
  ExpectStatus("Ready");
  EXPECT_EQ(rig.Window().MenuItem("mnuFile")->text(), "&File");
}

TEST_F(Program, ClearsSectionsFromTheMenu) {
  rig.Start();
  rig.State().SensitivityCriterion = 55;
  rig.ClearSettings({0});
  EXPECT_EQ(rig.State().SensitivityCriterion, 20);
  EXPECT_EQ(rig.State().NumberOfParameters, 3);
}

TEST_F(Program, KeepsTheUnitsOwnLineSettingsWhenAnotherSectionIsCleared) {
  rig.Start();
  EXPECT_EQ(rig.State().BaudRate, 19200);
  rig.ClearSettings({2});
  EXPECT_EQ(rig.State().BaudRate, 19200);
  EXPECT_EQ(rig.State().Terminator, "\r\n");
}

TEST_F(Program, DeletingATemplateUnderAJobLeavesTheJobsChannelsAlone) {
  rig.Start();
  rig.dialogs.ExpectChoice("Save Settings Template", "spare");
  rig.Choose("mnuEditSaveTemplate");
  rig.Connect();
  rig.Press("Pause");
  rig.Press("Pause");
  ExpectStatus("Acquiring Paused");
  rig.State().NumberOfParameters = 2;  // as a template that is not the stored set would have it
  rig.dialogs.ExpectChoice("Delete Settings Template", "spare");
  rig.Choose("mnuEditDeleteTemplate");
  EXPECT_EQ(rig.State().NumberOfParameters, 2);
  EXPECT_EQ(rig.State().TemplateNames.size(), 1u);
}

TEST_F(Program, KeepsAFormulasRunningAverageOverARedrawOfItsGraphAndAStop) {
  rig.settings->Save("VELK2", "Formulae", "NumberOfFormulae", "1");
  rig.settings->Save("VELK2", "Formula1", "Formula", "avg({parameter 1})");
  rig.settings->Save("VELK2", "Formula1", "name", "Mean");
  rig.settings->Save("VELK2", "Formula1", "FormIndex", "4");
  rig.settings->Flush();
  rig.Start();
  rig.Connect();
  rig.Press("Pause");
  rig.Frame(0, 0, 0);
  rig.Frame(10, 0, 0);
  rig.Frame(20, 0, 0);
  const auto count = rig.State().AdditionalParameters[1].AverageCount;
  ASSERT_GE(count, 2);
  rig.State().GraphForms[4]->RefreshForm();
  EXPECT_EQ(rig.State().AdditionalParameters[1].AverageCount, count);
  rig.Press("Stop");
  rig.Connect();
  EXPECT_EQ(rig.State().AdditionalParameters[1].AverageCount, count);
}

TEST_F(Program, DrawsAComputedChannelAndFindsItAgainAfterARestart) {
  rig.Start();
  rig.Connect();
  ASSERT_TRUE(ReadFormulae(rig.State(), {rig.dialogs, test::English(), {}}, "max({parameter 1})*2"));
  rig.Press("Stop");
  Parameter& computed = rig.State().AdditionalParameters[1];
  computed.name = "Удвоенное";
  computed.max = 500;
  computed.color = 0x2020C0;
  rig.Connect();
  EXPECT_EQ(rig.State().GraphForms[4] != nullptr, true) << "a graph of its own";
  rig.Press("Pause");
  rig.Frame(0, 0, 0);
  rig.Frame(10, 0, 0);
  rig.Frame(5, 0, 0);
  EXPECT_EQ(rig.State().CurrentValue[4], 20.0f);
  rig.clock.Advance(100);  // the window's own refresh
  bool isShown = false;
  for (const GraphFormNew* graph : rig.Window().findChildren<GraphFormNew*>())
    if (test::LabelText(*graph, "Label2_0") == "20.0000") isShown = true;
  EXPECT_TRUE(isShown);
  rig.Press("Stop");
  rig.dialogs.Expect("Are you sure you want to exit VELK?", Answer::Yes);
  rig.Choose("mnuFileExit");

  rig.Start();
  ASSERT_EQ(rig.State().NumberOfFormulae, 1);
  EXPECT_EQ(rig.State().Formula[1], "max({parameter 1})*2");
  EXPECT_EQ(rig.State().AdditionalParameters[1].name, "Удвоенное");
  EXPECT_EQ(rig.State().AdditionalParameters[1].max, 500.0);
  EXPECT_EQ(rig.State().AdditionalParameters[1].color, 0x2020C0);
  EXPECT_EQ(rig.State().AdditionalParameters[1].RunningMaximum, -99999999.0) << "statistics begin anew";
}

TEST_F(Program, OpensTheAlarmsFromBothButtonsWhileSamplesGoOn) {
  rig.settings->Save("VELK2", "Parameter1", "upperalarm", "50");
  rig.settings->Flush();
  rig.Start();
  rig.Connect();
  rig.Press("Pause");
  rig.Frame(0, 0, 0);
  rig.Frame(10, 0, 0);
  EXPECT_FALSE(rig.Window().Button("Alarms")->isVisible());
  rig.Frame(60, 0, 0);
  for (const char* button : {"Alarms", "Command1"}) {
    ASSERT_TRUE(rig.Window().Button(button)->isVisible()) << button;
    ASSERT_TRUE(rig.Window().Button(button)->isEnabled()) << button;
    bool seen = false;
    QTimer::singleShot(0, [&] {
      QWidget* window = QApplication::activeModalWidget();
      ASSERT_NE(window, nullptr);
      EXPECT_EQ(window->windowTitle(), "Alarms");
      EXPECT_EQ(window->findChild<QLabel*>("Label1_0")->text(), "\u25B2 Parameter 1");
      const auto plotted = rig.State().Times.LastPlotTime;
      rig.Frame(70, 0, 0);
      EXPECT_GT(rig.State().Times.LastPlotTime, plotted) << "samples go on";
      seen = true;
      window->close();
    });
    rig.Press(button);
    EXPECT_TRUE(seen) << button;
  }
  rig.Frame(40, 0, 0);
  EXPECT_FALSE(rig.Window().Button("Command1")->isVisible());
}

TEST_F(Program, RemovesAComputedChannelFromTheMenu) {
  rig.settings->Save("VELK2", "Formulae", "NumberOfFormulae", "1");
  rig.settings->Save("VELK2", "Formula1", "Formula", "{parameter 1}*2");
  rig.settings->Save("VELK2", "Formula1", "name", "Double");
  rig.settings->Save("VELK2", "Formula1", "FormIndex", "4");
  rig.settings->Flush();
  rig.Start();
  rig.Connect();
  EXPECT_EQ(rig.State().TotalParameters, 4);
  rig.dialogs.ExpectChoice("Remove Additional Parameter", "Double");
  rig.Choose("mnuToolsRemove");
  EXPECT_EQ(rig.State().NumberOfFormulae, 0);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_EQ(rig.Window().GraphArea().subWindowList().size(), 3);
}

// --- The end ---

TEST_F(Program, ExitAsksAndNoKeepsTheProgram) {
  rig.Start();
  rig.dialogs.Expect("Are you sure you want to exit VELK?", Answer::No);
  rig.Choose("mnuFileExit");
  EXPECT_TRUE(rig.Window().isVisible());
  EXPECT_EQ(rig.dialogs.shown.back().title, "VELK");
  EXPECT_EQ(rig.dialogs.shown.back().buttons, Buttons::YesNo);
  EXPECT_TRUE(rig.State().AskOnExit);
}

TEST_F(Program, ExitClosesTheLinkSavesTheSettingsAndGoesBackToItsFolder) {
  const QString before = QDir::currentPath();
  rig.Start();
  rig.State().SensitivityCriterion = 7;
  rig.dialogs.Expect("Are you sure you want to exit VELK?", Answer::Yes);
  rig.Press("Exit");
  EXPECT_FALSE(rig.Window().isVisible());
  EXPECT_FALSE(rig.linePort.open);
  EXPECT_EQ(rig.Window().ButtonImage("connect"), image::ConnectOff);
  EXPECT_EQ(Stored("General", "SensitivityCriterion"), "7");
  EXPECT_EQ(Stored("General", "intMaxNoParamsInForm"), "64");
  EXPECT_TRUE(rig.State().ProgramEnding);
  EXPECT_EQ(QDir::currentPath(), before);
}

TEST_F(Program, TheFrameAsksTheSameAndNoKeepsTheProgram) {
  rig.Start();
  rig.dialogs.Expect("Are you sure you want to exit VELK?", Answer::No);
  rig.Window().close();
  EXPECT_TRUE(rig.Window().isVisible());
}

TEST_F(Program, ClosingTheFrameDuringAJobEndsTheRecordingAndSaves) {
  rig.Start();
  rig.Connect();
  rig.dialogs.ExpectSaveFile(rig.folder.File("job.mdb"));
  rig.Press("Record");
  rig.Press("Pause");
  for (int i = 0; i < 3; ++i) rig.Frame(1, 2, 3);
  rig.State().SensitivityCriterion = 9;
  rig.dialogs.Expect("Are you sure you want to exit VELK?", Answer::Yes);
  rig.Window().close();
  EXPECT_FALSE(rig.Window().isVisible());
  EXPECT_FALSE(std::filesystem::exists(rig.folder.File("job.mdb-wal")));
  EXPECT_EQ(Stored("General", "SensitivityCriterion"), "9");
}

TEST_F(Program, AFrameClosedFromWithinASampleWaitsForTheSample) {
  rig.Start();
  rig.Connect();
  rig.Press("Pause");
  rig.Frame(1, 2, 3);
  bool closed = false;
  rig.clock.onYield = [&] {
    if (!rig.State().SampleBusy || std::exchange(closed, true)) return;
    rig.dialogs.Expect("Are you sure you want to exit VELK?", Answer::Yes);
    rig.Window().close();
    EXPECT_TRUE(rig.Window().isVisible()) << "the sample is on the stack";
  };
  rig.Frame(1, 2, 3);
  rig.clock.onYield = nullptr;
  ASSERT_TRUE(closed);
  rig.clock.Advance(100);
  EXPECT_FALSE(rig.Window().isVisible());
}

TEST_F(Program, AFrameClosedWhileConnectWaitsEndsTheWait) {
  rig.Start();
  bool closed = false;
  rig.clock.onYield = [&] {
    if (rig.State().CurrentStatus.english != "Checking Hardware" || std::exchange(closed, true)) return;
    rig.dialogs.Expect("Are you sure you want to exit VELK?", Answer::Yes);
    rig.Window().close();
  };
  rig.Press("Acquire");
  rig.clock.onYield = nullptr;
  rig.clock.Advance(100);
  EXPECT_FALSE(rig.Window().isVisible());
}

}  // namespace
}  // namespace velk
