#include "exchange/windows/frm_export.h"

#include <QLabel>
#include <QListWidget>

#include "exchange/exchange_fixture.h"
#include "platform/files/file_lock.h"
#include "support/file_size_limit.h"
#include "support/window_driving.h"

namespace velk {
namespace {

using Rows = std::vector<std::string>;

class ExportWindow : public test::ExchangeFixture {
 protected:
  ExportWindow() {
    NameChannels({"A", "B"});
    session.CurrentParameters[1].IncludeInSummary = true;
    StartLog(path);
    session.CurrentValue = {0, 1, 2};
    AppendLogRow();
    log.Finalise();
  }
  std::unique_ptr<frmExport> Open(ExportMode mode, const std::string& file) {
    return std::make_unique<frmExport>(host, ExportAccess{platform, mode, file, folder.Path().string()});
  }
  static Rows Names(const frmExport& window, const char* list) {
    Rows names;
    const auto* shown = test::FindControl<QListWidget>(window, list);
    for (int i = 0; i < shown->count(); ++i) names.push_back(shown->item(i)->text().toStdString());
    return names;
  }
  static void Copy(const frmExport& window, int row, const char* list = "List1", const char* key = "Command1") {
    test::FindControl<QListWidget>(window, list)->setCurrentRow(row);
    test::Click(window, key);
  }
  void ChooseOutput(const frmExport& window, const std::string& name) {
    dialogs.ExpectSaveFile(folder.File(name));
    test::Click(window, "Command6");
  }

  WindowHost host{dialogs, test::EnglishWindows()};
};

TEST_F(ExportWindow, OffersAllFieldsOfTheLogOfTheSession) {
  const auto window = Open(ExportMode::LogToCsv, path);
  EXPECT_EQ(window->windowTitle(), "Export MDB to CSV");
  EXPECT_EQ(test::FindControl<QLabel>(*window, "Label1")->text().toStdString(), path);
  EXPECT_EQ(Names(*window, "List1"), (Rows{"ID", "Date", "Time", "A", "B"}));
  EXPECT_EQ(Names(*window, "List2"), Rows{});
}

TEST_F(ExportWindow, IsEmptyWithoutALog) {
  const auto window = Open(ExportMode::LogToCsv, folder.File("none.mdb"));
  EXPECT_EQ(Names(*window, "List1"), Rows{});
  ChooseOutput(*window, "out.csv");
  dialogs.Expect("No parameters to export", Answer::Ok);
  window->show();
  test::Click(*window, "cmdOK");
  EXPECT_TRUE(window->isVisible());
}

TEST_F(ExportWindow, MovesFieldsThereAndBack) {
  const auto window = Open(ExportMode::LogToCsv, path);
  Copy(*window, 4);
  Copy(*window, 1);
  EXPECT_EQ(Names(*window, "List2"), (Rows{"B", "Date"}));
  Copy(*window, 0, "List2", "Command3");
  EXPECT_EQ(Names(*window, "List2"), (Rows{"Date"}));
  EXPECT_EQ(Names(*window, "List1"), (Rows{"ID", "Time", "A", "B"}));
  test::Click(*window, "Command2");
  EXPECT_EQ(Names(*window, "List2"), (Rows{"Date", "ID", "Time", "A", "B"}));
  test::Click(*window, "Command4");
  EXPECT_EQ(Names(*window, "List1").size(), 5U);
}

TEST_F(ExportWindow, WritesTheFieldsOfTheRightListInTheirOrder) {
  const auto window = Open(ExportMode::LogToCsv, path);
  Copy(*window, 4);
  Copy(*window, 2);
  ChooseOutput(*window, "out");
  EXPECT_EQ(dialogs.filesAsked.at(0).filter, "Text files (*.csv)|*.csv");
  EXPECT_EQ(dialogs.filesAsked.at(0).name, "run.csv");
  window->show();
  test::Click(*window, "cmdOK");
  EXPECT_FALSE(window->isVisible());
  EXPECT_EQ(Read(folder.File("out.csv")), "B,Time\r\n2,09:30:00\r\n");
}

TEST_F(ExportWindow, AsksForTheOutputFirst) {
  const auto window = Open(ExportMode::LogToCsv, path);
  dialogs.Expect("Supply output file name", Answer::Ok);
  test::Click(*window, "cmdOK");
}

TEST_F(ExportWindow, ReplacesAFileOnlyWhenItMay) {
  const auto window = Open(ExportMode::LogToCsv, path);
  Copy(*window, 0);
  Write("out.csv", "old");
  ChooseOutput(*window, "out.csv");
  window->show();
  dialogs.Expect("File Exists, overwrite?", Answer::No);
  test::Click(*window, "cmdOK");
  EXPECT_TRUE(window->isVisible());
  EXPECT_EQ(Read(folder.File("out.csv")), "old");
  dialogs.Expect("File Exists, overwrite?", Answer::Yes);
  test::Click(*window, "cmdOK");
  EXPECT_EQ(Read(folder.File("out.csv")), "ID\r\n1\r\n");
}

TEST_F(ExportWindow, HasAllFieldsForXmlAndIsLeftByNo) {
  const auto window = Open(ExportMode::LogToXml, path);
  EXPECT_EQ(window->windowTitle(), "Export MDB to XML");
  EXPECT_EQ(Names(*window, "List2"), (Rows{"ID", "Date", "Time", "A", "B"}));
  for (const char* key : {"Command1", "Command2", "Command3", "Command4"})
    EXPECT_FALSE(test::FindControl<QPushButton>(*window, key)->isEnabled()) << key;
  Write("out.xml", "old");
  ChooseOutput(*window, "out.xml");
  window->show();
  dialogs.Expect("File Exists, overwrite?", Answer::No);
  test::Click(*window, "cmdOK");
  EXPECT_FALSE(window->isVisible());
  EXPECT_EQ(Read(folder.File("out.xml")), "old");
}

TEST_F(ExportWindow, WritesTheReport) {
  const auto window = Open(ExportMode::SummaryToCsv, path);
  EXPECT_EQ(window->windowTitle(), "Export Summary Report to CSV");
  EXPECT_EQ(Names(*window, "List1"), (Rows{"Date", "Time", "A", "Comments"}));
  test::Click(*window, "Command2");
  ChooseOutput(*window, "report.csv");
  test::Click(*window, "cmdOK");
  EXPECT_EQ(Read(folder.File("report.csv")), "Date,Time,A,Comments\r\n");
}

TEST_F(ExportWindow, OpensAnotherLog) {
  const auto window = Open(ExportMode::LogToCsv, "");
  dialogs.ExpectOpenFile(path);
  test::Click(*window, "Command5");
  EXPECT_EQ(Names(*window, "List1").size(), 5U);
  dialogs.ExpectOpenFile(folder.File("none.mdb"));
  test::Click(*window, "Command5");
  EXPECT_EQ(test::FindControl<QLabel>(*window, "Label1")->text().toStdString(), path)
      << "what is not there is not taken";
}

TEST_F(ExportWindow, NeverWritesOverTheLogItself) {
  const auto window = Open(ExportMode::LogToCsv, path);
  Copy(*window, 0);
  ChooseOutput(*window, "run.mdb");
  dialogs.Expect("The file to write is the log itself", Answer::Ok);
  test::Click(*window, "cmdOK");
  EXPECT_EQ(Query(path, "SELECT count(*) FROM logData"), (Rows{"1"}));
}

TEST_F(ExportWindow, NeverWritesOverALogThatIsBeingRecorded) {
  const auto window = Open(ExportMode::LogToCsv, path);
  Copy(*window, 0);
  const std::string other = Write("other.mdb", "rows");
  const auto held = FileLock::Take(other);
  ChooseOutput(*window, "other.mdb");
  dialogs.Expect("is being recorded or played back here", Answer::Ok);
  test::Click(*window, "cmdOK");
  EXPECT_EQ(Read(other), "rows");
}

TEST_F(ExportWindow, PreparesALogThatIsToBeRead) {
  std::vector<std::string> prepared;
  const frmExport window(host, ExportAccess{platform, ExportMode::LogToCsv, path, folder.Path().string(),
                                            [&](const std::string& log) { prepared.push_back(log); }});
  dialogs.ExpectOpenFile(path);
  test::Click(window, "Command5");
  EXPECT_EQ(prepared, (Rows{path, path}));
}

TEST_F(ExportWindow, TellsOfAFullDiskOnceAndLeavesNothing) {
  for (const auto& [mode, name] : {std::pair(ExportMode::LogToCsv, "out.csv"), {ExportMode::LogToXml, "out.xml"}}) {
    const auto window = Open(mode, path);
    if (mode == ExportMode::LogToCsv) test::Click(*window, "Command2");
    ChooseOutput(*window, name);
    window->show();
    dialogs.Expect("Disk full", Answer::Cancel);
    {
      const test::FileSizeLimit limit(10);
      test::Click(*window, "cmdOK");
    }
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(FilesInFolder(), (Rows{"run.mdb"}));
  }
}

TEST_F(ExportWindow, TellsWhatCannotBeWritten) {
  const auto window = Open(ExportMode::LogToCsv, path);
  Copy(*window, 0);
  dialogs.ExpectSaveFile("/proc/none/out.csv");
  test::Click(*window, "Command6");
  window->show();
  dialogs.Expect(" - cmdOK_Click", Answer::Cancel);
  test::Click(*window, "cmdOK");
  EXPECT_TRUE(window->isVisible());
}

}  // namespace
}  // namespace velk
