#include "instruments/setup/edit_serial_port.h"

#include "instruments/table/protocols.h"
#include "platform/dialogs/procedure.h"
#include "platform/settings/settings.h"

namespace velk {

namespace {

/// All that the dialogs gave; the session is touched only once every one of them was answered.
struct Outcome {
  HardwareChoices choices;
  Session::PerParameter<Parameter> parameters;
  std::optional<Separators> separators = {};
  std::optional<std::vector<ParameterCommands>> commands = {};
  std::optional<UnitAddress> address = {};
};

/// Asks what the protocol needs besides its port; false on Cancel.
bool AskForProtocol(const Session& session, ProtocolDialogs& dialogs, Outcome& outcome) {
  switch (ProtocolOf(outcome.choices.SerialData).dialog) {
    case ProtocolDialog::None:
      return true;
    case ProtocolDialog::FormattedData:
      outcome.separators = dialogs.AskFormattedData(SeparatorsOf(session));
      return outcome.separators.has_value();
    case ProtocolDialog::Intermittent:
      outcome.separators = dialogs.AskIntermittent(SeparatorsOf(session));
      return outcome.separators.has_value();
    case ProtocolDialog::RequestedData:
      outcome.commands = dialogs.AskRequestedData(CommandsOf(outcome.parameters, outcome.choices.NumberOfParameters));
      return outcome.commands.has_value();
    case ProtocolDialog::EthernetConfiguration:
      break;
  }
  outcome.address = dialogs.AskEthernetConfiguration({session.daqIPAddress, session.daqHTML});
  return outcome.address.has_value();
}

std::optional<Outcome> Ask(const Session& session, const Platform& platform, ProtocolDialogs& dialogs) {
  const auto choices = dialogs.AskHardwareSettings(
      {HardwareChoicesOf(session), session.NumberOfFormulae, PortEntries(platform.settings)});
  if (!choices) return std::nullopt;
  Outcome outcome{.choices = *choices, .parameters = session.Parameters};
  FillUnnamedParameters(outcome.parameters, choices->NumberOfParameters, platform.language);
  if (!AskForProtocol(session, dialogs, outcome)) return std::nullopt;
  return outcome;
}

void Store(Session& session, SettingsStore& settings, const Outcome& outcome) {
  session.Parameters = outcome.parameters;
  if (outcome.separators) {
    session.Delimiter = outcome.separators->Delimiter;
    session.Terminator = outcome.separators->Terminator;
  }
  if (ProtocolOf(outcome.choices.SerialData).dialog == ProtocolDialog::FormattedData) session.FormattedLineLength = 0;
  if (outcome.commands) StoreCommands(session, *outcome.commands);
  if (outcome.address) {
    session.daqIPAddress = outcome.address->daqIPAddress;
    session.daqHTML = outcome.address->daqHTML;
  }
  StoreHardwareChoices(session, outcome.choices);
  settings.Save("VELK2", "Parameters", "NumberOfParameters", std::to_string(session.NumberOfParameters));
}

}  // namespace

void mnuEditSerialPort_Click(Session& session, const Platform& platform, ProtocolDialogs& dialogs,
                             const std::function<void()>& linkAgain) {
  RunProcedure({platform.dialogs, "mnuEditSerialPort_Click"}, [&](const Statements& run) {
    const auto outcome = run([&] { return Ask(session, platform, dialogs); });
    if (!outcome) return;
    run([&] { Store(session, platform.settings, *outcome); });
    run([&] { linkAgain(); });
  });
}

}  // namespace velk
