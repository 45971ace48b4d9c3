#pragma once

#include "core/acquisition.h"
#include "core/playback/playback.h"
#include "core/recorder.h"
#include "model/command_binder.h"

namespace velk {

/// Binds the commands of a job: its file, Connect, Start with Pause and Resume, Stop, the recording button.
void BindAcquisition(CommandBinder& commands, Acquisition& acquisition, Recorder& recorder);

/// Binds the command that chooses a file to play back.
void BindPlayback(CommandBinder& commands, Playback& playback);

}  // namespace velk
