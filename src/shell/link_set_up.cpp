#include "shell/link_set_up.h"

#include "instruments/link/link_lease.h"
#include "platform/dialogs/procedure.h"
#include "settings/settings_io.h"

namespace velk {

void LinkSetUp::ResetConnection() {
  LinkLease(link_, timers_).SetUpAnew();
}

void LinkSetUp::SetUpAgain() {
  {
    LinkLease lease(link_, timers_);
    lease.SetUpAnew();
    // The chosen protocol gets its link all the same: Cancel leaves the save only.
    KeepSettings({platform_.dialogs, "mnuEditSerialPort_Click"}, session_, platform_.settings);
  }
  sources_.FollowProtocol();
}

void LinkSetUp::KeepFound() {
  KeepSettings({platform_.dialogs, "mnuEditAutoDetect_Click"}, session_, platform_.settings);
  sources_.FollowProtocol();
}

}  // namespace velk
