// Files of every kind, played back or refused in one box.

#include <chrono>
#include <cmath>

#include "core/playback/playback.h"
#include "core/playback_fixture.h"
#include "log/log_writer.h"

namespace velk {
namespace {

class PlaybackFiles : public test::PlaybackFixture {
 protected:
  /// The file is refused: the box tells why, and nothing has changed.
  void ExpectRefused(const std::string& path, const std::string& told) {
    rig.session.LogFileInUse = "before.mdb";
    rig.session.SampleSeconds = 7;
    rig.session.AcquisitionMode = true;
    const auto channels = rig.session.CurrentParameters;
    Choose(path, told, Answer::Cancel);
    EXPECT_EQ(rig.dialogs.shown.size(), ++boxes_);
    ExpectReady();
    EXPECT_EQ(rig.session.LogFileInUse, "before.mdb");
    EXPECT_EQ(rig.view.panels[2], "Current File: before.mdb");
    EXPECT_EQ(rig.session.SampleSeconds, 7);
    EXPECT_TRUE(rig.session.AcquisitionMode);
    EXPECT_EQ(rig.session.CurrentParameters[1].name, channels[1].name);
    EXPECT_EQ(rig.graphs.creations, 0);
  }

 private:
  std::size_t boxes_ = 0;
};

constexpr const char* kSettingsOfAAndB =
    "CREATE TABLE GraphSettings (ParameterName, units, Minimum, Maximum, NumberFormat, GraphNumber, CurveColor);"
    "INSERT INTO GraphSettings VALUES ('A', 'bar', -5, 250, '0.0', 4, 255), ('B', 'l', 0, 10, '0', 4, 65280);";

TEST_F(PlaybackFiles, OfOtherChannelsPlayOnGraphsOfTheirOwn) {
  Choose(Make("other.mdb", Rows("A DOUBLE, B DOUBLE", {{0, "11, 12"}, {2, "21, 22"}}) + kSettingsOfAAndB));
  const Parameter& first = rig.session.CurrentParameters[1];
  EXPECT_EQ(first.name, "A");
  EXPECT_EQ(first.units, "bar");
  EXPECT_EQ(first.min, -5);
  EXPECT_EQ(first.max, 250);
  EXPECT_EQ(first.format, "0.0");
  EXPECT_EQ(first.color, 255);
  EXPECT_EQ(first.FormIndex, 4);
  EXPECT_TRUE(first.GraphVisible);
  EXPECT_EQ(rig.session.GraphCount, 1);
  EXPECT_EQ(rig.session.GraphCurveCount[4], 2) << "both on one graph";
  EXPECT_EQ(rig.session.PlaybackParameters[2].name, "B") << "saved for the next time";
  EXPECT_EQ(rig.session.Parameters[1].name, "Channel 1") << "the unit's are left";
  PlayAll();
  ASSERT_EQ(rig.graphs.windows[4].plots.size(), 4u);
  EXPECT_EQ(rig.graphs.windows[4].plots[3].value, 22.0f);
}

TEST_F(PlaybackFiles, WithoutGraphSettingsSaySoOnceAndPlayUnderTheNamesOfTheirColumns) {
  Choose(Make("plain.mdb", Rows("Depth DOUBLE, Rate DOUBLE", {{0, "1, 2"}, {1, "3, 4"}})), kNoSettings);
  EXPECT_EQ(rig.session.CurrentParameters[1].name, "Depth");
  EXPECT_EQ(rig.session.CurrentParameters[2].name, "Rate");
  EXPECT_EQ(rig.session.CurrentParameters[2].max, 100);
  EXPECT_EQ(rig.session.CurrentParameters[2].FormIndex, 2);
  PlayAll();
  EXPECT_EQ(rig.graphs.windows[2].labels[2], 4.0f);
}

TEST_F(PlaybackFiles, WithoutGraphSettingsTakeWhatWasSavedUnderTheirNames) {
  Parameter& saved = rig.session.PlaybackParameters[9];
  saved.name = "Rate";
  saved.units = "l/min";
  saved.max = 800;
  saved.color = 0x112233;
  saved.Gain = 10;
  Choose(Make("plain.mdb", Rows("Depth DOUBLE, Rate DOUBLE", {{0, "1, 2"}, {1, "3, 4"}})), kNoSettings);
  const Parameter& rate = rig.session.CurrentParameters[2];
  EXPECT_EQ(rate.units, "l/min");
  EXPECT_EQ(rate.max, 800);
  EXPECT_EQ(rate.color, 0x112233);
  EXPECT_EQ(rate.format, "#0.000") << "what was never saved has its default";
  EXPECT_EQ(rate.FormIndex, 2);
  PlayAll();
  EXPECT_EQ(rig.graphs.windows[2].labels[2], 40.0f);
}

TEST_F(PlaybackFiles, BlankChannelsAreNotShown) {
  Choose(Make("blank.mdb", Rows("BLANK1 DOUBLE, B DOUBLE", {{0, "1, 2"}, {1, "3, 4"}}) +
                               "CREATE TABLE GraphSettings (ParameterName);"
                               "INSERT INTO GraphSettings VALUES ('BLANK'), ('B')"));
  EXPECT_FALSE(rig.session.CurrentParameters[1].GraphVisible);
  EXPECT_EQ(rig.session.GraphCount, 1);
  PlayAll();
  EXPECT_EQ(rig.graphs.windows.count(1), 0u);
}

TEST_F(PlaybackFiles, TheReportTellsWhichChannelsItHas) {
  Choose(Make("report.mdb", Rows("A DOUBLE, B DOUBLE", {{0, "1, 2"}, {1, "3, 4"}}) + kSettingsOfAAndB +
                                "CREATE TABLE SummaryReport (Date DATE, Time DATE, B DOUBLE, Comments LONGTEXT)"));
  EXPECT_FALSE(rig.session.CurrentParameters[1].IncludeInSummary);
  EXPECT_TRUE(rig.session.CurrentParameters[2].IncludeInSummary);
}

TEST_F(PlaybackFiles, OfOneRowPlayThatRowAtASecond) {
  Choose(Make("one.mdb", Rows("A DOUBLE, B DOUBLE", {{30, "5, 6"}}) + kSettingsOfAAndB));
  EXPECT_EQ(rig.session.SampleSeconds, 1);
  PlayAll();
  EXPECT_EQ(rig.graphs.windows[4].plots.size(), 2u);
  ExpectReady();
}

TEST_F(PlaybackFiles, WithoutARowAreRefused) {
  ExpectRefused(Make("empty.mdb", Rows("A DOUBLE, B DOUBLE", {}) + kSettingsOfAAndB), "nothing to play back");
}

TEST_F(PlaybackFiles, WithoutAChannelAreRefused) {
  ExpectRefused(Make("bare.mdb",
                     "CREATE TABLE logData (ID INTEGER PRIMARY KEY, Date DATE, Time DATE);"
                     "INSERT INTO logData VALUES (1, 46095, 0.5)"),
                "nothing to play back");
}

TEST_F(PlaybackFiles, ThatLackAColumnAreRefusedByItsName) {
  ExpectRefused(Make("lacks.mdb", Rows("A DOUBLE", {{0, "1"}, {1, "2"}}) + kSettingsOfAAndB),
                "The log has no column B");
}

TEST_F(PlaybackFiles, ThatLackTheDateAreRefused) {
  ExpectRefused(Make("dateless.mdb",
                     "CREATE TABLE logData (ID INTEGER PRIMARY KEY, Time DATE, A DOUBLE);"
                     "INSERT INTO logData VALUES (1, 0.5, 7)"),
                "The log has no column Date");
}

TEST_F(PlaybackFiles, WhoseFirstRowsHaveNoTimeAreRefused) {
  ExpectRefused(Make("timeless.mdb",
                     "CREATE TABLE logData (ID INTEGER PRIMARY KEY, Date DATE, Time DATE, A DOUBLE);"
                     "INSERT INTO logData VALUES (1, NULL, 0.5, 7), (2, 'soon', 0.5, 7)"),
                "Row 1 of the log has no date and time");
}

TEST_F(PlaybackFiles, WhoseGraphsCannotBeMadeLeaveTheUnitsChannels) {
  rig.graphs.onCreate = [] { throw RuntimeError(ErrorNumber::Overflow); };
  rig.session.NumberOfParameters = rig.session.TotalParameters = 3;
  Choose(Make("two.mdb", Rows("A DOUBLE, B DOUBLE", {{0, "1, 2"}, {1, "1, 2"}}) + kSettingsOfAAndB), "Overflow",
         Answer::Cancel);
  ExpectReady();
  EXPECT_FALSE(ShowsFile(rig.session)) << "edits are the unit's again";
  EXPECT_EQ(rig.session.NumberOfParameters, 3);
}

TEST_F(PlaybackFiles, ThatAreNoLogAreRefused) {
  ExpectRefused(Make("music.mdb", "CREATE TABLE music (title TEXT)"), "logData");
}

TEST_F(PlaybackFiles, ThatAreNoDatabaseAreRefused) {
  const std::string path = rig.Path("letter.mdb");
  std::ofstream(path) << "Dear operator, this is a letter and no database. " << std::string(4000, 'x');
  ExpectRefused(path, "letter.mdb");
  EXPECT_EQ(rig.dialogs.shown.back().title, "Open playback file ... error");
}

TEST_F(PlaybackFiles, ThatAreFoldersAreRefused) {
  std::filesystem::create_directory(rig.Path("folder.mdb"));
  ExpectRefused(rig.Path("folder.mdb"), "folder.mdb");
}

TEST_F(PlaybackFiles, WithColumnsInAnotherOrderPlayThemByTheirNames) {
  Choose(Make("turned.mdb",
              Rows("B DOUBLE, Extra DOUBLE, A DOUBLE", {{0, "2, 9, 1"}, {1, "4, 9, 3"}}) + kSettingsOfAAndB));
  PlayAll();
  EXPECT_EQ(rig.graphs.windows[4].labels[1], 3.0f);
  EXPECT_EQ(rig.graphs.windows[4].labels[2], 4.0f);
}

TEST_F(PlaybackFiles, WithAStrangeColumnLeaveACurveOpenWhereItHasNoNumber) {
  Choose(Make("strange.mdb", Rows("A, B DOUBLE", {{0, "'high', 1"}, {1, "NULL, 2"}, {2, "7, 3"}}) + kSettingsOfAAndB));
  PlayAll();
  const auto& plots = rig.graphs.windows[4].plots;
  ASSERT_EQ(plots.size(), 6u);
  EXPECT_TRUE(std::isnan(plots[0].value) && std::isnan(plots[2].value));
  EXPECT_EQ(plots[4].value, 7.0f);
  EXPECT_EQ(plots[5].value, 3.0f);
}

TEST_F(PlaybackFiles, WithGapsAmongTheirRowsTellTheRowsThatAreThere) {
  Choose(Make("gaps.mdb",
              Rows("A DOUBLE", {{0, "1"}, {1, "2"}, {2, "3"}, {3, "4"}}) + "DELETE FROM logData WHERE ID IN (1, 3)"),
         kNoSettings);
  Press();
  Tick();
  EXPECT_EQ(rig.view.panels[6], "Row 1 of 2");
  Tick();
  EXPECT_EQ(rig.view.panels[6], "Row 2 of 2");
  EXPECT_EQ(rig.session.PlaybackRow, 4);
}

TEST_F(PlaybackFiles, CatchUpWithAGapOfTheirTimesAndTakeTheBarsAlong) {
  Choose(Make("gap.mdb", Rows("A DOUBLE, B DOUBLE", {{0, "1, 1"}, {1, "2, 2"}, {3650, "3, 3"}}) + kSettingsOfAAndB));
  Press();
  const auto& window = rig.graphs.windows[4];
  for (int row = 0; row < 2; ++row) Tick();
  EXPECT_EQ(window.blocks.size(), 1u);
  Tick();
  // Blocks of 120 s: the row stands in that from 3600 to 3720 s, and the one ahead of it was drawn on the way.
  const auto end = [&](std::size_t fromBack) { return window.blocks[window.blocks.size() - fromBack].second; };
  EXPECT_NEAR(end(1), start + 3720 * kSecond, kSecond / 1000);
  EXPECT_NEAR(end(2), start + 3600 * kSecond, kSecond / 1000);
  EXPECT_NEAR(rig.session.Times.GraphEndTime, start + 3720 * kSecond, kSecond / 1000);
  ASSERT_EQ(window.scrolls.size(), 2u);
  EXPECT_NEAR(window.scrolls[0], start + 120 * kSecond, kSecond / 1000);
  EXPECT_NEAR(window.scrolls[1], start + 3720 * kSecond, kSecond / 1000);
}

TEST_F(PlaybackFiles, ARowWithoutATimeIsToldByItsNumber) {
  Choose(Make("hole.mdb", Rows("A DOUBLE, B DOUBLE", {{0, "1, 1"}, {1, "2, 2"}}) +
                              "INSERT INTO logData VALUES (NULL, NULL, NULL, 3, 3);" + kSettingsOfAAndB));
  Press();
  Tick();
  Tick();
  rig.dialogs.Expect("Row 3 of the log has no date and time", Answer::Cancel);
  Tick();
  rig.dialogs.Expect("Playback is Stopped", Answer::Ok);
  Tick();
  ExpectReady();
}

// --- Left as they are ---

TEST_F(PlaybackFiles, KeepTheirBytesAndTheTimeOfTheirLastChange) {
  const std::string file = Record(5);
  const std::string bytes = BytesOf(file);
  const auto longAgo = std::filesystem::file_time_type::clock::now() - std::chrono::hours(100);
  std::filesystem::last_write_time(file, longAgo);
  Choose(file);
  rig.graphs.Rebuild(1);
  PlayAll();
  EXPECT_EQ(BytesOf(file), bytes);
  EXPECT_EQ(std::filesystem::last_write_time(file), longAgo);
  EXPECT_FALSE(std::filesystem::exists(file + "-wal") || std::filesystem::exists(file + "-lock"));
}

TEST_F(PlaybackFiles, ThatACrashLeftBehindPlayWithAllTheirRows) {
  const std::string file = Record(3);
  // The write-ahead log stays beside the file, as behind a program that died.
  const auto recording = Connection::Open(file, OpenMode::ReadWrite);
  recording->BeginRecording();
  recording->Execute(
      "INSERT INTO logData SELECT NULL, Date, Time + 3.0 / 86400, [Channel 1], [Channel 2], [Channel 3] "
      "FROM logData");
  std::filesystem::copy_file(file, rig.Path("left.mdb"));
  std::filesystem::copy_file(file + "-wal", rig.Path("left.mdb-wal"));
  Choose(rig.Path("left.mdb"));
  PlayAll();
  EXPECT_EQ(rig.session.PlaybackRow, 6);
}

TEST_F(PlaybackFiles, ThatAreBeingRecordedPlayUpToTheLastRow) {
  const std::string file = Record(2);
  Session job;
  job.NumberOfParameters = 3;
  LogWriter writer(job, rig.platform);
  writer.ConnectLogFile(file);
  writer.OpenLogRecordset();
  const auto append = [&](int second) { writer.AppendLogRow({start + second * kSecond, {1.0 * second, 0, 0}}); };
  append(3);
  Choose(file);
  Press();
  for (int row = 1; row <= 3; ++row) Tick();
  EXPECT_EQ(rig.view.panels[6], "Row 3 of 3");
  append(4);  // behind what was the last row when it was played
  Tick();
  EXPECT_EQ(rig.session.PlaybackRow, 4);
  EXPECT_EQ(rig.view.panels[6], "Row 4 of 4");
  rig.dialogs.Expect("End of playback", Answer::Ok);
  Tick();
  append(5);
  writer.Finalise();
  EXPECT_EQ(rig.Rows(file).size(), 5u) << "the recording was not disturbed";
}

}  // namespace
}  // namespace velk
