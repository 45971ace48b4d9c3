#include "shell/main_form.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QBackingStore>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>
#include <QToolBar>
#include <map>

#include "base/dates.h"
#include "core/panel/data_words.h"
#include "core/texts.h"
#include "i18n/languages.h"
#include "instruments/texts.h"
#include "model/status.h"
#include "model/texts.h"
#include "shell/icons.h"
#include "shell/path_label.h"
#include "support/in_english.h"
#include "support/recording_view.h"
#include "support/still_screen.h"

namespace velk {
namespace {

struct Entry {
  const char* item;
  const char* caption;
};

constexpr Entry kCaptions[] = {
    {"mnuFile", "&File"},
    {"mnuFileRecord", "&Record Data To..."},
    {"mnuFilePlayback", "&PlayBack File"},
    {"mnuFileImportCSV", "&Import CSV File(s)"},
    {"mnuFileExportSummary", "&Export Summary Report to CSV"},
    {"mnuFileExportMDBtoCSV", "Export MDB to &CSV"},
    {"mnuFileExportMDBtoXML", "Export MDB to X&ML"},
    {"mnuFileExit", "E&xit"},
    {"mnuView", "&View"},
    {"mnuViewToolBar", "&Tool Bar"},
    {"mnuViewStatusBar", "&Status Bar"},
    {"mnuViewCompany", "&Company Logo"},
    {"mnuViewGoToToolBar", "&Go to Tool Bar and Back"},
    {"mnuViewSummaryReport", "Summary &Report"},
    {"mnuViewAlarms", "&Alarms Triggered"},
    {"mnuViewFitGraphs", "&Fit Graphs to Windows"},
    {"mnuViewNightColours", "&Night Colours"},
    {"mnuViewLargeValues", "&Large Values"},
    {"mnuAcquire", "&Data Acquisition"},
    {"mnuAcquireConnect", "&Connect to Hardware"},
    {"mnuAcquireStart", "&Start"},
    {"mnuAcquireStop", "Sto&p"},
    {"mnuAcquireRecord", "Record To &Database"},
    {"mnuAcquireComment", "Co&mment on the Graph"},
    {"mnuEdit", "&Edit Settings"},
    {"mnuEditAutoDetect", "&Auto Detect Hardware"},
    {"mnuEditSerialPort", "&Serial Port"},
    {"mnuEditOPCServer", "&OPC Server"},
    {"mnuEditTable", "Parameters &Table"},
    {"mnuEditSaveTemplate", "Sa&ve Settings Template"},
    {"mnuEditLoadTemplate", "&Load Settings Template"},
    {"mnuEditDeleteTemplate", "&Delete Settings Template"},
    {"mnuEditClear", "&Clear Program Settings"},
    {"mnuEditUserOptions", "&User Options"},
    {"mnuEditLanguage", "&Language"},
    {"mnuTools", "&Tools"},
    {"mnuToolsDefine", "&Define Additional Parameter"},
    {"mnuToolsRemove", "&Remove an Additional Parameter"},
    {"mnuToolsInclude", "&Include Additional Parameters in Graphs"},
    {"mnuImprtLiveData", "I&mport Live Data"},
    {"mnuToolsCalibrate", "&Calibrate Parameter"},
    {"mnuToolsReset", "&Reset Value of Parameter"},
    {"mnuToolsOrbenHardware", "ORBEN's &hardware settings table"},
    {"mnuToolsLiveSurvey", "&Live Survey"},
    {"mnuToolsSurvey", "&Survey Data"},
    {"mnuTools3DWell", "&3D Well Profile"},
    {"mnuToolsWellProfileTable", "&Well Profile Table"},
    {"mnuWindow", "&Window"},
    {"mnuWindowCascade", "&Cascade"},
    {"mnuWindowTileVertically", "Tile &Vertically"},
    {"mnuWindowTileHorizontally", "Tile &Horizontally"},
    {"mnuWindowArrange", "&Arrange Icons"},
    {"mnuWindowNext", "&Next Graph"},
    {"mnuHelp", "&Help"},
    {"mnuHelpContents", "VELK Help &Contents"},
    {"mnuHelpAbout", "&About VELK"},
};

class MainFormTest : public testing::Test {
 protected:
  Session session;
  test::StillScreen screen;
  MainForm form{test::English(), session, screen.refresh};
};

TEST_F(MainFormTest, HasEveryMenuItemWithItsCaption) {
  for (const Entry& entry : kCaptions) {
    ASSERT_NE(form.MenuItem(entry.item), nullptr) << entry.item;
    EXPECT_EQ(form.MenuItem(entry.item)->text(), entry.caption);
  }
}

TEST_F(MainFormTest, HasTheItemsOfEachMenuInOrder) {
  QStringList shown;
  for (const QAction* menu : form.menuBar()->actions()) {
    shown += menu->menu()->objectName();
    for (const QAction* item : menu->menu()->actions()) {
      if (item->isSeparator()) continue;
      shown += item->menu() ? item->menu()->objectName() : item->objectName();
    }
  }
  QStringList wanted;
  for (const Entry& entry : kCaptions) {
    if (QString(entry.item) == "mnuHelp") wanted += "mnuWindow1";  // the list of open windows ends its menu
    wanted += entry.item;
  }
  EXPECT_EQ(shown, wanted);
}

TEST_F(MainFormTest, HasSevenMenusInOrder) {
  QStringList names;
  for (const QAction* action : form.menuBar()->actions()) names << action->text();
  EXPECT_EQ(names,
            QStringList({"&File", "&View", "&Data Acquisition", "&Edit Settings", "&Tools", "&Window", "&Help"}));
}

TEST_F(MainFormTest, HasTheToolbarWithAlarmsAsTheSeventeenthButton) {
  const auto* toolbar = form.findChild<QToolBar*>("Toolbar1");
  ASSERT_NE(toolbar, nullptr);
  for (const char* key : {"Record", "PlayBack", "Exit", "Acquire", "Edit", "Tools", "Help", "Pause", "Stop", "Alarms",
                          "RecordToDB", "connect", "disconnect", "ScrollBar"})
    EXPECT_NE(form.Button(key), nullptr) << key;
  EXPECT_EQ(toolbar->actions().at(16), form.Button("Alarms"));
}

TEST_F(MainFormTest, ShowsAPictureForEveryImageOfTheList) {
  for (const int number : {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 15, 16, 17, 18}) {
    const QImage picture = Icon(number).pixmap(24, 24).toImage();
    ASSERT_FALSE(picture.isNull()) << number;
    const QRgb first = picture.pixel(12, 12);
    bool drawn = false;
    for (int y = 0; y < 24 && !drawn; ++y)
      for (int x = 0; x < 24 && !drawn; ++x) drawn = picture.pixel(x, y) != first;
    EXPECT_TRUE(drawn) << number;
  }
}

TEST_F(MainFormTest, HidesConnectAndRenamesTheMenuOnlyInPlayback) {
  using namespace text;
  for (const MessageText& status : {StatusReady, StatusReadyToAcquire, StatusAcquiringData, StatusAcquiringPaused}) {
    ChangeCurrentStatus(session, form, status);
    EXPECT_TRUE(form.MenuItem("mnuAcquireConnect")->isVisible()) << status.english;
    EXPECT_EQ(form.MenuItem("mnuAcquire")->text(), "&Data Acquisition") << status.english;
  }
  for (const MessageText& status : {StatusReadyToPlayback, StatusPlayingBack, StatusPlayingBackPaused}) {
    ChangeCurrentStatus(session, form, status);
    EXPECT_FALSE(form.MenuItem("mnuAcquireConnect")->isVisible()) << status.english;
    EXPECT_EQ(form.MenuItem("mnuAcquire")->text(), "Playback") << status.english;
  }
  ChangeCurrentStatus(session, form, StatusCheckingHardware);
  EXPECT_EQ(form.MenuItem("mnuAcquire")->text(), "Playback") << "a status without a column leaves it";
}

TEST_F(MainFormTest, NamesPauseAndResumeOnMenuAndButton) {
  ChangeCurrentStatus(session, form, text::StatusAcquiringData);
  EXPECT_EQ(form.MenuItem("mnuAcquireStart")->text(), "Pa&use") << "Stop has the letter P";
  EXPECT_EQ(form.Button("Pause")->toolTip(), "Pause");
  ChangeCurrentStatus(session, form, text::StatusAcquiringPaused);
  EXPECT_EQ(form.MenuItem("mnuAcquireStart")->text(), "&Resume");
  EXPECT_EQ(form.Button("Pause")->toolTip(), "Resume");
}

TEST_F(MainFormTest, KeepsALetterOnStartOnceItWasCaptionedAnew) {
  form.SetMenuCaption("mnuAcquireStart", text::Start);
  EXPECT_EQ(form.MenuItem("mnuAcquireStart")->text(), "&Start");
}

TEST_F(MainFormTest, KeepsItsTitleWhenAGraphFillsTheArea) {
  form.ResetCaption();
  form.show();
  const QString title = form.windowTitle();
  auto* graph = new QWidget;
  graph->setWindowTitle("Pressure");
  QMdiSubWindow* window = form.GraphArea().addSubWindow(graph);
  window->showMaximized();
  QApplication::processEvents();
  EXPECT_EQ(form.windowTitle(), title);
  window->showNormal();
  EXPECT_EQ(form.windowTitle(), title);
}

TEST_F(MainFormTest, TellsWhyAnItemIsOff) {
  form.Table().Bind("mnuEditTable", [] {});
  form.Table().Bind("mnuToolsRemove", [] {});
  ChangeCurrentStatus(session, form, text::StatusReady);
  EXPECT_EQ(form.MenuItem("mnuEditTable")->statusTip(), "Not possible in the status Ready");
  EXPECT_EQ(form.MenuItem("mnuFileImportCSV")->statusTip(), "Not part of this version.");
  ChangeCurrentStatus(session, form, text::StatusReadyToAcquire);
  EXPECT_EQ(form.MenuItem("mnuEditTable")->statusTip(), "");
  emit form.MenuItem("mnuTools")->menu()->aboutToShow();
  EXPECT_EQ(form.MenuItem("mnuToolsRemove")->statusTip(), "Not possible: there is nothing to do this with.");
}

TEST_F(MainFormTest, ShowsTheKeysBesideTheItemsOfTheMenus) {
  const std::map<QString, QString> keys = {{"mnuViewGoToToolBar", "F6"}, {"mnuAcquireComment", "F7"},
                                           {"mnuViewAlarms", "F8"},      {"mnuAcquireRecord", "Ctrl+R"},
                                           {"mnuHelpContents", "F1"},    {"mnuWindowNext", "Ctrl+Tab"}};
  std::map<QString, QString> shown;
  for (const QAction* menu : form.menuBar()->actions())
    for (const QAction* item : menu->menu()->actions())
      if (!item->shortcut().isEmpty()) shown[item->objectName()] = item->shortcut().toString();
  EXPECT_EQ(shown, keys);
}

TEST_F(MainFormTest, OffersAlarmsAndRecordingInTheMenuWhileTheirButtonsStand) {
  form.Table().Bind("mnuViewAlarms", [] {});
  form.Table().Bind("mnuAcquireRecord", [] {});
  QAction& alarms = *form.MenuItem("mnuViewAlarms");
  QAction& record = *form.MenuItem("mnuAcquireRecord");
  for (const char* key : {"Alarms", "RecordToDB"}) form.SetButtonVisible(key, false);
  ChangeCurrentStatus(session, form, text::StatusReady);
  EXPECT_FALSE(alarms.isEnabled() || record.isEnabled());
  EXPECT_EQ(alarms.statusTip(), "Not possible: there is nothing to do this with.");
  EXPECT_EQ(record.statusTip(), "Not possible in the status Ready");

  for (const char* key : {"Alarms", "RecordToDB"}) form.SetButtonVisible(key, true);
  ChangeCurrentStatus(session, form, text::StatusAcquiringData);
  EXPECT_TRUE(alarms.isEnabled() && record.isEnabled());
  EXPECT_EQ(alarms.statusTip(), "");
  form.SetButtonImage("RecordToDB", image::RecordOn);
  EXPECT_EQ(record.icon().cacheKey(), form.Button("RecordToDB")->icon().cacheKey()) << "whether it records";
  form.SetButtonEnabled("RecordToDB", false);
  EXPECT_FALSE(record.isEnabled());
}

TEST_F(MainFormTest, WritesItsTitleFromBaseTitleAndVersion) {
  form.ResetCaption();
  EXPECT_EQ(form.windowTitle(), "Velk Acquisition Console (VELK) - version " VELK_VERSION);
}

TEST_F(MainFormTest, ShowsPanelsAndTheOneForMissingRowsOnlyWhenItHasText) {
  form.show();
  form.SetPanel(2, "Current File: /jobs/скважина 7.mdb");
  EXPECT_EQ(form.Panel(2), QString::fromUtf8("Current File: /jobs/скважина 7.mdb"));
  auto* missing = form.findChild<QLabel*>("StatusBar1_5");
  EXPECT_FALSE(missing->isVisible());
  form.SetPanel(5, "Rows not recorded: 3");
  EXPECT_TRUE(missing->isVisible());
  form.SetPanel(5, "");
  EXPECT_FALSE(missing->isVisible());
}

TEST_F(MainFormTest, ShowsThePanelOfTheDataWhileItHasTextAndMarksAWarning) {
  form.show();
  const auto* data = form.findChild<QLabel*>("StatusBar1_7");
  ASSERT_NE(data, nullptr);
  EXPECT_FALSE(data->isVisible());
  form.ShowData("1.0 samples/s", false);
  EXPECT_TRUE(data->isVisible());
  EXPECT_EQ(data->text(), "1.0 samples/s");
  const QString calm = data->styleSheet();
  form.ShowData("no data for 12 s", true);
  EXPECT_EQ(data->text(), QString::fromUtf8("\u26a0 no data for 12 s")) << "never by colour alone";
  EXPECT_EQ(data->toolTip(), "no data for 12 s") << "whole, where the panel is too narrow";
  EXPECT_NE(data->styleSheet(), calm);
  form.ShowData("", false);
  EXPECT_FALSE(data->isVisible());
  EXPECT_EQ(data->styleSheet(), calm);
}

TEST_F(MainFormTest, TellsWhatNeedsNoOtherRoomWithoutLayingItselfOutAnew) {
  class Counter : public QObject {
   public:
    int layouts = 0;
    bool eventFilter(QObject*, QEvent* event) override {
      if (event->type() == QEvent::LayoutRequest) ++layouts;
      return false;
    }
  };
  form.show();
  form.ShowData(std::string("1.0 samples/s \u00b7 1,203 rows"), false);
  form.ShowRecording(std::string("REC job.mdb 0:00:24"), {});
  QApplication::processEvents();
  Counter counter;
  form.installEventFilter(&counter);
  form.findChild<QStatusBar*>()->installEventFilter(&counter);
  form.ShowData(std::string("1.0 samples/s \u00b7 1,204 rows \u00b7 3 rejected"), false);
  form.ShowRecording(std::string("REC job.mdb 0:00:25"), {});
  QApplication::processEvents();
  EXPECT_EQ(counter.layouts, 0);
  form.ShowRecording(std::string("REC job.mdb 10:00:00"), {});
  QApplication::processEvents();
  EXPECT_GT(counter.layouts, 0) << "it has to grow";
}

TEST_F(MainFormTest, ShowsTheSignOfARecordingWhileItHasText) {
  form.show();
  const auto* sign = form.findChild<QLabel*>("StatusBar1_8");
  ASSERT_NE(sign, nullptr);
  EXPECT_FALSE(sign->isVisible());
  form.ShowRecording("REC well.mdb", "Rows go to /jobs/well.mdb");
  EXPECT_TRUE(sign->isVisible());
  EXPECT_EQ(sign->text(), QString::fromUtf8("\u25cf REC well.mdb"));
  EXPECT_EQ(sign->toolTip(), "Rows go to /jobs/well.mdb");
  form.ShowRecording({}, {});
  EXPECT_FALSE(sign->isVisible());
}

TEST_F(MainFormTest, ALongWarningMakesTheWindowNoWider) {
  form.resize(1024, 768);
  form.show();
  form.ShowData(std::string(500, 'x'), true);
  EXPECT_LE(form.minimumSizeHint().width(), 1024);
}

TEST_F(MainFormTest, DigitsThatChangeOutsideOfASampleGetToTheScreenByThemselves) {
  form.show();
  const auto settle = [&] {
    screen.clock.Advance(40);
    for (int i = 0; i < 3; ++i) QApplication::processEvents();
  };
  form.ShowData(std::string("1.0 samples/s \u00b7 1,203 rows"), false);
  form.ShowRecording(std::string("REC job.mdb 0:00:24"), {});
  form.SetPanel(2, "Current File: job.001");
  settle();
  const auto shown = [&] { return static_cast<const QImage*>(form.backingStore()->paintDevice())->copy(); };
  const QImage before = shown();
  form.ShowData(std::string("1.0 samples/s \u00b7 1,204 rows"), false);
  form.ShowRecording(std::string("REC job.mdb 0:00:25"), {});
  form.SetPanel(2, "Current File: job.002");
  settle();
  const QImage after = shown();
  EXPECT_NE(after, before);
  EXPECT_EQ(after, form.grab().toImage().convertToFormat(after.format()));
}

/// A job that is recorded, in the status bar of a small screen.
class StatusBarOfASmallScreen : public testing::Test {
 protected:
  StatusBarOfASmallScreen() {
    EXPECT_EQ(translation.Load(VELK_TRANSLATIONS_DIR, "Russian"), "Russian");
    session.CurrentStatus = text::StatusAcquiringData;
    session.SamplingRate = 1.0 / 86400;
    session.TheTimeOut = 5;
    session.RecordToDB = true;
    session.Data.samples = session.Data.rows = 12'345;
    form.resize(1280, 800);
    form.show();
    form.SetPanel(1, text::StatusAcquiringData);
    form.SetPanel(2, text::CurrentFile + "/home/operator/jobs/2026/well 7, second stage.mdb");
    form.SetPanel(4, "14:02:11");
    form.ShowRecording(RecordingText(session, "/home/operator/jobs/2026/well 7, second stage.mdb", 0), {});
  }
  /// What the operator sees of the data panel, whose words are these.
  std::string Seen() {
    const DataWords words = WordsOfData(session, 0, 1.0);
    form.ShowData(words.text, words.warns);
    QApplication::processEvents();
    EXPECT_LE(form.width(), 1280);
    return FromQt(form.findChild<PathLabel*>("StatusBar1_7")->Shown());
  }
  std::string InRussian(const OperatorText& text) const { return translation.Translator.In(text); }

  Session session;
  Translation translation;
  test::StillScreen screen;
  MainForm form{translation.Translator, session, screen.refresh};
};

TEST_F(StatusBarOfASmallScreen, ShowsNoDotsWhereTheFileHasNoRoom) {
  auto& file = *form.findChild<PathLabel*>("StatusBar1_2");
  file.ShowText("Current File: /data/job.mdb");
  file.resize(1000, 20);
  EXPECT_EQ(file.Shown(), "Current File: /data/job.mdb");
  file.resize(120, 20);
  EXPECT_TRUE(file.Shown().endsWith("b")) << "the end of the file's name stays";
  file.resize(file.fontMetrics().horizontalAdvance("WW"), 20);
  EXPECT_EQ(file.Shown(), "");
}

TEST_F(StatusBarOfASmallScreen, ShowsWhyLinesAreRejectedInRussianToo) {
  const OperatorText wrongCount = "4" + text::ValuesWhere + "18" + text::AreExpected;
  for (const OperatorText& reason :
       {wrongCount, OperatorText(text::LineFailsCheck), OperatorText(text::FieldNotDecimal),
        OperatorText(text::ValueBeyondRange), OperatorText(text::FieldMissing), OperatorText(text::DateNotRead)}) {
    session.Data.rejected = 1234;
    session.Data.lastReason = reason;
    for (const long long samples : {12'345, 0}) {
      session.Data.samples = samples;
      EXPECT_NE(Seen().find(InRussian(reason)), std::string::npos) << Seen();
    }
    session.Data.heldSince = DateSerial(2026, 3, 14) + TimeOfDay(14, 2, 11);
    session.Data.samples = 1;
    EXPECT_NE(Seen().find(InRussian(reason)), std::string::npos) << Seen();
    session.Data.heldSince = 0;
  }
}

TEST_F(StatusBarOfASmallScreen, GivesTheFileWhatTheDataPanelLeaves) {
  Seen();
  const int calm = form.findChild<QLabel*>("StatusBar1_2")->width();
  session.Data.rejected = 1234;
  session.Data.samples = 0;
  session.Data.lastReason = text::LineFailsCheck;
  Seen();
  EXPECT_LT(form.findChild<QLabel*>("StatusBar1_2")->width(), calm);
  EXPECT_GT(calm, 100);
}

TEST_F(MainFormTest, ChangesTheImageOfAButtonByNumber) {
  EXPECT_EQ(form.ButtonImage("RecordToDB"), image::RecordOff);
  form.SetButtonImage("RecordToDB", image::RecordOn);
  EXPECT_EQ(form.ButtonImage("RecordToDB"), image::RecordOn);
}

}  // namespace
}  // namespace velk
