#include "wells/windows/edit_sur.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QTableView>
#include <QTest>

#include "platform/files/file_errors.h"
#include "platform/files/whole_file.h"
#include "support/host.h"
#include "support/temporary_folder.h"
#include "support/window_script.h"
#include "wells/texts.h"

namespace velk {
namespace {

using Rows = std::vector<SurveyStation>;

class SurveyEditor : public testing::Test {
 protected:
  void Open(Well well = {}) {
    const SurveyAccess access{folder.Path().string(), [this] { ++beeps; },
                              [this](const UserUnits& units) { kept.push_back(units); },
                              [this](const std::string& file) { ownFiles.push_back(file); }, [this] { return isLive; }};
    window = std::make_unique<EditSur>(host, std::move(well), access);
    window->show();
    window->activateWindow();
    QApplication::processEvents();
    grid = window->findChild<QTableView*>("Grid1");
  }
  void Press(int key, Qt::KeyboardModifiers with = Qt::NoModifier) {
    QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key), with);
    QApplication::processEvents();
  }
  void Type(const char* text) {
    for (const char* letter = text; *letter != '\0'; ++letter) QTest::keyClick(QApplication::focusWidget(), *letter);
  }
  void GoTo(int row, int column) { grid->setCurrentIndex(grid->model()->index(row, column)); }
  std::string Cell(int row, int column) const {
    return grid->model()->index(row, column).data().toString().toStdString();
  }
  void Click(const char* button) { test::Click(*window, button); }
  std::string Title() const { return window->windowTitle().toStdString(); }
  std::string Remark() const { return window->findChild<QLabel*>("lblFault")->text().toStdString(); }
  bool IsChosen(const char* option) const { return window->findChild<QRadioButton*>(option)->isChecked(); }
  const Well& Result() const { return window->Answer(); }
  void Undo() {
    window->activateWindow();
    QApplication::processEvents();
    GoTo(0, 0);
    grid->setFocus();
    Press(Qt::Key_Z, Qt::ControlModifier);
  }
  void PasteText(const char* text) {
    QApplication::clipboard()->setText(text);
    GoTo(0, 0);
    Press(Qt::Key_V, Qt::ControlModifier);
  }

  const test::TemporaryFolder folder;
  test::Host host;
  std::unique_ptr<EditSur> window;
  QTableView* grid = nullptr;
  int beeps = 0;
  std::vector<UserUnits> kept;
  std::vector<std::string> ownFiles;  ///< that the rows of the opening were said to be in
  bool isLive = false;
};

using Texts = std::vector<std::string>;

Well WellOf(const Rows& rows) {
  Well well;
  well.Survey = rows;
  well.SavedSurveyCount = static_cast<std::int16_t>(rows.size());
  return well;
}

TEST_F(SurveyEditor, ComputesThePathOfWhatIsTyped) {
  Open();
  EXPECT_EQ(Title(), "Well Survey Data");
  Type("1000");
  Press(Qt::Key_Tab);
  Type("30");
  Press(Qt::Key_Tab);
  Type("90");
  Press(Qt::Key_Return);
  Click("cmdOK");
  EXPECT_EQ(window->result(), QDialog::Accepted);
  EXPECT_EQ(Result().Survey, (Rows{{0, 0, 0}, {1000, 30, 90}}));
  EXPECT_EQ(Result().SavedSurveyCount, 2) << "the surface that was added counts";
  EXPECT_TRUE(Result().SurveyAccepted);
  EXPECT_EQ(Result().Path.stations.size(), 11U);
}

TEST_F(SurveyEditor, ShowsWhatWasAcceptedLastWhenItOpensAgain) {
  Well well = WellOf({{0, 0, 0}, {500, 1, 2}});
  well.Survey.push_back({600, 3, 4});
  Open(well);
  EXPECT_EQ(Cell(1, 0), "500");
  EXPECT_EQ(Cell(2, 0), "");
  well.SavedSurveyCount = 0;
  Open(well);
  EXPECT_EQ(Cell(2, 0), "600");
}

TEST_F(SurveyEditor, IsLeftWithoutAnAnswerByCancel) {
  Open(WellOf({{0, 0, 0}, {500, 1, 2}}));
  Click("cmdCancel");
  EXPECT_EQ(window->result(), QDialog::Rejected);
  EXPECT_FALSE(window->isVisible());
  EXPECT_FALSE(Result().SurveyAccepted);
}

TEST_F(SurveyEditor, AsksBeforeChangesAreLost) {
  Open(WellOf({{0, 0, 0}, {500, 1, 2}}));
  Click("cmdDeleteRow");
  host.dialogs.Expect("Leave the survey without what you have changed?", Answer::No);
  Click("cmdCancel");
  EXPECT_TRUE(window->isVisible());
  host.dialogs.Expect("Leave the survey", Answer::Yes);
  Click("cmdCancel");
  EXPECT_FALSE(window->isVisible());
}

TEST_F(SurveyEditor, RefusesADepthThatIsNotBelowTheOneAboveByItsRow) {
  Open();
  PasteText("0\n100\n90\n");
  host.dialogs.Expect("Row 3: A depth has to be below the one above it.", Answer::Ok);
  Click("cmdOK");
  EXPECT_TRUE(window->isVisible());
  EXPECT_EQ(grid->currentIndex().row(), 2);
  EXPECT_EQ(Remark(), "A depth has to be below the one above it.");
}

TEST_F(SurveyEditor, TellsOfAnOverflowAndKeepsThePathThatWasThere) {
  Well well = WellOf({{0, 0, 0}, {500, 1, 2}});
  well.Path.maxTvd = 77;
  Open(well);
  PasteText("0\n40000\n");
  host.dialogs.Expect("Overflow - cmdOK_Click", Answer::Cancel);
  Click("cmdOK");
  EXPECT_TRUE(window->isVisible());
  EXPECT_EQ(Result().Path.maxTvd, 77);
  EXPECT_EQ(Result().Survey.size(), 2U);
}

TEST_F(SurveyEditor, ClearsTheStationsByAnEmptyGrid) {
  Well well = WellOf({{0, 0, 0}, {500, 1, 2}});
  well.Path.stations.resize(6);
  Open(well);
  Click("cmdNew");
  EXPECT_EQ(Title(), "Well Survey");
  Click("cmdNext");
  EXPECT_EQ(window->result(), QDialog::Accepted);
  EXPECT_TRUE(Result().Survey.empty());
  EXPECT_TRUE(Result().Path.stations.empty());
  EXPECT_EQ(Result().SavedSurveyCount, 0);
}

TEST_F(SurveyEditor, BeginsANewSurveyWithTheUnitsOfTheWellFile) {
  Well well = WellOf({{0, 0, 0}, {500, 1, 2}});
  well.SurveyFileName = folder.File("a.d15");
  well.WellFileUnits = kMetric;
  Open(well);
  EXPECT_TRUE(IsChosen("Option1_0"));
  Click("cmdNew");
  EXPECT_TRUE(IsChosen("Option1_1"));
  EXPECT_EQ(Cell(0, 0), "");
  EXPECT_FALSE(test::FindControl<QPushButton>(*window, "cmdSave")->isEnabled());
  GoTo(0, 0);
  grid->setFocus();
  Press(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(Cell(1, 0), "500");
}

TEST_F(SurveyEditor, OpensASurveyFile) {
  const std::string path = folder.File("a.d15");
  WriteWholeFile(path, " 2 \r\n 0 ,0,0\r\n 1000.5 , 5.25 , 120 \r\n 1 \r\n");
  Open();
  host.dialogs.ExpectOpenFile(path);
  Click("cmdOpen");
  EXPECT_EQ(Cell(1, 0), "1001");
  EXPECT_EQ(Cell(1, 1), "5.25");
  EXPECT_TRUE(IsChosen("Option1_1"));
  std::string upper = path;
  std::transform(upper.begin(), upper.end(), upper.begin(), [](char c) { return static_cast<char>(std::toupper(c)); });
  EXPECT_EQ(Title(), "Well Survey: " + upper);
  Click("cmdOK");
  EXPECT_EQ(Result().Survey[1].depth, 1000.5);
  EXPECT_EQ(Result().SurveyFileName, path);
  EXPECT_EQ(Result().SurveyFileUnits, kMetric);
}

TEST_F(SurveyEditor, OpensAWellFileWithItsSections) {
  const std::string path = folder.File("a.DT5");
  WriteWholeFile(path, "2 0 0 0 12 9 700 1 2 12 9 1");
  Open();
  host.dialogs.ExpectOpenFile(path);
  Click("cmdOpen");
  Click("cmdOK");
  EXPECT_EQ(Result().WellFileName, path);
  EXPECT_EQ(Result().WellFileUnits, kMetric);
  EXPECT_EQ(Result().Sections.size(), 1U);
  EXPECT_EQ(Result().SurveyFileName, "");
}

TEST_F(SurveyEditor, KeepsTheUnitsOfTheLastWellFileWhereAnotherOneHasNone) {
  const std::string path = folder.File("a.dt5");
  WriteWholeFile(path, "2 0 0 0 12 9 700 1 2 12 9");
  Well well;
  well.WellFileUnits = kMetric;
  Open(well);
  host.dialogs.ExpectOpenFile(path);
  Click("cmdOpen");
  EXPECT_TRUE(IsChosen("Option1_0")) << "the present unit stays";
  EXPECT_EQ(Result().WellFileUnits, kMetric);
}

TEST_F(SurveyEditor, TellsWhatIsWrongWithAFileKeepsWhatCouldBeReadAndDoesNotSaveOverIt) {
  for (const auto& [content, said] : {std::pair{"3\n0,0,0\n100,1,2\n", "Rows announced: 3, read and kept: 2."},
                                      {"2\n0,0,0\n100,1,2\n200,3,4\n", "none of the units 0, 1 and 2"}}) {
    const std::string path = folder.File("a.d15");
    WriteWholeFile(path, content);
    Open();
    host.dialogs.ExpectOpenFile(path);
    host.dialogs.Expect(said, Answer::Ok);
    Click("cmdOpen");
    EXPECT_EQ(Cell(1, 0), "100");
    EXPECT_FALSE(test::FindControl<QPushButton>(*window, "cmdSave")->isEnabled());
    window->findChild<QPushButton*>("cmdSave")->click();
    EXPECT_EQ(ReadWholeFile(path, 1000), content);
    Click("cmdOK");
    EXPECT_EQ(Result().SurveyFileName, "");
  }
}

TEST_F(SurveyEditor, KeepsItsRowsWhereAFileHoldsNone) {
  const std::string path = folder.File("a.d15");
  WriteWholeFile(path, "no survey");
  Open(WellOf({{0, 0, 0}, {500, 1, 2}}));
  host.dialogs.ExpectOpenFile(path);
  host.dialogs.Expect("The file holds no survey.", Answer::Ok);
  Click("cmdOpen");
  EXPECT_EQ(Cell(1, 0), "500");
  EXPECT_EQ(Title(), "Well Survey Data");
}

TEST_F(SurveyEditor, SavesWithTheSurfaceAhead) {
  Open();
  PasteText("500\t3\t4\n");
  EXPECT_FALSE(test::FindControl<QPushButton>(*window, "cmdSave")->isEnabled());
  host.dialogs.ExpectSaveFile(folder.File("new"));
  Click("cmdSaveAs");
  EXPECT_EQ(ReadWholeFile(folder.File("new.d15"), 1000), " 2 \r\n 0 ,0,0\r\n 500 , 3 , 4 \r\n 0 \r\n");
  EXPECT_EQ(Cell(0, 0), "0") << "the grid shows what was saved";
  EXPECT_EQ(Cell(1, 0), "500");
  GoTo(1, 1);
  Type("7");
  Press(Qt::Key_Return);
  Click("cmdSave");
  EXPECT_EQ(ReadWholeFile(folder.File("new.d15"), 1000), " 2 \r\n 0 ,0,0\r\n 500 , 7 , 4 \r\n 0 \r\n");
  Click("cmdCancel");
  EXPECT_FALSE(window->isVisible()) << "nothing is left to lose";
}

TEST_F(SurveyEditor, KeepsRowsThatAreNotSavedAndAsksBeforeTheyAreLost) {
  Open();
  PasteText("0.0\t1\t2\n500\t3\t4\n\t\t\n700\t5\t6\n");
  host.dialogs.ExpectSaveFile(folder.File("new.d15"));
  Click("cmdSaveAs");
  EXPECT_EQ(ReadWholeFile(folder.File("new.d15"), 1000), " 2 \r\n 0 , 1 , 2 \r\n 500 , 3 , 4 \r\n 0 \r\n");
  EXPECT_EQ(Cell(3, 0), "700");
  host.dialogs.Expect("Leave the survey without what you have changed?", Answer::Yes);
  Click("cmdCancel");
}

TEST_F(SurveyEditor, SavesNoNumberBeyondTheRange) {
  Open();
  PasteText("0\n1e999\n");
  host.dialogs.ExpectSaveFile(folder.File("new.d15"));
  host.dialogs.Expect("Overflow - cmdSave_Click", Answer::Cancel);
  Click("cmdSaveAs");
  EXPECT_FALSE(FileExists(folder.File("new.d15")));
  EXPECT_EQ(Title(), "Well Survey Data");
}

TEST_F(SurveyEditor, SaysWhichFileItsOwnRowsAreInHoweverItIsLeft) {
  const std::string a = folder.File("a.d15"), b = folder.File("b.d15");
  Well well = WellOf({{0, 0, 0}, {500, 1, 2}});
  well.SurveyIsKept = false;
  Open(well);
  const auto saveAs = [&](const std::string& path) {
    host.dialogs.ExpectSaveFile(path);
    if (FileExists(path)) host.dialogs.Expect("is there already. Replace it?", Answer::Yes);
    Click("cmdSaveAs");
  };
  const auto enter = [&](const char* angle) {
    GoTo(1, 1);
    grid->setFocus();
    Type(angle);
    Press(Qt::Key_Return);
  };
  saveAs(a);
  EXPECT_EQ(ownFiles, Texts{a});
  enter("7");
  saveAs(b);
  EXPECT_EQ(ownFiles, Texts{a}) << "the first file still has them";
  saveAs(a);
  EXPECT_EQ(ownFiles, (Texts{a, ""})) << "others were saved over them";
  Undo();
  saveAs(b);
  EXPECT_EQ(ownFiles, (Texts{a, "", b}));
  Click("cmdCancel");
  EXPECT_FALSE(window->isVisible());
}

TEST_F(SurveyEditor, SaysWhetherWhatWasAcceptedIsInAFile) {
  Open();
  PasteText("0\n500\n");
  host.dialogs.ExpectSaveFile(folder.File("a.d15"));
  Click("cmdSaveAs");
  Click("cmdOK");
  EXPECT_TRUE(Result().SurveyIsKept);
  Open(Result());
  GoTo(1, 1);
  Type("7");
  Press(Qt::Key_Return);
  Click("cmdOK");
  EXPECT_FALSE(Result().SurveyIsKept);
  Open(Result());
  Click("cmdOK");
  EXPECT_FALSE(Result().SurveyIsKept) << "nothing was saved in between";
}

TEST_F(SurveyEditor, BringsTheFileBackWithTheRowsThatUndoBringsBack) {
  const std::string a = folder.File("a.d15"), b = folder.File("b.dt5");
  WriteWholeFile(a, "2\n0,0,0\n500,1,2\n0\n");
  WriteWholeFile(b, "2 0 0 0 12 9 700 1 2 12 9 0");
  Open();
  host.dialogs.ExpectOpenFile(a);
  Click("cmdOpen");
  const std::string title = Title();
  host.dialogs.ExpectOpenFile(b);
  Click("cmdOpen");
  EXPECT_EQ(Result().Sections.size(), 1U);
  Undo();
  EXPECT_EQ(Cell(1, 0), "500");
  EXPECT_EQ(Title(), title);
  EXPECT_EQ(Result().SurveyFileName, a);
  EXPECT_EQ(Result().WellFileName, "");
  EXPECT_TRUE(Result().Sections.empty());
  EXPECT_TRUE(test::FindControl<QPushButton>(*window, "cmdSave")->isEnabled());
  Click("cmdNew");
  EXPECT_EQ(Result().SurveyFileName, "");
  Undo();
  EXPECT_EQ(Result().SurveyFileName, a);
  Undo();
  EXPECT_EQ(Title(), "Well Survey Data");
  EXPECT_EQ(Result().SurveyFileName, "");
}

TEST_F(SurveyEditor, HasTheSectionsOfItsOwnWellAlone) {
  Well well = WellOf({{0, 0, 0}, {500, 1, 2}});
  well.Sections = {{0, 500, 12, 9}};
  well.WellFileName = "/wells/old.dt5";
  Open(well);
  Click("cmdNew");
  EXPECT_TRUE(Result().Sections.empty());
  EXPECT_EQ(Result().WellFileName, "");
  const std::string path = folder.File("a.d15");
  WriteWholeFile(path, "2\n0,0,0\n500,1,2\n0\n");
  Open(well);
  host.dialogs.ExpectOpenFile(path);
  Click("cmdOpen");
  EXPECT_TRUE(Result().Sections.empty());
  EXPECT_EQ(Result().WellFileName, "");
}

TEST_F(SurveyEditor, ConvertsTheSectionsOfItsWellWithTheDepths) {
  Well well = WellOf({{0, 0, 0}, {1000, 1, 2}});
  well.SurveyFileName = folder.File("a.d15");
  well.Sections = {{0, 400, 12, 9}, {400, 1000, 8, 7}};
  Open(well);
  test::WindowScript script;
  script.ThenClick("UnitsConvert", "cmdOK");
  Click("cmdConvert");
  ASSERT_EQ(Result().Sections.size(), 2U);
  EXPECT_NEAR(Result().Sections[0].end, 121.92, 1e-9);
  EXPECT_NEAR(Result().Sections[1].start, 121.92, 1e-9);
  EXPECT_NEAR(Result().Sections[1].end, 304.8, 1e-9);
  EXPECT_EQ(Result().Sections[1].firstSize, 8) << "sizes are inches";
  Undo();
  EXPECT_EQ(Result().Sections, well.Sections);
  EXPECT_EQ(Result().SurveyFileName, well.SurveyFileName);
}

TEST_F(SurveyEditor, RefusesToAcceptRowsThatALiveSurveyWouldReplace) {
  isLive = true;
  Open(WellOf({{0, 0, 0}, {500, 1, 2}}));
  host.dialogs.Expect("A live survey makes this well from the log", Answer::Ok);
  Click("cmdOK");
  EXPECT_TRUE(window->isVisible());
  EXPECT_FALSE(Result().SurveyAccepted);
  isLive = false;
  Click("cmdOK");
  EXPECT_FALSE(window->isVisible());
}

TEST_F(SurveyEditor, TellsWhatKeepsAFileFromBeingSaved) {
  Open();
  PasteText("0\n500\n");
  host.dialogs.ExpectSaveFile("/no/such/folder/a.d15");
  host.dialogs.Expect("- cmdSave_Click", Answer::Cancel);
  Click("cmdSaveAs");
  EXPECT_EQ(Title(), "Well Survey Data");
}

TEST_F(SurveyEditor, KeepsItsFileWhereAnotherOneCanNotBeWritten) {
  Well well = WellOf({{0, 0, 0}, {500, 1, 2}});
  well.SurveyFileName = folder.File("a.d15");
  Open(well);
  host.dialogs.ExpectSaveFile("/no/such/folder/b.d15");
  host.dialogs.Expect("- cmdSave_Click", Answer::Cancel);
  Click("cmdSaveAs");
  Click("cmdSave");
  EXPECT_EQ(ReadWholeFile(folder.File("a.d15"), 1000), " 2 \r\n 0 ,0,0\r\n 500 , 1 , 2 \r\n 0 \r\n");
}

TEST_F(SurveyEditor, TellsOfADepthThatCanNotBeConverted) {
  Well well = WellOf({{0, 0, 0}, {20'000, 1, 2}});
  well.SurveyFileUnits = kUserDefined;
  well.Units.SetUser({1e-305, "tiny", ""});
  Open(well);
  test::WindowScript script;
  script.ThenClick("UnitsConvert", "cmdOK");
  host.dialogs.Expect("- cmdConvert_Click", Answer::Cancel);
  Click("cmdConvert");
  EXPECT_EQ(Cell(1, 0), "20000");
  EXPECT_TRUE(IsChosen("Option1_2"));
}

TEST_F(SurveyEditor, ConvertsItsDepths) {
  Open(WellOf({{0, 0, 0}, {1000.5, 1, 2}}));
  test::WindowScript script;
  script.Then("UnitsConvert", [](QDialog& dialog) {
    EXPECT_EQ(dialog.windowTitle(), "Convert Units from API-English to");
    EXPECT_EQ(test::FindControl<QComboBox>(dialog, "List1")->count(), 2);
    test::Click(dialog, "cmdOK");
  });
  Click("cmdConvert");
  EXPECT_EQ(Cell(1, 0), "304.952");
  EXPECT_TRUE(IsChosen("Option1_1"));
  ASSERT_EQ(kept.size(), 1U);
  EXPECT_EQ(kept[0].length, 1);
  EXPECT_EQ(grid->model()->headerData(0, Qt::Horizontal).toString(), "Depth\nm");
  Click("cmdOK");
  EXPECT_NEAR(Result().Survey[1].depth, 1000.5 * 0.3048, 1e-9);
}

TEST_F(SurveyEditor, ConvertsToTheOperatorsOwnUnits) {
  Open(WellOf({{0, 0, 0}, {900, 1, 2}}));
  test::WindowScript script;
  script.Then("UnitsConvert", [this](QDialog& dialog) {
    test::FindControl<QComboBox>(dialog, "List1")->setCurrentIndex(1);
    test::FindControl<QLineEdit>(dialog, "UserLength")->setText("0");
    host.dialogs.Expect("The length has to be a number above 0.", Answer::Ok);
    test::Click(dialog, "cmdOK");
    test::FindControl<QLineEdit>(dialog, "UserLength")->setText("0,5");
    test::FindControl<QLineEdit>(dialog, "UserDepthLabel")->setText("fathom");
    test::Click(dialog, "cmdOK");
  });
  Click("cmdConvert");
  EXPECT_EQ(Cell(1, 0), "450.000");
  EXPECT_EQ(grid->model()->headerData(0, Qt::Horizontal).toString(), "Depth\nfathom");
  EXPECT_EQ(kept.at(0).depthLabel, "fathom");
}

TEST_F(SurveyEditor, LeavesDepthsAsTheyAreWhereTheConversionIsCancelled) {
  Open(WellOf({{0, 0, 0}, {900, 1, 2}}));
  test::WindowScript script;
  script.ThenClick("UnitsConvert", "cmdCancel");
  Click("cmdConvert");
  EXPECT_EQ(Cell(1, 0), "900");
  EXPECT_TRUE(IsChosen("Option1_0"));
  EXPECT_EQ(Result().Units.UnitFactor[kLengthSlot], 1);
}

TEST_F(SurveyEditor, WritesTheUnitsBelowTheHeadings) {
  Open();
  test::FindControl<QRadioButton>(*window, "Option1_1")->click();
  EXPECT_EQ(grid->model()->headerData(0, Qt::Horizontal).toString(), "Depth\nm");
  EXPECT_EQ(grid->model()->headerData(1, Qt::Horizontal).toString(), "Inclination\ndegrees");
  EXPECT_EQ(grid->model()->headerData(2, Qt::Horizontal).toString(), "Azimuth\ndegrees");
}

TEST_F(SurveyEditor, IsWorkedByKeysAsASpreadsheetIs) {
  Open(WellOf({{0, 0, 0}, {500, 1, 2}}));
  GoTo(1, 1);
  Press(Qt::Key_F2);
  Press(Qt::Key_Escape);
  EXPECT_EQ(Cell(1, 1), "1.00");
  Press(Qt::Key_Delete);
  EXPECT_EQ(Cell(1, 1), "");
  Press(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(Cell(1, 1), "1.00");
  Press(Qt::Key_Insert);
  EXPECT_EQ(Cell(1, 0), "");
  EXPECT_EQ(Cell(2, 0), "500");
  GoTo(2, 0);
  Press(Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QApplication::clipboard()->text().toStdString(), "500\n");
  GoTo(2, 1);
  Press(Qt::Key_X, Qt::ControlModifier);
  EXPECT_EQ(QApplication::clipboard()->text().toStdString(), "1.00\n");
  EXPECT_EQ(Cell(2, 1), "");
  Press(Qt::Key_Return);
  EXPECT_EQ(grid->currentIndex().row(), 3);
}

TEST_F(SurveyEditor, MarksWhatIsNoNumber) {
  Open();
  Type("abc");
  Press(Qt::Key_Return);
  GoTo(0, 0);
  EXPECT_EQ(Remark(), "This is no number. What it begins with counts, or 0.");
  GoTo(5, 0);
  EXPECT_EQ(Remark(), "Type or paste depth, inclination and azimuth. An empty angle is that of the row above.");
}

TEST_F(SurveyEditor, DeletesAllSelectedRows) {
  Open(WellOf({{0, 0, 0}, {500, 1, 2}, {600, 1, 2}, {700, 1, 2}}));
  GoTo(1, 0);
  grid->selectionModel()->select(QItemSelection(grid->model()->index(1, 0), grid->model()->index(2, 2)),
                                 QItemSelectionModel::ClearAndSelect);
  Click("cmdDeleteRow");
  EXPECT_EQ(Cell(1, 0), "700");
  EXPECT_EQ(grid->currentIndex().row(), 1);
}

}  // namespace
}  // namespace velk
