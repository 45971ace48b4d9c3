#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "graphs/chart_fixture.h"
#include "log/channels.h"
#include "log/log_writer.h"
#include "log/open_log.h"
#include "model/texts.h"
#include "platform/database/connection.h"
#include "platform/settings/settings.h"
#include "support/fake_clock.h"
#include "support/memory_folder.h"
#include "support/scripted_dialogs.h"
#include "support/temporary_folder.h"

namespace velk::test {

/// A job that records curves on graph 3, one row a second from JobStart on. The clock stands at its start.
struct RecordedJob {
  explicit RecordedJob(int curveCount = 1) {
    GiveCurves(session, curveCount);
    session.FitGraphsToWindows = false;  // 15 twips a dot, so that places can be told
    session.TotalParameters = session.NumberOfParameters;
    session.SamplingRate = kSecond;
    session.SampleSeconds = 1;
    session.Times.BlockPairsPerPage = 1;
    session.StartTime = session.Times.GraphPageTime = session.Times.GraphEndTime = JobStart();
    session.AcquisitionMode = session.AcquireStarted = session.RecordToDB = true;
    log.CreateLogFile(path);
    log.ConnectLogFile(path);
    log.OpenLogRecordset();
    session.LogFileInUse = path;
  }

  /// A row of these values so many seconds behind the start.
  void Append(double second, std::vector<double> values) {
    log.AppendLogRow({JobStart() + second * kSecond, std::move(values)});
  }
  /// Rows of all seconds from `first` to `last`; each curve has the seconds since the start, of 100.
  void Record(int first, int last) {
    Transaction all(*log.Writing());
    for (int second = first; second <= last; ++second)
      Append(second, std::vector<double>(static_cast<std::size_t>(session.NumberOfParameters), second % 100));
    all.Commit();
  }
  /// A comment so many seconds behind the start.
  void Comment(double second, const std::string& comment) {
    clock.SetNow(JobStart() + second * kSecond);
    open.AddSummaryRow(comment);
  }
  /// A computed channel on the graph, behind the inputs.
  void Compute(const std::string& formula) {
    session.Formula.push_back(formula);
    session.NumberOfFormulae = static_cast<std::int16_t>(session.Formula.size() - 1);
    session.AdditionalParameters.resize(session.Formula.size());
    const int parameter = session.NumberOfParameters + session.NumberOfFormulae;
    session.TotalParameters = static_cast<std::int16_t>(parameter);
    session.CurrentParameters[parameter] = session.CurrentParameters[1];
    session.CurrentParameters[parameter].name = "Computed " + std::to_string(session.NumberOfFormulae);
    BuildGraphMap(session, parameter);
  }

  /// The file of two curves plays, with its columns under each other's names.
  void PlayWithColumnsTurned() {
    log.Finalise();
    Connection::Open(path, OpenMode::ReadWrite)
        ->Execute(
            "ALTER TABLE logData RENAME COLUMN \"Pressure 1\" TO turned;"
            "ALTER TABLE logData RENAME COLUMN \"Pressure 2\" TO \"Pressure 1\";"
            "ALTER TABLE logData RENAME COLUMN turned TO \"Pressure 2\"");
    session.AcquireStarted = session.AcquisitionMode = session.RecordToDB = false;
    for (int i = 1; i <= session.NumberOfParameters; ++i) session.CurrentParameters[i].Gain = 1;
    session.CurrentStatus = text::StatusPlayingBack;
  }

  TemporaryFolder folder;
  Gate gate;
  FakeClock clock{gate};
  ScriptedDialogs dialogs{gate};
  MemoryFolder settingsFolder;
  SettingsStore settings{settingsFolder.Path()};
  Platform platform{clock, gate, dialogs, settings, English()};
  Session session;
  LogWriter log{session, platform};
  OpenLog open{session, platform, log};
  std::string path = folder.File("run.mdb");
};

}  // namespace velk::test
