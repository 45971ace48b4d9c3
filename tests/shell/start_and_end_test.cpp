#include <gtest/gtest.h>

#include <QAction>
#include <QCoreApplication>
#include <QDir>
#include <QLabel>
#include <QLocale>
#include <QRegularExpression>
#include <filesystem>
#include <fstream>

#include "graphs/windows/label_rows.h"
#include "i18n/translation.h"
#include "shell/shell_rig.h"

namespace velk {
namespace {

namespace fs = std::filesystem;

constexpr const char* kSure = "Are you sure you want to exit VELK?";
constexpr const char* kMustEnd = "VELK MUST NOW END for this change to take effect";

class StartAndEnd : public testing::Test {
 protected:
  ~StartAndEnd() override {
    QDir::setCurrent(before_);
    QLocale::setDefault(localeBefore_);
  }

  std::string Stored(const char* section, const char* key) {
    SettingsStore store(rig.folder.File("settings"));
    return store.Get("VELK2", section, key, "missing");
  }
  void Set(const char* section, const char* key, const char* value) {
    rig.settings->Save("VELK2", section, key, value);
    rig.settings->Flush();
  }
  void Exit() {
    rig.dialogs.Expect(kSure, Answer::Yes);
    rig.Choose("mnuFileExit");
  }
  /// From now on no settings can be written.
  void BlockSettings() {
    fs::remove_all(rig.folder.File("settings"));
    std::ofstream(rig.folder.File("settings")) << "a file where the folder should be";
  }
  void UnblockSettings() { fs::remove(rig.folder.File("settings")); }
  /// The program's folder with the files that the build makes.
  void SpeakRussian() {
    rig.programFolder = rig.folder.File("program");
    fs::create_directory(rig.programFolder);
    for (const char* file : {kCaptionsFile, kMessagesFile})
      fs::copy_file(fs::path(VELK_TRANSLATIONS_DIR) / file, fs::path(rig.programFolder) / file);
    Set("General", "Current_language", "Russian");
  }

  test::ShellRig rig;

 private:
  const QString before_ = QDir::currentPath();
  const QLocale localeBefore_;
};

// --- Start-up ---

TEST_F(StartAndEnd, WorksInTheProgramsFolderAndGoesBackToTheOneItWasStartedIn) {
  const test::TemporaryFolder elsewhere;
  ASSERT_TRUE(QDir::setCurrent(QString::fromStdString(elsewhere.Path())));
  rig.Start();
  EXPECT_EQ(QDir::currentPath(), QCoreApplication::applicationDirPath());
  EXPECT_EQ(rig.State().DefaultDirectory, elsewhere.Path().string()) << "file dialogs begin where the operator was";
  EXPECT_EQ(rig.Window().ButtonImage("disconnect"), image::DisconnectOn);
  Exit();
  EXPECT_EQ(QDir::currentPath().toStdString(), elsewhere.Path().string());
  EXPECT_EQ(rig.Window().ButtonImage("connect"), image::ConnectOff);
  EXPECT_EQ(rig.Window().ButtonImage("disconnect"), image::DisconnectOff);
}

TEST_F(StartAndEnd, TellsTheNumberOfTheStepThatFailedAndGoesOnWithTheNext) {
  Set("Protocol", "SerialData", "Any Serial Data");
  Set("Protocol", "BaudRate", "fast");
  rig.dialogs.Expect("The file as it was is kept as " + rig.folder.File("settings/VELK2.ini.damaged") +
                         "\nProtocol/BaudRate: Type mismatch (\"fast\")\n\n\nLine = 5",
                     Answer::Ok);
  rig.dialogs.Expect("Continue with", Answer::Yes, [] { throw RuntimeError(ErrorNumber::Overflow); });
  rig.dialogs.Expect("Overflow\n\nLine = 12", Answer::Ok);
  rig.Start();
  EXPECT_EQ(rig.dialogs.shown.back().title, "Start Up Error");
  EXPECT_EQ(rig.dialogs.shown.back().buttons, Buttons::Ok);
  EXPECT_EQ(rig.State().CurrentStatus.english, "Ready");
  EXPECT_TRUE(rig.Window().isVisible());
}

TEST_F(StartAndEnd, ReadsTheSettingsBeforeItShowsItselfAndAsksAboutThePortBehindIt) {
  Set("Protocol", "SerialData", "National Oil Well PLC");
  Set("Protocol", "BaudRate", "fast");
  rig.dialogs.Expect("Line = 5", Answer::Ok, [this] {
    EXPECT_FALSE(rig.Window().isVisible());
    EXPECT_EQ(rig.State().CurrentStatus.english, "");
  });
  rig.dialogs.Expect("Continue with current serial port settings?", Answer::Yes, [this] {
    EXPECT_TRUE(rig.Window().isVisible());
    EXPECT_EQ(rig.State().CurrentStatus.english, "Ready");
    EXPECT_FALSE(rig.linePort.open);
  });
  rig.Start();
  EXPECT_TRUE(rig.linePort.open);
}

TEST_F(StartAndEnd, TheQuestionAboutThePortTellsWhatItsSettingsAre) {
  Set("Protocol", "SerialData", "National Oil Well PLC");
  Set("Protocol", "PortDevice1", "/dev/serial/by-id/pump");
  Set("Protocol", "BaudRate", "4800");
  rig.dialogs.Expect(
      "Continue with current serial port settings?\n\nProtocol: National Oil Well PLC\n"
      "Device: /dev/serial/by-id/pump\nSpeed: 4800\nChannels: 3",
      Answer::Yes);
  rig.Start();
}

TEST_F(StartAndEnd, SpeaksTheLanguageBeforeItReadsTheSettings) {
  SpeakRussian();
  Set("Protocol", "BaudRate", "fast");
  rig.dialogs.Expect("Строка = 5", Answer::Ok);
  rig.Start();
  EXPECT_EQ(rig.dialogs.shown.back().title, "Ошибка при запуске");
}

TEST_F(StartAndEnd, TellsOfManyBadValuesInOneBoxThatFitsOnTheScreen) {
  for (int i = 1; i <= 64; ++i) Set(("Parameter" + std::to_string(i)).c_str(), "max", "12,5");
  rig.dialogs.Expect("Parameter19/max: Type mismatch (\"12,5\")\n... + 45\n\n\nLine = 5", Answer::Ok);
  rig.Start();
  EXPECT_EQ(rig.State().Parameters[64].max, 100.0);
}

TEST_F(StartAndEnd, BeginsToFetchThePageOfANetworkedUnit) {
  for (const char* protocol : {"HPT - Honeywell eZtrend", "ORBEN LUMO through HMI"}) {
    Set("Protocol", "SerialData", protocol);
    rig.Start();
    EXPECT_TRUE(rig.pages->asked.empty());
    rig.clock.Advance(600);
    EXPECT_EQ(rig.pages->asked.size(), 1u) << protocol;
  }
  Set("Protocol", "SerialData", "LUMO version A");
  rig.Start();
  rig.clock.Advance(2000);
  EXPECT_TRUE(rig.pages->asked.empty());
}

TEST_F(StartAndEnd, RunsAWholeJobInRussian) {
  SpeakRussian();
  rig.Start();
  EXPECT_EQ(rig.Window().windowTitle(), "Velk Acquisition Console (VELK) - версия " VELK_VERSION);
  EXPECT_EQ(rig.Window().MenuItem("mnuFile")->text(), "&Файл");
  EXPECT_EQ(rig.Window().Panel(1), "Готов");
  rig.Connect();
  EXPECT_EQ(rig.Window().Panel(1), "Готов к регистрации");
  rig.dialogs.ExpectSaveFile(rig.folder.File("работа"));
  rig.Press("Record");
  EXPECT_EQ(rig.Window().Panel(2), QString::fromStdString("Текущий файл: " + rig.folder.File("работа.mdb")));
  rig.Press("Pause");
  EXPECT_EQ(rig.Window().Panel(1), "Идёт регистрация данных");
  for (int i = 0; i < 5; ++i) rig.Frame(10 + i, 20, 30);
  EXPECT_EQ(rig.application->RowsRecorded(), 4);
  rig.Press("Pause");
  EXPECT_EQ(rig.Window().Panel(1), "Регистрация приостановлена");
  EXPECT_EQ(rig.Window().Button("Pause")->toolTip(), "Продолжить");
  rig.Press("Stop");
  EXPECT_EQ(rig.Window().Panel(1), "Готов");
  EXPECT_EQ(rig.Window().MenuItem("mnuAcquire")->text(), "&Регистрация данных");
  rig.dialogs.Expect("Вы действительно хотите выйти из VELK?", Answer::Yes);
  rig.Choose("mnuFileExit");
  EXPECT_FALSE(rig.Window().isVisible());
}

TEST_F(StartAndEnd, IsInEnglishWhileATranslationFileIsMissingAndKeepsTheChoice) {
  SpeakRussian();
  const fs::path messages = fs::path(rig.programFolder) / kMessagesFile;
  fs::rename(messages, rig.folder.File("aside"));
  rig.Start();
  EXPECT_EQ(rig.Window().Panel(1), "Ready");
  EXPECT_EQ(rig.Window().MenuItem("mnuFile")->text(), "&File");
  Exit();
  EXPECT_EQ(Stored("General", "Current_language"), "Russian");
  fs::rename(rig.folder.File("aside"), messages);
  rig.Start();
  EXPECT_EQ(rig.Window().Panel(1), "Готов");
}

TEST_F(StartAndEnd, TemplatesComeAlongWhereTheSettingsFolderIsCopied) {
  rig.Start();
  rig.State().Parameters[1].name = "Давление";
  rig.dialogs.ExpectChoice("Save Settings Template", "Цементирование 1/2");
  rig.Choose("mnuEditSaveTemplate");
  test::ShellRig machine;
  fs::copy(rig.folder.File("settings"), machine.folder.File("settings"),
           fs::copy_options::recursive | fs::copy_options::overwrite_existing);
  machine.Start();
  machine.State().Parameters[1].name = "Other";
  machine.dialogs.ExpectChoice("Load Settings Template", "Цементирование 1/2");
  machine.dialogs.Expect("Loading this template replaces:", Answer::Yes);
  machine.Choose("mnuEditLoadTemplate");
  EXPECT_EQ(machine.dialogs.listsAsked.back().entries, std::vector<std::string>{"Цементирование 1/2"});
  EXPECT_EQ(machine.State().Parameters[1].name, "Давление");
}

// --- Numbers ---

TEST_F(StartAndEnd, NumbersKeepThePointOnADesktopThatHasAComma) {
  QLocale::setDefault(QLocale(QLocale::Russian, QLocale::Russia));
  Set("Formulae", "NumberOfFormulae", "1");
  Set("Formula1", "Formula", "{parameter 1}*0.25");
  Set("Formula1", "name", "Quarter");
  Set("Formula1", "FormIndex", "4");
  Set("Parameter1", "max", "1234.5");
  rig.Start();
  rig.Connect();
  rig.Press("Pause");
  for (int i = 0; i < 3; ++i) rig.Frame(10.5, 20, 30);
  EXPECT_EQ(rig.State().CurrentValue[4], 2.625f);
  rig.clock.Advance(100);
  QStringList texts;
  for (const QLabel* label : rig.Window().findChildren<QLabel*>()) texts += label->text();
  for (const LabelRows* labels : rig.Window().findChildren<LabelRows*>())
    for (int row = 0; row < labels->Count(); ++row) texts += labels->Text({2, row});
  EXPECT_TRUE(texts.join('|').contains("10.5000"));
  EXPECT_FALSE(texts.join('|').contains(QRegularExpression("\\d,\\d"))) << texts.join('|').toStdString();
  rig.Press("Stop");
  Exit();
  EXPECT_EQ(Stored("Parameter1", "max"), "1234.5");
  EXPECT_EQ(Stored("General", "SamplingRate"), "1.15740740740741E-05");
}

// --- The toolbar ---

TEST_F(StartAndEnd, RecordingIsSwitchedOnAndOffByItsButton) {
  rig.Start();
  rig.Connect();
  rig.Press("Pause");
  rig.Frame(1, 2, 3);
  rig.dialogs.ExpectSaveFile(rig.folder.File("job"));
  rig.Press("RecordToDB");
  EXPECT_EQ(rig.State().CurrentStatus.english, "Acquiring Data");
  EXPECT_EQ(rig.Window().ButtonImage("RecordToDB"), image::RecordOn);
  rig.Frame(1, 2, 3);
  rig.Frame(1, 2, 3);
  EXPECT_EQ(rig.application->RowsRecorded(), 2);
  rig.Press("RecordToDB");
  EXPECT_EQ(rig.Window().ButtonImage("RecordToDB"), image::RecordOff);
  rig.Frame(1, 2, 3);
  EXPECT_EQ(rig.application->RowsRecorded(), 2);
}

TEST_F(StartAndEnd, IndicatorsOfTheLinkDoNothing) {
  rig.Start();
  for (const char* key : {"connect", "disconnect"}) rig.Press(key);
  EXPECT_EQ(rig.State().CurrentStatus.english, "Ready");
  EXPECT_TRUE(rig.linePort.open);
  EXPECT_EQ(rig.linePort.openings.size(), 1u);
}

// --- The end ---

TEST_F(StartAndEnd, TheFrameAsksInEveryStatusAndNoGoesOnWithTheJob) {
  rig.Start();
  const auto closeAndStay = [&](const char* status, bool exitAllowed) {
    ASSERT_EQ(rig.State().CurrentStatus.english, status);
    EXPECT_EQ(rig.Window().MenuItem("mnuFileExit")->isEnabled(), exitAllowed) << status;
    rig.dialogs.Expect(kSure, Answer::No);
    rig.Window().close();
    const ShownMessage& asked = rig.dialogs.shown.back();
    EXPECT_TRUE(asked.safeDefault) << "Enter goes on with the job";
    const bool recording = rig.State().RecordToDB;
    EXPECT_EQ(asked.text, kSure + (recording ? "\n\nA job is recorded to " + rig.folder.File("job.mdb") +
                                                   "\nRows so far: " + std::to_string(rig.application->RowsRecorded()) +
                                                   ". The recording ends with VELK; the file is kept."
                                             : std::string()));
    EXPECT_TRUE(rig.Window().isVisible()) << status;
    EXPECT_EQ(rig.State().CurrentStatus.english, status);
    EXPECT_TRUE(rig.linePort.open) << status;
    EXPECT_FALSE(rig.State().ProgramEnding);
  };
  closeAndStay("Ready", true);
  rig.Connect();
  closeAndStay("Ready to Acquire", false);
  rig.dialogs.ExpectSaveFile(rig.folder.File("job.mdb"));
  rig.Press("Record");
  rig.Press("Pause");
  rig.Frame(1, 2, 3);
  closeAndStay("Acquiring Data", false);
  rig.Frame(1, 2, 3);
  EXPECT_EQ(rig.application->RowsRecorded(), 1);
  rig.Press("Pause");
  closeAndStay("Acquiring Paused", false);
  rig.Choose("mnuFileExit");  // is off: nothing is asked
  rig.dialogs.Expect(kSure, Answer::Yes);
  rig.Window().close();
  EXPECT_FALSE(rig.Window().isVisible());
  EXPECT_FALSE(fs::exists(rig.folder.File("job.mdb-wal")));
}

TEST_F(StartAndEnd, ExitThatCannotSaveTheSettingsMayBeCancelled) {
  rig.Start();
  BlockSettings();
  rig.dialogs.Expect(kSure, Answer::Yes);
  rig.dialogs.Expect(" - mnuFileExit_Click", Answer::Cancel);
  rig.Choose("mnuFileExit");
  EXPECT_TRUE(rig.Window().isVisible());
  EXPECT_TRUE(rig.linePort.open);
  rig.Connect();
  EXPECT_EQ(rig.State().CurrentStatus.english, "Ready to Acquire") << "the program works as before";

  rig.dialogs.Expect(kSure, Answer::Yes);
  rig.dialogs.Expect(" - MDIForm_QueryUnload", Answer::Cancel);
  rig.Window().close();
  EXPECT_FALSE(rig.Window().isVisible()) << "the frame is the way out";
}

TEST_F(StartAndEnd, ExitSavesTheSettingsOnRetry) {
  rig.Start();
  rig.State().SensitivityCriterion = 7;
  BlockSettings();
  rig.dialogs.Expect(kSure, Answer::Yes);
  rig.dialogs.Expect(" - mnuFileExit_Click", Answer::Retry, [this] { UnblockSettings(); });
  rig.Choose("mnuFileExit");
  EXPECT_FALSE(rig.Window().isVisible());
  EXPECT_EQ(Stored("General", "SensitivityCriterion"), "7");
}

TEST_F(StartAndEnd, SettingsThatCannotBeSavedAreToldBeforeARunningSampleIsEnded) {
  rig.Start();
  rig.Connect();
  rig.Press("Pause");
  rig.Frame(1, 2, 3);
  BlockSettings();
  bool closed = false;
  rig.clock.onYield = [&] {
    if (!rig.State().SampleBusy || std::exchange(closed, true)) return;
    rig.dialogs.Expect(kSure, Answer::Yes);
    rig.dialogs.Expect(" - MDIForm_QueryUnload", Answer::Cancel);
    rig.Window().close();
  };
  rig.Frame(1, 2, 3);
  rig.clock.onYield = nullptr;
  ASSERT_TRUE(closed);
  rig.clock.Advance(100);
  EXPECT_FALSE(rig.Window().isVisible());
}

TEST_F(StartAndEnd, FileDialogsBeginInTheFolderOfTheLastOneAfterARestart) {
  rig.Start();
  rig.dialogs.ExpectSaveFile(rig.folder.File("job.mdb"));
  rig.Press("Record");
  Exit();
  rig.Start();
  rig.dialogs.ExpectSaveFile(std::nullopt);
  rig.Press("Record");
  EXPECT_EQ(rig.dialogs.filesAsked.back().directory, rig.folder.Path().string());
}

TEST_F(StartAndEnd, LeavesTheLinkAloneForProtocolsThatHaveNone) {
  rig.Start();
  rig.State().SerialData = "OPC Server";
  Exit();
  EXPECT_FALSE(rig.Window().isVisible());
  EXPECT_TRUE(rig.linePort.open);
  EXPECT_EQ(rig.Window().ButtonImage("connect"), image::ConnectOn);
}

TEST_F(StartAndEnd, UserOptionsAreSavedAndTheProgramEndsWithoutAQuestion) {
  rig.Start();
  rig.windows.Then("frmUserOptions", [](QDialog& window) {
    const char* const texts[] = {"60", "30", "7200", "12", "64"};
    for (int i = 0; i < 5; ++i)
      test::FindControl<QLineEdit>(window, ("Text1_" + std::to_string(i)).c_str())->setText(texts[i]);
    test::Click(window, "cmdOK");
  });
  rig.dialogs.Expect(kMustEnd, Answer::Ok);
  rig.Choose("mnuEditUserOptions");
  EXPECT_FALSE(rig.Window().isVisible());
  EXPECT_EQ(Stored("General", "pixelslength"), "60");
  EXPECT_EQ(Stored("General", "pixeldivide"), "30");
  EXPECT_EQ(Stored("General", "MaximumTime"), "7200");
  EXPECT_EQ(Stored("General", "intFontSize"), "12");
}

TEST_F(StartAndEnd, NoPageIsFetchedOnceTheProgramHasEnded) {
  Set("Protocol", "SerialData", "HPT - Honeywell eZtrend");
  rig.Start();
  rig.clock.Advance(600);
  const std::size_t fetched = rig.pages->asked.size();
  rig.dialogs.ExpectChoice("Select language", "English");
  rig.dialogs.Expect(kMustEnd, Answer::Ok);
  rig.Choose("mnuEditLanguage");
  EXPECT_FALSE(rig.Window().isVisible());
  rig.clock.Advance(5000);
  EXPECT_EQ(rig.pages->asked.size(), fetched);
}

TEST_F(StartAndEnd, ABoxThatStandsWhenTheFrameClosesLeadsNowhere) {
  rig.Start();
  rig.settings->Save("VELKJob", "General", "TheTimeOut", "x");
  rig.settings->Flush();
  rig.dialogs.ExpectChoice("Load Settings Template", "Job");
  rig.dialogs.Expect("Loading this template replaces:", Answer::Yes);
  rig.dialogs.Expect("General/TheTimeOut", Answer::Cancel, [this] {
    rig.dialogs.Expect(kSure, Answer::Yes);
    rig.Window().close();
  });
  rig.Choose("mnuEditLoadTemplate");
  EXPECT_FALSE(rig.Window().isVisible());
  EXPECT_FALSE(rig.linePort.open);
}

}  // namespace
}  // namespace velk
