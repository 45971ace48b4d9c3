#include "wells/windows/report_form.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QRadioButton>
#include <QTableView>

#include "platform/files/whole_file.h"
#include "platform/settings/settings.h"
#include "support/fake_clock.h"
#include "support/fake_printers.h"
#include "support/host.h"
#include "support/temporary_folder.h"
#include "support/window_script.h"
#include "wells/windows/pages_view.h"

namespace velk {
namespace {

class ProfileWindow : public testing::Test {
 protected:
  ProfileWindow() {
    well.Survey = {{0, 0, 0}, {1000, 0, 0}};
    well.Path = CalculateTrajectory(well.Survey, well.CalculationInterval);
    well.SurveyFileName = "/wells/north.d15";
    settings.Save("VELK2", "PrintGraph", "Client", "Smith");
    settings.Save("VELK2", "PrintGraph", "Field", "North");
    settings.Save("VELK2", "PrintGraph", "Well", "N-7");
    settings.Save("VELK2", "PrintGraph", "Job", "Clean out");
    session.CurrentFont = "DejaVu Sans";
  }
  void Open() {
    window = std::make_unique<ReportForm>(
        host, WellAccess{well, session, platform, [this]() -> PrinterChoice& { return choice; }, [this] { ++beeps; }});
    window->show();
    QApplication::processEvents();
    grid = window->findChild<QTableView*>("Grid1");
  }
  std::string Cell(int row, int column) const {
    return grid->model()->index(row, column).data().toString().toStdString();
  }
  std::string Heading(int column) const {
    return grid->model()->headerData(column, Qt::Horizontal).toString().toStdString();
  }
  void Click(const char* button) { test::Click(*window, button); }

  const test::TemporaryFolder folder;
  SettingsStore settings{folder.Path().string()};
  test::Host host;
  test::FakeClock clock{host.gate};
  Platform platform{clock, host.gate, host.dialogs, settings, host.translation.Translator};
  Session session;
  Well well;
  FakePrinters printers;
  PrinterChoice choice{printers};
  int beeps = 0;
  std::unique_ptr<ReportForm> window;
  QTableView* grid = nullptr;
};

TEST_F(ProfileWindow, ShowsTheStationsInEachSystem) {
  Open();
  EXPECT_EQ(grid->model()->rowCount(), 14);
  EXPECT_EQ(Cell(10, 0), "1000");
  EXPECT_EQ(Cell(11, 0), "");
  EXPECT_EQ(Heading(1), "True Vertical\nDepth\nfeet");
  EXPECT_EQ(Heading(6), "Dog\nleg\ndeg/100 ");
  test::FindControl<QRadioButton>(*window, "Option2")->click();
  EXPECT_EQ(Cell(10, 1), "305");
  EXPECT_EQ(Heading(0), "Depth\nm");
  test::FindControl<QRadioButton>(*window, "Option1")->click();
  EXPECT_EQ(Cell(10, 1), "1000");
  EXPECT_EQ(well.Path.stations[10].tvd, 1000);
}

TEST_F(ProfileWindow, SaysWhereAPathComesFromWhereThereIsNone) {
  well.Path = {};
  Open();
  EXPECT_TRUE(test::FindControl<QLabel>(*window, "lblHint")->isVisible());
  well.Path = CalculateTrajectory(well.Survey, well.CalculationInterval);
  window->Refresh();
  EXPECT_FALSE(test::FindControl<QLabel>(*window, "lblHint")->isVisible());
  EXPECT_EQ(Cell(1, 0), "100");
}

TEST_F(ProfileWindow, FollowsThePathOnceItIsShownAgain) {
  Open();
  window->hide();
  well.Path.stations.resize(30);
  window->Refresh();
  EXPECT_EQ(grid->model()->rowCount(), 14) << "nobody looks";
  window->show();
  EXPECT_EQ(grid->model()->rowCount(), 30);
}

TEST_F(ProfileWindow, WritesAnOutFile) {
  Open();
  host.dialogs.ExpectSaveFile(folder.File("north"));
  Click("Command3");
  const std::string text = ReadWholeFile(folder.File("north.out"), 10'000);
  EXPECT_TRUE(text.starts_with("Client Name: Smith,Well Name: N-7,Job Description: Clean out\r\nDepth,")) << text;
  EXPECT_EQ(host.dialogs.filesAsked[0].filter, "Output Files (*.out) |*.out");
}

TEST_F(ProfileWindow, TellsWhatKeepsAFileFromBeingWritten) {
  Open();
  host.dialogs.ExpectSaveFile("/no/such/north.out");
  host.dialogs.Expect("- Command3_Click", Answer::Cancel);
  Click("Command3");
}

TEST_F(ProfileWindow, PrintsOnTheChosenPrinter) {
  Open();
  test::WindowScript script;
  script.ThenClick("frmPrinterSelect", "Command1");
  Click("Command1");
  ASSERT_EQ(printers.documents.size(), 1U);
  EXPECT_EQ(printers.documents[0]->title, "north.d15");
  EXPECT_EQ(printers.documents[0]->pages, 1);
  EXPECT_TRUE(printers.documents[0]->ended);
}

TEST_F(ProfileWindow, NamesTheWellFileWhereTheSurveyIsOfOne) {
  well.SurveyFileName.clear();
  well.WellFileName = "/wells/old.dt5";
  Open();
  test::WindowScript script;
  script.ThenClick("frmPrinterSelect", "Command1");
  Click("Command1");
  ASSERT_EQ(printers.documents.size(), 1U);
  EXPECT_EQ(printers.documents[0]->title, "old.dt5");
}

TEST_F(ProfileWindow, TellsOfAPrinterThatRefuses) {
  Open();
  printers.fails = true;
  test::WindowScript script;
  script.ThenClick("frmPrinterSelect", "Command1");
  host.dialogs.Expect("- Command1_Click", Answer::Cancel);
  Click("Command1");
}

TEST_F(ProfileWindow, PreviewsThePageInThePlaceOfTheTable) {
  Open();
  auto* button = test::FindControl<QPushButton>(*window, "cmdPrintPreview");
  auto* pages = test::FindControl<PagesView>(*window, "Text1");
  EXPECT_FALSE(pages->isVisible());
  button->click();
  EXPECT_TRUE(pages->isVisible());
  EXPECT_FALSE(grid->isVisible());
  EXPECT_EQ(button->text(), "Close");
  // Letters on white paper.
  const QImage shown = pages->viewport()->grab().toImage();
  int dark = 0, white = 0;
  for (int y = 0; y < shown.height(); ++y)
    for (int x = 0; x < shown.width(); ++x) {
      dark += qGray(shown.pixel(x, y)) < 60 ? 1 : 0;
      white += shown.pixel(x, y) == 0xFFFFFFFF ? 1 : 0;
    }
  EXPECT_GT(dark, 100);
  EXPECT_GT(white, shown.width() * shown.height() / 2);
  button->click();
  EXPECT_FALSE(pages->isVisible());
  EXPECT_TRUE(grid->isVisible());
  EXPECT_EQ(button->text(), "Print Preview");
}

TEST_F(ProfileWindow, IsHiddenByExit) {
  Open();
  Click("Command2");
  EXPECT_FALSE(window->isVisible());
}

}  // namespace
}  // namespace velk
