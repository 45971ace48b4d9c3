#pragma once

#include <functional>
#include <memory>

#include "base/operator_text.h"
#include "core/acquisition.h"
#include "core/sample_road.h"
#include "core/sources/sample_sources.h"
#include "instruments/link/link.h"
#include "model/command_binder.h"
#include "model/graph_window.h"
#include "model/session.h"
#include "platform/loop/clock.h"
#include "platform/platform.h"
#include "shell/main_form.h"

namespace velk {

/// The ways out of the program: Exit, the window's frame, and changes that need a new start.
class ShutDown {
 public:
  /// What is brought to its end.
  struct Parts {
    Session& session;
    Platform& platform;
    MainForm& form;
    GraphWindows& graphs;
    Link& link;
    SampleRoad& road;
    SampleSources& sources;
    Acquisition& acquisition;
    Playback& playback;
  };
  explicit ShutDown(const Parts& parts);

  void Bind(CommandBinder& commands);
  /// The usual exit without its question.
  void SaveAndEnd();

  /// What else goes with the program: the question tells it. Empty: nothing.
  std::function<OperatorText()> alsoLost;

 private:
  void mnuFileExit_Click();
  bool MDIForm_QueryUnload();
  void MDIForm_Unload();
  bool IsSureToExit();
  /// What runs is on the stack below the close of the frame.
  bool IsAnythingRunning() const;
  /// Saves the settings while boxes can still tell that they could not be saved; once.
  void SaveAtEnd();
  /// Stop's work for a job that still runs; a playback ends without its box.
  void StopWhatRuns();
  /// The same, then the link; once.
  void EndJob();

  Parts parts_;
  std::unique_ptr<Timer> closeAgain_;  ///< while something still runs at exit
  bool settingsSaved_ = false;
  bool jobEnded_ = false;
};

}  // namespace velk
