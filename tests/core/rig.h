#pragma once

#include <filesystem>
#include <string>

#include "core/acquisition.h"
#include "model/status.h"
#include "platform/settings/settings.h"
#include "support/fake_clock.h"
#include "support/fake_graphs.h"
#include "support/fake_opc.h"
#include "support/fake_serial_port.h"
#include "support/recording_view.h"
#include "support/scripted_dialogs.h"
#include "support/scripted_job_questions.h"
#include "support/scripted_pages.h"
#include "support/temporary_folder.h"

namespace velk::test {

/// The whole road below the windows, on a clock that stands still: a KESTA unit of three channels on three graphs'
/// worth of curves, a real log in a folder of its own, fake graph windows.
class Rig {
 public:
  Rig();

  /// Connect, with the unit's first line coming in while Connect waits.
  void Connect();
  void ConnectAndStart();
  /// Chooses a file, so that Start records.
  void ChooseFile(const std::string& name = "job.mdb");
  std::string Path(const std::string& name) const { return folder.File(name); }

  /// A line of the unit: the present time and three values of equal width.
  std::string Line(double a, double b, double c) const;
  /// The line reaches the road as the driver would bring it, a second after the last one.
  void Sample(double a, double b, double c);
  /// Rows of logData, with their three values.
  struct Row {
    double date, time, a, b, c;
  };
  std::vector<Row> Rows(const std::string& path) const;

  TemporaryFolder folder;
  Session session;
  Gate gate;
  FakeClock clock{gate};
  ScriptedDialogs dialogs{gate};
  SettingsStore settings{folder.File("settings")};
  Platform platform{clock, gate, dialogs, settings, English()};
  RecordingView view;
  MainTimers timers{clock};
  FakeGraphs graphs{session};
  ScriptedJobQuestions questions;
  FakeDevice plainPort;  ///< the first port that Link makes
  FakeDevice linePort;   ///< the second one
  Link link;
  JobFiles jobFiles{session, platform, questions, graphs};
  LogWriter log{session, platform};
  Recorder recorder{session, platform, view, log, jobFiles};
  SampleRoad road{session, platform, view, recorder};
  ScriptedPages* pages = new ScriptedPages(clock);  ///< owned by sources
  FakeOpc opc;
  VELKOPCModule opcItems{opc, clock, settings};
  SampleSources sources{session, platform, timers, link, road, std::unique_ptr<PageFetch>(pages), view, opcItems};
  Playback playback{session, platform, timers, view, graphs};
  Acquisition acquisition{session, platform, view, graphs, link, recorder, road, sources, playback};
};

}  // namespace velk::test
