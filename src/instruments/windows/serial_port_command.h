#pragma once

#include <functional>

#include "i18n/windows/window_host.h"
#include "instruments/setup/edit_serial_port.h"
#include "platform/platform.h"

namespace velk {

/// Leads through HardwareSettings and the dialog of the chosen protocol, and takes the outcome over; see
/// StoreSerialPort. Cancel in any of the dialogs leaves all as it was.
///
/// `linkAgain` is the shell's part, run once the outcome stands: the link leased (see LinkLease), the settings saved,
/// and the link set up for the new choice. It runs again where the operator retries a failure.
void mnuEditSerialPort_Click(WindowHost& host, Session& session, const Platform& platform, PortListening* listening,
                             const std::function<void()>& linkAgain);

}  // namespace velk
