#pragma once

#include <functional>
#include <string_view>

namespace velk {

/// Where a room hands in the work behind its commands. A command goes by the name of its menu item ("mnuFileRecord"),
/// or by the key of its toolbar button ("Command1") where no menu has it. What else there is to a command, such as in
/// which status it is offered, stands in the one table of commands (shell/command_table.cpp).
class CommandBinder {
 public:
  virtual ~CommandBinder() = default;

  /// Binds the work of a command. Raises std::logic_error for a name that is not in the table or has its work already.
  virtual void Bind(std::string_view name, std::function<void()> work) = 0;
};

}  // namespace velk
