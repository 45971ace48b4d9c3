#include "base/grid_text.h"

#include <gtest/gtest.h>

namespace velk {
namespace {

TEST(GridText, HasATabBetweenCellsAndALineARow) {
  EXPECT_EQ(JoinCells({{"a", "1"}, {"", "2"}}), "a\t1\n\t2\n");
  EXPECT_EQ(SplitCells("a\t1\r\n\t2\r\n"), (CellTexts{{"a", "1"}, {"", "2"}}));
  EXPECT_EQ(SplitCells("a\t1\n\n3"), (CellTexts{{"a", "1"}, {""}, {"3"}}));
  EXPECT_EQ(SplitCells("a\rb"), (CellTexts{{"a"}, {"b"}}));
  EXPECT_EQ(SplitCells(""), CellTexts{});
}

TEST(GridText, QuotesACellThatHoldsATabALineEndOrAQuote) {
  const CellTexts cells = {{"two\nlines", "a\tb"}, {"3\" pipe", "plain"}};
  EXPECT_EQ(JoinCells(cells), "\"two\nlines\"\t\"a\tb\"\n\"3\"\" pipe\"\tplain\n");
  EXPECT_EQ(SplitCells(JoinCells(cells)), cells);
}

TEST(GridText, LeavesAQuoteInTheMiddleAndAnUnclosedOneAsTheyAre) {
  EXPECT_EQ(SplitCells("3\" pipe\tx"), (CellTexts{{"3\" pipe", "x"}}));
  EXPECT_EQ(SplitCells("\"open\tx"), (CellTexts{{"\"open", "x"}}));
  EXPECT_EQ(SplitCells("Depth\t\"\t0\nFlow\tl\t1\n"), (CellTexts{{"Depth", "\"", "0"}, {"Flow", "l", "1"}}));
  EXPECT_EQ(SplitCells("\"3\" pipe\tx"), (CellTexts{{"\"3\" pipe", "x"}}));
  EXPECT_EQ(SplitCells("\"\"\"\"\t\"\""), (CellTexts{{"\"", ""}}));
}

}  // namespace
}  // namespace velk
