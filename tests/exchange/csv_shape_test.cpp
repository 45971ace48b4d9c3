#include "exchange/csv_shape.h"

#include <gtest/gtest.h>

namespace velk {
namespace {

using Names = std::vector<std::string>;

TEST(CsvShape, TakesDateInAnyCaseForALineOfNames) {
  for (const char* line : {"Date,Time,A,B", "DATE,TIME,A,B", "date,time,A,B"}) {
    const CsvShape shape = AnalyseFirstLine(line, 0);
    EXPECT_TRUE(shape.hasHeader) << line;
    EXPECT_EQ(shape.ColumnCount, 2) << line;
    EXPECT_EQ(shape.ColumnNames, (Names{"A", "B"})) << line;
  }
  EXPECT_EQ(AnalyseFirstLine("DATE,Time,A", 0).DateColumnName, "DATE");
  EXPECT_EQ(AnalyseFirstLine("DATE,Time,A", 0).TimeColumnName, "Time");
}

TEST(CsvShape, TakesOtherLinesForRowsAndCountsTheTimeAsAParameter) {
  const CsvShape shape = AnalyseFirstLine("10:00:00,1.5,2", 0);
  EXPECT_FALSE(shape.hasHeader);
  EXPECT_EQ(shape.ColumnCount, 3);
  EXPECT_EQ(shape.ColumnNames, (Names{"Parameter 1", "Parameter 2", "Parameter 3"}));
  EXPECT_EQ(shape.ColumnsAhead(), 1);
}

TEST(CsvShape, NumbersNamelessColumnsFromZeroBehindTheTime) {
  EXPECT_EQ(AnalyseFirstLine("Date,Time,,B,,D", 0).ColumnNames, (Names{"Parameter 0", "B", "Parameter 2", "D"}));
}

TEST(CsvShape, GivesATrailingCommaAColumn) {
  const CsvShape shape = AnalyseFirstLine("Date,Time,A,B,", 0);
  EXPECT_EQ(shape.ColumnCount, 3);
  EXPECT_EQ(shape.ColumnNames, (Names{"A", "B", "Parameter 2"}));
}

TEST(CsvShape, EndsTheNamesAtATrailingCommaOfARow) {
  EXPECT_EQ(AnalyseFirstLine("10:00:00,1,2,", 0).ColumnCount, 3);
}

TEST(CsvShape, HasNoColumnsWithoutNamesBehindTheTime) {
  EXPECT_EQ(AnalyseFirstLine("Date,Time", 0).ColumnCount, 0);
  EXPECT_EQ(AnalyseFirstLine("Date,Time,", 0).ColumnNames, (Names{"Parameter 0"}));
}

TEST(CsvShape, EstimatesTheRowsByTheFirstLine) {
  EXPECT_EQ(AnalyseFirstLine("Date,Time,A", 115).EstimatedRows, 10);
  EXPECT_EQ(AnalyseFirstLine("", 115).EstimatedRows, 0);
}

TEST(CsvShape, TellsOfNamesThatDoNotBeginWithDateAndTime) {
  EXPECT_TRUE(AnalyseFirstLine("ID,Date,Time,A", 0).hasStrayNames);
  EXPECT_TRUE(AnalyseFirstLine("Time,A,B", 0).hasStrayNames);
  EXPECT_TRUE(AnalyseFirstLine("Date,A,B", 0).hasStrayNames);
  EXPECT_FALSE(AnalyseFirstLine("Date,Time,A", 0).hasStrayNames);
  EXPECT_FALSE(AnalyseFirstLine("10:00:00,1,text", 0).hasStrayNames);
  EXPECT_FALSE(AnalyseFirstLine("7,1,2", 0).hasStrayNames);
  EXPECT_FALSE(AnalyseFirstLine("", 0).hasStrayNames);
}

TEST(CsvShape, TellsOfSemicolons) {
  EXPECT_TRUE(AnalyseFirstLine("Date;Time;A", 0).hasSemicolons);
  EXPECT_FALSE(AnalyseFirstLine("Date,Time,A;B", 0).hasSemicolons);
}

TEST(CsvShape, KnowsNoQuotes) {
  EXPECT_EQ(AnalyseFirstLine("Date,Time,\"A,B\"", 0).ColumnNames, (Names{"\"A", "B\""}));
}

}  // namespace
}  // namespace velk
