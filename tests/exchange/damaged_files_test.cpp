#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QTimer>
#include <chrono>
#include <cstdlib>
#include <random>

#include "base/errors.h"
#include "exchange/exchange_fixture.h"
#include "exchange/jet_log.h"
#include "exchange/windows/import_csv_command.h"
#include "log/log_reader.h"
#include "platform/dialogs/procedure.h"
#include "platform/files/file_errors.h"
#include "support/window_driving.h"

namespace velk {
namespace {

/// How many files are damaged: few, or VELK_DAMAGED_FILES.
int FilesToDamage(int few) {
  const char* count = std::getenv("VELK_DAMAGED_FILES");
  return count != nullptr ? std::atoi(count) : few;
}

/// Answers every box with what leaves it, and counts those that tell of a failure.
class CountedBoxes : public Dialogs {
 public:
  using Dialogs::Dialogs;
  int failures = 0;
  std::string savesTo;

 protected:
  Answer ShowMessage(const ShownMessage& box) override {
    if (box.icon == BoxIcon::Exclamation || box.icon == BoxIcon::Critical || box.buttons == Buttons::RetryCancel)
      ++failures;
    switch (box.buttons) {
      case Buttons::YesNo:
        return Answer::No;
      case Buttons::RetryCancel:
        return Answer::Cancel;
      case Buttons::Ok:
        break;
    }
    return Answer::Ok;
  }
  std::optional<std::string> ShowInput(const std::string&, const std::string&, const std::string&) override {
    return std::nullopt;
  }
  std::optional<std::string> ShowOpenFile(const ShownFileQuestion&) override { return std::nullopt; }
  std::optional<std::string> ShowSaveFile(const ShownFileQuestion&) override { return savesTo; }
};

class DamagedFiles : public test::ExchangeFixture {
 protected:
  DamagedFiles() { setenv("XDG_CACHE_HOME", cache.Path().c_str(), 1); }
  ~DamagedFiles() override { unsetenv("XDG_CACHE_HOME"); }

  std::string Damaged(std::string bytes, int flips, std::size_t spared) {
    for (; flips > 0; --flips) bytes[spared + random() % (bytes.size() - spared)] = static_cast<char>(random());
    return bytes;
  }
  static bool HasParts(const std::filesystem::path& folder) {
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder))
      if (entry.path().string().find(".part") != std::string::npos) return true;
    return false;
  }

  test::TemporaryFolder cache;
  CountedBoxes boxes{gate, test::English()};
  Platform counted{clock, gate, boxes, settings, test::English()};
  std::mt19937 random{20261122};
};

/// Leads through the screens of the import, whatever they say.
class WizardWalk : public QObject {
 public:
  WizardWalk(std::string csv) : csv_(std::move(csv)) {
    connect(&look_, &QTimer::timeout, this, [this] { Look(); });
    look_.start(0);
  }

 private:
  void Look() {
    auto* window = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (!window || busy_) return;
    busy_ = true;
    const QString name = window->objectName();
    if (name == "ConvertDataFiles" && steps_++ == 0) {
      test::FindControl<QLineEdit>(*window, "Text1")->setText(QString::fromStdString(csv_));
      Press(*window, "cmdNext");
    } else if (name == "DataFileInfo") {
      Press(*window, "cmdNext");
    } else if (name == "ViewData" && steps_++ == 1) {
      auto& day = *test::FindControl<QLineEdit>(*window, "Text1");
      if (day.isEnabled() && day.text().isEmpty()) day.setText("21-Nov-2026");
      Press(*window, "cmdCreate");
    } else if (name == "PickColumns") {
      Press(*window, "cmdOK");
    } else {
      window->reject();
    }
    busy_ = false;
  }
  static void Press(QDialog& window, const char* key) {
    auto* button = window.findChild<QPushButton*>(QLatin1String(key));
    if (button->isEnabled())
      button->click();
    else
      window.reject();
  }

  const std::string csv_;
  QTimer look_;
  int steps_ = 0;
  bool busy_ = false;
};

TEST_F(DamagedFiles, LeadThroughTheImportWithOneBoxAtMost) {
  WindowHost host(boxes, test::EnglishWindows());
  const std::string whole =
      "Date,Time,Глубина,B,TheComment\r\n21-Nov-2026,23:59:58,1.5,-2e3,\r\n21.11.2026,23:59:59,7,8,Packer set\r\n"
      "2026-11-22,0:00:00 AM,3,,\r\n22/11/2026,00:00:01,4,5,Packer set\r\n";
  const int files = FilesToDamage(40);
  int logs = 0;
  for (int i = 0; i < files; ++i) {
    std::string bytes = Damaged(whole, 1 + i % 12, 0);
    if (i % 7 == 0) bytes.resize(random() % bytes.size());
    const std::string csv = Write("in.csv", bytes);
    std::filesystem::remove(path);
    boxes.failures = 0;
    boxes.savesTo = path;
    {
      const WizardWalk walk(csv);
      mnuFileImportCSV_Click(host, {counted, folder.Path().string(), [] { return std::string(); }});
    }
    ASSERT_LE(boxes.failures, 1) << i << '\n' << bytes;
    ASSERT_FALSE(HasParts(folder.Path())) << i << '\n' << bytes;
    if (FileExists(path)) LogReader(path).Count(), ++logs;
  }
  EXPECT_GT(logs, files / 2);
}

TEST_F(DamagedFiles, OfTheJetFormatOpenOrFailWithOneBox) {
  const std::string file = folder.File("whole.mdb");
  const std::string from = std::string(VELK_SOURCE_DIR) + "/tests/data/jet/log_1000.mdb.gz";
  ASSERT_EQ(std::system(("gunzip -c '" + from + "' > '" + file + "'").c_str()), 0);
  const std::string whole = Read(file);
  const JetTools tools{VELK_JET_READER};
  const int files = FilesToDamage(30);
  int opened = 0, told = 0;
  for (int i = 0; i < files; ++i) {
    std::string bytes = Damaged(whole, 1 + 8 * (i % 25), 4096);
    if (i % 5 == 0) bytes.resize(4096 + random() % (bytes.size() / 2));
    const std::string damaged = Write("damaged.mdb", bytes);
    boxes.failures = 0;
    const auto begin = std::chrono::steady_clock::now();
    const bool isThere = RunProcedure({boxes, "mnuPlayback_Click"}, [&](const Statements& run) {
      run([&] { PrepareLog(damaged, tools, counted); });
    });
    // A minute of the reader's own, and its silence.
    ASSERT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(90)) << i;
    ASSERT_LE(boxes.failures, 1) << i;
    told += boxes.failures;
    opened += isThere ? 1 : 0;
    ASSERT_FALSE(HasParts(cache.Path())) << i;
  }
  EXPECT_GT(opened, files / 5);
  EXPECT_GT(told, files / 5);
}

TEST_F(DamagedFiles, AnswersOfTheProgramThatReadsTheJetFormatAreTakenOrRefused) {
  const std::string file = folder.File("whole.mdb"), answer = folder.File("answer");
  const std::string from = std::string(VELK_SOURCE_DIR) + "/tests/data/jet/log_1000.mdb.gz";
  ASSERT_EQ(std::system(("gunzip -c '" + from + "' > '" + file + "'").c_str()), 0);
  // It may write no file itself.
  const std::string reads =
      std::string(VELK_JET_READER) + " rows CP1252 '" + file + "' GraphSettings | cat > '" + answer + "'";
  ASSERT_EQ(std::system(reads.c_str()), 0);
  const std::string whole = Read(answer), program = Write("reader", "#!/bin/sh\nexec cat '" + answer + "'\n");
  std::filesystem::permissions(program, std::filesystem::perms::owner_all | std::filesystem::perms::others_exec);
  const int answers = FilesToDamage(150);
  int taken = 0, refused = 0;
  for (int i = 0; i < answers; ++i) {
    std::string bytes = i == 0 ? whole : Damaged(whole, 1 + i % 9, 0);
    if (i % 6 == 5) bytes.resize(random() % bytes.size());
    Write("answer", bytes);
    try {
      JetReader reader({program}, "rows", file, {}, {});
      JetTable table;
      std::vector<FieldValue> cells;
      if (reader.NextTable(table))
        while (reader.NextRow(cells)) ASSERT_EQ(cells.size(), table.columns.size()) << i;
      ++taken;
    } catch (const RuntimeError& error) {
      ASSERT_EQ(error.Number(), ErrorNumber::NotADatabase) << i;
      ++refused;
    }
  }
  EXPECT_GT(taken, 0);
  EXPECT_GT(refused, answers / 5);
}

TEST_F(DamagedFiles, OfTheJetFormatThatAreCutTellHowMuchIsMissing) {
  const std::string file = folder.File("cut.mdb");
  const std::string from = std::string(VELK_SOURCE_DIR) + "/tests/data/jet/log_1000.mdb.gz";
  ASSERT_EQ(std::system(("gunzip -c '" + from + "' > '" + file + "'").c_str()), 0);
  const std::string whole = Read(file);
  std::int64_t rows = 1000;
  for (const std::size_t pages : {10U, 20U, 30U}) {
    ASSERT_GT(whole.size(), (pages + 1) * 4096);
    const std::string cut = Write("cut.mdb", whole.substr(0, whole.size() - pages * 4096));
    LongTask task = Task();
    const std::string copy = folder.File("copy.mdb");
    std::filesystem::remove(copy);
    std::int64_t lost = -1;
    try {
      lost = CopyJetLog(cut, copy, {VELK_JET_READER}, task);
    } catch (const RuntimeError&) {
      continue;  // its tables are gone as a whole
    }
    const std::int64_t kept = LogReader(copy).Count();
    EXPECT_LE(kept, rows);
    EXPECT_GE(kept + lost, 1000) << "rows of the report may be missing too";
    rows = kept;
  }
  EXPECT_LT(rows, 1000);
}

}  // namespace
}  // namespace velk
