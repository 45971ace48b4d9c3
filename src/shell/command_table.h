#pragma once

#include <map>
#include <optional>
#include <span>
#include <string_view>

#include "base/message_text.h"
#include "model/session.h"

namespace velk {

/// One command of the program: a menu item, a toolbar button, or both. Its work is bound by the room that has it; a
/// command without work is off.
struct CommandRow {
  const char* item = nullptr;      ///< menu item; null where no menu has the command
  const char* key = nullptr;       ///< toolbar button; null where the toolbar hasn't it
  const char* shortcut = nullptr;  ///< of the item, or of the button where no menu has the command
  bool windowHasKey = false;       ///< the shortcut is worked elsewhere, the menu only shows it
  /// What each status forces: '1' on, '0' off, '?' as the condition says, '.' untouched. In the order Ready, Ready to
  /// Acquire, Acquiring Data, Acquiring Paused, Ready to Playback, Playing Back, its pause.
  std::string_view states = ".......";
  char onEveryChange = '.';  ///< forced ahead of `states`, also by a status that has no column there
  /// Asked where `states` has '?'. A row without one is off while this is false as often as its menu opens.
  bool (*condition)(const Session&) = nullptr;
  bool onAtStart = true;
  bool keyFollows = false;       ///< the button is on while the menu item is; others tell by a box why they can't
  bool itemFollows = false;      ///< the item has the button's picture, and is off while that is hidden or off
  bool whileConnecting = false;  ///< works while Connect is under way, as Stop does and whatever touches no job

  /// What the work is bound by.
  std::string_view Name() const { return item ? item : key; }
};

/// All commands of the program, in the order of the menus; then those that only the toolbar has.
std::span<const CommandRow> CommandTable();

/// The place of a status in `states`; nothing for "Checking Hardware" and "Confirming File Format", which force only
/// what every change does.
std::optional<std::size_t> StatusColumn(const MessageText& status);
bool IsPlayback(const MessageText& status);

/// What a change to this status forces, by the command's name.
std::map<std::string_view, bool> ForcedStates(std::span<const CommandRow> table, const MessageText& status,
                                              const Session& session);

}  // namespace velk
