#pragma once

#include <string>

#include "instruments/unit/unit_table.h"
#include "instruments/unit/unit_talk.h"

namespace velk {

/// The table of settings in an own unit. Each of these is a conversation of its own and raises what fails, with the
/// unit back in run mode and the link as it was.
class UnitSettings {
 public:
  explicit UnitSettings(const UnitAccess& unit) : unit_(unit) {}

  /// Reads the table of channels into the session's OrbenSettings; the column of formats stays.
  void MatchParameters();
  /// Sends what differs from what the unit has. The table has no fault.
  void Send(const UnitRows& table);
  void ResetToSystemDefault();
  /// Sets the unit's clock to the present time.
  void SetClock();
  /// Sends a command that the operator has typed.
  void SendCommand(const std::string& command);
  /// Ends what is under way.
  void Cancel() { cancelled_ = true; }

  /// The unit's date and time: those of its last frame, today; a dash before the first one.
  std::string ClockText() const;
  const std::string& CommandIssued() const { return unit_.link.Board.CommandIssued(); }

 private:
  UnitAccess unit_;
  bool cancelled_ = false;
};

/// A row a channel of the session's unit, with its number and the format that was kept for it.
UnitRows EmptyUnitTable(const Session& session);

}  // namespace velk
