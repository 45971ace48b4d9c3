#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "base/dates.h"
#include "core/rig.h"
#include "model/texts.h"
#include "platform/database/connection.h"

namespace velk::test {

/// Files that are played back: recorded by the rig's own unit, or made as another program would have left them.
class PlaybackFixture : public testing::Test {
 protected:
  PlaybackFixture() {
    for (Parameter& saved : rig.session.PlaybackParameters) saved.Gain = 1;  // what the settings give
  }

  static constexpr double kSecond = 1.0 / 86400;
  static constexpr const char* kNoSettings = "Graph settings does not exist";
  /// When the rig's clock starts, and every job with it.
  const double start = DateSerial(2026, 3, 14) + TimeOfDay(9, 30, 0);

  /// A job of the unit, a row a second from 09:30:01 on; row n has the values n, 10 n, 100 n.
  std::string Record(int rows, const std::string& name = "job.mdb") {
    rig.Connect();
    rig.ChooseFile(name);
    rig.acquisition.mnuAcquireStart_Click();
    for (int row = 1; row <= rows; ++row) rig.Sample(row, 10 * row, 100 * row);
    rig.acquisition.mnuAcquireStop_Click();
    return rig.Path(name);
  }

  /// A file that was made by these statements.
  std::string Make(const std::string& name, const std::string& sql) {
    const auto connection = Connection::Open(rig.Path(name), OpenMode::CreateNew);
    connection->Execute(sql);
    return rig.Path(name);
  }
  /// logData of another program, with columns for channels and rows of seconds behind 09:30:00 and values.
  static std::string Rows(const std::string& columns, const std::vector<std::pair<int, std::string>>& rows) {
    std::string sql = "CREATE TABLE logData (ID INTEGER PRIMARY KEY, Date DATE, Time DATE, " + columns + ");";
    for (const auto& [seconds, values] : rows)
      sql += "INSERT INTO logData VALUES (NULL, 46095, (34200.0 + " + std::to_string(seconds) + ") / 86400, " + values +
             ");";
    return sql;
  }

  /// Chooses a file; a box with `told` comes up meanwhile, where that is given.
  void Choose(const std::string& path, const std::string& told = {}, Answer answer = Answer::Ok) {
    rig.dialogs.ExpectOpenFile(path);
    if (!told.empty()) rig.dialogs.Expect(told, answer);
    rig.playback.mnuFilePlayback_Click();
  }
  void Press() { rig.acquisition.mnuAcquireStart_Click(); }
  void Stop() { rig.acquisition.mnuAcquireStop_Click(); }
  /// Plays to the end, at a row a tick.
  void PlayAll() {
    rig.dialogs.Expect("End of playback", Answer::Ok);
    Press();
    for (int tick = 0; tick < 10000 && StatusIs(rig.session, text::StatusPlayingBack); ++tick) Tick();
  }
  void Tick() { rig.clock.Advance(rig.timers.Timer3->Interval()); }
  void ExpectReady() {
    EXPECT_EQ(rig.session.CurrentStatus.english, "Ready");
    EXPECT_FALSE(rig.timers.Timer3->Enabled());
    EXPECT_FALSE(rig.playback.IsOpen());
    EXPECT_EQ(rig.session.NumberOfParameters, 3) << "the unit's";
  }
  static std::string BytesOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  Rig rig;
};

}  // namespace velk::test
