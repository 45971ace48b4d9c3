#include "log/log_parameters.h"

#include "base/errors.h"
#include "log/log_fixture.h"
#include "log/summary_report.h"

namespace velk {
namespace {

class ParametersOfALog : public test::LogFixture {
 protected:
  LogParameters Read() { return ReadLogParameters(path, platform.language); }
  void MakeWithSettings(const std::string& sql) {
    MakeDatabase(path,
                 "CREATE TABLE logData (ID INTEGER PRIMARY KEY, Date DATE, Time DATE, A DOUBLE, B DOUBLE);" + sql);
  }
};

TEST_F(ParametersOfALog, AreThoseItWasRecordedWith) {
  NameChannels({"Pressure", "Rate"});
  Parameter& first = session.CurrentParameters[1];
  first.units = "kPa";
  first.min = -10;
  first.max = 250;
  first.color = 255;
  first.format = "0.00";
  first.FormIndex = 3;
  questions.include = [](SummaryInclusion& inclusion) { inclusion.parameters[1].included = true; };
  StartLog(path);
  const LogParameters parameters = Read();
  EXPECT_TRUE(parameters.hasGraphSettings);
  EXPECT_EQ(parameters.columns, (std::vector<std::string>{"Pressure", "Rate"}));
  ASSERT_EQ(parameters.channels.size(), 2u);
  const Parameter& read = parameters.channels[0];
  EXPECT_EQ(read.name, "Pressure");
  EXPECT_EQ(read.units, "kPa");
  EXPECT_EQ(read.min, -10);
  EXPECT_EQ(read.max, 250);
  EXPECT_EQ(read.color, 255);
  EXPECT_EQ(read.format, "0.00");
  EXPECT_EQ(read.FormIndex, 3);
  EXPECT_TRUE(read.GraphVisible);
  EXPECT_FALSE(read.IncludeInSummary);
  EXPECT_TRUE(parameters.channels[1].IncludeInSummary);
  log.Finalise();
}

TEST_F(ParametersOfALog, AreTheColumnsWithDefaultsWithoutGraphSettings) {
  MakeWithSettings("");
  const LogParameters parameters = Read();
  EXPECT_FALSE(parameters.hasGraphSettings);
  ASSERT_EQ(parameters.channels.size(), 2u);
  EXPECT_EQ(parameters.channels[1].name, "B");
  EXPECT_EQ(parameters.channels[1].units, "Units");
  EXPECT_EQ(parameters.channels[1].max, 100);
  EXPECT_EQ(parameters.channels[1].format, "#0.000");
  EXPECT_EQ(parameters.channels[1].FormIndex, 2);
  EXPECT_TRUE(parameters.channels[1].GraphVisible);
}

TEST_F(ParametersOfALog, HaveDefaultsForWhatIsNullMissingOrStrange) {
  MakeWithSettings(
      "CREATE TABLE GraphSettings (units, ParameterName, Maximum, GraphNumber, CurveColor);"
      "INSERT INTO GraphSettings VALUES (NULL, 'A', 'high', 99, -1), ('bar', NULL, 5, 'x', 1e300)");
  const LogParameters parameters = Read();
  ASSERT_EQ(parameters.channels.size(), 2u);
  EXPECT_EQ(parameters.channels[0].units, "Units");
  EXPECT_EQ(parameters.channels[0].max, 100);
  EXPECT_EQ(parameters.channels[0].FormIndex, 1);
  EXPECT_EQ(parameters.channels[0].color, 0);
  EXPECT_EQ(parameters.channels[1].name, "Parameter2");
  EXPECT_EQ(parameters.channels[1].units, "bar");
  EXPECT_EQ(parameters.channels[1].max, 5);
  EXPECT_EQ(parameters.channels[1].FormIndex, 2);
  EXPECT_EQ(parameters.channels[1].color, 0);
}

TEST_F(ParametersOfALog, StayOnNoGraphWhereTheLogSaysSo) {
  MakeWithSettings(
      "CREATE TABLE GraphSettings (ParameterName, GraphNumber); INSERT INTO GraphSettings VALUES ('A', 0), ('B', 2)");
  const LogParameters parameters = Read();
  EXPECT_EQ(parameters.channels[0].FormIndex, 0);
  EXPECT_EQ(parameters.channels[1].FormIndex, 2);
}

TEST_F(ParametersOfALog, HaveTheScaleOfOneThatWasNeverSetWhereItsEndsAreEqual) {
  MakeWithSettings(
      "CREATE TABLE GraphSettings (ParameterName, Minimum, Maximum); INSERT INTO GraphSettings VALUES ('A', 5, 5)");
  EXPECT_EQ(Read().channels[0].min, 0);
  EXPECT_EQ(Read().channels[0].max, 100);
}

TEST_F(ParametersOfALog, AreThoseOfItsColumnsWhereItsGraphSettingsAreEmpty) {
  MakeWithSettings("CREATE TABLE GraphSettings (ParameterName)");
  EXPECT_FALSE(Read().hasGraphSettings);
  EXPECT_EQ(Read().channels[1].name, "B");
  EXPECT_EQ(Read().channels[1].Gain, 1);
}

TEST_F(ParametersOfALog, AreToldWhereGraphSettingsAreMissing) {
  MakeWithSettings("");
  dialogs.Expect("Graph settings does not exist", Answer::Ok);
  EXPECT_FALSE(LogHasGraphSettings(Read(), dialogs));
  EXPECT_EQ(dialogs.shown.back().title, "Database error");
  std::filesystem::remove(path);
  NameChannels({"Pressure"});
  CreateLog(path);
  EXPECT_TRUE(LogHasGraphSettings(Read(), dialogs));
}

// --- Which column is whose ---

LogParameters ChannelsAndColumns(const std::vector<std::string>& names, const std::vector<std::string>& columns) {
  LogParameters parameters;
  for (const std::string& name : names) parameters.channels.emplace_back().name = name;
  parameters.columns = columns;
  return parameters;
}

TEST(ColumnsOfChannels, GoByTheNameThatAColumnCarries) {
  EXPECT_EQ(ColumnsOfChannels(ChannelsAndColumns({"A", "B"}, {"B", "x", "a"}), "f"), (std::vector<int>{2, 0}));
  EXPECT_EQ(ColumnsOfChannels(ChannelsAndColumns({"p.s.i.", "BLANK", "p.s.i."}, {"psi", "BLANK2", "psi_3"}), "f"),
            (std::vector<int>{0, 1, 2}));
}

TEST(ColumnsOfChannels, GoByTheirPlaceWhereNoColumnCarriesTheName) {
  EXPECT_EQ(ColumnsOfChannels(ChannelsAndColumns({"A", "Renamed", "C"}, {"A", "B", "C"}), "f"),
            (std::vector<int>{0, 1, 2}));
}

TEST(ColumnsOfChannels, TellTheOneThatIsMissing) {
  for (const auto& columns : {std::vector<std::string>{"A", "C"}, std::vector<std::string>{"A"}}) {
    try {
      ColumnsOfChannels(ChannelsAndColumns({"A", "B", "C"}, columns), "/jobs/x.mdb");
      ADD_FAILURE();
    } catch (const RuntimeError& error) {
      EXPECT_STREQ(error.what(), "The log has no column B: /jobs/x.mdb");
    }
  }
}

TEST_F(ParametersOfALog, NeedALog) {
  MakeDatabase(path, "CREATE TABLE music (title TEXT)");
  ErrorOf([&] { Read(); }, ErrorNumber::NoSuchTable);
}

TEST_F(ParametersOfALog, CommentsAreTheReportsLastTextColumn) {
  MakeWithSettings(
      "CREATE TABLE SummaryReport (Date DATE, Time DATE, A DOUBLE, Note VARCHAR(50), Text LONGTEXT, x DOUBLE)");
  EXPECT_EQ(CommentsColumn(*Connection::Open(path, OpenMode::ReadOnly)), "Text");
  EXPECT_TRUE(Read().channels[0].IncludeInSummary);
}

}  // namespace
}  // namespace velk
