#pragma once

#include "instruments/setup/protocol_dialogs.h"

namespace velk::test {

/// The operator leaves every dialog of the serial port but HardwareSettings by Cancel; what that one gives is
/// `choices`.
class ScriptedProtocolDialogs : public ProtocolDialogs {
 public:
  std::optional<HardwareChoices> AskHardwareSettings(const HardwareQuestion& question) override {
    ++hardwareAsked;
    return choose ? std::optional(choose(question.choices)) : std::nullopt;
  }
  std::optional<Separators> AskFormattedData(const Separators&) override { return std::nullopt; }
  std::optional<Separators> AskIntermittent(const Separators&) override { return std::nullopt; }
  std::optional<std::vector<ParameterCommands>> AskRequestedData(const std::vector<ParameterCommands>&) override {
    return std::nullopt;
  }
  std::optional<UnitAddress> AskEthernetConfiguration(const UnitAddress&) override { return std::nullopt; }

  HardwareChoices (*choose)(HardwareChoices) = nullptr;  ///< what O.K. gives; none: Cancel
  int hardwareAsked = 0;
};

}  // namespace velk::test
