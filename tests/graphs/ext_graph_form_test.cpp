#include <QCloseEvent>
#include <chrono>
#include <cstdlib>
#include <thread>

#include "graphs/external_fixture.h"
#include "support/window_script.h"

namespace velk {
namespace {

using test::FollowedTable;
using test::HasAt;
using test::kRedDot;

TEST(ExternalChart, ShowsTheChosenFields) {
  FollowedTable table(2);
  table.Open();
  EXPECT_EQ(table.form->windowTitle(), "External Data Display");
  EXPECT_EQ(table.Label("Label1_0"), "Value 1");
  EXPECT_EQ(table.Label("Label3_1"), "bar");
  EXPECT_EQ(table.State(), "Followed: rig 7.mdb, Readings. No row since 09:30");
  std::vector<std::string> keys;
  for (const QAction* key : table.Find<QToolBar>("Toolbar1").actions())
    if (key->isVisible()) keys.push_back(key->objectName().toStdString());
  EXPECT_EQ(keys, (std::vector<std::string>{"AddComment", "Print", "ReadValue"}));
}

TEST(ExternalChart, DrawsNewRowsEverySevenSeconds) {
  FollowedTable table;
  table.Open();
  table.Fill(1, 60);
  table.clock.Advance(6900);
  EXPECT_EQ(table.CountOf(kRedDot), 0);
  table.clock.Advance(200);
  EXPECT_EQ(table.Label("Label2_0"), "60.000");
  // A second is a dot down the page.
  EXPECT_TRUE(HasAt(table.Plot(), 30, 30, kRedDot));
  EXPECT_FALSE(HasAt(table.Plot(), 70, 70, kRedDot));
  EXPECT_EQ(table.State(), "Followed: rig 7.mdb, Readings. Last row: 14-Mar-2026 09:31:00");
  table.Fill(61, 80);
  table.Poll();
  EXPECT_TRUE(HasAt(table.Plot(), 70, 70, kRedDot));
}

TEST(ExternalChart, ChangesNothingWithoutNewRows) {
  FollowedTable table;
  table.Open();
  table.Fill(1, 60);
  table.Poll();
  const QImage plot = table.Plot();
  table.Poll();
  table.Poll();
  EXPECT_EQ(table.Plot(), plot);
}

TEST(ExternalChart, LeavesTheTimesOfTheRunningJobAlone) {
  FollowedTable table;
  const TimeBase before = table.session.Times;
  table.clock.Advance(600'000);
  table.Open();
  table.Fill(601, 700);
  table.Poll();
  EXPECT_EQ(table.session.Times.GraphPageTime, before.GraphPageTime);
  EXPECT_EQ(table.session.Times.GraphEndTime, before.GraphEndTime);
  EXPECT_EQ(table.session.Times.LastPlotTime, before.LastPlotTime);
}

TEST(ExternalChart, TakesTheIntervalOfTheSettingsForItsRows) {
  FollowedTable table;
  table.session.SamplingRate = 4 * test::kSecond;
  table.Open();
  table.Fill(1, 400);
  table.Poll();
  // Four seconds are a dot: second 240 has the value 40.
  EXPECT_TRUE(HasAt(table.Plot(), 40, 60, kRedDot));
}

TEST(ExternalChart, SaysInItsLineWhatItCantReadAndTriesAgain) {
  FollowedTable table;
  table.Open();
  std::filesystem::rename(table.database, table.folder.File("away"));
  table.Poll();
  EXPECT_EQ(table.State().find("It can't be read, and is tried again every 7 s. "), 0U) << table.State();
  EXPECT_NE(table.State().find("File not found"), std::string::npos) << table.State();
  std::filesystem::rename(table.folder.File("away"), table.database);
  table.Fill(1, 60);
  table.Poll();
  EXPECT_EQ(table.Label("Label2_0"), "60.000");
  EXPECT_EQ(table.State().find("Followed"), 0U);
}

TEST(ExternalChart, ReadsOnOverMidnight) {
  FollowedTable table;
  table.clock.SetNow(test::JobStart() + 52'000 * test::kSecond);  // 23:56:40
  table.Open();
  table.Fill(52'100, 52'199);
  table.Poll();
  table.Fill(52'200, 52'250);
  table.Poll();
  EXPECT_EQ(table.Label("Label2_0"), "50.000");
  EXPECT_NE(table.State().find("15-Mar-2026 00:00:50"), std::string::npos) << table.State();
}

// --- A database of the Jet format ---

/// 1,000 rows from 22:00:00 on, a second apart; the first value is the number of the row.
struct FollowedJetTable : FollowedTable {
  FollowedJetTable() {
    database = folder.File("rig.mdb");
    const std::string from = std::string(VELK_SOURCE_DIR) + "/tests/data/jet/log_1000.mdb.gz";
    EXPECT_EQ(std::system(("gunzip -c '" + from + "' > '" + database + "'").c_str()), 0);
    live.DBaseName = database;
    live.TableName = "logData";
    live.DateField = "Date";
    live.TimeField = "Time";
    live.Fields[0].Name = "ID";
    live.Fields[0].max = 1000;
    std::filesystem::create_directory(folder.File("programs"));
    tools.program = folder.File("programs/reader");
    UseReader(VELK_JET_READER);
    clock.SetNow(DateSerial(2024, 2, 28) + TimeOfDay(22, 0, 0));
  }
  void UseReader(const char* program) const {
    std::filesystem::remove(tools.program);
    std::filesystem::create_symlink(program, tools.program);
  }
  /// The next look, until the line below the chart says so.
  void LookUntil(const std::string& told) {
    clock.Advance(7000);
    for (int i = 0; i < 1000 && State().find(told) == std::string::npos; ++i) {
      std::this_thread::sleep_for(std::chrono::milliseconds(10));  // another process reads meanwhile
      clock.Advance(13);
    }
  }
};

TEST(ExternalChart, FollowsADatabaseOfTheJetFormat) {
  FollowedJetTable table;
  table.Open();
  table.LookUntil("Last row");
  EXPECT_EQ(table.Label("Label2_0"), "1000.000");
  EXPECT_EQ(table.State(), "Followed: rig.mdb, logData. Last row: 28-Feb-2024 22:16:39");
  EXPECT_GT(table.CountOf(kRedDot), 50);
}

TEST(ExternalChart, SaysInItsLineWhereTheReaderOfTheJetFormatDiesAndBeginsANewOne) {
  FollowedJetTable table;
  table.UseReader("/bin/false");
  table.Open();
  table.LookUntil("can't be read");
  EXPECT_EQ(table.State().find("It can't be read, and is tried again every 7 s. The file is damaged"), 0U)
      << table.State();
  table.UseReader(VELK_JET_READER);
  table.LookUntil("Last row");
  EXPECT_EQ(table.Label("Label2_0"), "1000.000");
}

// --- Editing ---

TEST(ExternalChart, EditsAScaleByAClickOnItsHeader) {
  FollowedTable table;
  table.Open();
  QWidget& band = table.form->View().HeaderBand();
  table.dialogs.ExpectInput("Enter new minimum value", "-50");
  QTest::mouseClick(&band, Qt::LeftButton, {}, QPoint(80, 8));
  ASSERT_EQ(table.kept.size(), 1U);
  EXPECT_EQ(table.kept[0].Fields[0].min, -50);
  table.Fill(1, 60);
  table.Poll();
  // The value 30 is 80 of 150.
  EXPECT_TRUE(HasAt(table.Plot(), 80.0 / 1.5, 30, kRedDot));
}

TEST(ExternalChart, EditsNamesUnitsAndFormatsOnTheirLabels) {
  FollowedTable table;
  table.Open();
  table.dialogs.ExpectInput("Enter parameter name", "Hook");
  test::ClickLabel(*table.form, "Label1_0");
  table.dialogs.ExpectInput("Enter parameter units", "t");
  test::ClickLabel(*table.form, "Label3_0");
  table.dialogs.ExpectChoice("Number Format", "12345678");
  test::ClickLabel(*table.form, "Label2_0");
  ASSERT_EQ(table.kept.size(), 3U);
  const LiveField& field = table.kept[2].Fields[0];
  EXPECT_EQ(field.DisplayName + field.Unit + field.format, "Hookt#0");
  EXPECT_EQ(field.Name, "V1");
  EXPECT_EQ(table.Label("Label1_0"), "Hook");
}

TEST(ExternalChart, OpensThePropertiesOfACurveByTheRightButtonWhileTheJobAcquires) {
  FollowedTable table(2);
  table.session.CurrentStatus = text::StatusAcquiringData;
  table.Open();
  test::WindowScript script;
  script.Then("frmProperties", [](QDialog& dialog) {
    EXPECT_EQ(dialog.findChild<QLineEdit*>("txtName")->text(), "Value 2");
    dialog.findChild<QLineEdit*>("txtMaximum")->setText("500");
    test::Click(dialog, "cmdOK");
  });
  test::ClickLabel(*table.form, "Label1_1", Qt::RightButton);
  ASSERT_EQ(table.kept.size(), 1U);
  EXPECT_EQ(table.kept[0].Fields[1].max, 500);
}

TEST(ExternalChart, TellsOnceOfACurveWithoutAScale) {
  FollowedTable table;
  table.live.Fields[0].max = 0;
  table.Open();
  table.Fill(1, 60);
  table.dialogs.Expect(" - PlotValue", Answer::Cancel,
                       [&] { EXPECT_FALSE(table.form->IsReading()) << "nothing is read while the box stands"; });
  table.Poll();
  table.Fill(61, 70);
  table.Poll();
  EXPECT_EQ(table.Label("Label2_0"), "70.000");
  EXPECT_TRUE(table.form->IsReading());
}

// --- Looking back ---

TEST(ExternalChart, HasABarFromTheFifthMinuteOn) {
  FollowedTable table;
  table.Open();
  table.Fill(1, 239);
  table.Poll();
  EXPECT_FALSE(table.Bar().isEnabled());
  table.Fill(240, 600);
  table.Poll();
  EXPECT_TRUE(table.Bar().isEnabled());
  EXPECT_EQ(table.Bar().maximum(), 7);  // blocks are drawn up to 09:42
  EXPECT_EQ(table.Bar().value(), 7);
}

TEST(ExternalChart, LooksBackInTheTable) {
  FollowedTable table;
  table.Open();
  table.Fill(1, 600);
  table.Poll();
  const QImage live = table.Plot();
  table.Bar().setValue(2);
  EXPECT_EQ(table.CountOf(kRedDot), 0) << "the frame of the page comes first";
  table.Settle();
  // The page of 09:32: its first row has the value 20.
  EXPECT_TRUE(HasAt(table.Plot(), 20, 0, kRedDot));
  EXPECT_TRUE(HasAt(table.Plot(), 80, 60, kRedDot));
  table.Bar().setValue(table.Bar().maximum());
  EXPECT_EQ(table.Plot(), live);
}

TEST(ExternalChart, GoesOnUnseenWhileItLooksBack) {
  FollowedTable seen, looked;
  for (FollowedTable* table : {&seen, &looked}) {
    table->Open();
    table->Fill(1, 600);
    table->Poll();
  }
  looked.Bar().setValue(1);
  looked.Settle();
  const QImage page = looked.Plot();
  for (FollowedTable* table : {&seen, &looked}) {
    table->Fill(601, 900);
    table->Poll();
  }
  EXPECT_EQ(looked.Plot(), page);
  looked.Bar().setValue(looked.Bar().maximum());
  EXPECT_EQ(looked.Plot(), seen.Plot());
}

TEST(ExternalChart, SaysWhereAPageHasNoRowsOrCantBeRead) {
  FollowedTable table;
  table.Open();
  table.Fill(500, 900);
  table.Poll();
  table.Bar().setValue(0);
  const QImage empty = table.Plot();
  table.Settle();
  EXPECT_NE(table.Plot(), empty);
  table.Find<QAction>("ReadValue").trigger();
  QTest::mouseMove(&table.form->View().PlotArea(), QPoint(200, 100));
  EXPECT_EQ(table.form->windowTitle(), "No Data availble to plot");
  std::filesystem::remove(table.database);
  table.Bar().setValue(1);
  table.Settle();
  QTest::mouseMove(&table.form->View().PlotArea(), QPoint(210, 110));
  EXPECT_EQ(table.form->windowTitle(), "Unable to read the data");
}

TEST(ExternalChart, DrawsThePageAgainInAnotherSizeWithoutTheTable) {
  FollowedTable table;
  table.Open();
  table.Fill(1, 100);
  table.Poll();
  std::filesystem::remove(table.database);
  table.form->resize(900, 460);
  EXPECT_TRUE(HasAt(table.Plot(), 30, 30, kRedDot));
  EXPECT_TRUE(HasAt(table.Plot(), 70, 70, kRedDot));
}

TEST(ExternalChart, ReadsAValueUnderTheMouse) {
  FollowedTable table(2);
  table.Open();
  table.Fill(1, 60);
  table.Poll();
  table.dialogs.ExpectChoice("Read Value from Graph", "Value 2");
  table.Find<QAction>("ReadValue").trigger();
  QTest::mouseMove(&table.form->View().PlotArea(), QPoint(300, 30));
  EXPECT_EQ(table.form->windowTitle(), "Value 2 at 09:30:30 : 30.000");
  QTest::mouseMove(&table.form->View().PlotArea(), QPoint(300, 90));
  EXPECT_EQ(table.form->windowTitle(), "") << "no row is there";
  QTest::keyClick(table.form, Qt::Key_Escape);
  EXPECT_EQ(table.form->windowTitle(), "External Data Display");
}

// --- Comments and printing ---

TEST(ExternalChart, WritesACommentIntoTheLogOfTheJob) {
  FollowedTable table;
  table.Open();
  table.Fill(1, 60);
  table.Poll();
  const QImage before = table.Plot();
  QTest::keyClick(table.form, Qt::Key_F7);
  auto& entry = table.Find<QLineEdit>("Text1");
  EXPECT_TRUE(entry.isVisible());
  QTest::keyClicks(&entry, "Packer set");
  QTest::keyClick(&entry, Qt::Key_Return);
  const auto comments = table.open.Comments({});
  ASSERT_EQ(comments.size(), 1U);
  EXPECT_EQ(comments[0].text, "Packer set");
  EXPECT_NE(table.Plot(), before);
}

TEST(ExternalChart, NeedsALogForACommentAndForPaper) {
  FollowedTable table;
  table.log.Finalise();
  table.session.LogFileInUse.clear();
  table.Open();
  table.dialogs.Expect("File Name should be Supplied first.", Answer::Ok);
  table.Find<QAction>("AddComment").trigger();
  table.dialogs.Expect("File Name should be Supplied first.", Answer::Ok);
  table.Find<QAction>("Print").trigger();
  EXPECT_TRUE(table.printed.empty());
  table.session.LogFileInUse = table.path;
  table.Find<QAction>("Print").trigger();
  ASSERT_EQ(table.printed.size(), 1U);
  EXPECT_EQ(table.printed[0], table.live);
}

TEST(ExternalChart, TellsWhatAKeyFailsIn) {
  FollowedTable table;
  table.Open();
  table.printFails = true;
  table.dialogs.Expect("Disk full - Toolbar1_ButtonClick", Answer::Retry, [&] {
    EXPECT_FALSE(table.form->IsReading());
    table.printFails = false;
  });
  table.Find<QAction>("Print").trigger();
  EXPECT_EQ(table.printed.size(), 1U);
  EXPECT_TRUE(table.form->IsReading());
}

// --- Its life ---

TEST(ExternalChart, StopsReadingWhereItIsClosed) {
  FollowedTable table;
  const QPointer<frmExtGraphForm> form = &table.Open();
  form->close();
  EXPECT_FALSE(form->IsReading());
  table.Fill(1, 60);
  table.Poll();
  QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(form.isNull());
}

TEST(ExternalChart, MayBeClosedWhileItsBoxStands) {
  FollowedTable table;
  table.live.Fields[0].max = 0;
  const QPointer<frmExtGraphForm> form = &table.Open();
  table.Fill(1, 60);
  table.dialogs.Expect(" - PlotValue", Answer::Cancel, [&] { form->close(); });
  table.Poll();
  QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(form.isNull());
}

TEST(ExternalChart, StandsStillWhileItIsPaused) {
  FollowedTable table;
  table.Open();
  table.form->StopReading();
  table.Fill(1, 60);
  table.Poll();
  EXPECT_EQ(table.CountOf(kRedDot), 0);
  EXPECT_EQ(table.State().find("Not followed at present: "), 0U);
  table.form->StartReading();
  table.Poll();
  EXPECT_EQ(table.Label("Label2_0"), "60.000");
}

}  // namespace
}  // namespace velk
