#pragma once

#include <functional>

#include "instruments/setup/protocol_dialogs.h"
#include "platform/platform.h"

namespace velk {

/// Leads through HardwareSettings and the dialog of the chosen protocol, and takes the outcome over: the session, the
/// protocol's constants, and NumberOfParameters in the settings store, which no other save of the settings writes.
/// Cancel in any of the dialogs leaves all as it was.
///
/// `linkAgain` is the shell's part, run once the outcome stands: both ports closed, Timer2, Timer4 and Timer5 stopped,
/// the settings saved, and the link set up for the new choice. It runs again where the operator retries a failure.
void mnuEditSerialPort_Click(Session& session, const Platform& platform, ProtocolDialogs& dialogs,
                             const std::function<void()>& linkAgain);

}  // namespace velk
