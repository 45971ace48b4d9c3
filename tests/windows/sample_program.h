#pragma once

#include "shell/shell_rig.h"

namespace velk::test {

/// The whole program, started in a language from the translation files beside the test.
struct SampleProgram {
  enum class State {
    Ready,        ///< as after the start
    Recording,    ///< a job of three channels runs and records, one of them out of its limits
    LookingBack,  ///< such a job runs for seven minutes, and one of its two windows shows the second
    PlayingBack,  ///< the log of such a job is played back
  };

  SampleProgram(const std::string& language, State state);

  ShellRig rig;

 private:
  const bool russian_;

  void NameChannels();
  void StartRecording();
  void StartPlayback();
  void StartJob();
  void LookBack();
  void Comment(const char* english, const char* russian);
};

}  // namespace velk::test
