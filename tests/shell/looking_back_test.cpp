// A job in the whole program, looked back into and commented while it is recorded.

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QMouseEvent>
#include <QScrollBar>
#include <QStatusBar>
#include <QTableView>
#include <QTest>
#include <filesystem>

#include "graphs/label_reading.h"
#include "graphs/windows/graph_form_new.h"
#include "platform/database/command.h"
#include "shell/shell_rig.h"

namespace velk::test {
namespace {

class LookingBack : public testing::Test {
 protected:
  LookingBack() {
    rig.Start();
    rig.State().SensitivityCriterion = 0;  // every sample is drawn and logged
    rig.Connect();
  }

  void StartRecording() {
    rig.dialogs.ExpectSaveFile(path);
    rig.Press("Record");
    rig.Press("Pause");
  }
  void Run(int frames) {
    for (int i = 0; i < frames; ++i, ++sent) rig.Frame(sent % 100, 20, 30);
  }
  GraphFormNew& Form(int graph) { return *dynamic_cast<GraphFormNew*>(rig.State().GraphForms[graph]); }
  QScrollBar& Bar(int graph) { return *Form(graph).findChild<QScrollBar*>("VScroll1"); }
  QImage Plot(int graph) { return Form(graph).findChild<QWidget*>("Pic2")->grab().toImage(); }
  void Comment(int graph, const char* comment) {
    QTest::keyClick(&Form(graph), Qt::Key_F7);
    auto* entry = Form(graph).findChild<QLineEdit*>("Text1");
    entry->setText(QString::fromUtf8(comment));
    QTest::keyClick(entry, Qt::Key_Return);
  }
  std::vector<std::string> Texts(const std::string& sql) {
    const auto connection = Connection::Open(path, OpenMode::ReadOnly);
    Command rows(*connection, sql);
    std::vector<std::string> texts;
    while (rows.Next()) texts.push_back(rows.Text(0));
    return texts;
  }
  static QTableView* Report() {
    for (QWidget* window : QApplication::topLevelWidgets())
      if (window->objectName() == "frmRTSumRep" && window->isVisible())
        return window->findChild<QTableView*>("DataGrid1");
    return nullptr;
  }

  ShellRig rig;
  std::string path = rig.folder.File("job.mdb");
  int sent = 0;
};

TEST_F(LookingBack, LeavesTheRecordingAndTheLiveCurvesAlone) {
  StartRecording();
  Run(700);
  ASSERT_TRUE(Bar(1).isEnabled());
  const QImage live = Plot(1);
  for (int minute = 1; minute < Bar(1).maximum(); ++minute) {
    Bar(1).setValue(minute);
    Bar(2).setValue(minute - 1);
    EXPECT_NE(Plot(1), live);
    Run(10);
  }
  const long long rows = rig.application->RowsRecorded();
  EXPECT_EQ(rows, sent - 1) << "the first frame only shows the length of the next ones";
  for (const int graph : {1, 2}) Bar(graph).setValue(Bar(graph).maximum());
  Run(10);
  rig.Press("Stop");
  EXPECT_FALSE(std::filesystem::exists(path + "-wal")) << "no reader holds the log open";
  EXPECT_EQ(Texts("SELECT count(*) FROM logData"), std::vector<std::string>{std::to_string(rows + 10)});
}

TEST_F(LookingBack, ShowsTheValueThatIsReadInTheStatusBarWhereAGraphFillsTheArea) {
  StartRecording();
  Run(60);
  Form(1).parentWidget()->showMaximized();
  Form(1).findChild<QAction*>("ReadValue")->trigger();
  auto* plot = Form(1).findChild<QWidget*>("Pic2");
  QMouseEvent move(QEvent::MouseMove, QPointF(300, 5), plot->mapToGlobal(QPointF(300, 5)), Qt::NoButton, {}, {});
  QApplication::sendEvent(plot, &move);
  const QString read = Form(1).windowTitle();
  EXPECT_NE(read.indexOf(" at "), -1) << read.toStdString();
  EXPECT_EQ(rig.Window().findChild<QStatusBar*>()->currentMessage(), read);
  Form(1).findChild<QAction*>("ReadValue")->trigger();
  EXPECT_NE(rig.Window().findChild<QStatusBar*>()->currentMessage(), read);
}

TEST_F(LookingBack, ShowsCommentsInTheReportAsTheyAreWritten) {
  StartRecording();
  Run(5);
  EXPECT_TRUE(rig.Window().MenuItem("mnuViewSummaryReport")->isEnabled());
  rig.Choose("mnuViewSummaryReport");
  ASSERT_NE(Report(), nullptr);
  EXPECT_EQ(Report()->model()->rowCount(), 0);
  Comment(1, "Насос 2 включён");
  Run(3);
  Comment(3, "Pressure steady");
  ASSERT_EQ(Report()->model()->rowCount(), 2);
  const int last = Report()->model()->columnCount() - 1;
  EXPECT_EQ(Report()->model()->index(0, last).data().toString(), "Насос 2 включён");
  EXPECT_EQ(Report()->currentIndex().row(), 1);
  rig.Press("Stop");
  EXPECT_EQ(Texts("SELECT Comments FROM SummaryReport"),
            (std::vector<std::string>{"Насос 2 включён", "Pressure steady"}));
  rig.windows.Then("frmSummaryReport", [](QDialog& viewer) {
    EXPECT_EQ(viewer.findChild<QTableView*>("summaryGrid")->model()->rowCount(), 2)
        << "the report of the last log can still be read";
    viewer.reject();
  });
  rig.Choose("mnuViewSummaryReport");
}

TEST_F(LookingBack, DeletesARowOfAPausedJobWithoutCostingItAnother) {
  StartRecording();
  Run(20);
  rig.Press("Pause");
  rig.windows.Then("frmSummaryReport", [](QDialog& viewer) {
    auto& grid = *viewer.findChild<QTableView*>("logDataGrid");
    grid.setCurrentIndex(grid.model()->index(4, 0));
    viewer.findChild<QAbstractButton*>("cmdDelete")->click();
    viewer.reject();
  });
  rig.Choose("mnuViewSummaryReport");
  rig.Press("Pause");
  Run(10);
  const long long rows = rig.application->RowsRecorded();
  rig.Press("Stop");
  EXPECT_EQ(Texts("SELECT count(*) FROM logData"), std::vector<std::string>{std::to_string(rows - 1)});
  EXPECT_EQ(Texts("SELECT count(*) FROM logData WHERE ID = 5"), std::vector<std::string>{"0"});
}

TEST_F(LookingBack, GoesThroughAFileThatPlaysAndShowsItAsItWasRecorded) {
  StartRecording();
  Run(701);
  Bar(1).setValue(1);
  const QImage recorded = Plot(1);
  rig.Press("Stop");
  rig.dialogs.ExpectOpenFile(path);
  rig.Choose("mnuFilePlayback");
  rig.Choose("mnuAcquireStart");
  EXPECT_FALSE(Bar(1).isEnabled());
  rig.clock.Advance(601'000);
  // The row of the 600th second begins the sixth block of two minutes; the last five minutes are the live page.
  ASSERT_TRUE(Bar(1).isEnabled());
  EXPECT_EQ(Bar(1).maximum(), 12 - 5);
  EXPECT_EQ(Bar(1).value(), Bar(1).maximum());
  const QImage live = Plot(1);
  Bar(1).setValue(1);
  EXPECT_EQ(Plot(1), recorded);
  rig.clock.Advance(20'000);
  EXPECT_EQ(Plot(1), recorded) << "the rows go on unseen";
  Bar(1).setValue(Bar(1).maximum());
  EXPECT_NE(Plot(1), recorded);
  EXPECT_NE(Plot(1), live);
}

TEST_F(LookingBack, ReadsScaledValuesOfAFileThatPlays) {
  StartRecording();
  Run(120);
  rig.Press("Stop");
  for (Parameter& saved : rig.State().PlaybackParameters) saved.Gain = 2, saved.Offset = 0.5;
  rig.dialogs.ExpectOpenFile(path);
  rig.Choose("mnuFilePlayback");
  rig.Choose("mnuAcquireStart");
  rig.clock.Advance(100'000);
  Form(2).findChild<QAction*>("ReadValue")->trigger();
  auto* plot = Form(2).findChild<QWidget*>("Pic2");
  QMouseEvent move(QEvent::MouseMove, QPointF(300, 60), plot->mapToGlobal(QPointF(300, 60)), Qt::NoButton, {}, {});
  QApplication::sendEvent(plot, &move);
  EXPECT_TRUE(Form(2).windowTitle().endsWith(" : 40.5000")) << Form(2).windowTitle().toStdString();
}

TEST_F(LookingBack, WritesNoValuesOfAnotherJobBesideAComment) {
  rig.questions.include = [](SummaryInclusion& inclusion) {
    for (auto& entry : inclusion.parameters) entry.included = entry.parameter == 1;
  };
  StartRecording();
  Comment(1, "before the first line");
  Run(2);
  Comment(1, "behind it");
  rig.Press("Stop");
  rig.dialogs.ExpectOpenFile(path);
  rig.Choose("mnuFilePlayback");
  Comment(1, "ready to play");
  rig.Choose("mnuAcquireStart");
  rig.clock.Advance(1000);
  Comment(1, "at the first row");
  EXPECT_EQ(Texts("SELECT coalesce(\"Parameter 1\", 'nothing') || ' ' || Comments FROM SummaryReport ORDER BY rowid"),
            (std::vector<std::string>{"nothing before the first line", "1.0 behind it", "nothing ready to play",
                                      "1.0 at the first row"}));
}

TEST_F(LookingBack, FindsTheEditsOfARecordedJobOnItsCharts) {
  StartRecording();
  Run(3);
  rig.dialogs.ExpectInput("Enter parameter name", "Treating Pressure");
  ClickLabel(Form(1), "Label1_0");
  rig.dialogs.ExpectInput("Enter parameter units", "bar");
  ClickLabel(Form(1), "Label3_0");
  EXPECT_EQ(Texts("SELECT ParameterName || ' ' || units FROM GraphSettings LIMIT 1"),
            std::vector<std::string>{"Treating Pressure bar"});
  Run(3);
  Comment(1, "renamed");
  rig.Press("Stop");
  rig.dialogs.ExpectOpenFile(path);
  rig.Choose("mnuFilePlayback");
  EXPECT_EQ(rig.State().CurrentParameters[1].name, "Treating Pressure");
  rig.Choose("mnuAcquireStart");
  rig.clock.Advance(1000);
  EXPECT_EQ(rig.State().CurrentValue[1], 1.0F) << "its column has the name that the file was made with";
}

TEST_F(LookingBack, HasNoCommentsWithoutAFile) {
  rig.Press("Pause");
  Run(3);
  rig.dialogs.Expect("Must supply a file name", Answer::Ok);
  QTest::keyClick(&Form(1), Qt::Key_F7);
}

TEST_F(LookingBack, EndsInTheNextJobOfTheSameProgram) {
  for (int job = 0; job < 2; ++job) {
    path = rig.folder.File("job" + std::to_string(job) + ".mdb");
    StartRecording();
    Run(500);
    Bar(1).setValue(1);
    Comment(1, "x");
    rig.Press("Stop");
    EXPECT_FALSE(std::filesystem::exists(path + "-wal"));
    EXPECT_EQ(Texts("SELECT count(*) FROM SummaryReport"), std::vector<std::string>{"1"});
    rig.Connect();
  }
}

}  // namespace
}  // namespace velk::test
