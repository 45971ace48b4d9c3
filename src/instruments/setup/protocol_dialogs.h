#pragma once

#include <optional>
#include <vector>

#include "instruments/setup/hardware_choices.h"
#include "instruments/setup/parameter_commands.h"
#include "instruments/setup/separators.h"

namespace velk {

/// What HardwareSettings is opened with.
struct HardwareQuestion {
  HardwareChoices choices;
  int formulae = 0;  ///< additional parameters, which take their share of the 64
  std::vector<PortEntry> ports;
};

/// Where the networked unit is; fields are named as the session's.
struct UnitAddress {
  std::string daqIPAddress;
  std::string daqHTML;
};

/// The windows that mnuEditSerialPort_Click leads through. Each gives what was chosen with "O.K.", nothing when it was
/// left otherwise.
class ProtocolDialogs {
 public:
  virtual ~ProtocolDialogs() = default;
  virtual std::optional<HardwareChoices> AskHardwareSettings(const HardwareQuestion& question) = 0;
  virtual std::optional<Separators> AskFormattedData(const Separators& separators) = 0;
  virtual std::optional<Separators> AskIntermittent(const Separators& separators) = 0;
  virtual std::optional<std::vector<ParameterCommands>> AskRequestedData(
      const std::vector<ParameterCommands>& commands) = 0;
  virtual std::optional<UnitAddress> AskEthernetConfiguration(const UnitAddress& address) = 0;
};

}  // namespace velk
