#include "core/commands.h"

namespace velk {

void BindAcquisition(CommandBinder& commands, Acquisition& acquisition, Recorder& recorder) {
  commands.Bind("mnuFileRecord", [&] { recorder.mnuFileRecord_Click(); });
  commands.Bind("mnuAcquireConnect", [&] { acquisition.mnuAcquireConnect_Click(); });
  commands.Bind("mnuAcquireStart", [&] { acquisition.mnuAcquireStart_Click(); });
  commands.Bind("mnuAcquireStop", [&] { acquisition.mnuAcquireStop_Click(); });
  commands.Bind("mnuAcquireRecord", [&] { acquisition.RecordToDB_Click(); });
}

void BindPlayback(CommandBinder& commands, Playback& playback) {
  commands.Bind("mnuFilePlayback", [&] { playback.mnuFilePlayback_Click(); });
}

}  // namespace velk
