#pragma once

#include <optional>
#include <span>
#include <string>

#include "instruments/unit/unit_talk.h"

namespace velk {

/// A command that the tools of a unit offer.
struct UnitCommand {
  MessageText text;
  char letter;
  bool hasValue;  ///< the value box is shown for it
};

/// In the order of their list.
std::span<const UnitCommand> UnitCommands();

/// Sends commands to the board of a unit, one at a time. The unit is in command mode as long as this is there.
class HardwareTools {
 public:
  explicit HardwareTools(const UnitAccess& unit) : unit_(unit) {}

  /// Opens the port and brings the unit to command mode. False behind the box of what failed.
  bool Enter();
  /// Whether commands can be sent.
  bool IsReady() const { return talk_ && talk_->Board().InTradMode(); }
  /// Asks for what the command takes, beginning with `preset`, and sends it; shows its own boxes. Gives the value that
  /// was sent, where it has one.
  std::optional<std::string> Send(const UnitCommand& command, int channel, const std::string& preset);
  /// Ends the calibration that is under way.
  void Cancel() { cancelled_ = true; }

 private:
  std::string SendPlain(const UnitCommand& command, int channel, const std::string& preset);
  void Calibrate(int channel);
  struct Found {
    double gain = 0;
    double offset = 0;
  };
  std::optional<Found> CalibrateCounter(int channel);
  std::optional<Found> CalibrateAnalog(int channel);
  double TellReading();

  UnitAccess unit_;
  bool cancelled_ = false;
  std::optional<UnitTalk> talk_;
};

}  // namespace velk
