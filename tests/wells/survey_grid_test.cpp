#include "wells/survey_grid.h"

#include <gtest/gtest.h>

#include "support/raises.h"
#include "wells/texts.h"
#include "wells/well_units.h"

namespace velk {
namespace {

using Rows = std::vector<SurveyStation>;

const Rows kSurvey = {{0, 0, 0}, {1000.5, 5.257, 120}, {1500, 10, 359.999}};

std::vector<std::string> RowOf(const SurveyGrid& grid, int row) {
  return {grid.Cell(row, 0), grid.Cell(row, 1), grid.Cell(row, 2)};
}

SurveyGrid GridOf(const std::vector<std::vector<std::string>>& rows) {
  SurveyGrid grid(Rows{}, kApiEnglish);
  for (std::size_t row = 0; row < rows.size(); ++row)
    for (std::size_t column = 0; column < rows[row].size(); ++column)
      grid.Enter(static_cast<int>(row), static_cast<int>(column), rows[row][column]);
  return grid;
}

using Texts = std::vector<std::string>;

TEST(SurveyGrid, ShowsWholeDepthsAndAnglesOfTwoPlaces) {
  const SurveyGrid grid(kSurvey, kMetric);
  EXPECT_EQ(RowOf(grid, 0), (Texts{"0", "0.00", "0.00"}));
  EXPECT_EQ(RowOf(grid, 1), (Texts{"1001", "5.26", "120.00"}));
  EXPECT_EQ(RowOf(grid, 2), (Texts{"1500", "10.00", "360.00"}));
  EXPECT_EQ(RowOf(grid, 3), (Texts{"", "", ""}));
  EXPECT_EQ(grid.Units(), kMetric);
}

TEST(SurveyGrid, HasAnEmptyRowBehindTheLastOne) {
  EXPECT_EQ(SurveyGrid(Rows(5), 0).RowCount(), 20);
  EXPECT_EQ(SurveyGrid(Rows(19), 0).RowCount(), 20);
  EXPECT_EQ(SurveyGrid(Rows(20), 0).RowCount(), 21);
  SurveyGrid grid;
  grid = SurveyGrid(Rows(19), 0);
  grid.Enter(19, 0, "5000");
  EXPECT_EQ(grid.RowCount(), 21);
}

TEST(SurveyGrid, KeepsTheDepthBehindATextThatNobodyHasEdited) {
  SurveyGrid grid(kSurvey, kApiEnglish);
  EXPECT_EQ(grid.ReadBack(), (Rows{{0, 0, 0}, {1000.5, 5.26, 120}, {1500, 10, 360}}));
  grid.Enter(1, 0, "1001");
  EXPECT_EQ(grid.ReadBack()[1].depth, 1000.5) << "the same text is no change";
  grid.Enter(1, 0, "1001.0");
  EXPECT_EQ(grid.ReadBack()[1].depth, 1001);
}

TEST(SurveyGrid, EndsAtTheFirstRowWithoutADepth) {
  const SurveyGrid grid = GridOf({{"0", "", ""}, {"100", "1", "2"}, {"  ", "3", "4"}, {"300", "5", "6"}});
  EXPECT_EQ(grid.ReadBack(), (Rows{{0, 0, 0}, {100, 1, 2}}));
  EXPECT_EQ(grid.RemarkOn(3, 0), text::RowIsLeftOut);
  EXPECT_EQ(grid.RemarkOn(3, 1), text::RowIsLeftOut);
  EXPECT_EQ(grid.RemarkOn(2, 1), text::RowIsLeftOut) << "its angles have no depth";
  EXPECT_EQ(grid.RemarkOn(1, 0), std::nullopt);
  EXPECT_EQ(grid.RemarkOn(1, 2), std::nullopt);
  EXPECT_TRUE(grid.LeavesRowsOut());
  EXPECT_TRUE(GridOf({{"0"}, {"", "3"}}).LeavesRowsOut());
  EXPECT_FALSE(GridOf({{"0"}, {"100", "1", "2"}, {" "}}).LeavesRowsOut());
  EXPECT_EQ(GridOf({{"", "1", "2"}}).ReadBack(), Rows{});
}

TEST(SurveyGrid, TakesAnEmptyAngleFromTheRowAbove) {
  EXPECT_EQ(GridOf({{"0", "", " "}, {"100", "1", "2"}, {"200", "", "3"}, {"300", "4", "\t"}}).ReadBack(),
            (Rows{{0, 0, 0}, {100, 1, 2}, {200, 1, 3}, {300, 4, 3}}));
  EXPECT_EQ(GridOf({{"500", "", ""}}).ReadBack(), (Rows{{0, 0, 0}, {500, 0, 0}}));
}

TEST(SurveyGrid, BeginsAtTheSurface) {
  EXPECT_EQ(GridOf({{"500", "3", "4"}, {"600", "", ""}}).ReadBack(), (Rows{{0, 0, 0}, {500, 3, 4}, {600, 3, 4}}));
  EXPECT_EQ(GridOf({{"0.0", "3", "4"}}).ReadBack(), (Rows{{0, 3, 4}}));
}

TEST(SurveyGrid, PutsTheSurfaceAheadOfItsRowsAndLeavesThoseBelowTheSurvey) {
  SurveyGrid grid = GridOf({{"0.3", "3", "4"}, {"500"}, {}, {"700", "5", "6"}});
  grid.AddSurface();
  EXPECT_EQ(RowOf(grid, 0), (Texts{"0", "0.00", "0.00"}));
  EXPECT_EQ(RowOf(grid, 1), (Texts{"0.3", "3", "4"}));
  EXPECT_EQ(RowOf(grid, 4), (Texts{"700", "5", "6"}));
  EXPECT_EQ(grid.ReadBack(), (Rows{{0, 0, 0}, {0.3, 3, 4}, {500, 3, 4}}));
  for (const char* surface : {"0", "0.0", "0.000", "-0"}) {
    SurveyGrid whole = GridOf({{surface}, {"500"}});
    whole.AddSurface();
    EXPECT_EQ(whole.Cell(0, 0), surface);
  }
  SurveyGrid empty = GridOf({{"", "1"}});
  empty.AddSurface();
  EXPECT_EQ(empty.Cell(0, 0), "");
}

TEST(SurveyGrid, RaisesForANumberBeyondTheRange) {
  for (const std::vector<std::string>& row :
       {std::vector<std::string>{"1e999"}, {"-1e999"}, {"100", "1e999"}, {"100", "1", "1e999"}})
    EXPECT_EQ(test::Raised([&] { (void)GridOf({{"0"}, row}).ReadBack(); }), ErrorNumber::Overflow) << row.back();
}

TEST(SurveyGrid, CountsWhatIsNoNumberAsZeroAndMarksIt) {
  const SurveyGrid grid = GridOf({{"abc", "x", "12,5"}, {"100 ft", "1,234.5", "7"}});
  EXPECT_EQ(grid.ReadBack(), (Rows{{0, 0, 12.5}, {100, 1, 7}}));
  EXPECT_EQ(grid.RemarkOn(0, 0), text::CellIsNoNumber);
  EXPECT_EQ(grid.RemarkOn(0, 1), text::CellIsNoNumber);
  EXPECT_EQ(grid.RemarkOn(0, 2), std::nullopt);
  EXPECT_EQ(grid.RemarkOn(1, 0), text::CellIsNoNumber);
  EXPECT_EQ(grid.RemarkOn(1, 1), text::CellIsNoNumber);
  EXPECT_EQ(grid.FirstFault(), std::nullopt);
}

TEST(SurveyGrid, FindsTheFirstDepthThatIsNotBelowTheOneAbove) {
  EXPECT_EQ(GridOf({{"0"}, {"100"}, {"200"}}).FirstFault(), std::nullopt);
  const SurveyGrid grid = GridOf({{"0"}, {"100"}, {"100"}, {"50"}});
  EXPECT_EQ(grid.FirstFault(), 2);
  EXPECT_EQ(grid.RemarkOn(2, 0), text::DepthNotBelow);
  EXPECT_TRUE(grid.IsFault(3));
  EXPECT_FALSE(grid.IsFault(1));
  EXPECT_EQ(GridOf({{"-5"}, {"100"}}).FirstFault(), 0);
  EXPECT_EQ(GridOf({{"0"}, {"abc"}}).FirstFault(), 1);
  EXPECT_EQ(GridOf({{"0"}, {"100"}, {""}, {"50"}, {"40"}}).FirstFault(), std::nullopt) << "those are left out";
}

TEST(SurveyGrid, InsertsAndDeletesRows) {
  SurveyGrid grid = GridOf({{"0"}, {"100"}, {"200"}});
  grid.InsertRow(1);
  EXPECT_EQ(RowOf(grid, 1), (Texts{"", "", ""}));
  EXPECT_EQ(grid.Cell(2, 0), "100");
  grid.DeleteRows(1, 2);
  EXPECT_EQ(grid.ReadBack(), (Rows{{0, 0, 0}, {200, 0, 0}}));
  grid.DeleteRows(0, grid.RowCount() - 1);
  EXPECT_EQ(grid.RowCount(), 20);
  EXPECT_EQ(grid.ReadBack(), Rows{});
}

TEST(SurveyGrid, CopiesAndPastesAsSpreadsheetsDo) {
  SurveyGrid grid(kSurvey, kApiEnglish);
  EXPECT_EQ(grid.Copy({1, 0, 2, 1}), "1001\t5.26\n1500\t10.00\n");
  const CellRange written = grid.Paste({1, 1, 1, 1}, "1\t2\t3\n4\t5\n");
  EXPECT_EQ(written.bottom, 2);
  EXPECT_EQ(written.right, 2);
  EXPECT_EQ(RowOf(grid, 1), (Texts{"1001", "1", "2"}));
  EXPECT_EQ(RowOf(grid, 2), (Texts{"1500", "4", "5"}));
  EXPECT_EQ(grid.ReadBack()[1].depth, 1000.5);
}

TEST(SurveyGrid, PastesOneValueIntoAllSelectedCells) {
  SurveyGrid grid(kSurvey, kApiEnglish);
  grid.Paste({0, 1, 2, 2}, "7");
  for (int row = 0; row < 3; ++row) EXPECT_EQ(RowOf(grid, row)[2], "7");
  EXPECT_EQ(RowOf(grid, 3)[2], "");
}

TEST(SurveyGrid, GrowsByWhatIsPasted) {
  std::string text;
  for (int row = 0; row < 40'000; ++row) text += std::to_string(row) + "\t1\t2\n";
  SurveyGrid grid;
  grid = SurveyGrid(Rows{}, 0);
  grid.Paste({0, 0, 0, 0}, text);
  EXPECT_EQ(grid.RowCount(), 32768) << "one more than can be counted, so that OK tells of it";
  EXPECT_EQ(test::Raised([&] { (void)grid.ReadBack(); }), ErrorNumber::Overflow);
  grid.DeleteRows(32767, 32767);
  EXPECT_EQ(grid.ReadBack().size(), 32767U);
}

TEST(SurveyGrid, DividesItsDepthsByTheFactorOfAConversion) {
  SurveyGrid grid = GridOf({{"0", "1", "2"}, {"1000", "3", "4"}, {"", "5", "6"}, {"200", "7", "8"}});
  grid.Convert(1 / 0.3048, kMetric);
  EXPECT_EQ(RowOf(grid, 0), (Texts{"0.000", "1", "2"}));
  EXPECT_EQ(RowOf(grid, 1), (Texts{"304.800", "3", "4"}));
  EXPECT_EQ(RowOf(grid, 2), (Texts{"", "5", "6"}));
  EXPECT_EQ(RowOf(grid, 3), (Texts{"60.960", "7", "8"}));
  EXPECT_EQ(grid.Units(), kMetric);
  // Back again, by the values behind the texts.
  grid.Convert(0.3048, kApiEnglish);
  EXPECT_DOUBLE_EQ(grid.ReadBack()[1].depth, 1000);
}

TEST(SurveyGrid, TakesBackEachChange) {
  SurveyGrid grid(kSurvey, kApiEnglish);
  EXPECT_FALSE(grid.CanUndo());
  grid.Enter(0, 1, "9");
  grid.InsertRow(0);
  grid.DeleteRows(2, 2);
  grid.Clear({0, 0, 1, 2});
  grid.Paste({0, 0, 0, 0}, "1\t2\t3\n4\t5\t6\n");
  grid.Convert(2, kUserDefined);
  grid.SetUnits(kMetric);
  grid.Fill(Rows{}, kApiEnglish);
  EXPECT_EQ(grid.ReadBack(), Rows{});
  EXPECT_TRUE(grid.IsChanged());
  grid.Undo();
  EXPECT_EQ(grid.Units(), kMetric);
  grid.Undo();
  EXPECT_EQ(grid.Units(), kUserDefined);
  for (int change = 0; change < 6; ++change) grid.Undo();
  EXPECT_EQ(grid.ReadBack(), (Rows{{0, 0, 0}, {1000.5, 5.26, 120}, {1500, 10, 360}}));
  EXPECT_EQ(grid.Units(), kApiEnglish);
  EXPECT_FALSE(grid.CanUndo());
  EXPECT_FALSE(grid.IsChanged());
  grid.Undo();
}

TEST(SurveyGrid, IsUnchangedOnceItWasKept) {
  SurveyGrid grid(kSurvey, kApiEnglish);
  grid.Enter(0, 1, "9");
  grid.Kept();
  EXPECT_FALSE(grid.IsChanged());
  grid.Undo();
  EXPECT_TRUE(grid.IsChanged());
}

TEST(SurveyGrid, IsChangedByAnotherChangeInThePlaceOfOneThatWasKept) {
  SurveyGrid grid(kSurvey, kApiEnglish);
  grid.Enter(0, 1, "9");
  grid.Kept();
  grid.Undo();
  grid.Enter(0, 1, "8");
  EXPECT_TRUE(grid.IsChanged());
}

TEST(SurveyGrid, KnowsThatItWasChangedWhereNotAllCanBeTakenBack) {
  SurveyGrid grid(kSurvey, kApiEnglish);
  for (int i = 0; i < 101; ++i) grid.Enter(0, 1, std::to_string(i));
  while (grid.CanUndo()) grid.Undo();
  EXPECT_EQ(grid.Cell(0, 1), "0");
  EXPECT_TRUE(grid.IsChanged());
  grid.Kept();
  EXPECT_FALSE(grid.IsChanged());
}

TEST(SurveyGrid, ClearsCellsAlone) {
  SurveyGrid grid(kSurvey, kApiEnglish);
  grid.Clear({1, 0, 1, 1});
  EXPECT_EQ(RowOf(grid, 1), (Texts{"", "", "120.00"}));
  EXPECT_EQ(grid.ReadBack(), (Rows{{0, 0, 0}}));
}

}  // namespace
}  // namespace velk
