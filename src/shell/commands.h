#pragma once

#include <QAction>
#include <functional>
#include <map>
#include <span>
#include <string>
#include <vector>

#include "base/language.h"
#include "model/command_binder.h"
#include "shell/command_table.h"

namespace velk {

using ActionsByName = std::map<std::string, QAction*, std::less<>>;

/// The table of commands on the menus and the toolbar of the main window: what is on, and what a click runs.
class Commands : public CommandBinder {
 public:
  /// `items` are the menu items with the menus themselves, `buttons` those of the toolbar by their keys. Raises
  /// std::logic_error for a row that names an item or a button which isn't there, and for an item without a row.
  Commands(const ActionsByName& items, const ActionsByName& buttons, const Session& session, const Language& language,
           std::span<const CommandRow> table = CommandTable());

  void Bind(std::string_view name, std::function<void()> work) override;
  bool HasWork(std::string_view name) const;

  /// Lets an item whose row has a condition be on where this one holds, too. Asked when its menu opens.
  void AllowAlso(std::string_view item, std::function<bool()> condition);

  /// Asked ahead of each command that doesn't work while Connect is under way.
  std::function<bool()> isConnecting;

  /// Forces what goes with a status.
  void ShowStatus(const MessageText& status);
  /// Lets a menu item be on, where it has its work. Raises std::logic_error for one that is not in the table.
  void AllowItem(std::string_view item, bool allowed);
  /// The same for a button that follows no menu item.
  void AllowButton(std::string_view key, bool allowed);

 private:
  struct Command {
    const CommandRow* row;
    QAction* item;
    QAction* button;
    bool allowed;
    bool buttonAllowed = true;
    bool conditionHolds = true;
    std::function<void()> work = {};
    std::function<bool()> also = {};  ///< what holds where its row's condition doesn't
  };

  void CheckItems(const ActionsByName& items) const;
  void Connect(Command& command);
  void AskConditions(const QMenu& menu);
  void Run(const Command& command) const;
  void Update(const Command& command) const;
  Command* Find(std::string_view name);

  OperatorText WhyOff(const Command& command) const;
  /// There is something that the command can be done with.
  static bool HasObject(const Command& command);

  const Session& session_;
  const Language& language_;
  const std::span<const CommandRow> table_;
  std::vector<Command> commands_;  ///< in the order of the table; never grows after construction
};

}  // namespace velk
