#pragma once

#include "core/acquisition.h"
#include "core/recorder.h"
#include "model/command_binder.h"

namespace velk {

/// Binds the commands of a job: its file, Connect, Start with Pause and Resume, Stop, the recording button.
void BindAcquisition(CommandBinder& commands, Acquisition& acquisition, Recorder& recorder);

}  // namespace velk
