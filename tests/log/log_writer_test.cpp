#include "log/log_writer.h"

#include <gtest/gtest.h>

#include "base/dates.h"
#include "log/log_fixture.h"
#include "log/log_parameters.h"
#include "support/in_english.h"
#include "support/unprivileged.h"

namespace velk {
namespace {

using Rows = std::vector<std::string>;

class LogRows : public test::LogFixture {
 protected:
  void SetUp() override { NameChannels({"Pressure", "Rate"}); }
};

TEST_F(LogRows, HoldTheDateTheTimeAndEveryChannel) {
  StartLog(path);
  session.CurrentValue[1] = 12.5f;
  session.CurrentValue[2] = -3;
  AppendLogRow();
  log.Finalise();
  // 14 March 2026 is day 46095; 09:30:00 are 34200 of 86400 seconds.
  EXPECT_EQ(Query(path, "SELECT ID, Date, Time = 34200.0 / 86400, Pressure, Rate FROM logData"),
            (Rows{"1|46095|1|12.5|-3.0"}));
  EXPECT_EQ(Query(path, "SELECT ID FROM logData WHERE Date = CDate('14/03/2026') AND Time = CDate('09:30:00')"),
            (Rows{"1"}));
  EXPECT_EQ(Query(path, "SELECT ID FROM logData WHERE (Date + Time) >= CDate('14/03/2026 09:30:00')"), (Rows{"1"}));
}

TEST_F(LogRows, HoldWholeSecondsOfTheMomentNotOfTheSample) {
  StartLog(path);
  session.SampleTime = 1;
  clock.Advance(1999);
  AppendLogRow();
  clock.SetNow(DateSerial(2026, 12, 31) + TimeOfDay(23, 59, 59.9));
  AppendLogRow();
  clock.Advance(200);
  AppendLogRow();
  log.Finalise();
  EXPECT_EQ(Query(path, "SELECT Date, round(Time * 86400) FROM logData ORDER BY ID"),
            (Rows{"46095|34201.0", "46387|86399.0", "46388|0.0"}));
}

TEST_F(LogRows, AreLeftBehindACallThatFindsTheLogOpen) {
  std::vector<std::string> left;
  log.onLeaving = [&] { left.push_back(log.Writing()->Path()); };
  StartLog(path);
  log.ConnectLogFile(path);
  EXPECT_EQ(left, Rows{}) << "the same file";
  const std::string next = folder.File("next.mdb");
  StartLog(next);
  EXPECT_EQ(left, Rows{path});
  log.Finalise();
  EXPECT_EQ(left, (Rows{path, next}));
  log.Finalise();
  EXPECT_EQ(left.size(), 2U);
}

TEST_F(LogRows, HoldTheValueOfThe32BitFloat) {
  StartLog(path);
  session.CurrentValue[1] = 0.1f;
  AppendLogRow();
  log.Finalise();
  EXPECT_EQ(Query(path, "SELECT Pressure = 0.100000001490116119384765625 FROM logData"), (Rows{"1"}));
}

TEST_F(LogRows, HoldABlankChannelLikeAnyOther) {
  NameChannels({"BLANK", "Rate"});
  StartLog(path);
  session.CurrentValue[1] = 7;
  AppendLogRow();
  log.Finalise();
  EXPECT_EQ(Query(path, "SELECT BLANK1 FROM logData"), (Rows{"7.0"}));
}

TEST_F(LogRows, AreNotWrittenWhileTheFileInUseIsFailed) {
  StartLog(path);
  session.LogFileInUse = "Failed";
  AppendLogRow();
  log.CloseLogRecordset();
  AppendLogRow();
  log.Finalise();
  EXPECT_EQ(Query(path, "SELECT count(*) FROM logData"), (Rows{"0"}));
}

TEST_F(LogRows, NeedAnOpenRecordset) {
  log.CloseLogRecordset();
  ErrorOf([&] { AppendLogRow(); }, ErrorNumber::Database);
  ErrorOf([&] { log.OpenLogRecordset(); }, ErrorNumber::Database);
  ErrorOf([&] { log.WriteGraphSettings(true); }, ErrorNumber::Database);
  ErrorOf([&] { log.ReadSummaryInclusion(); }, ErrorNumber::Database);
  StartLog(path);
  EXPECT_TRUE(log.RecordsetIsOpen());
  log.CloseLogRecordset();
  EXPECT_FALSE(log.RecordsetIsOpen());
  EXPECT_TRUE(log.IsConnected());
  ErrorOf([&] { AppendLogRow(); }, ErrorNumber::Database);
}

TEST_F(LogRows, LeaveColumnsBeyondTheChannelsEmpty) {
  CreateLog(path);
  NameChannels({"Pressure"});
  log.ConnectLogFile(path);
  log.OpenLogRecordset();
  AppendLogRow();
  log.Finalise();
  EXPECT_EQ(Query(path, "SELECT Pressure, Rate IS NULL FROM logData"), (Rows{"0.0|1"}));
}

TEST_F(LogRows, AreRefusedByATableWithoutRoomForThem) {
  CreateLog(path);
  NameChannels({"Pressure", "Rate", "Depth"});
  log.ConnectLogFile(path);
  const std::string text = ErrorOf([&] { log.OpenLogRecordset(); }, ErrorNumber::Database);
  EXPECT_EQ(text, "The file [" + path + "] is not compatible with current velk data");
  EXPECT_FALSE(log.RecordsetIsOpen());
}

TEST_F(LogRows, AreRefusedByATableThatBeginsOtherwise) {
  MakeDatabase(path, "CREATE TABLE logData (a, b, c, d, e)");
  log.ConnectLogFile(path);
  ErrorOf([&] { log.OpenLogRecordset(); }, ErrorNumber::Database);
}

TEST_F(LogRows, StampLastUpdatedOnTheDiskAtMostOnceAMinuteAndAtTheEnd) {
  const auto onDisk = [&] {
    SettingsStore reader(settingsFolder.Path().string());
    return reader.Get("CurrentVelk", "DBase", "LastUpdated", "");
  };
  StartLog(path);
  log.CloseLogRecordset();
  log.OpenLogRecordset();
  const std::string before = onDisk();
  EXPECT_EQ(before, "14-Mar-2026 09:30:00");
  clock.SetNow(clock.Now() + TimeOfDay(1, 0, 0));
  clock.Advance(59'999);
  AppendLogRow();
  EXPECT_EQ(settings.Get("CurrentVelk", "DBase", "LastUpdated", ""), "14-Mar-2026 10:30:59");
  EXPECT_EQ(onDisk(), before);
  clock.Advance(1);
  AppendLogRow();
  EXPECT_EQ(onDisk(), "14-Mar-2026 10:31:00");
  clock.Advance(59'999);
  AppendLogRow();
  EXPECT_EQ(onDisk(), "14-Mar-2026 10:31:00");
  clock.SetNow(clock.Now() + TimeOfDay(1, 0, 0));
  AppendLogRow();
  log.CloseLogRecordset();
  EXPECT_EQ(onDisk(), "14-Mar-2026 11:31:59");
}

TEST_F(LogRows, AreWrittenThoughTheStampCannotBe) {
  StartLog(path);
  std::filesystem::permissions(folder.Path(), std::filesystem::perms(0755));
  std::filesystem::permissions(settingsFolder.Path(), std::filesystem::perms(0555));
  {
    const test::Unprivileged nobody;
    clock.Advance(5000);
    AppendLogRow();
    WriteCurrentVelk(session, platform);
  }
  log.Finalise();
  EXPECT_EQ(Query(path, "SELECT count(*) FROM logData"), (Rows{"1"}));
}

TEST_F(LogRows, AreFoundAgainThroughCurrentVelk) {
  session.LogFileInUse = path;
  WriteCurrentVelk(session, platform);
  SettingsStore reader(settingsFolder.Path().string());
  const auto value = [&](const char* section, const char* key) { return reader.Get("CurrentVelk", section, key, "-"); };
  EXPECT_EQ(value("DBase", "TheFileName"), path);
  EXPECT_EQ(value("DBase", "StartedAt"), "14-Mar-2026 09:30:00");
  EXPECT_EQ(value("DBase", "LastUpdated"), "14-Mar-2026 09:30:00");
  EXPECT_EQ(value("DBase", "NumberOfParameters"), "2");
  EXPECT_EQ(value("Parameters", "Parameter1"), "BLANK");
}

class GraphSettings : public test::LogFixture {
 protected:
  void Describe(std::size_t channel, const std::string& units, double min, double max, std::int32_t color,
                const std::string& format, std::int16_t graph) {
    Parameter& parameter = session.CurrentParameters[channel];
    parameter.units = units;
    parameter.min = min;
    parameter.max = max;
    parameter.color = color;
    parameter.format = format;
    parameter.FormIndex = graph;
  }
  /// The columns that a playback of the log would take.
  std::vector<int> PlayedColumns() const { return ColumnsOfChannels(ReadLogParameters(path, test::English()), path); }
  Rows Stored() {
    return Query(path,
                 "SELECT ParameterName, units, Minimum, Maximum, NumberFormat, GraphNumber, CurveColor FROM "
                 "GraphSettings ORDER BY rowid");
  }
};

TEST_F(GraphSettings, HoldARowAChannelInOrder) {
  NameChannels({"Pressure", "Rate"});
  Describe(1, "kPa", -10, 250.5, 0x00ff00, "0.00", 3);
  Describe(2, "bbl", 0, 5, 255, "#0", 1);
  CreateLog(path);
  EXPECT_EQ(Stored(), (Rows{"Pressure|kPa|-10.0|250.5|0.00|3|65280", "Rate|bbl|0.0|5.0|#0|1|255"}));
}

TEST_F(GraphSettings, GiveEmptyFieldsTheirDefaults) {
  NameChannels({"", ""});
  session.CurrentParameters[2].name = "Rate";
  CreateLog(path);
  EXPECT_EQ(Stored(), (Rows{"Parameter1|Units|0.0|100.0|#0.000|0|0", "Rate|Units|0.0|100.0|#0.000|0|0"}));
  EXPECT_EQ(session.CurrentParameters[1].name, "Parameter1");
  EXPECT_TRUE(session.CurrentParameters[1].GraphVisible);
  EXPECT_EQ(session.CurrentParameters[1].FormIndex, 0) << "a channel on no graph stays on none";
  EXPECT_EQ(session.CurrentParameters[1].max, 0) << "the default of a scale is the row's";
  EXPECT_EQ(Columns(path, "logData"), (Rows{"ID", "Date", "Time", "BLANK1", "Rate"}));
}

TEST_F(GraphSettings, KeepAScaleThatEndsAtZero) {
  NameChannels({"Vacuum"});
  session.CurrentParameters[1].min = -100;
  CreateLog(path);
  EXPECT_EQ(Stored(), (Rows{"Vacuum|Units|-100.0|0.0|#0.000|0|0"}));
}

TEST_F(GraphSettings, AreWrittenOverOnUpdate) {
  NameChannels({"Pressure", "Rate"});
  StartLog(path);
  session.CurrentParameters[1].units = "psi";
  session.CurrentParameters[2].max = 9;
  clock.Advance(61'000);
  log.WriteGraphSettings(true);
  EXPECT_EQ(Stored(), (Rows{"Pressure|psi|0.0|100.0|#0.000|0|0", "Rate|Units|0.0|9.0|#0.000|0|0"}));
  EXPECT_EQ(settings.Get("CurrentVelk", "DBase", "LastUpdated", ""), "14-Mar-2026 09:31:01");
  log.WriteGraphSettings(false);
  EXPECT_EQ(Stored().size(), 4u);
}

TEST_F(GraphSettings, AreUpdatedWholeOrNotAtAll) {
  NameChannels({"Pressure"});
  StartLog(path);
  NameChannels({"Other", "Rate"});
  ErrorOf([&] { log.WriteGraphSettings(true); }, ErrorNumber::NoCurrentRecord);
  EXPECT_EQ(Query(path, "SELECT ParameterName FROM GraphSettings"), (Rows{"Pressure"}));
  NameChannels({"Other"});
  log.WriteGraphSettings(true);
  EXPECT_EQ(Query(path, "SELECT ParameterName FROM GraphSettings"), (Rows{"Other"}));
}

TEST_F(GraphSettings, FollowAChannelThatIsRenamedWhileTheJobIsRecorded) {
  NameChannels({"Pressure", "Rate"});
  StartLog(path);
  session.CurrentParameters[1].name = "Treating Pressure";
  EXPECT_TRUE(log.HoldsPresentChannels()) << "those that it was connected with";
  log.WriteGraphSettings(true);
  EXPECT_EQ(Query(path, "SELECT ParameterName FROM GraphSettings"), (Rows{"Treating Pressure", "Rate"}));
  EXPECT_EQ(PlayedColumns(), (std::vector<int>{0, 1}));
}

TEST_F(GraphSettings, KeepTheNamesOfTheirColumnsWhereOthersWouldPlayTheValuesOfAnotherChannel) {
  NameChannels({"Pressure", "Rate"});
  StartLog(path);
  session.CurrentParameters[1].units = "psi";
  for (const char* second : {"Pressure", "Rate"}) {
    session.CurrentParameters[1].name = "Rate";
    session.CurrentParameters[2].name = second;
    log.WriteGraphSettings(true);
    EXPECT_EQ(Stored(), (Rows{"Pressure|psi|0.0|100.0|#0.000|0|0", "Rate|Units|0.0|100.0|#0.000|0|0"})) << second;
    EXPECT_EQ(PlayedColumns(), (std::vector<int>{0, 1})) << second;
    EXPECT_EQ(session.CurrentParameters[1].name, "Rate") << "the session keeps what was typed";
  }
}

TEST_F(GraphSettings, AreThoseOfTheChannelsThatTheLogWasConnectedWith) {
  NameChannels({"Pressure", "Rate"});
  StartLog(path);
  log.Finalise();
  EXPECT_FALSE(log.HoldsPresentChannels()) << "no log is open";
  NameChannels({"Rate", "Pressure"});
  log.ConnectLogFile(path);
  EXPECT_FALSE(log.HoldsPresentChannels());
  NameChannels({"Pressure", "Rate"});
  EXPECT_FALSE(log.HoldsPresentChannels()) << "renamed meanwhile";
}

TEST_F(GraphSettings, ThatCannotBeReadKeepNoRowOutOfTheLog) {
  NameChannels({"Pressure"});
  StartLog(path);
  log.Finalise();
  Connection::Open(path, OpenMode::ReadWrite)
      ->Execute(
          "DROP TABLE GraphSettings;"
          "CREATE TABLE GraphSettings (ParameterName TEXT PRIMARY KEY) WITHOUT ROWID");
  log.ConnectLogFile(path);
  EXPECT_FALSE(log.HoldsPresentChannels());
  log.OpenLogRecordset();
  AppendLogRow();
  EXPECT_EQ(Query(path, "SELECT count(*) FROM logData"), Rows{"1"});
}

class SummaryInclusionOfALog : public test::LogFixture {};

TEST_F(SummaryInclusionOfALog, IsReadFromTheReportsColumns) {
  NameChannels({"Pressure", "Rate", "BLANK", "Rate.", "Comments", "Date"});
  questions.include = [](SummaryInclusion& inclusion) {
    inclusion.parameters[0].included = true;  // Pressure
    inclusion.parameters[2].included = true;  // "Rate.", whose column is told apart from Rate's
    inclusion.extraFields = {"Tank"};
  };
  StartLog(path);
  for (Parameter& parameter : session.CurrentParameters) parameter.IncludeInSummary = true;
  log.ReadSummaryInclusion();
  std::string included;
  for (std::size_t i = 1; i <= 6; ++i) included += session.CurrentParameters[i].IncludeInSummary ? '1' : '0';
  EXPECT_EQ(included, "100100");
}

TEST_F(SummaryInclusionOfALog, IsEmptyInAFileWithoutAReport) {
  MakeDatabase(path, "CREATE TABLE logData (ID INTEGER PRIMARY KEY, Date DATE, Time DATE)");
  NameChannels({"Pressure"});
  session.CurrentParameters[1].IncludeInSummary = true;
  log.ConnectLogFile(path);
  log.ReadSummaryInclusion();
  EXPECT_FALSE(session.CurrentParameters[1].IncludeInSummary);
}

}  // namespace
}  // namespace velk
