#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/loop/system_clock.h"
#include "platform/settings/settings.h"
#include "shell/application.h"
#include "support/child_program.h"
#include "support/scripted_dialogs.h"
#include "support/scripted_job_questions.h"
#include "support/temporary_folder.h"

namespace velk::test {

/// A row of a log.
struct LogRow {
  double dateTime = 0;  ///< days
  std::vector<double> values;
};

/// The program as main() builds it, on the machine's own clock, serial ports and network, against a simulator that is
/// a process of its own. Only the boxes are scripted.
class ProgramRig {
 public:
  ProgramRig();
  ~ProgramRig();

  /// Starts velk_sim_`name` with a journal; gives the first line that it prints: a device, or an address.
  std::string StartSimulator(const std::string& name, std::vector<std::string> arguments);

  /// A setting as the program finds it at start-up.
  void Set(const std::string& section, const std::string& key, const std::string& value);
  /// Channels on one graph. The first is scaled by 2.5 and -10, the second by 0.1 and 0.3, the others not at all; a
  /// sample is significant however little it differs from the one before.
  void SetChannels(int count);

  /// Start-up.
  void StartProgram();
  void Press(const char* button) { application->Window().Button(button)->trigger(); }
  std::string_view Status() { return application->State().CurrentStatus.english; }
  /// Connect, and the choice of the log.
  void Connect();
  /// Start; notes the times ahead of it and behind it.
  void StartJob();
  /// Stop.
  void StopJob();
  /// File, Exit.
  void Exit();

  /// Lets the program run until this holds, then does `then`; false when it does not hold within the time. Both are
  /// called from the event loop, as clicks are: the program may be waiting for its instrument meanwhile.
  bool RunUntil(const std::function<bool()>& holds, int milliseconds, const std::function<void()>& then = {});
  void RunFor(int milliseconds);
  long long Rows() { return application->RowsRecorded(); }
  /// Holds once the simulator has sent so many frames and no further row comes.
  std::function<bool()> AllIsLogged(std::size_t frames);
  /// The same; each frame is asked for when the program has had the time to wait for it.
  std::function<bool()> AllIsLoggedStepByStep(std::size_t frames);

  std::vector<SentFrame> Journal() const { return ReadJournal(folder.File("sent")); }
  /// Seconds since 1970, by the clock that the journals are kept by.
  static double Seconds();
  double StartedAt() const { return startedAt_; }
  double RunningAt() const { return runningAt_; }

  /// The rows of the log, as any reader finds them once the job is over.
  std::vector<LogRow> LogRows() const;
  std::string LogPath() const { return folder.File("job.mdb"); }

  TemporaryFolder folder;
  Gate gate;
  SystemClock clock{gate};
  Translation translation;
  ScriptedDialogs dialogs{gate, translation.Translator};
  ScriptedJobQuestions questions;
  SettingsStore settings{folder.File("settings")};
  std::string devices = "/dev";  ///< where the program looks for serial devices
  std::unique_ptr<ChildProgram> simulator;
  std::unique_ptr<Application> application;

 private:
  double startedAt_ = 0, runningAt_ = 0;
};

/// What the log holds for a value that was sent on a channel of SetChannels.
double Logged(double sent, std::size_t channel);

}  // namespace velk::test
