#include "instruments/windows/serial_port_command.h"

#include "instruments/table/protocols.h"
#include "instruments/windows/formatted_data.h"
#include "instruments/windows/frm_hpt_honeywell_ez_trend.h"
#include "instruments/windows/hardware_settings.h"
#include "instruments/windows/intermittent.h"
#include "instruments/windows/requested_data.h"
#include "platform/dialogs/procedure.h"

namespace velk {

namespace {

/// Asks what the protocol needs besides its port; false on Cancel.
bool AskForProtocol(WindowHost& host, const Session& session, SerialPortOutcome& outcome) {
  switch (ProtocolOf(outcome.choices.SerialData).dialog) {
    case ProtocolDialog::None:
      return true;
    case ProtocolDialog::FormattedData:
      outcome.separators = host.Ask<FormattedData>(SeparatorsOf(session));
      return outcome.separators.has_value();
    case ProtocolDialog::Intermittent:
      outcome.separators = host.Ask<Intermittent>(SeparatorsOf(session));
      return outcome.separators.has_value();
    case ProtocolDialog::RequestedData:
      outcome.commands = host.Ask<RequestedData>(CommandsOf(outcome.parameters, outcome.choices.NumberOfParameters));
      return outcome.commands.has_value();
    case ProtocolDialog::EthernetConfiguration:
      break;
  }
  outcome.address = host.Ask<frmHPTHoneywellEZtrend>(UnitAddress{session.daqIPAddress, session.daqHTML});
  return outcome.address.has_value();
}

std::optional<SerialPortOutcome> Ask(WindowHost& host, const Session& session, const Platform& platform,
                                     PortListening* listening) {
  const auto choices = host.Ask<HardwareSettings>(HardwareQuestionOf(session, platform.settings, listening));
  if (!choices) return std::nullopt;
  SerialPortOutcome outcome = OutcomeOf(session, *choices, platform.language);
  if (!AskForProtocol(host, session, outcome)) return std::nullopt;
  return outcome;
}

}  // namespace

void mnuEditSerialPort_Click(WindowHost& host, Session& session, const Platform& platform, PortListening* listening,
                             const std::function<void()>& linkAgain) {
  RunProcedure({platform.dialogs, "mnuEditSerialPort_Click"}, [&](const Statements& run) {
    const auto outcome = run([&] { return Ask(host, session, platform, listening); });
    if (!outcome) return;
    run([&] { StoreSerialPort(session, platform.settings, *outcome); });
    run([&] { linkAgain(); });
  });
}

}  // namespace velk
