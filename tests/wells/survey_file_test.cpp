#include "wells/survey_file.h"

#include <gtest/gtest.h>

#include "platform/files/whole_file.h"
#include "support/raises.h"
#include "support/temporary_folder.h"

namespace velk {
namespace {

using Rows = std::vector<SurveyStation>;

const Rows kThree = {{0, 0, 0}, {1000, 5.25, 120}, {1500.5, 10, 359}};
const std::string kThreeText = " 3 \r\n 0 ,0,0\r\n 1000 , 5.25 , 120 \r\n 1500.5 , 10 , 359 \r\n 1 \r\n";

TEST(SurveyFile, IsWrittenWithTheBlanksOfItsNumbers) {
  EXPECT_EQ(SurveyText(kThree, 1), kThreeText);
  EXPECT_EQ(SurveyText(Rows{{-5, -1.5, 0}}, 0), " 1 \r\n-5 ,-1.5 ,0\r\n 0 \r\n");
  EXPECT_EQ(SurveyText({}, 2), " 0 \r\n 2 \r\n");
}

TEST(SurveyFile, IsReadAsItWasWritten) {
  const SurveyFile file = ReadSurveyText(kThreeText);
  EXPECT_EQ(file.rows, kThree);
  EXPECT_EQ(file.units, 1);
  EXPECT_TRUE(file.fault.IsEmpty());
}

TEST(SurveyFile, NeedsNoUnitBehindItsRows) {
  for (const char* end : {"", "\r\n", "\n\n  \n"}) {
    const SurveyFile file = ReadSurveyText(std::string("1\r\n100,1,2") + end);
    EXPECT_EQ(file.rows, (Rows{{100, 1, 2}}));
    EXPECT_EQ(file.units, std::nullopt);
    EXPECT_TRUE(file.fault.IsEmpty());
  }
}

TEST(SurveyFile, HasItsNumbersApartByCommasBlanksOrLines) {
  const Rows rows{{100, 1, 2}, {200, 3, 4}};
  for (const char* text :
       {"2\n100 1 2\n200 3 4\n", "2\r100\r1\r2\r200,3,4", "2 rows\n100,1,2,200,3,4", "2\n 100\t,1 , 2\n200 ,\n3 4",
        "2\n100,1,2,\n200,3,4,\n", "2\r\n1E2,1.0,+2\r\n200.0 3 4 0\x1a 7 8 9"}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(ReadSurveyText(text).rows, rows);
  }
}

TEST(SurveyFile, TakesAnItemThatIsNoNumberAsZero) {
  EXPECT_EQ(ReadSurveyText("1\n100,abc,,").rows, (Rows{{100, 0, 0}}));
  EXPECT_EQ(ReadSurveyText("1\n12ft,\"3\",nan").rows, (Rows{{12, 0, 0}}));
}

TEST(SurveyFile, ThatEndsAheadOfItsLastRowKeepsTheWholeOnesAndSaysSo) {
  const SurveyFile file = ReadSurveyText("3\n0,0,0\n100,1,2\n200,3");
  EXPECT_EQ(file.rows, (Rows{{0, 0, 0}, {100, 1, 2}}));
  EXPECT_EQ(file.units, std::nullopt);
  EXPECT_EQ(file.fault.English(), "The file ends ahead of its last row. Rows announced: 3, read and kept: 2.");
}

TEST(SurveyFile, WithMoreRowsThanItAnnouncesTellsOfTheUnitThatIsNone) {
  const SurveyFile file = ReadSurveyText("1\n0,0,0\n100,1,2\n1\n");
  EXPECT_EQ(file.rows, (Rows{{0, 0, 0}}));
  EXPECT_EQ(file.units, std::nullopt);
  EXPECT_EQ(file.fault.English(),
            "The number behind the last row is none of the units 0, 1 and 2. The present unit stays. Is the number of "
            "rows right?");
  EXPECT_EQ(ReadSurveyText("1\n0,0,0\n2").units, 2);
  EXPECT_EQ(ReadSurveyText("1\n0,0,0\n3").units, std::nullopt);
  EXPECT_EQ(ReadSurveyText("1\n0,0,0\n0.5").units, std::nullopt);
}

TEST(SurveyFile, WithoutACountOfRowsHoldsNoSurvey) {
  for (const char* text : {"", "\r\n", "0\n", "-3\n1,2,3", "depth,inclination\n1,2,3", "0.4\n1 2 3"}) {
    SCOPED_TRACE(text);
    const SurveyFile file = ReadSurveyText(text);
    EXPECT_TRUE(file.rows.empty());
    EXPECT_EQ(file.fault.English(), "The file holds no survey. Its first line has to be the number of rows.");
  }
}

TEST(SurveyFile, OverflowsWithMoreRowsThanCanBeCounted) {
  EXPECT_EQ(ReadSurveyText("32768\n0,0,0").fault.English(), "Overflow");
  EXPECT_EQ(ReadSurveyText("1e999\n0,0,0").fault.English(), "Overflow");
  EXPECT_EQ(ReadWellText("1e999 0 0").fault.English(), "Overflow");
  std::string text = "32767\n";
  for (int i = 0; i < 32767; ++i) text += "1 2 3\n";
  EXPECT_EQ(ReadSurveyText(text).rows.size(), 32767U);
}

TEST(SurveyFile, EndsAtANumberThatIsTooLarge) {
  const SurveyFile file = ReadSurveyText("2\n100,1,2\n200,1e999,4\n0");
  EXPECT_EQ(file.rows, (Rows{{100, 1, 2}}));
  EXPECT_EQ(file.fault.English(), "Overflow. Rows announced: 2, read and kept: 1.");
  EXPECT_EQ(ReadSurveyText("1\n100,1,2\n1e999").fault.English(), "Overflow");
}

TEST(WellFile, HasTheSizesOfTheHoleBehindEachRow) {
  const SurveyFile file = ReadWellText("3 0,0,0,12.25,9.625 500,1,2,12.25,9.625\n900,3,4,12.25,9.625\n2");
  EXPECT_EQ(file.rows, (Rows{{0, 0, 0}, {500, 1, 2}, {900, 3, 4}}));
  EXPECT_EQ(file.units, 2);
  EXPECT_EQ(file.sections, (std::vector<WellSection>{{0, 900, 12.25, 9.625}}));
  EXPECT_TRUE(file.fault.IsEmpty());
}

TEST(WellFile, BeginsASectionWhereEitherSizeChanges) {
  const SurveyFile file = ReadWellText("5\n10 0 0 12 9\n200 0 0 12 9\n400 0 0 12 7\n600 0 0 8 7\n700 0 0 8 7\n");
  EXPECT_EQ(file.sections, (std::vector<WellSection>{{10, 400, 12, 9}, {400, 600, 12, 7}, {600, 700, 8, 7}}));
}

TEST(WellFile, KeepsTwentySectionsAndTellsOfMore) {
  const auto well = [](int rows) {
    std::string text = std::to_string(rows) + "\n";
    for (int i = 1; i <= rows; ++i) text += std::to_string(i * 100) + " 0 0 " + std::to_string(i) + " 0\n";
    return ReadWellText(text);
  };
  EXPECT_EQ(well(20).sections.size(), 20U);
  EXPECT_TRUE(well(20).fault.IsEmpty());
  EXPECT_EQ(well(21).sections.size(), 20U);
  EXPECT_EQ(well(21).sections.back(), (WellSection{2000, 2100, 20, 0}));
  EXPECT_EQ(well(21).fault.English(), "The well has more than 20 sections. Those below the 20th are left out.");
}

TEST(WellFile, EndsBehindTheRowsThatThereIsRoomFor) {
  std::string text = "1001\n";
  for (int i = 0; i < 1001; ++i) text += std::to_string(i) + " 0 0 1 1\n";
  const SurveyFile file = ReadWellText(text);
  EXPECT_EQ(file.rows.size(), 1000U);
  EXPECT_EQ(file.sections, (std::vector<WellSection>{{0, 999, 1, 1}}));
  EXPECT_EQ(file.fault.English(), "Subscript out of range. Rows announced: 1001, read and kept: 1000.");
  EXPECT_EQ(ReadWellText(text, 1001).rows.size(), 1001U);
}

TEST(WellFile, IsKnownByItsName) {
  EXPECT_TRUE(IsWellFile("/wells/a.dt5"));
  EXPECT_TRUE(IsWellFile("A.DT5"));
  EXPECT_FALSE(IsWellFile("a.d15"));
  EXPECT_FALSE(IsWellFile(""));
}

TEST(SurveyFile, IsReadByTheKindOfItsName) {
  const test::TemporaryFolder folder;
  WriteWholeFile(folder.File("a.dt5"), "1\n100,1,2,8,7\n1");
  WriteWholeFile(folder.File("a.d15"), kThreeText);
  EXPECT_EQ(ReadSurveyFile(folder.File("a.dt5"), 1000).sections.size(), 1U);
  EXPECT_EQ(ReadSurveyFile(folder.File("a.d15"), 1000).rows, kThree);
  EXPECT_EQ(test::Raised([&] { ReadSurveyFile(folder.File("b.d15"), 1000); }), ErrorNumber::FileNotFound);
}

}  // namespace
}  // namespace velk
