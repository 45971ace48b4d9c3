#include "instruments/setup/hardware_choices.h"

#include <charconv>
#include <limits>
#include <utility>

#include "base/text.h"
#include "instruments/table/protocols.h"
#include "instruments/texts.h"
#include "model/texts.h"
#include "platform/ports/device_state.h"
#include "platform/ports/port_devices.h"

namespace velk {

namespace {

constexpr std::array<MessageText, 5> kParityTexts{text::ParityEven, text::ParityMark, text::ParityNone, text::ParityOdd,
                                                  text::ParitySpace};

constexpr std::array<MessageText, 3> kHandshakeTexts{text::HandshakeNone, text::HandshakeXonXoff,
                                                     text::HandshakeHardware};

/// The note stands in a few lines.
constexpr std::size_t kTemplatesNamed = 2;

std::optional<int> WholeNumber(std::string_view typed) {
  const std::string text = Trim(typed);
  int number = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || stop != end) return std::nullopt;
  return number;
}

/// Which templates of a protocol there are to load; empty where there is none.
OperatorText LoadTemplateText(const std::vector<ListedTemplate>& templates, std::string_view serialData) {
  OperatorText names;
  std::size_t named = 0;
  for (const ListedTemplate& one : templates) {
    if (one.serialData != serialData || named == kTemplatesNamed) continue;
    names += named++ > 0 ? text::OrTemplate + one.name : OperatorText(one.name);
  }
  return named > 0 ? text::LoadTemplateNamed + names + text::ByEditSettings : OperatorText();
}

NumberRead Fault(OperatorText text) {
  return {0, std::move(text)};
}

}  // namespace

HardwareChoices HardwareChoicesOf(const Session& session) {
  return {.SerialData = session.SerialData,
          .NumberOfParameters = session.NumberOfParameters,
          .SamplingRate = session.SamplingRate,
          .SensitivityCriterion = session.SensitivityCriterion,
          .PortNumber = session.PortNumber,
          .BaudRate = session.BaudRate,
          .Parity = session.Parity,
          .DataBits = session.DataBits,
          .StopBits = session.StopBits,
          .Handshake = session.Handshake};
}

void StoreHardwareChoices(Session& session, const HardwareChoices& choices) {
  session.SerialData = choices.SerialData;
  session.NumberOfParameters = choices.NumberOfParameters;
  session.SamplingRate = choices.SamplingRate;
  session.SensitivityCriterion = choices.SensitivityCriterion;
  session.PortNumber = choices.PortNumber;
  session.BaudRate = choices.BaudRate;
  session.Parity = choices.Parity;
  session.DataBits = choices.DataBits;
  session.StopBits = choices.StopBits;
  session.Handshake = choices.Handshake;
  SetProtocolConstants(session);
}

const MessageText& ParityText(int place) {
  return kParityTexts.at(static_cast<std::size_t>(place));
}

const MessageText& HandshakeText(int place) {
  return kHandshakeTexts.at(static_cast<std::size_t>(place));
}

int ProtocolPlace(std::string_view serialData) {
  const Protocol* const row = FindProtocol(serialData);
  return row == nullptr ? -1 : static_cast<int>(row - Protocols().data());
}

std::string PickedSerialData(int place, std::string_view stored) {
  const std::span<const Protocol> protocols = Protocols();
  const auto index = static_cast<std::size_t>(place);
  if (place < 0 || index >= protocols.size()) return std::string(stored);
  switch (protocols[index].picking) {
    case Picking::Itself:
      return std::string(protocols[index].serialData);
    case Picking::NextEntry:
      return std::string(protocols[index + 1].serialData);
    case Picking::Nothing:
      break;
  }
  return std::string(stored);
}

OperatorText ProtocolNote(int picked, std::string_view serialData, const std::vector<ListedTemplate>& templates) {
  const std::span<const Protocol> protocols = Protocols();
  const auto index = static_cast<std::size_t>(picked);
  if (picked >= 0 && index < protocols.size() && protocols[index].picking == Picking::Nothing)
    return text::NotChosenHere + LoadTemplateText(templates, protocol::AnySerialData);
  if (CountsItems(serialData)) return text::ChannelsAreItems;
  if (!ProtocolOf(serialData).deliversNoValues) return {};
  return text::DeliversNoValues + LoadTemplateText(templates, protocol::Formatted);
}

std::optional<int> ChannelsOf(std::string_view serialData) {
  const std::optional<UnitConstants>& unit = ProtocolOf(serialData).unit;
  return unit ? std::optional<int>(unit->channels) : std::nullopt;
}

bool CountsItems(std::string_view serialData) {
  return ProtocolOf(serialData).driver == Driver::OpcItems;
}

HardwareChoices WithFixedPort(HardwareChoices choices) {
  const std::optional<UnitConstants>& unit = ProtocolOf(choices.SerialData).unit;
  if (!unit) return choices;
  choices.BaudRate = unit->baudRate;
  choices.Handshake = unit->handshake;
  choices.Parity = unit->parity;
  choices.DataBits = unit->dataBits;
  choices.StopBits = unit->stopBits;
  return choices;
}

SerialSettings LineOf(const HardwareChoices& choices, const std::string& device) {
  const HardwareChoices fixed = WithFixedPort(choices);
  return {.device = device,
          .baudRate = fixed.BaudRate,
          .parity = fixed.Parity,
          .dataBits = fixed.DataBits,
          .stopBits = fixed.StopBits,
          .handshake = static_cast<Handshake>(fixed.Handshake)};
}

std::vector<PortEntry> PortEntries(SettingsStore& settings, const std::string& directory) {
  std::vector<PortEntry> entries;
  for (int number = 1; number <= kPortsOffered; ++number) {
    PortEntry port;
    port.number = number;
    port.listed = ListedPortDevice(number, directory);
    entries.push_back(WithDevice(std::move(port), PortDevice(settings, number, directory), directory));
  }
  return entries;
}

PortEntry WithDevice(PortEntry port, const std::string& device, const std::string& directory) {
  const DeviceState state = StateOfDevice(device, directory);
  port.device = device;
  port.exists = state.exists;
  port.isInUse = state.isInUse;
  port.group = state.group;
  return port;
}

OperatorText PresenceText(const PortEntry& port) {
  if (!port.exists) return text::DeviceMissing;
  if (!port.group.empty()) return text::DeviceNoPermission + port.group + text::DeviceNoPermissionAfter;
  return port.isInUse ? text::DeviceInUse : text::DevicePresent;
}

NumberRead ReadParameterCount(std::string_view typed, int formulae) {
  const std::optional<int> number = WholeNumber(typed);
  if (!number || *number < 0 || *number > kMaxParameters) {
    return Fault(text::ParametersOutOfRange);
  }
  if (*number + formulae > kMaxParameters) {
    return Fault(text::ParametersAndFormulae + std::to_string(formulae));
  }
  return {static_cast<std::int16_t>(*number), {}};
}

NumberRead ReadSensitivity(std::string_view typed) {
  const std::optional<int> number = WholeNumber(typed);
  if (!number || *number < 0 || *number > std::numeric_limits<std::int16_t>::max()) {
    return Fault(text::SensitivityOutOfRange);
  }
  return {static_cast<std::int16_t>(*number), {}};
}

void FillUnnamedParameters(Session::PerParameter<Parameter>& parameters, int count, const Language& language) {
  for (int i = 1; i <= count; ++i) {
    Parameter& parameter = parameters[static_cast<std::size_t>(i)];
    if (!parameter.name.empty()) continue;
    parameter.name = language.In(text::UnnamedParameter) + std::to_string(i);
    parameter.units = language.In(text::DefaultUnits);
    parameter.format = "#0.000";
    parameter.FormIndex = static_cast<std::int16_t>(i);
    parameter.GraphVisible = true;
    parameter.CommandString.clear();
    parameter.loweralarm = kNoAlarm;
    parameter.upperalarm = kNoAlarm;
    parameter.Gain = 1;
  }
}

}  // namespace velk
