#include "reports/print_grid.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <map>

#include "base/dates.h"
#include "platform/printing/pdf_printer.h"
#include "support/fake_clock.h"
#include "support/fake_printers.h"
#include "support/in_english.h"
#include "support/scripted_dialogs.h"
#include "support/temporary_folder.h"

namespace velk {
namespace {

const double kFirst = JoinDateTime(DateSerial(2026, 3, 14), TimeOfDay(9, 30, 0));

/// Records of a second each: date, time, and in each other column the record's number and the column's, as 3.7.
class Records : public TableSource {
 public:
  Records(int values, int count) : count_(count) {
    columns = {{"Date", CellKind::Date}, {"Time", CellKind::Time}};
    for (int i = 0; i < values; ++i) columns.push_back({"Pressure psi", CellKind::Number});
  }
  const std::vector<TableColumn>& Columns() const override { return columns; }
  double FirstTime() override { return count_ ? kFirst : std::nan(""); }
  double LastTime() override { return count_ ? kFirst + TimeOfDay(0, 0, count_ - 1) : std::nan(""); }
  std::int64_t Count() override { return count_; }
  bool First() override {
    ++walks;
    present_ = 0;
    return count_ > 0;
  }
  bool Next() override { return ++present_ < count_; }
  std::string Text(int column) override {
    if (column == 0) return FormatDate(kFirst, "dd-mmm-yyyy");
    if (column == 1) return FormatDate(kFirst + TimeOfDay(0, 0, present_), "hh:mm:ss");
    if (const auto special = cells.find(present_); special != cells.end()) return special->second;
    return std::to_string(present_) + "." + std::to_string(column) + "00";
  }

  std::vector<TableColumn> columns;
  std::map<int, std::string> cells;  ///< what stands in the values of a record
  int walks = 0;

 private:
  int count_;
  int present_ = 0;
};

class PrintGridTest : public testing::Test {
 protected:
  void Print(Records& records, int skipLines = 0) {
    LongTask task(dialogs, clock, "Printing");
    document = std::make_shared<PrintedDocument>();
    RecordingPrinter printer(document, sheet);
    PrintGrid(printer, records, {"Data Log", skipLines, kFirst, "Small Fonts"}, test::English(), task);
  }
  /// What is printed and holds `part`, in its order.
  std::vector<std::string> With(const std::string& part) const {
    std::vector<std::string> found;
    for (const std::string& call : document->page.calls)
      if (call.starts_with("print") && call.find(part) != std::string::npos) found.push_back(call);
    return found;
  }

  Gate gate;
  test::FakeClock clock{gate};
  test::ScriptedDialogs dialogs{gate};
  Paper sheet;
  std::shared_ptr<PrintedDocument> document;
};

/// Letters are 1 wide and 2 high; the left margin is 8 blanks. A column is its widest word and 7 blanks wide, or as
/// wide as its contents, times 1.1: 13.2 for the date, 12.1 for the time, 16.5 for a pressure.
TEST_F(PrintGridTest, PlacesCellsInColumnsBelowCentredHeadings) {
  Records records(1, 1);
  Print(records);
  EXPECT_EQ(With("'14-Mar-2026'"), (std::vector<std::string>{"print 8 50.68 '14-Mar-2026' 000000"}))
      << "28 white, 17.28 for the title, half a line, two lines of headings, a fifth";
  EXPECT_EQ(With("'09:30:00'"), (std::vector<std::string>{"print 21.2 50.68 '09:30:00' 000000"}));
  EXPECT_EQ(With("'0.200'"), (std::vector<std::string>{"print 33.3 50.68 '0.200' 000000"}));
  EXPECT_EQ(With("'Pressure'"), (std::vector<std::string>{"print 37.55 46.28 'Pressure' 000000"}));
  EXPECT_EQ(With("'psi'"), (std::vector<std::string>{"print 40.05 48.28 'psi' 000000"}));
  EXPECT_TRUE(document->ended);
}

TEST_F(PrintGridTest, HeadsEachPageWithTheRangeOfTheWholeSet) {
  Records records(1, 200);
  Print(records);
  const auto heads = With("Data Log On  14-Mar-2026   From [ 14-Mar-2026 09:30:00]  to  [14-Mar-2026 09:33:19] Page ");
  ASSERT_GT(document->pages, 1);
  ASSERT_EQ(heads.size(), static_cast<std::size_t>(document->pages));
  EXPECT_NE(heads[0].find("Page 1'"), std::string::npos);
  EXPECT_NE(heads[1].find("Page 2'"), std::string::npos);
}

/// A row is 2.4 high; between 50.68 and 269 there is room for 90.
TEST_F(PrintGridTest, BeginsAPageWhereARowWouldPassTheSheet) {
  Records full(1, 90);
  Print(full);
  EXPECT_EQ(document->pages, 1);
  Records more(1, 91);
  Print(more);
  EXPECT_EQ(document->pages, 2);
  EXPECT_EQ(With("'09:31:30'"), (std::vector<std::string>{"print 21.2 50.68 '09:31:30' 000000"}));
}

TEST_F(PrintGridTest, LeavesRecordsOutBehindEachThatItPrints) {
  Records records(1, 10);
  Print(records, 1);
  EXPECT_EQ(With("'09:30:0").size(), 5u);
  EXPECT_EQ(With("'09:30:02'").size(), 1u);
  EXPECT_EQ(With("'09:30:01'").size(), 0u);
  Print(records, 3);
  EXPECT_EQ(With("'09:30:0").size(), 3u) << "the first, the fifth and the ninth";
}

TEST_F(PrintGridTest, PrintsNumbersByTheirSizeAndOthersAsTheyAre) {
  Records records(1, 5);
  records.cells = {{0, "1,000.500"}, {1, "10.500"}, {2, ""}, {3, "nan"}, {4, "open"}};
  Print(records);
  for (const char* cell : {"'1,001'", "'10.50'", "'nan'", "'open'"}) EXPECT_EQ(With(cell).size(), 1u) << cell;
  EXPECT_EQ(With("print 33.3 ").size(), 4u) << "nothing of an empty one";
}

TEST_F(PrintGridTest, PutsColumnsThatDoNotFitOnFollowingPagesBehindDateAndTime) {
  Records records(20, 3);
  Print(records);
  EXPECT_EQ(document->pages, 3) << "nine pressures a page";
  EXPECT_EQ(With("'09:30:00'").size(), 3u);
  EXPECT_EQ(With("print 8 50.68 '14-Mar-2026'").size(), 3u);
  EXPECT_EQ(With("'Pressure'").size(), 20u);
  EXPECT_EQ(records.walks, 1);
}

TEST_F(PrintGridTest, PrintsTheHeadOfAnEmptyTable) {
  Records records(1, 0);
  Print(records);
  EXPECT_EQ(document->pages, 1);
  EXPECT_EQ(With("From [ ]  to  []").size(), 1u);
}

TEST_F(PrintGridTest, PrintsNothingWhereItIsCancelled) {
  Records records(1, 5000);
  dialogs.SetEnding();
  LongTask task(dialogs, clock, "Printing");
  clock.Advance(400);
  document = std::make_shared<PrintedDocument>();
  RecordingPrinter printer(document, sheet);
  EXPECT_THROW(PrintGrid(printer, records, {"Data Log", 0, kFirst, "Small Fonts"}, test::English(), task),
               TaskCancelled);
  EXPECT_FALSE(document->ended);
}

TEST_F(PrintGridTest, KeepsThePrintersMargins) {
  sheet.left = 25.4;  // 72 points
  sheet.top = 25.4;
  Records records(1, 1);
  Print(records);
  EXPECT_EQ(With("'14-Mar-2026'"), (std::vector<std::string>{"print 72 122.68 '14-Mar-2026' 000000"}));
}

/// A sheet whose letters are a tenth of their points wide.
class Lettered : public SheetRecording {
 public:
  void SetFont(const TextFont& font) override { points_ = font.points; }
  double TextWidth(std::string_view text) const override { return SheetRecording::TextWidth(text) * points_ / 10; }

 private:
  double points_ = 10;
};

TEST(TableLayoutTest, ShrinksTheLettersUntilAllColumnsFit) {
  Lettered page;
  const auto pointsFor = [&](int values) { return LayOutTable(page, Records(values, 1).columns, "Sans", 8).points; };
  EXPECT_EQ(pointsFor(9), 10) << "25.3 and 9 times 16.5, of 185.2";
  EXPECT_EQ(pointsFor(11), 8) << "206.8 at 10, 186.1 at 9";
  EXPECT_EQ(pointsFor(64), 6);
}

TEST(TableLayoutTest, LeavesNoColumnOut) {
  Lettered page;
  const TableLayout layout = LayOutTable(page, Records(64, 1).columns, "Sans", 8);
  std::vector<int> shown;
  for (const auto& group : layout.groups)
    for (std::size_t i = &group == &layout.groups[0] ? 0 : 2; i < group.size(); ++i) {
      shown.push_back(group[i].index);
      EXPECT_LE(group[i].left + group[i].width, 8 + 185.2 + 1e-9);
    }
  ASSERT_EQ(shown.size(), 66u);
  for (int i = 0; i < 66; ++i) EXPECT_EQ(shown[static_cast<std::size_t>(i)], i);
}

TEST_F(PrintGridTest, PrintsTenThousandRecordsOf18ColumnsToAFile) {
  const test::TemporaryFolder folder;
  Records records(16, 10'000);
  LongTask task(dialogs, clock, "Printing");
  PrintGrid(*MakePdfPrinter(folder.File("log.pdf")), records, {"Data Log", 0, kFirst, "DejaVu Sans"}, test::English(),
            task);
  EXPECT_GT(std::filesystem::file_size(folder.File("log.pdf")), 100'000u);
}

}  // namespace
}  // namespace velk
