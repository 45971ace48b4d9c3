#include "shell/link_set_up.h"

#include "platform/dialogs/procedure.h"
#include "settings/settings_io.h"

namespace velk {

void LinkSetUp::ResetConnection() {
  link_.CloseODataCom();
  link_.ClosePlainPort();
  link_.SetODataCom();
}

void LinkSetUp::SetUpAgain() {
  link_.CloseODataCom();
  link_.ClosePlainPort();
  timers_.Timer4->SetEnabled(false);
  timers_.Timer5->SetEnabled(false);
  // The chosen protocol gets its link all the same: Cancel leaves the save only.
  RunProcedure({platform_.dialogs, "mnuEditSerialPort_Click"},
               [&](const Statements& run) { run([&] { SaveSettings(session_, platform_.settings); }); });
  link_.SetODataCom();
  polling_.EnablePageTimer();
}

}  // namespace velk
