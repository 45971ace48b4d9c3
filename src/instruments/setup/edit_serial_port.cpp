#include "instruments/setup/edit_serial_port.h"

#include <utility>

#include "instruments/table/protocols.h"
#include "model/settings_names.h"
#include "platform/settings/settings.h"

namespace velk {

namespace {

std::vector<ListedTemplate> TemplatesOf(const Session& session, SettingsStore& settings) {
  std::vector<ListedTemplate> templates;
  for (std::size_t i = 1; i < session.TemplateNames.size(); ++i) {
    const std::string& name = session.TemplateNames[i];
    templates.push_back({name, settings.Get(TemplateApplication(name), "Protocol", "SerialData", "")});
  }
  return templates;
}

}  // namespace

HardwareQuestion HardwareQuestionOf(const Session& session, SettingsStore& settings, PortListening* listening) {
  const auto look = [&settings] { return PortsFound{PortEntries(settings), NamedDevices()}; };
  PortsFound found = look();
  return {.choices = HardwareChoicesOf(session),
          .formulae = session.NumberOfFormulae,
          .ports = std::move(found.ports),
          .devices = std::move(found.devices),
          .delimiter = session.Delimiter,
          .listening = listening,
          .look = look,
          .templates = TemplatesOf(session, settings)};
}

SerialPortOutcome OutcomeOf(const Session& session, const HardwareChoices& choices, const Language& language) {
  SerialPortOutcome outcome{.choices = choices, .parameters = session.Parameters};
  FillUnnamedParameters(outcome.parameters, choices.NumberOfParameters, language);
  return outcome;
}

void StoreSerialPort(Session& session, SettingsStore& settings, const SerialPortOutcome& outcome) {
  session.Parameters = outcome.parameters;
  if (outcome.separators) {
    session.Delimiter = outcome.separators->Delimiter;
    session.Terminator = outcome.separators->Terminator;
    ForgetChosenSeparators(session);
  }
  if (ProtocolOf(outcome.choices.SerialData).dialog == ProtocolDialog::FormattedData) session.FormattedLineLength = 0;
  if (outcome.commands) StoreCommands(session, *outcome.commands);
  if (outcome.address) {
    session.daqIPAddress = outcome.address->daqIPAddress;
    session.daqHTML = outcome.address->daqHTML;
  }
  StoreHardwareChoices(session, outcome.choices);
  for (const auto& [number, device] : outcome.choices.PortDevice)
    settings.Save("VELK2", "Protocol", "PortDevice" + std::to_string(number), device);
  settings.Save("VELK2", "Protocol", "SerialPortChosen", "True");
  settings.Save("VELK2", "Parameters", "NumberOfParameters", std::to_string(session.NumberOfParameters));
}

}  // namespace velk
