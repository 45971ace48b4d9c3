#include "exchange/csv_file.h"

#include "exchange/csv_table.h"
#include "exchange/exchange_fixture.h"
#include "platform/files/line_reader.h"
#include "support/raises.h"

namespace velk {
namespace {

using Lines = std::vector<std::string>;

class CsvFiles : public test::ExchangeFixture {
 protected:
  Lines LinesOf(const std::string& bytes, CodePage page = CodePage::Western) {
    CsvFile file(Write("file.csv", bytes), page);
    test::IndexAll(file);
    Lines lines;
    for (std::int64_t i = 0; i < file.Lines(); ++i) lines.push_back(file.Line(i));
    return lines;
  }
};

TEST_F(CsvFiles, EndTheirLinesInEachOfThreeWays) {
  for (const char* end : {"\n", "\r\n", "\r"}) {
    const std::string e = end;
    EXPECT_EQ(LinesOf("a,b" + e + "1,2" + e + "3,4"), (Lines{"a,b", "1,2", "3,4"}));
    EXPECT_EQ(LinesOf("a,b" + e + "1,2" + e), (Lines{"a,b", "1,2"}));
    EXPECT_EQ(LinesOf("a" + e + e + "b"), (Lines{"a", "", "b"}));
  }
}

TEST_F(CsvFiles, DoNotCountBlankLinesAtTheEnd) {
  EXPECT_EQ(LinesOf("a\n1\n\n \n\t\n\n"), (Lines{"a", "1"}));
  EXPECT_EQ(LinesOf(""), Lines{});
  EXPECT_EQ(LinesOf("\n\n"), Lines{});
}

TEST_F(CsvFiles, AreReadWithAndWithoutTheMarkOfUtf8) {
  EXPECT_EQ(LinesOf("\xEF\xBB\xBF"
                    "Date,Time,Глубина\n"),
            (Lines{"Date,Time,Глубина"}));
  EXPECT_EQ(LinesOf("Date,Time,Глубина\n"), (Lines{"Date,Time,Глубина"}));
}

TEST_F(CsvFiles, AreReadByTheCodePageOfTheLanguageWhereTheyAreNoUtf8) {
  EXPECT_EQ(LinesOf("\xC3\xEB\xF3\xE1\xE8\xED\xE0 \xA8\x96\x88", CodePage::Cyrillic), (Lines{"Глубина Ё–€"}));
  EXPECT_EQ(LinesOf("Temp \xB0"
                    "C \x80 \xE9",
                    CodePage::Western),
            (Lines{"Temp °C € é"}));
  EXPECT_EQ(CodePageOf("Russian"), CodePage::Cyrillic);
  EXPECT_EQ(CodePageOf("English"), CodePage::Western);
}

TEST_F(CsvFiles, AreReadAsUtf16WhereTheirMarkSaysSo) {
  const std::string little(
      "\xFF\xFE"
      "a\0,\0\x13\x04\x3D\xD8\x00\xDE\n\0"
      "1\0,\0"
      "2\0",
      20);
  EXPECT_EQ(LinesOf(little), (Lines{"a,Г😀", "1,2"}));
  const std::string big(
      "\xFE\xFF\0a\0,\x04\x13\0\n\0"
      "1",
      12);
  EXPECT_EQ(LinesOf(big), (Lines{"a,Г", "1"}));
}

TEST_F(CsvFiles, HaveTheirLinesWhereverTheyAreLookedAt) {
  std::string bytes;
  for (int i = 0; i < 5000; ++i) bytes += "line " + std::to_string(i) + (i % 3 == 0 ? "\r\n" : "\n");
  CsvFile file(Write("long.csv", bytes), CodePage::Western);
  while (file.Index(777)) {
  }
  EXPECT_EQ(file.Lines(), 5000);
  for (const int i : {4999, 0, 63, 64, 65, 2500, 1, 4998}) EXPECT_EQ(file.Line(i), "line " + std::to_string(i));
  EXPECT_EQ(file.Line(5000), "");
  EXPECT_EQ(file.Line(-1), "");
}

TEST_F(CsvFiles, ShowTheirFirstLinesBeforeAllOfThemAreKnown) {
  std::string bytes;
  for (int i = 0; i < 50000; ++i) bytes += "line " + std::to_string(i) + "\n";
  CsvFile file(Write("long.csv", bytes), CodePage::Western);
  EXPECT_TRUE(file.Index(1000));
  EXPECT_GE(file.Lines(), 90);
  EXPECT_LT(file.Lines(), 200);
  EXPECT_EQ(file.Line(80), "line 80");
}

TEST_F(CsvFiles, GiveALineThatFillsTheMemoryInPieces) {
  const std::string path = Write("binary.csv", std::string(LineReader::kMostLine * 2 + 10, 'x') + "\ny\n");
  const InputFile file(path);
  LineReader lines(file);
  std::vector<std::size_t> lengths;
  while (lines.Next()) lengths.push_back(lines.Line().size());
  EXPECT_EQ(lengths, (std::vector<std::size_t>{LineReader::kMostLine, LineReader::kMostLine, 10, 1}));
}

TEST_F(CsvFiles, JoinALineEndThatLiesAcrossTwoPieces) {
  // One block of the reader ends between CR and LF.
  const std::string path = Write("edge.csv", std::string(256 * 1024 - 1, 'x') + "\r\ny\r\n");
  const InputFile file(path);
  LineReader lines(file);
  ASSERT_TRUE(lines.Next());
  ASSERT_TRUE(lines.Next());
  EXPECT_EQ(lines.Line(), "y");
  EXPECT_FALSE(lines.Next());
}

TEST_F(CsvFiles, TellWhatKeepsThemFromBeingRead) {
  ErrorOf([&] { CsvFile(folder.File("none.csv"), CodePage::Western); }, ErrorNumber::FileNotFound);
  ErrorOf([&] { CsvFile(folder.Path().string(), CodePage::Western); }, ErrorNumber::BadFileName);
}

TEST_F(CsvFiles, EstimateTheirRowsByTheBytesOfTheFirstLine) {
  const std::string line = "Date,Time,\xC3\xEB\xF3\xE1\xE8\xED\xE0\n";
  ASSERT_EQ(line.size(), 18U);
  const CsvFile file(Write("file.csv", line + std::string(170 - line.size(), 'x')), CodePage::Cyrillic);
  EXPECT_EQ(file.Shape().EstimatedRows, 10) << "170 bytes, 17 a line";
}

class CsvGrid : public CsvFiles {
 protected:
  void Open(const std::string& bytes) {
    file.emplace(Write("grid.csv", bytes), CodePage::Western);
    test::IndexAll(*file);
    table.emplace(*file);
  }
  std::string Row(int row) {
    std::string cells;
    for (int column = 0; column < table->Columns(); ++column)
      cells += (column == 0 ? "" : "|") + table->Cell(row, column);
    return cells;
  }
  std::string Headings() {
    std::string cells;
    for (int column = 0; column < table->Columns(); ++column)
      cells += (column == 0 ? "" : "|") + table->Heading(column);
    return cells;
  }

  std::optional<CsvFile> file;
  std::optional<CsvTable> table;
};

TEST_F(CsvGrid, ShowsTheRowsBehindTheNames) {
  Open("Date,Time,A,\n21/11/2026,10:00:00,1,2\n2026-11-22,10:00:01,3,4,5\nnever,10:00:02\n");
  EXPECT_EQ(Headings(), "Date|Time|A|Parameter 1");
  ASSERT_EQ(table->Rows(), 3);
  EXPECT_EQ(Row(0), "21-Nov-2026|10:00:00|1|2");
  EXPECT_EQ(Row(1), "22-Nov-2026|10:00:01|3|4");
  EXPECT_EQ(Row(2), "never|10:00:02||");
  EXPECT_EQ(table->JobStartDate(), "21/11/2026");
}

TEST_F(CsvGrid, ShowsTimesAndNumbersOfAFileWithoutNames) {
  Open("9:00:00,1,2\n21-Nov-2026 10:00:00,3,4\nnoon,5,6\n");
  EXPECT_EQ(Headings(), "Time|Parameter 1|Parameter 2|Parameter 3");
  EXPECT_EQ(Row(0), "09:00:00|1|2|");
  EXPECT_EQ(Row(1), "10:00:00|3|4|");
  EXPECT_EQ(Row(2), "noon|5|6|");
  EXPECT_EQ(table->JobStartDate(), "");
}

TEST_F(CsvGrid, LeavesOutRowsThatAreDeleted) {
  Open("Date,Time,A\n1,1,0\n1,1,1\n1,1,2\n1,1,3\n1,1,4\n1,1,5\n");
  table->Delete({0, 3});
  table->Delete({1});
  ASSERT_EQ(table->Rows(), 3);
  EXPECT_EQ(Row(0), "1|1|1");
  EXPECT_EQ(Row(1), "1|1|4");
  EXPECT_EQ(Row(2), "1|1|5");
  EXPECT_EQ(table->DeletedLines(), (std::vector<std::int64_t>{1, 3, 4}));
}

TEST_F(CsvGrid, IsEmptyForAnEmptyFile) {
  Open("");
  EXPECT_EQ(table->Rows(), 0);
  Open("Date,Time,A\n");
  EXPECT_EQ(table->Rows(), 0);
  EXPECT_EQ(table->JobStartDate(), "");
}

}  // namespace
}  // namespace velk
