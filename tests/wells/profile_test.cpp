#include <gtest/gtest.h>

#include <QImage>
#include <cmath>

#include "support/fake_printers.h"
#include "support/in_english.h"
#include "wells/profile_report.h"
#include "wells/profile_table.h"

namespace velk {
namespace {

using test::English;

/// Two stations whose cells are worked by hand.
WellPath PathOfTwo() {
  WellPath path;
  path.stations.resize(2);
  PathStation& end = path.stations[1];
  end.depth = 1000.4;
  end.tvd = 900.6;
  end.north = -120.5;
  end.east = 33.2;
  end.inclination = M_PI / 6;
  end.azimuth = M_PI;
  end.dogLeg = 3.456;
  return path;
}

std::vector<std::string> RowOf(const ProfileTable& table, int row) {
  std::vector<std::string> cells;
  for (int column = 0; column < kProfileColumns; ++column) cells.push_back(table.Cell(row, column, English()));
  return cells;
}

using Texts = std::vector<std::string>;

TEST(ProfileTable, HasNamesUnitsAndARowForEachStation) {
  const WellPath path = PathOfTwo();
  const WellUnits units;
  const ProfileTable table(path, units);
  EXPECT_EQ(RowOf(table, 0), (Texts{"Depth", "True Vertical Depth", "Horizon. Distance North", "Horizon. Distance East",
                                    "Inclination", "Azimuth", "Dog leg"}));
  EXPECT_EQ(RowOf(table, 1), (Texts{"feet", "feet", "feet", "feet", "degrees", "degrees", "deg/100 "}));
  EXPECT_EQ(RowOf(table, 2), (Texts{"0", "0", "0", "0", "0.00", "0.00", "0.00"}));
  EXPECT_EQ(RowOf(table, 3), (Texts{"1000", "901", "-121", "33", "30.00", "180.00", "3.46"}));
  EXPECT_EQ(RowOf(table, 4), Texts(7));
}

TEST(ProfileTable, HasSixteenRowsAtLeast) {
  WellPath path;
  const WellUnits units;
  const ProfileTable table(path, units);
  EXPECT_EQ(table.RowCount(), 16);
  path.stations.resize(14);
  EXPECT_EQ(table.RowCount(), 16);
  path.stations.resize(15);
  EXPECT_EQ(table.RowCount(), 17);
}

TEST(ProfileTable, ShowsDepthsInEachSystemAndLeavesTheStations) {
  const WellPath path = PathOfTwo();
  WellUnits units;
  units.SetUser({2, "ell", "gon"});
  ProfileTable table(path, units);
  table.SetSystem(kMetric);
  EXPECT_EQ(RowOf(table, 1), (Texts{"m", "m", "m", "m", "degrees", "degrees", "deg/100 "}));
  // 1000.4, 900.6, -120.5 and 33.2 times 0.3048
  EXPECT_EQ(RowOf(table, 3), (Texts{"305", "275", "-37", "10", "30.00", "180.00", "3.46"}));
  table.SetSystem(kUserDefined);
  EXPECT_EQ(RowOf(table, 1), (Texts{"ell", "ell", "ell", "ell", "gon", "gon", "deg/100 "}));
  EXPECT_EQ(RowOf(table, 3), (Texts{"2001", "1801", "-241", "66", "30.00", "180.00", "3.46"}));
  EXPECT_EQ(path.stations[1].depth, 1000.4);
}

TEST(ProfileText, HasTheHeadAndEachCellWithAComma) {
  const WellPath path = PathOfTwo();
  WellUnits units;
  units.SetUser({2, "el,l", ""});
  ProfileTable table(path, units);
  table.SetSystem(kUserDefined);
  const std::string text =
      ProfileText(table, {"North", "a.d15", {"Smith, Sons", "N-7", "Clean, then test"}}, English());
  const std::string start =
      "Client Name: Smith  Sons,Well Name: N-7,Job Description: Clean  then test\r\n"
      "Depth,True Vertical Depth,Horizon. Distance North,Horizon. Distance East,Inclination,Azimuth,Dog leg,\r\n"
      "el l,el l,el l,el l,,,deg/100 ,\r\n"
      "0,0,0,0,0.00,0.00,0.00,\r\n"
      "2001,1801,-241,66,30.00,180.00,3.46,\r\n"
      ",,,,,,,\r\n";
  EXPECT_EQ(text.substr(0, start.size()), start);
  EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 17) << "the head, and the 16 rows of the grid";
}

class WellReport : public testing::Test {
 protected:
  ProfileReport::Content Content() const {
    return {table, survey, "feet", "degrees", {"North", "a.d15", {"Smith", "N-7", "Test"}}, {}, "1 May 2026", "Sans"};
  }
  /// What stands on a page as "x y 'text'".
  std::vector<std::string> Printed(const ProfileReport& report, int page) const {
    SheetRecording drawn;
    report.Draw(drawn, page);
    std::vector<std::string> texts;
    for (const std::string& call : drawn.calls)
      if (call.starts_with("print ")) texts.push_back(call.substr(6, call.rfind(' ') - 6));
    return texts;
  }
  bool Holds(const ProfileReport& report, int page, const std::string& text) const {
    for (const std::string& printed : Printed(report, page))
      if (printed.find("'" + text + "'") != std::string::npos) return true;
    return false;
  }

  WellPath path = PathOfTwo();
  WellUnits units;
  ProfileTable table{path, units};
  std::vector<SurveyStation> survey = {{0, 0, 0}, {1000.4, 30, 180}};
};

TEST_F(WellReport, HasItsHeadBothTablesAndTheFoot) {
  SheetRecording surface;
  const ProfileReport report(surface, Content(), English());
  ASSERT_EQ(report.PageCount(), 1);
  const std::vector<std::string> printed = Printed(report, 0);
  // Letters are 1 wide and 2 high: lines are 2.5 apart, and the longest label has 16 letters.
  EXPECT_EQ(printed[0], "20 15 'Project - North (a.d15)'");
  EXPECT_EQ(printed[1], "20 17.5 'Client Name:     : Smith'");
  EXPECT_EQ(printed[2], "20 20 'Well Name:       : N-7'");
  EXPECT_EQ(printed[3], "20 22.5 'Job Description: : Test'");
  EXPECT_EQ(printed[4], "20 35.5 'Input Data'");
  for (const char* text : {"Depth", "feet", "1000", "30.00", "Well Profile Results", "901", "-121", "3.46",
                           "Printed 1 May 2026", "Page 1 of 1"})
    EXPECT_TRUE(Holds(report, 0, text)) << text;
}

TEST_F(WellReport, GoesOnAnotherPageWithTheHeadAndTheHeadings) {
  path.stations.resize(200);
  SheetRecording surface;
  const ProfileReport report(surface, Content(), English());
  // A page has 96 lines: 87 rows below the survey on the first, 94 below the headings on each further one.
  ASSERT_EQ(report.PageCount(), 3);
  for (int page = 0; page < 3; ++page) {
    EXPECT_TRUE(Holds(report, page, "Project - North (a.d15)")) << page;
    EXPECT_TRUE(Holds(report, page, "Dog leg")) << page;
    EXPECT_TRUE(Holds(report, page, "Page " + std::to_string(page + 1) + " of 3")) << page;
  }
  EXPECT_FALSE(Holds(report, 1, "Input Data"));
}

TEST_F(WellReport, PrintsEachRowOnceAndNothingInTheMargins) {
  path.stations.resize(500);
  for (std::size_t i = 0; i < 500; ++i) path.stations[i].depth = 10'000 + static_cast<double>(i);
  SheetRecording surface;
  const ProfileReport report(surface, Content(), English());
  std::vector<int> seen(500);
  for (int page = 0; page < report.PageCount(); ++page)
    for (const std::string& printed : Printed(report, page)) {
      double x = 0, y = 0;
      char text[200] = {};
      ASSERT_EQ(std::sscanf(printed.c_str(), "%lf %lf '%199[^']", &x, &y, text), 3);
      EXPECT_GE(x, 19);
      EXPECT_LE(y, 282);
      if (const int depth = std::atoi(text); depth >= 10'000) ++seen[static_cast<std::size_t>(depth) - 10'000];
    }
  EXPECT_EQ(seen, std::vector<int>(500, 1));
}

TEST_F(WellReport, WrapsLongHeadings) {
  SheetRecording surface;
  const ProfileReport report(surface, Content(), English());
  // A column is 24 wide and leaves 23 letters: one more than "Horizon. Distance East" has, and as many as its sister.
  EXPECT_TRUE(Holds(report, 0, "Horizon. Distance East"));
  struct Wide : SheetRecording {
    double TextWidth(std::string_view text) const override { return 2 * SheetRecording::TextWidth(text); }
  };
  Wide wide;
  const ProfileReport wrapped(wide, Content(), English());
  EXPECT_TRUE(Holds(wrapped, 0, "Horizon."));
  EXPECT_TRUE(Holds(wrapped, 0, "Distance"));
}

TEST_F(WellReport, IsPrintedAsOneDocument) {
  path.stations.resize(200);
  SheetRecording surface;
  const ProfileReport report(surface, Content(), English());
  const auto document = std::make_shared<PrintedDocument>();
  RecordingPrinter printer(document, {});
  report.Print(printer);
  EXPECT_EQ(document->title, "a.d15");
  EXPECT_EQ(document->pages, 3);
  EXPECT_TRUE(document->ended);
}

TEST_F(WellReport, HasTheLogoWithoutItsGround) {
  ProfileReport::Content content = Content();
  content.logo = QImage(40, 20, QImage::Format_RGB32);
  content.logo.fill(0xFFC0C0C0);
  content.logo.setPixel(3, 4, 0xFF102030);
  SheetRecording surface;
  const ProfileReport report(surface, content, English());
  SheetRecording drawn;
  report.Draw(drawn, 0);
  // 18 high, twice as wide, up to the right edge at 190.
  EXPECT_NE(std::find(drawn.calls.begin(), drawn.calls.end(), "picture 154 15 36 18 of 40x20"), drawn.calls.end());
  const QImage shown = WithoutGround(content.logo);
  EXPECT_EQ(qAlpha(shown.pixel(0, 0)), 0);
  EXPECT_EQ(shown.pixel(3, 4), 0xFF102030U);
}

}  // namespace
}  // namespace velk
