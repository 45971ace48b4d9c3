#pragma once

#include "shell/shell_rig.h"

namespace velk::test {

/// The whole program, started in a language from the translation files beside the test.
struct SampleProgram {
  enum class State {
    Ready,        ///< as after the start
    Recording,    ///< a job of three channels runs and records, one of them out of its limits
    PlayingBack,  ///< the log of such a job is played back
  };

  SampleProgram(const std::string& language, State state);

  ShellRig rig;

 private:
  void NameChannels(bool russian);
  void StartRecording();
  void StartPlayback();
};

}  // namespace velk::test
