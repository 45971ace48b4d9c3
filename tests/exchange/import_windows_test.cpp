#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QTableView>
#include <QTest>

#include <random>

#include "base/dates.h"
#include "exchange/csv_import.h"
#include "exchange/exchange_fixture.h"
#include "exchange/windows/convert_data_files.h"
#include "exchange/windows/data_file_info.h"
#include "exchange/windows/import_csv_command.h"
#include "exchange/windows/pick_columns.h"
#include "exchange/windows/rename_fields.h"
#include "exchange/windows/view_data.h"
#include "log/log_reader.h"
#include "platform/files/file_errors.h"
#include "platform/files/file_lock.h"
#include "support/file_size_limit.h"
#include "support/unprivileged.h"
#include "support/window_script.h"
#include "support/window_texts.h"

namespace velk {
namespace {

using Rows = std::vector<std::string>;

constexpr const char* kTwoRows = "Date,Time,A,B\n21-Nov-2026,10:00:00,1,2\n21-Nov-2026,10:00:01,3,4\n";

class ImportWizard : public test::ExchangeFixture {
 protected:
  /// The three screens over a file, its rows written by `view`, and FINISH.
  void Run(const std::string& bytes, const std::function<void(QDialog& view)>& view) {
    csv = Write("in.csv", bytes);
    test::WindowScript script;
    script.Then("ConvertDataFiles", [&](QDialog& first) {
      test::FindControl<QLineEdit>(first, "Text1")->setText(QString::fromStdString(csv));
      test::Click(first, "cmdNext");
    });
    script.ThenClick("DataFileInfo", "cmdNext");
    script.Then("ViewData", [&](QDialog& shown) {
      view(shown);
      test::Click(shown, "cmdFinish");
    });
    mnuFileImportCSV_Click(*sees, Access());
  }
  ImportAccess Access() {
    return {platform, folder.Path().string(), [this] { return openLog; }};
  }
  static void Create(QDialog& view) { test::Click(view, "cmdCreate"); }
  /// The same where the log is there already.
  static std::function<void(QDialog& view)> CreateAnd(const char* option) {
    return [option](QDialog& view) {
      test::WindowScript script;
      script.ThenClick("FileOptions", option);
      Create(view);
    };
  }
  void NoSettings() { dialogs.Expect("Do you wish to import graph settings from another file?", Answer::No); }
  void Completed() { dialogs.Expect("Convertion Completed ", Answer::Ok); }
  Rows Values(const char* sql = "SELECT A FROM logData ORDER BY ID") const { return Query(path, sql); }

  WindowHost host{dialogs, test::EnglishWindows()};
  WindowHost* sees = &host;
  std::string csv, openLog;
};

TEST_F(ImportWizard, WritesANewLogUnderTheNameOfTheFile) {
  dialogs.ExpectSaveFile(path);
  NoSettings();
  Completed();
  Run(kTwoRows, Create);
  EXPECT_EQ(Values(), (Rows{"1.0", "3.0"}));
  ASSERT_EQ(dialogs.filesAsked.size(), 1U);
  EXPECT_EQ(dialogs.filesAsked[0].filter, "Data Files (*.mdb)|*.mdb");
  EXPECT_EQ(dialogs.filesAsked[0].name, "in.mdb");
}

TEST_F(ImportWizard, TakesFilesAndFoldersOfAnyName) {
  const std::filesystem::path place = folder.Path() / "Скважина №7 'север' \"a\"";
  std::filesystem::create_directory(place);
  path = (place / "запись 1; x.mdb").string();
  std::ofstream(place / "данные, 2.csv", std::ios::binary) << kTwoRows;
  CsvFile file((place / "данные, 2.csv").string(), CodePage::Western);
  CsvTable table(file);
  dialogs.ExpectSaveFile(path);
  NoSettings();
  Completed();
  WriteLog(host, Access()).cmdCreate_Click(table, 0);
  EXPECT_EQ(Values(), (Rows{"1.0", "3.0"}));
  EXPECT_EQ(dialogs.filesAsked.at(0).name, "данные, 2.mdb");
}

TEST_F(ImportWizard, OffersTheNameUpToItsFirstPoint) {
  EXPECT_EQ(OutputNameFor("/v1.2/run.a.csv"), "/v1.2/run.mdb");
  EXPECT_EQ(OutputNameFor("run"), "run.mdb");
}

TEST_F(ImportWizard, GivesAnExtensionToANameWithoutOne) {
  dialogs.ExpectSaveFile(folder.File("named"));
  NoSettings();
  Completed();
  Run(kTwoRows, Create);
  EXPECT_EQ(FilesInFolder(), (Rows{"in.csv", "named.mdb"}));
}

TEST_F(ImportWizard, WritesRenamedColumnsWithoutDeletedRows) {
  dialogs.ExpectSaveFile(path);
  NoSettings();
  Completed();
  Run(kTwoRows, [](QDialog& view) {
    auto* grid = test::FindControl<QTableView>(view, "Grid1");
    grid->selectRow(0);
    test::FindControl<QAction>(view, "mnuDeleteRecord")->trigger();
    EXPECT_EQ(grid->model()->rowCount(), 1);
    test::WindowScript rename;
    rename.Then("RenameFields", [](QDialog& fields) {
      test::FindControl<QLineEdit>(fields, "Text1_2")->setText("Pressure");
      test::Click(fields, "Command1");
    });
    test::Click(view, "cmdRename");
    EXPECT_EQ(grid->model()->headerData(3, Qt::Horizontal).toString(), "Pressure");
    Create(view);
  });
  EXPECT_EQ(Values("SELECT A, Pressure FROM logData"), (Rows{"3.0|4.0"}));
}

TEST_F(ImportWizard, AppendsToALogThatFits) {
  Write("in.csv", "");
  dialogs.ExpectSaveFile(path);
  NoSettings();
  Completed();
  Run(kTwoRows, Create);
  dialogs.ExpectSaveFile(path);
  NoSettings();
  Completed();
  Run("Date,Time,A,B\n21-Nov-2026,10:00:02,5,6\n", CreateAnd("cmdAppend"));
  EXPECT_EQ(Values(), (Rows{"1.0", "3.0", "5.0"}));
}

TEST_F(ImportWizard, AsksForAnotherLogWhereTheColumnsDiffer) {
  dialogs.ExpectSaveFile(path);
  NoSettings();
  Completed();
  Run(kTwoRows, Create);
  dialogs.ExpectSaveFile(path);
  dialogs.Expect("file is not compatable, select another? ", Answer::Yes);
  dialogs.ExpectSaveFile(folder.File("other.mdb"));
  NoSettings();
  Completed();
  Run("Date,Time,A,C\n21-Nov-2026,10:00:02,5,6\n", CreateAnd("cmdAppend"));
  EXPECT_EQ(Values(), (Rows{"1.0", "3.0"}));
  EXPECT_EQ(Query(folder.File("other.mdb"), "SELECT C FROM logData"), (Rows{"6.0"}));
}

TEST_F(ImportWizard, LeavesALogAsItIsByCancel) {
  Write("run.mdb", "a file");
  dialogs.ExpectSaveFile(path);
  dialogs.Expect("Database file not created", Answer::Ok);
  Run(kTwoRows, [this](QDialog& view) {
    test::WindowScript script;
    script.Then("FileOptions", [this](QDialog& options) {
      EXPECT_EQ(test::FindControl<QLabel>(options, "lblFile")->text().toStdString(), path);
      test::Click(options, "cmdCancel");
    });
    Create(view);
  });
  EXPECT_EQ(Read(path), "a file");
}

TEST_F(ImportWizard, AppendsToNoLogOfTheJetFormatAndAsksForAnother) {
  const std::string jet("\0\1\0\0Standard Jet DB\0\1", 21);
  Write("run.mdb", jet);
  dialogs.ExpectSaveFile(path);
  dialogs.Expect("is in the Jet format: it can be read, not changed", Answer::Ok);
  dialogs.ExpectSaveFile(folder.File("other.mdb"));
  NoSettings();
  Completed();
  Run(kTwoRows, CreateAnd("cmdAppend"));
  EXPECT_EQ(Read(path), jet);
  EXPECT_EQ(Query(folder.File("other.mdb"), "SELECT count(*) FROM logData"), (Rows{"2"}));
}

TEST_F(ImportWizard, TellsOfAFullDiskOnceAndLeavesNothing) {
  std::string bytes = "Date,Time,A\n";
  for (int i = 0; i < 20'000; ++i) bytes += "21-Nov-2026,10:00:00," + std::to_string(i * 0.37) + "\n";
  dialogs.ExpectSaveFile(path);
  dialogs.Expect("Error number 61: ", Answer::Ok);
  Run(bytes, [](QDialog& view) {
    const test::FileSizeLimit limit(200'000);
    Create(view);
  });
  EXPECT_EQ(FilesInFolder(), (Rows{"in.csv"}));
}

TEST_F(ImportWizard, TellsOfAFolderThatCannotBeWrittenOnce) {
  const std::filesystem::path closed = folder.Path() / "closed";
  std::filesystem::create_directory(closed);
  std::filesystem::permissions(closed, std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);
  dialogs.ExpectSaveFile((closed / "run.mdb").string());
  dialogs.Expect("Error number 70: ", Answer::Ok);
  Run(kTwoRows, [](QDialog& view) {
    const test::Unprivileged user;
    Create(view);
  });
  EXPECT_TRUE(std::filesystem::is_empty(closed));
}

TEST_F(ImportWizard, ReadsTheCodePageOfARussianSession) {
  WindowHost russian(dialogs, test::RussianWindows());
  sees = &russian;
  dialogs.ExpectSaveFile(path);
  NoSettings();
  Completed();
  Run("Date,Time,\xC3\xEB\xF3\xE1\xE8\xED\xE0\n21-Nov-2026,10:00:00,1\n", Create);
  EXPECT_EQ(Columns(path, "logData"), (Rows{"ID", "Date", "Time", "Глубина"}));
}

TEST_F(ImportWizard, ShowsNumbersAtTheRightAndCommentsAtTheLeft) {
  Run("Date,Time,A,TheComment\n21-Nov-2026,10:00:00,1,Packer set\n", [](QDialog& view) {
    const auto* rows = test::FindControl<QTableView>(view, "Grid1")->model();
    EXPECT_EQ(rows->index(0, 2).data(Qt::TextAlignmentRole).toInt(), (Qt::AlignRight | Qt::AlignVCenter).toInt());
    for (const int column : {0, 1, 3}) EXPECT_FALSE(rows->index(0, column).data(Qt::TextAlignmentRole).isValid());
  });
}

TEST_F(ImportWizard, PutsANewLogInThePlaceOfAnother) {
  Write("run.mdb", "a file");
  dialogs.ExpectSaveFile(path);
  NoSettings();
  Completed();
  Run(kTwoRows, CreateAnd("cmdOverWrite"));
  EXPECT_EQ(Values(), (Rows{"1.0", "3.0"}));
}

TEST_F(ImportWizard, RefusesTheLogThatIsOpenHere) {
  Write("run.mdb", "a file");
  openLog = path;
  dialogs.ExpectSaveFile(path);
  dialogs.Expect("is being recorded or played back here", Answer::Ok);
  dialogs.ExpectSaveFile(std::nullopt);
  Run(kTwoRows, CreateAnd("cmdOverWrite"));
  EXPECT_EQ(Read(path), "a file");
}

TEST_F(ImportWizard, TellsTheLineThatEndedTheImport) {
  dialogs.ExpectSaveFile(path);
  dialogs.Expect("Error number 13: Line 3 has no date and time", Answer::Ok);
  Run("Date,Time,A\n21-Nov-2026,10:00:00,1\n21-Nov-2026,later,2\n", Create);
  EXPECT_EQ(Values(), (Rows{"1.0"}));
}

TEST_F(ImportWizard, TellsTheNumberOfAnError) {
  dialogs.ExpectSaveFile("/proc/none/run.mdb");
  dialogs.Expect("Error number 76: ", Answer::Ok);
  Run(kTwoRows, Create);
}

TEST_F(ImportWizard, TakesTheGraphSettingsOfAnotherLog) {
  dialogs.ExpectSaveFile(folder.File("other.mdb"));
  NoSettings();
  Completed();
  Run(kTwoRows, Create);
  Connection::Open(folder.File("other.mdb"), OpenMode::ReadWrite)->Execute("UPDATE GraphSettings SET units = 'bar'");
  dialogs.ExpectSaveFile(path);
  dialogs.Expect("Do you wish to import graph settings from another file?", Answer::Yes);
  dialogs.ExpectOpenFile(folder.File("other.mdb"));
  Completed();
  Run(kTwoRows, Create);
  EXPECT_EQ(Values("SELECT DISTINCT units FROM GraphSettings"), (Rows{"bar"}));
}

TEST_F(ImportWizard, RefusesGraphSettingsOfOtherColumns) {
  dialogs.ExpectSaveFile(folder.File("other.mdb"));
  NoSettings();
  Completed();
  Run("Date,Time,Z\n21-Nov-2026,10:00:02,5\n", Create);
  dialogs.ExpectSaveFile(path);
  dialogs.Expect("Do you wish to import graph settings from another file?", Answer::Yes);
  dialogs.ExpectOpenFile(folder.File("other.mdb"));
  dialogs.Expect("File not compatable ", Answer::Ok);
  Completed();
  Run(kTwoRows, Create);
  EXPECT_EQ(Values("SELECT ParameterName FROM GraphSettings"), (Rows{"A", "B"}));
}

TEST_F(ImportWizard, TakesTheStartDateOfAFileWithoutDates) {
  dialogs.ExpectSaveFile(path);
  NoSettings();
  Completed();
  Run("23:59:59,1\n00:00:00,2\n", [](QDialog& view) {
    auto* start = test::FindControl<QLineEdit>(view, "Text1");
    EXPECT_EQ(start->text(), "14-Mar-2026") << "today";
    EXPECT_FALSE(start->isReadOnly());
    start->setText("31/12/2025");
    Create(view);
  });
  EXPECT_EQ(Values("SELECT Date FROM logData"), (Rows{std::to_string(static_cast<int>(DateSerial(2025, 12, 31))),
                                                      std::to_string(static_cast<int>(DateSerial(2026, 1, 1)))}));
}

TEST_F(ImportWizard, AsksForAStartDateThatIsOne) {
  dialogs.Expect("Enter the date of the first row", Answer::Ok);
  Run("10:00:00,1\n", [](QDialog& view) {
    test::FindControl<QLineEdit>(view, "Text1")->setText("soon");
    Create(view);
  });
  EXPECT_EQ(FilesInFolder(), (Rows{"in.csv"}));
}

TEST_F(ImportWizard, ShowsTheDateOfAFileWithDatesAndLocksIt) {
  Run(kTwoRows, [](QDialog& view) {
    EXPECT_EQ(test::FindControl<QLineEdit>(view, "Text1")->text(), "21-Nov-2026");
    EXPECT_TRUE(test::FindControl<QLineEdit>(view, "Text1")->isReadOnly());
    EXPECT_EQ(test::FindControl<QLabel>(view, "lblRows")->text(), "Rows: 2");
  });
}

TEST_F(ImportWizard, LetsTheOperatorPickOfMoreThan64Columns) {
  std::string names = "Date,Time", row = "21-Nov-2026,10:00:00";
  for (int i = 1; i <= 66; ++i) {
    names += ",C" + std::to_string(i);
    row += "," + std::to_string(i);
  }
  dialogs.ExpectSaveFile(path);
  NoSettings();
  Completed();
  Run(names + "\n" + row + "\n", [](QDialog& view) {
    test::WindowScript pick;
    pick.Then("PickColumns", [](QDialog& columns) {
      auto* list = test::FindControl<QListWidget>(columns, "List1");
      EXPECT_TRUE(test::FindControl<QPushButton>(columns, "cmdOK")->isEnabled());
      list->item(65)->setCheckState(Qt::Checked);
      EXPECT_FALSE(test::FindControl<QPushButton>(columns, "cmdOK")->isEnabled()) << "65 are chosen";
      for (int i = 1; i < 64; ++i) list->item(i)->setCheckState(Qt::Unchecked);
      EXPECT_EQ(test::FindControl<QLabel>(columns, "lblChosen")->text(), "Chosen: 2 of at most 64");
      test::Click(columns, "cmdOK");
    });
    Create(view);
  });
  EXPECT_EQ(Values("SELECT * FROM logData").size(), 1U);
  EXPECT_EQ(Columns(path, "logData"), (Rows{"ID", "Date", "Time", "C1", "C66"}));
  EXPECT_EQ(Values("SELECT C1, C66 FROM logData"), (Rows{"1.0|66.0"}));
}

TEST_F(ImportWizard, DoesNotCountTheEmptyColumnOfAFileWithoutNames) {
  std::string row = "10:00:00";
  for (int i = 1; i <= 64; ++i) row += "," + std::to_string(i);
  dialogs.ExpectSaveFile(path);
  NoSettings();
  Completed();
  Run(row + "\n", Create);
  EXPECT_EQ(Columns(path, "logData").size(), 3U + 65U);
}

TEST_F(ImportWizard, RefusesAFileWithoutAColumnForALog) {
  dialogs.Expect("There is no column that a log could hold.", Answer::Ok);
  Run("Date,Time,TheComment\n21-Nov-2026,10:00:00,one\n", Create);
}

TEST_F(ImportWizard, GoesOnOnlyWithAFileThatIsThere) {
  ConvertDataFiles window(host, folder.Path().string(), "");
  auto* next = test::FindControl<QPushButton>(window, "cmdNext");
  auto* path_ = test::FindControl<QLineEdit>(window, "Text1");
  EXPECT_FALSE(next->isEnabled());
  path_->setText(QString::fromStdString(folder.File("none.csv")));
  EXPECT_FALSE(next->isEnabled());
  EXPECT_EQ(test::FindControl<QLabel>(window, "lblHint")->text(), "There is no such file.");
  dialogs.ExpectOpenFile(folder.Touch("there.csv"));
  test::Click(window, "Command1");
  EXPECT_TRUE(next->isEnabled());
  EXPECT_EQ(window.Answer(), folder.File("there.csv"));
  EXPECT_EQ(dialogs.filesAsked.at(0).filter, "Text Files (*.csv)|*.csv");
  path_->setText(QString::fromStdString(folder.Path().string()));
  EXPECT_FALSE(next->isEnabled()) << "a folder";
}

TEST_F(ImportWizard, OpensNoLogThatIsBeingRecorded) {
  const auto held = FileLock::Take(Write("a.csv", kTwoRows));
  dialogs.Expect("is being recorded or played back here", Answer::Cancel);
  test::WindowScript script;
  script.Then("ConvertDataFiles", [&](QDialog& first) {
    test::FindControl<QLineEdit>(first, "Text1")->setText(QString::fromStdString(folder.File("a.csv")));
    test::Click(first, "cmdNext");
  });
  script.ThenClick("ConvertDataFiles", "cmdCancel");
  mnuFileImportCSV_Click(host, Access());
}

TEST_F(ImportWizard, GoesBackAndForth) {
  Write("a.csv", kTwoRows);
  test::WindowScript script;
  script.Then("ConvertDataFiles", [&](QDialog& first) {
    test::FindControl<QLineEdit>(first, "Text1")->setText(QString::fromStdString(folder.File("a.csv")));
    test::Click(first, "cmdNext");
  });
  script.ThenClick("DataFileInfo", "cmdNext");
  script.ThenClick("ViewData", "cmdBack");
  script.ThenClick("DataFileInfo", "cmdBack");
  script.Then("ConvertDataFiles", [&](QDialog& again) {
    EXPECT_EQ(test::FindControl<QLineEdit>(again, "Text1")->text().toStdString(), folder.File("a.csv"));
    test::Click(again, "cmdCancel");
  });
  mnuFileImportCSV_Click(host, Access());
  EXPECT_TRUE(script.IsDone());
}

TEST_F(ImportWizard, TellsWhatTheFirstLineSays) {
  const auto note = [&](const std::string& bytes) {
    const CsvFile file(Write("a.csv", bytes), CodePage::Western);
    const DataFileInfo window(host, file);
    EXPECT_EQ(window.windowTitle().toStdString(), "Current file (" + folder.File("a.csv") + ")");
    const auto* label = test::FindControl<QLabel>(window, "lblNote");
    return label->isHidden() ? std::string() : label->text().left(24).toStdString();
  };
  EXPECT_EQ(note(kTwoRows), "");
  EXPECT_EQ(note("ID,Date,Time,A\n"), "The first line holds nam");
  EXPECT_EQ(note("Date;Time;A\n"), "The fields are divided b");
  EXPECT_EQ(note(""), "The file is empty.");
  const CsvFile file(Write("a.csv", kTwoRows), CodePage::Western);
  const DataFileInfo window(host, file);
  EXPECT_EQ(test::FindControl<QLabel>(window, "lblColumns")->text(), "Number of columns = 2");
  EXPECT_EQ(test::FindControl<QLabel>(window, "lblRows")->text(), "Estimated number of rows = 4");
}

TEST_F(ImportWizard, EndsWithALogOrOneErrorHoweverTheFileIsDamaged) {
  const std::string whole =
      "Date,Time,Глубина,B,TheComment\r\n21-Nov-2026,23:59:58,1.5,-2e3,\r\n21.11.2026,23:59:59,7,8,Packer set\r\n"
      "2026-11-22,0:00:00 AM,3,,\r\n22/11/2026,00:00:01,4,5,Packer set\r\n";
  std::mt19937 random(20261122);
  int logs = 0;
  for (int i = 0; i < 150; ++i) {
    std::string bytes = whole;
    for (int flips = 1 + i % 12; flips > 0; --flips) bytes[random() % bytes.size()] = static_cast<char>(random());
    if (i % 7 == 0) bytes.resize(random() % bytes.size());
    CsvFile file(Write("mutant.csv", bytes), i % 2 == 0 ? CodePage::Cyrillic : CodePage::Western);
    const DataFileInfo info(host, file);
    CsvTable table(file);
    const ViewData view(host, table, 46000, [](const CsvTable&, double) {});
    std::filesystem::remove(path);
    try {
      LongTask task = Task();
      const CsvPlan plan = PlanOf(file.Shape(), table.ColumnNames);
      const CsvImportResult result = ImportIntoNewLog(file, plan, path, false, test::English(), task);
      EXPECT_EQ(LogReader(path).Count(), result.rows);
      EXPECT_EQ(result.badLine == 0, result.rows == table.Rows()) << bytes;
      ++logs;
    } catch (const RuntimeError&) {
      EXPECT_FALSE(FileExists(path));
    }
  }
  EXPECT_GT(logs, 100);
  for (const std::string& name : FilesInFolder()) EXPECT_EQ(name.find(".part"), std::string::npos);
}

TEST_F(ImportWizard, DeletesTheMarkedRowsByTheKey) {
  CsvFile file(Write("a.csv", "Date,Time,A\n1,1,0\n1,1,1\n1,1,2\n"), CodePage::Western);
  CsvTable table(file);
  ViewData window(host, table, 46000, [](const CsvTable&, double) {});
  window.show();
  auto* grid = test::FindControl<QTableView>(window, "Grid1");
  grid->setFocus();
  grid->setCurrentIndex(grid->model()->index(1, 0));
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
  QTest::keyClick(grid, Qt::Key_Delete);
  ASSERT_EQ(grid->model()->rowCount(), 2);
  EXPECT_EQ(table.Cell(1, 2), "2");
  EXPECT_EQ(grid->currentIndex().row(), 1);
}

TEST_F(ImportWizard, ShowsMoreRowsWhileTheFileIsIndexed) {
  std::string bytes = "Date,Time,A\n";
  while (bytes.size() < 9'000'000) bytes += "21-Nov-2026,10:00:00,1\n";
  CsvFile file(Write("long.csv", bytes), CodePage::Western);
  CsvTable table(file);
  ViewData window(host, table, 46000, [](const CsvTable&, double) {});
  const auto* grid = test::FindControl<QTableView>(window, "Grid1");
  const int first = grid->model()->rowCount();
  EXPECT_GT(first, 100'000);
  EXPECT_TRUE(test::FindControl<QLabel>(window, "lblRows")->text().endsWith(", more are being read"));
  while (!file.IsIndexed()) QApplication::processEvents();
  EXPECT_GT(grid->model()->rowCount(), first);
  EXPECT_EQ(grid->model()->rowCount(), table.Rows());
}

}  // namespace
}  // namespace velk
