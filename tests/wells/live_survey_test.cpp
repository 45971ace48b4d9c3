#include "wells/live_survey.h"

#include <gtest/gtest.h>

#include "base/dates.h"
#include "platform/database/catalog.h"
#include "platform/database/command.h"
#include "support/raises.h"
#include "support/temporary_folder.h"

namespace velk {
namespace {

const std::vector<std::string> kChannels = {"Speed", "Depth", "Inclination", "Azimuth", "RPM"};

class LiveSurveyTest : public testing::Test {
 protected:
  void Start(SpeedFilter filter = SpeedFilter::RunningIn, std::int16_t interval = 10) {
    survey.Start({{"Speed", "Date", "Time", "Depth", "Inclination", "Azimuth", "RPM"}, filter, interval}, file,
                 kChannels);
  }
  /// A row of the log a second behind the one before.
  void Step(double speed, double depth, double inclination = 0, double azimuth = 0, double rpm = 60) {
    ++number;
    survey.LiveSurveyStep(RowOf({speed, depth, inclination, azimuth, rpm}));
  }
  LogRow RowOf(std::vector<double> values) const {
    return {DateSerial(2026, 5, 1) + TimeOfDay(10, 0, static_cast<double>(number)), std::move(values), number};
  }
  /// The rows of surveyData, each number to four places.
  std::vector<std::string> Rows() const {
    std::vector<std::string> rows;
    Command read(*file, "SELECT Depth, Inclination, Azimuth, DogLeg, RPM FROM surveyData ORDER BY ID");
    while (read.Next()) {
      std::string row;
      for (int i = 0; i < 5; ++i) {
        char cell[40];
        std::snprintf(cell, sizeof cell, "%s%.4g", i == 0 ? "" : " ", read.Number(i));
        row += cell;
      }
      rows.push_back(row);
    }
    return rows;
  }

  const test::TemporaryFolder folder;
  std::shared_ptr<Connection> file = Connection::Open(folder.File("log.mdb"), OpenMode::CreateNew);
  std::shared_ptr<Connection> other = Connection::Open(folder.File("other.mdb"), OpenMode::CreateNew);
  Well well;
  LiveSurvey survey{well};
  std::int64_t number = 0;
};

using Texts = std::vector<std::string>;

TEST_F(LiveSurveyTest, MakesTheTable) {
  Start();
  const auto table = Catalog(*file).Find("surveyData");
  ASSERT_TRUE(table);
  EXPECT_EQ(table->identity, "ID");
  Texts columns;
  for (const Column& column : table->columns) columns.push_back(column.name + " " + column.type);
  const Texts wanted = {"Date DATE",      "Time DATE",     "Depth DOUBLE", "Inclination DOUBLE",
                        "Azimuth DOUBLE", "DogLeg DOUBLE", "RPM DOUBLE"};
  // The identity may stand among the columns.
  columns.erase(
      std::remove_if(columns.begin(), columns.end(), [](const auto& name) { return name.starts_with("ID "); }),
      columns.end());
  EXPECT_EQ(columns, wanted);
}

TEST_F(LiveSurveyTest, AveragesRowsUntilTheHoleIsAnIntervalDeeper) {
  Start();
  Step(1, 4, 1, 10);
  Step(1, 8, 2, 20);
  EXPECT_EQ(Rows(), Texts{});
  Step(1, 12, 3, 30, 75);  // 12 is more than 10 below 0: the mean of the three
  // From (0, 0, 0) to (8, 2, 20): by hand 2 degrees in 8 are 25 in 100; the turn counts by 1 - cos 2 degrees.
  EXPECT_EQ(Rows(), (Texts{"8 2 20 25 75"}));
  Step(1, 17, 9, 9);
  EXPECT_EQ(Rows().size(), 1U) << "17 is 9 below the mean";
  Step(1, 19, 11, 11);
  EXPECT_EQ(Rows()[1].substr(0, 8), "18 10 10") << "the mean begins anew behind each row";
}

TEST_F(LiveSurveyTest, WritesDateAndTimeInWholeSeconds) {
  Start();
  Step(1, 20);
  Command read(*file, "SELECT \"Date\", \"Time\" FROM surveyData");
  ASSERT_TRUE(read.Next());
  EXPECT_EQ(read.Number(0), DateSerial(2026, 5, 1));
  EXPECT_EQ(read.Number(1), TimeOfDay(10, 0, 1));
}

TEST_F(LiveSurveyTest, WritesATimeOfDayWhateverItsFieldHolds) {
  const double day = DateSerial(2026, 5, 1);
  Start();
  // Half a millisecond ahead of midnight.
  survey.LiveSurveyStep({day + 86'399.9995 / 86'400, {1, 20, 0, 0, 60}, ++number});
  survey.Start({{"Speed", "Date", "RPM", "Depth", "Inclination", "Azimuth", "Time"}, SpeedFilter::All, 10}, other,
               kChannels);
  const double times[] = {30'000, 1e300, -0.25, 0.5, std::nan(""), HUGE_VAL};
  double depth = 0;
  for (const double time : times) survey.LiveSurveyStep({day, {1, depth += 20, 0, 0, time}, ++number});
  const auto read = [](Connection& log) {
    std::vector<std::pair<double, double>> rows;
    Command command(log, "SELECT \"Date\", \"Time\" FROM surveyData ORDER BY ID");
    while (command.Next()) rows.emplace_back(command.Number(0), command.Number(1));
    return rows;
  };
  using Stamps = std::vector<std::pair<double, double>>;
  EXPECT_EQ(read(*file), (Stamps{{day, TimeOfDay(23, 59, 59)}}));
  EXPECT_EQ(read(*other), (Stamps{{day, 0}, {day, 0}, {day, 0.75}, {day, 0.5}})) << "without a time there is no row";
}

TEST_F(LiveSurveyTest, CountsRowsByTheirSpeed) {
  Start(SpeedFilter::RunningIn);
  Step(-1, 20);
  Step(0, 20);
  EXPECT_EQ(Rows().size(), 0U);
  Step(0.1, 20);
  EXPECT_EQ(Rows().size(), 1U);
  Start(SpeedFilter::PullingOut);
  Step(1, 20);
  Step(0, 20);
  EXPECT_EQ(Rows().size(), 0U);
  Step(-1, 20);
  EXPECT_EQ(Rows().size(), 1U);
  Start(SpeedFilter::All);
  Step(0, 20);
  EXPECT_EQ(Rows().size(), 0U) << "without speed no row is written";
  Step(-1, 20);
  EXPECT_EQ(Rows().size(), 1U);
}

TEST_F(LiveSurveyTest, RestsAboveTheSurface) {
  Start(SpeedFilter::All);
  Step(1, -20);
  EXPECT_EQ(Rows().size(), 0U);
}

TEST_F(LiveSurveyTest, NeedsMoreThanTheInterval) {
  Start();
  Step(1, 10);
  EXPECT_EQ(Rows().size(), 0U);
  Step(1, 10.1);
  EXPECT_EQ(Rows().size(), 1U);
}

TEST_F(LiveSurveyTest, TakesEachRowOnce) {
  Start();
  Step(1, 4);
  const LogRow again = RowOf({1, 4, 0, 0, 0});
  for (int i = 0; i < 10; ++i) survey.LiveSurveyStep(again);
  Step(1, 12);
  EXPECT_EQ(Rows(), (Texts{"8 0 0 0 60"})) << "the mean of two";
}

TEST_F(LiveSurveyTest, LeavesOutRowsWithoutAValue) {
  Start();
  Step(1, std::nan(""));
  Step(1, 20, std::nan(""));
  EXPECT_EQ(Rows().size(), 0U);
  Step(1, 20, 0, 0, std::nan(""));
  EXPECT_EQ(Rows().size(), 1U) << "RPM is no part of the path";
}

TEST_F(LiveSurveyTest, ComputesThePathBehindTheSurfaceInTheOrderOfDepths) {
  Start(SpeedFilter::All);
  survey.LoadSurveyAndCalculate();
  EXPECT_TRUE(well.Path.stations.empty());
  Step(1, 40, 10, 20);
  Step(-1, 20, 5, 20);
  survey.LoadSurveyAndCalculate();
  EXPECT_EQ(well.Survey, (std::vector<SurveyStation>{{0, 0, 0}, {20, 5, 20}, {40, 10, 20}}));
  EXPECT_EQ(well.CalculationInterval, 10);
  EXPECT_EQ(well.Path.stations.size(), 5U);
  EXPECT_EQ(well.SavedSurveyCount, 3) << "the editor shows them all";
}

TEST_F(LiveSurveyTest, KeepsThePathThatCanNotBeComputedAnew) {
  Start();
  Step(1, 30'000, 1, 1);
  survey.LoadSurveyAndCalculate();
  const std::size_t stations = well.Path.stations.size();
  Step(1, 40'000, 1, 1);
  EXPECT_EQ(test::Raised([&] { survey.LoadSurveyAndCalculate(); }), ErrorNumber::Overflow);
  EXPECT_EQ(well.Path.stations.size(), stations);
  EXPECT_EQ(well.Survey.size(), 2U);
}

TEST_F(LiveSurveyTest, BeginsAnewWithEachStart) {
  well.Survey = {{0, 0, 0}, {500, 1, 2}};
  well.SavedSurveyCount = 2;
  well.SurveyFileName = "/wells/plan.d15";
  well.WellFileName = "/wells/plan.dt5";
  well.Sections = {{0, 500, 12, 9}};
  Start();
  EXPECT_EQ(well.Survey, (std::vector<SurveyStation>{{0, 0, 0}}));
  EXPECT_EQ(well.SavedSurveyCount, 0);
  EXPECT_EQ(well.SurveyFileName, "") << "the editor would save this survey over it";
  EXPECT_EQ(well.WellFileName, "");
  EXPECT_TRUE(well.Sections.empty());
  Step(1, 20, 7, 7);
  Step(1, 25, 7, 7);
  Start();
  EXPECT_EQ(Rows().size(), 0U);
  Step(1, 12, 1, 1);
  EXPECT_EQ(Rows()[0].substr(0, 6), "12 1 1") << "nothing of before is in the mean";
}

TEST_F(LiveSurveyTest, RestsOnceItIsStoppedOrItsLogIsClosed) {
  Start();
  EXPECT_TRUE(survey.IsOn());
  survey.Stop();
  EXPECT_FALSE(survey.IsOn());
  Step(1, 20);
  EXPECT_EQ(Rows().size(), 0U);
  Start();
  Step(1, 20, 3, 4);
  survey.LoadSurveyAndCalculate();
  const std::vector<SurveyStation> rows = well.Survey;
  file.reset();
  EXPECT_FALSE(survey.IsOn());
  Step(1, 40, 3, 4);
  survey.LoadSurveyAndCalculate();
  EXPECT_EQ(well.Survey, rows);
  file = Connection::Open(folder.File("log.mdb"), OpenMode::ReadWrite);
  EXPECT_EQ(Rows().size(), 1U);
}

TEST_F(LiveSurveyTest, CanTakeARowAgainThatCouldNotBeWritten) {
  Start();
  Step(1, 4);
  file->Execute("ALTER TABLE surveyData RENAME TO elsewhere");
  ++number;
  const LogRow row = RowOf({1, 12, 0, 0, 60});
  test::Raised([&] { survey.LiveSurveyStep(row); });
  file->Execute("ALTER TABLE elsewhere RENAME TO surveyData");
  survey.LiveSurveyStep(row);
  EXPECT_EQ(Rows(), (Texts{"8 0 0 0 60"}));
}

TEST_F(LiveSurveyTest, NeedsFieldsThatTheLogHas) {
  EXPECT_EQ(test::Raised([&] {
              survey.Start({{"Speed", "Date", "Time", "Depth", "Inclination", "Azimuth", "Torque"}}, file, kChannels);
            }),
            ErrorNumber::InvalidArgument);
  EXPECT_FALSE(survey.IsOn());
}

TEST(FieldsOfALog, AreItsDateItsTimeAndItsColumns) {
  EXPECT_EQ(FieldsOfLog({"Depth", "a.b"}), (Texts{"Date", "Time", "Depth", "ab"}));
}

}  // namespace
}  // namespace velk
