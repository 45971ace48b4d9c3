#include <gtest/gtest.h>

#include "log/log_fixture.h"

namespace velk {
namespace {

using Rows = std::vector<std::string>;

class LogSchema : public test::LogFixture {};

TEST_F(LogSchema, HasTheColumnsOfLogDataInOrderWithTheirTypes) {
  NameChannels({"Pressure", "Rate"});
  CreateLog(path);
  EXPECT_EQ(Query(path, "SELECT name, type, pk FROM pragma_table_info('logData')"),
            (Rows{"ID|INTEGER|1", "Date|DATE|0", "Time|DATE|0", "Pressure|DOUBLE|0", "Rate|DOUBLE|0"}));
}

TEST_F(LogSchema, NamesThePrimaryKeyAndNumbersRowsOneAboveTheHighestThatStands) {
  NameChannels({"Pressure"});
  StartLog(path);
  AppendLogRow();
  AppendLogRow();
  log.Finalise();
  const Rows sql = Query(path, "SELECT sql FROM sqlite_schema WHERE name='logData'");
  ASSERT_EQ(sql.size(), 1u);
  EXPECT_NE(sql[0].find("CONSTRAINT PrimaryKey PRIMARY KEY"), std::string::npos) << sql[0];

  Connection::Open(path, OpenMode::ReadWrite)->Execute("DELETE FROM logData WHERE ID=1");
  log.ConnectLogFile(path);
  log.OpenLogRecordset();
  AppendLogRow();
  log.Finalise();
  EXPECT_EQ(Query(path, "SELECT ID FROM logData ORDER BY ID"), (Rows{"2", "3"}));
}

TEST_F(LogSchema, HasTheColumnsOfGraphSettingsInOrderWithTheirTypes) {
  NameChannels({"Pressure"});
  CreateLog(path);
  EXPECT_EQ(Query(path, "SELECT name, type FROM pragma_table_info('GraphSettings')"),
            (Rows{"ParameterName|VARCHAR(50)", "units|VARCHAR(50)", "Minimum|DOUBLE", "Maximum|DOUBLE",
                  "NumberFormat|VARCHAR(50)", "GraphNumber|INTEGER", "CurveColor|INTEGER"}));
}

TEST_F(LogSchema, PutsIncludedChannelsThenAdditionalFieldsThenCommentsIntoTheReport) {
  NameChannels({"Pressure", "Rate", "Depth"});
  questions.include = [](SummaryInclusion& inclusion) {
    inclusion.parameters[0].included = true;
    inclusion.parameters[2].included = true;
    inclusion.extraFields = {"Tank level", "Crew"};
  };
  CreateLog(path);
  EXPECT_EQ(Query(path, "SELECT name, type FROM pragma_table_info('SummaryReport')"),
            (Rows{"Date|DATE", "Time|DATE", "Pressure|DOUBLE", "Depth|DOUBLE", "Tank level|DOUBLE", "Crew|DOUBLE",
                  "Comments|LONGTEXT"}));
  EXPECT_TRUE(session.CurrentParameters[1].IncludeInSummary);
  EXPECT_FALSE(session.CurrentParameters[2].IncludeInSummary);
  EXPECT_TRUE(session.CurrentParameters[3].IncludeInSummary);
  EXPECT_EQ(session.SummaryExtraFields, (Rows{"Tank level", "Crew"}));
}

TEST_F(LogSchema, AsksForTheReportsColumnsWithoutBlankChannels) {
  NameChannels({"Pressure", "BLANK", "Depth"});
  session.CurrentParameters[3].IncludeInSummary = true;
  CreateLog(path);
  ASSERT_EQ(questions.inclusions.size(), 1u);
  const auto& asked = questions.inclusions[0].parameters;
  ASSERT_EQ(asked.size(), 2u);
  EXPECT_EQ(asked[0].name, "Pressure");
  EXPECT_EQ(asked[0].parameter, 1);
  EXPECT_FALSE(asked[0].included);
  EXPECT_EQ(asked[1].name, "Depth");
  EXPECT_EQ(asked[1].parameter, 3);
  EXPECT_TRUE(asked[1].included);
}

TEST_F(LogSchema, StoresTwoBlankChannelsUnderTheirNumbers) {
  NameChannels({"A", "B", "BLANK", "BLANK"});
  CreateLog(path);
  EXPECT_EQ(Columns(path, "logData"), (Rows{"ID", "Date", "Time", "A", "B", "BLANK3", "BLANK4"}));
}

TEST_F(LogSchema, NumbersANameThatVanishesInCleaning) {
  NameChannels({"A", ".[!]'\x01\x1f"});
  CreateLog(path);
  EXPECT_EQ(Columns(path, "logData"), (Rows{"ID", "Date", "Time", "A", "BLANK2"}));
  EXPECT_EQ(Query(path, "SELECT ParameterName FROM GraphSettings"), (Rows{"A", ".[!]'\x01\x1f"}));
}

TEST_F(LogSchema, KeepsLongCyrillicAndQuotedNamesWhole) {
  const std::string longName(80, 'x');
  NameChannels({"Давление на насосе \"А\"", longName, "a,b;c--"});
  StartLog(path);
  session.CurrentValue[1] = 1.5f;
  AppendLogRow();
  log.Finalise();
  EXPECT_EQ(Columns(path, "logData"), (Rows{"ID", "Date", "Time", "Давление на насосе \"А\"", longName, "a,b;c--"}));
  EXPECT_EQ(Query(path, "SELECT \"Давление на насосе \"\"А\"\"\" FROM logData"), (Rows{"1.5"}));
  EXPECT_EQ(Query(path, "SELECT ParameterName FROM GraphSettings")[1], longName);
}

TEST_F(LogSchema, TellsApartNamesThatTheDatabaseTakesForTheSame) {
  NameChannels({"Rate", "rate", "ID", "date", "Time", "rate_2", "Rate"});
  questions.include = [](SummaryInclusion& inclusion) {
    for (auto& entry : inclusion.parameters) entry.included = true;
    inclusion.extraFields = {"Rate", "Comments", "date", "..."};
  };
  StartLog(path);
  for (std::size_t i = 1; i <= 7; ++i) session.CurrentValue[i] = static_cast<float>(i);
  AppendLogRow();
  log.Finalise();
  EXPECT_EQ(Columns(path, "logData"),
            (Rows{"ID", "Date", "Time", "Rate", "rate_2", "ID_3", "date_4", "Time_5", "rate_2_6", "Rate_7"}));
  EXPECT_EQ(Query(path, "SELECT Rate, rate_2, ID_3, date_4, Time_5, rate_2_6, Rate_7 FROM logData"),
            (Rows{"1.0|2.0|3.0|4.0|5.0|6.0|7.0"}));
  EXPECT_EQ(Columns(path, "SummaryReport"),
            (Rows{"Date", "Time", "Rate", "rate_2", "ID_3", "date_4", "Time_5", "rate_2_6", "Rate_7", "Rate_8",
                  "Comments_9", "date_10", "BLANK11", "Comments"}));
  EXPECT_EQ(Query(path, "SELECT ParameterName FROM GraphSettings"),
            (Rows{"Rate", "rate", "ID", "date", "Time", "rate_2", "Rate"}));
}

TEST_F(LogSchema, HoldsSixtyFourChannels) {
  std::vector<std::string> names;
  for (int i = 1; i <= 64; ++i) names.push_back("Channel " + std::to_string(i));
  NameChannels(names);
  StartLog(path);
  for (std::size_t i = 1; i <= 64; ++i) session.CurrentValue[i] = static_cast<float>(i) + 0.5f;
  AppendLogRow();
  log.Finalise();
  EXPECT_EQ(Query(path, "SELECT \"Channel 1\", \"Channel 64\" FROM logData"), (Rows{"1.5|64.5"}));
}

TEST_F(LogSchema, HoldsALogWithoutChannels) {
  NameChannels({});
  StartLog(path);
  AppendLogRow();
  log.Finalise();
  EXPECT_EQ(Query(path, "SELECT ID, \"Date\", Time FROM logData").size(), 1u);
  EXPECT_EQ(Query(path, "SELECT count(*) FROM GraphSettings"), (Rows{"0"}));
}

}  // namespace
}  // namespace velk
