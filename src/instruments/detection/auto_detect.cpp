#include "instruments/detection/auto_detect.h"

#include "base/scope.h"
#include "instruments/detection/port_search.h"
#include "instruments/link/link_lease.h"
#include "instruments/setup/hardware_choices.h"
#include "instruments/table/protocols.h"
#include "instruments/texts.h"
#include "model/help_topics.h"
#include "model/status.h"
#include "model/texts.h"
#include "platform/dialogs/procedure.h"
#include "platform/settings/settings.h"

namespace velk {

namespace {

void StoreCount(const AutoDetect& parts) {
  parts.platform.settings.Save("VELK2", "Parameters", "NumberOfParameters",
                               std::to_string(parts.session.NumberOfParameters));
}

/// Searches, and leaves the session as the search has found it. False where nothing was found, or Cancel came first.
bool Search(const AutoDetect& parts) {
  PortSearch search(parts.session, parts.platform, *parts.link.MSComm1, parts.makeBox(), parts.devices);
  const bool isFound = search.Find();
  if (!isFound) {
    OperatorText text = text::HardwareUnknown;
    if (const OperatorText ports = search.PortsNotOpened(); !ports.IsEmpty()) text += "\n\n" + ports;
    parts.platform.dialogs.Message({.text = text,
                                    .title = text::DetectTitle,
                                    .buttons = Buttons::Ok,
                                    .icon = BoxIcon::Exclamation,
                                    .helpTopic = topic::UnitTable});
    parts.session.NumberOfParameters = 1;
  }
  return isFound && !search.IsCancelled();
}

/// The end of the program asks nobody.
bool WantsSettingsOfBefore(Dialogs& dialogs) {
  return dialogs.IsEnding() || dialogs.Message({.text = text::KeepSettingsOfBefore,
                                                .title = text::DetectTitle,
                                                .buttons = Buttons::YesNo,
                                                .icon = BoxIcon::Question,
                                                .helpTopic = topic::UnitTable}) == Answer::Yes;
}

/// Whether the session has other settings behind it.
bool Detect(const AutoDetect& parts, const Statements& run) {
  Session& session = parts.session;
  StoredSettings& stored = session;
  const StoredSettings before = stored;
  LinkLease lease(parts.link, parts.timers);
  bool stands = false;
  session.StopRequested = false;
  const OnLeaving done([&] {
    if (!stands) stored = before;
    session.StopRequested = false;
    ChangeCurrentStatus(session, parts.view, text::StatusReady);
  });
  ChangeCurrentStatus(session, parts.view, text::DetectionInProgress);
  const bool isFound = run([&] { return Search(parts); });
  SetProtocolConstants(session);
  ForgetChosenSeparators(session);
  FillUnnamedParameters(session.Parameters, session.NumberOfParameters, parts.platform.language);
  run([&] { StoreCount(parts); });
  stands = isFound || !WantsSettingsOfBefore(parts.platform.dialogs);
  if (stands) {
    lease.SetUpAnew();
    return true;
  }
  stored = before;
  run([&] { StoreCount(parts); });
  return false;
}

}  // namespace

void mnuEditAutoDetect_Click(const AutoDetect& parts) {
  RunProcedure({parts.platform.dialogs, "mnuEditAutoDetect_Click"}, [&](const Statements& run) {
    if (Detect(parts, run)) run([&] { parts.keep(); });
  });
}

}  // namespace velk
