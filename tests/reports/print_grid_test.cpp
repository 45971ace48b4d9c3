#include "reports/print_grid.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <map>
#include <sstream>
#include <variant>

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
  const std::vector<PrintedColumn>& Columns() const override { return columns; }
  double FirstTime() override { return count_ ? kFirst : std::nan(""); }
  double LastTime() override { return count_ ? kFirst + TimeOfDay(0, 0, count_ - 1) : std::nan(""); }
  std::int64_t Count() override { return count_; }
  bool First() override {
    ++walks;
    present_ = 0;
    return count_ > 0;
  }
  bool Next() override { return ++present_ < count_; }
  std::optional<double> Number(int column) override {
    if (column < 2) return std::nullopt;
    if (const auto special = cells.find(present_); special != cells.end()) {
      const auto* number = std::get_if<double>(&special->second);
      return number ? std::optional(*number) : std::nullopt;
    }
    return std::stod(Text(column));
  }
  std::string Text(int column) override {
    if (column == 0) return FormatDate(kFirst, "dd-mmm-yyyy");
    if (column == 1) return FormatDate(kFirst + TimeOfDay(0, 0, present_), "hh:mm:ss");
    if (const auto special = cells.find(present_); special != cells.end())
      return std::holds_alternative<double>(special->second) ? "as a grid shows it"
                                                             : std::get<std::string>(special->second);
    return std::to_string(present_) + "." + std::to_string(column) + "00";
  }

  std::vector<PrintedColumn> columns;
  std::map<int, std::variant<double, std::string>> cells;  ///< what stands in the values of a record
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
  Records records(1, 8);
  records.cells = {{0, 1000.5}, {1, 10.5},      {2, ""},       {3, std::nan("")},
                   {4, "open"}, {5, 1000.4996}, {6, 100.2499}, {7, "12,5"}};
  Print(records);
  for (const char* cell : {"'1,001'", "'10.50'", "'nan'", "'open'", "'1,000'", "'100.2'", "'12,5'"})
    EXPECT_EQ(With(cell).size(), 1u) << cell;
  EXPECT_EQ(With("print 33.3 ").size(), 7u) << "nothing of an empty one";
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

/// Words of 5 letters with the blank behind each.
std::string WordsIn(int count) {
  std::string words;
  for (int i = 0; i < count; ++i) words += "word ";
  return words;
}

/// The right end of what a call of print has printed, in letters that are 1 wide.
double EndOf(const std::string& call) {
  std::istringstream words(call);
  std::string print;
  double x = 0;
  words >> print >> x;
  return x + static_cast<double>(call.rfind('\'') - call.find('\'') - 1);
}

/// A comment has what date and time leave of the 193.2 that columns may take: 159.9, less what keeps columns apart.
TEST_F(PrintGridTest, BreaksACommentThatIsWiderThanTheSheet) {
  Records records(0, 3);
  records.columns.push_back({"Comments", CellKind::Text});
  records.cells = {{0, WordsIn(51)}, {1, "first\r\nsecond"}, {2, "short"}};
  Print(records);
  const auto lines = With("word");
  ASSERT_EQ(lines.size(), 2u) << "29 words of 5 letters in 145";
  EXPECT_TRUE(lines[0].starts_with("print 33.3 48.68 'word word ")) << lines[0];
  EXPECT_TRUE(lines[1].starts_with("print 33.3 51.08 'word word ")) << lines[1];
  for (const std::string& line : lines) EXPECT_LE(EndOf(line), 193.2);
  EXPECT_EQ(With("'first'"), (std::vector<std::string>{"print 33.3 53.48 'first' 000000"}));
  EXPECT_EQ(With("'second'"), (std::vector<std::string>{"print 33.3 55.88 'second' 000000"}));
  EXPECT_EQ(With("'short'"), (std::vector<std::string>{"print 33.3 58.28 'short' 000000"}));
  EXPECT_EQ(With("'09:30:02'"), (std::vector<std::string>{"print 21.2 58.28 '09:30:02' 000000"}));
}

/// Between 48.68 and 269 there is room for 91 lines.
TEST_F(PrintGridTest, KeepsTheLinesOfARecordOnOnePage) {
  Records records(0, 91);
  records.columns.push_back({"Comments", CellKind::Text});
  for (int i = 0; i < 90; ++i) records.cells[i] = "one";
  records.cells[90] = "two\nlines";
  Print(records);
  EXPECT_EQ(document->pages, 2);
  EXPECT_EQ(With("'two'"), (std::vector<std::string>{"print 33.3 48.68 'two' 000000"}));
}

TEST_F(PrintGridTest, EndsACommentThatIsLongerThanAPageWithAnEllipsis) {
  Records records(0, 1);
  records.columns.push_back({"Comments", CellKind::Text});
  records.cells = {{0, WordsIn(4000)}};
  Print(records);
  EXPECT_EQ(document->pages, 1);
  EXPECT_EQ(With("'word").size(), 91u);
  EXPECT_TRUE(With("'word").back().find("\u2026'") != std::string::npos);
}

TEST_F(PrintGridTest, MakesAColumnAsWideAsItsWidestNumber) {
  Records records(0, 2);
  for (int i = 0; i < 2; ++i) records.columns.push_back({"Rpm", CellKind::Number});
  records.cells = {{1, 123456789012.0}};
  Print(records);
  const auto cells = With("'123,456,789,012'");
  ASSERT_EQ(cells.size(), 2u);
  EXPECT_TRUE(cells[0].starts_with("print 33.3 ")) << cells[0];
  EXPECT_TRUE(cells[1].starts_with("print 50.9 ")) << "15 letters and a blank, times 1.1, behind it: " << cells[1];
}

TEST_F(PrintGridTest, BreaksATextInAColumnOfNumbersInsteadOfPrintingOverTheNextOne) {
  Records records(0, 1);
  for (int i = 0; i < 2; ++i) records.columns.push_back({"Rpm", CellKind::Number});
  records.cells = {{0, std::string(100, 'x')}};
  Print(records);
  std::vector<std::string> left;
  for (const std::string& call : With("'xxx"))
    if (call.starts_with("print 33.3 ")) left.push_back(call);
  ASSERT_EQ(left.size(), 3u) << "46 letters, a quarter of the sheet, in each line";
  for (const std::string& call : left) EXPECT_LE(EndOf(call), 33.3 + 46.3 * 1.1);
}

/// Cells are known ahead for 10,000 records: one behind them finds a column that is too narrow.
TEST_F(PrintGridTest, BreaksACellThatIsWiderThanAllThatWereKnown) {
  Records records(0, 10'001);
  for (int i = 0; i < 2; ++i) records.columns.push_back({"Rpm", CellKind::Number});
  records.cells = {{10'000, "much wider than others"}};
  Print(records);
  EXPECT_EQ(With("'much wider'").size() + With("'much'").size(), 2u);
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

std::string TextIn(const std::string& pdf) {
  std::string text;
  FILE* pipe = popen(("pdftotext -raw '" + pdf + "' -").c_str(), "r");
  for (int c = 0; pipe && (c = fgetc(pipe)) != EOF;) text += static_cast<char>(c);
  if (pipe) pclose(pipe);
  return text;
}

TEST_F(PrintGridTest, PrintsTenThousandRecordsOf18ColumnsToAFile) {
  const test::TemporaryFolder folder;
  Records records(16, 10'000);
  LongTask task(dialogs, clock, "Printing");
  PrintGrid(*MakePdfPrinter(folder.File("log.pdf")), records, {"Data Log", 0, kFirst, "DejaVu Sans"}, test::English(),
            task);
  const std::string words = TextIn(folder.File("log.pdf"));
  const auto times = [&](const char* word) {
    int count = 0;
    for (std::size_t at = words.find(word); at != std::string::npos; at = words.find(word, at + 1)) ++count;
    return count;
  };
  const int groups = times("09:30:01");
  EXPECT_GE(groups, 1);
  EXPECT_LE(groups, 3) << "of columns that fit beside each other";
  for (const char* time : {"10:00:00", "11:59:59", "12:16:38"}) EXPECT_EQ(times(time), groups) << time;
  EXPECT_GE(times("12:16:39"), groups) << "the last one, which the heads tell too";
  for (const char* value : {"5.160", "5.170"}) EXPECT_EQ(times(value), 1) << "of the fifth record: " << value;
}

}  // namespace
}  // namespace velk
