#pragma once

#include <QMdiArea>

#include "graphs/windows/graph_windows_mdi.h"
#include "i18n/windows/window_host.h"
#include "log/log_writer.h"
#include "log/open_log.h"
#include "model/session.h"
#include "platform/settings/settings.h"
#include "support/fake_clock.h"
#include "support/memory_folder.h"
#include "support/recording_graphs.h"
#include "support/scripted_dialogs.h"
#include "support/temporary_folder.h"

namespace velk::test {

/// What windows are opened on: a session in a language with seven channels on one graph, two of them computed and three
/// of them out of their limits, as a crew would name them.
struct SampleJob {
  explicit SampleJob(const std::string& language);

  bool IsRussian() const { return !translation.Languages.IsEmpty(); }
  std::string Pick(const char* english, const char* russian) const { return IsRussian() ? russian : english; }
  /// The strip-chart window of the job, in a client area on the screen.
  QWidget& OpenGraph(QSize size);
  /// The same while a comment is entered.
  QWidget& OpenComment(QSize size);
  /// The same ten minutes into its recording, with the page of the third minute in view.
  QWidget& OpenHistory(QSize size);
  /// Records the job to a file of its own, with so many lines in its summary report.
  void Record(int lines);

  Translation translation;
  Gate gate;
  FakeClock clock{gate};
  ScriptedDialogs dialogs{gate, translation.Translator};
  WindowHost host{dialogs, translation};
  MemoryFolder settingsFolder;
  SettingsStore settings{settingsFolder.Path()};
  Platform platform{clock, gate, dialogs, settings, translation.Translator};
  RecordingGraphs graphs;
  Session session;
  QMdiArea area;
  TemporaryFolder folder;
  LogWriter log{session, platform};
  OpenLog open{session, platform, log};
  ScreenRefresh refresh{clock};
  GraphWindowsMdi graphWindows{session, platform, translation, area, refresh, {}, &open};

 private:
  void Add(const std::string& name, const std::string& units, std::int32_t color, float value);
};

}  // namespace velk::test
