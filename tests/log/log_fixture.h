#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "log/channels.h"
#include "log/job_files.h"
#include "log/log_writer.h"
#include "model/session.h"
#include "platform/database/command.h"
#include "platform/database/connection.h"
#include "platform/loop/gate.h"
#include "platform/platform.h"
#include "platform/settings/settings.h"
#include "support/fake_clock.h"
#include "support/recording_graphs.h"
#include "support/scripted_dialogs.h"
#include "support/scripted_job_questions.h"
#include "support/temporary_folder.h"

namespace velk::test {

/// A session with a log in a folder of its own. The clock stands at 14 March 2026, 09:30:00.
class LogFixture : public testing::Test {
 protected:
  void NameChannels(const std::vector<std::string>& names) {
    session.NumberOfParameters = static_cast<std::int16_t>(names.size());
    for (std::size_t i = 0; i < names.size(); ++i) session.CurrentParameters[i + 1].name = names[i];
  }

  /// Asks as a recording does before it makes its file, and makes it.
  void CreateLog(const std::string& file) {
    files.AskForNewFile(file);
    log.CreateLogFile(file);
  }

  /// Appends the present values, under the present time or another one.
  void AppendLogRow(std::optional<double> at = {}) { log.AppendLogRow(PresentRow(session, at.value_or(clock.Now()))); }

  /// Makes a log of the present channels, opened for rows.
  void StartLog(const std::string& file) {
    CreateLog(file);
    log.ConnectLogFile(file);
    session.LogFileInUse = file;
    log.OpenLogRecordset();
  }

  /// The rows of a query, fields as texts between "|"; through a connection of its own.
  static std::vector<std::string> Query(const std::string& file, const std::string& sql) {
    const auto connection = Connection::Open(file, OpenMode::ReadOnly);
    Command command(*connection, sql);
    std::vector<std::string> rows;
    while (command.Next()) {
      std::string row;
      for (int i = 0; i < command.ColumnCount(); ++i) row += (i == 0 ? "" : "|") + command.Text(i);
      rows.push_back(row);
    }
    return rows;
  }

  static std::vector<std::string> Columns(const std::string& file, const std::string& table) {
    return Query(file, "SELECT name FROM pragma_table_info('" + table + "')");
  }

  /// Makes a database with other tables than a log's, or none of its columns.
  static void MakeDatabase(const std::string& file, const std::string& sql) {
    const auto connection = Connection::Open(file, OpenMode::CreateNew);
    connection->Execute(sql);
  }

  std::string ErrorOf(const std::function<void()>& statement, ErrorNumber number) {
    try {
      statement();
    } catch (const RuntimeError& error) {
      EXPECT_EQ(static_cast<int>(error.Number()), static_cast<int>(number)) << error.what();
      return error.what();
    }
    ADD_FAILURE() << "no error";
    return {};
  }

  std::vector<std::string> FilesInFolder() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder.Path()))
      names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
  }

  TemporaryFolder folder;
  TemporaryFolder settingsFolder;
  Gate gate;
  FakeClock clock{gate};
  ScriptedDialogs dialogs{gate};
  SettingsStore settings{settingsFolder.Path().string()};
  Platform platform{clock, gate, dialogs, settings, English()};
  Session session;
  ScriptedJobQuestions questions;
  RecordingGraphs graphs;
  JobFiles files{session, platform, questions, graphs};
  LogWriter log{session, platform};
  std::string path = folder.File("run.mdb");
};

}  // namespace velk::test
