#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "instruments/setup/hardware_choices.h"
#include "instruments/setup/parameter_commands.h"
#include "instruments/setup/separators.h"
#include "platform/ports/device_state.h"

namespace velk {

/// Hears what an instrument sends on a port while no job runs.
class PortListening {
 public:
  virtual ~PortListening() = default;
  /// Opens a port and hands over what comes. Raises PortError, or InvalidArgument for settings that no port has; then
  /// nothing is open.
  virtual void Listen(const SerialSettings& line, std::function<void(const std::string& bytes)> onBytes) = 0;
  /// Gives the port back.
  virtual void Stop() = 0;
};

/// What is plugged in at a moment.
struct PortsFound {
  std::vector<PortEntry> ports;
  std::vector<NamedDevice> devices;
};

/// What HardwareSettings is opened with.
struct HardwareQuestion {
  HardwareChoices choices;
  int formulae = 0;  ///< additional parameters, which take their share of the 64
  std::vector<PortEntry> ports;
  std::vector<NamedDevice> devices = {};  ///< that may be chosen for a port
  std::string delimiter = " ";            ///< between the values of a line that is no own unit's
  PortListening* listening = nullptr;     ///< null where nobody can listen
  std::function<PortsFound()> look = {};  ///< what is plugged in by now; null: nothing comes and goes
  std::vector<ListedTemplate> templates = {};
};

/// Where the networked unit is; fields are named as the session's.
struct UnitAddress {
  std::string daqIPAddress;
  std::string daqHTML;
};

/// All that the dialogs of the serial port gave; the session is touched only once every one of them was answered.
struct SerialPortOutcome {
  HardwareChoices choices;
  Session::PerParameter<Parameter> parameters;
  std::optional<Separators> separators = {};
  std::optional<std::vector<ParameterCommands>> commands = {};
  std::optional<UnitAddress> address = {};
};

/// What the dialogs begin with, and what they go on with once HardwareSettings was answered. The store outlives the
/// question.
HardwareQuestion HardwareQuestionOf(const Session& session, SettingsStore& settings, PortListening* listening);
SerialPortOutcome OutcomeOf(const Session& session, const HardwareChoices& choices, const Language& language);

/// Takes the outcome over: the session, the protocol's constants, and in the settings store what no other save of the
/// settings writes: NumberOfParameters, the devices of ports, and that somebody has chosen. Raises the store's file
/// errors.
void StoreSerialPort(Session& session, SettingsStore& settings, const SerialPortOutcome& outcome);

}  // namespace velk
