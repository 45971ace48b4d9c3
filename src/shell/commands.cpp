#include "shell/commands.h"

#include <QMenu>
#include <algorithm>
#include <stdexcept>
#include <utility>

#include "base/text_qt.h"
#include "shell/texts.h"

namespace velk {

namespace {

/// Null for a row that has none; an action that is missing is a defect.
QAction* ActionOf(const ActionsByName& actions, const char* name) {
  if (!name) return nullptr;
  const auto found = actions.find(std::string_view(name));
  if (found == actions.end()) throw std::logic_error(std::string("a command without its menu item or button: ") + name);
  return found->second;
}

}  // namespace

Commands::Commands(const ActionsByName& items, const ActionsByName& buttons, const Session& session,
                   const Language& language, std::span<const CommandRow> table)
    : session_(session), language_(language), table_(table) {
  for (const CommandRow& row : table_)
    commands_.push_back({&row, ActionOf(items, row.item), ActionOf(buttons, row.key), row.onAtStart});
  CheckItems(items);
  for (Command& command : commands_) {
    Connect(command);
    Update(command);
  }
  for (const auto& [name, action] : items)
    if (const QMenu* menu = action->menu())
      QObject::connect(menu, &QMenu::aboutToShow, action, [this, menu] { AskConditions(*menu); });
}

void Commands::CheckItems(const ActionsByName& items) const {
  for (const auto& [name, action] : items) {
    const auto isIt = [item = action](const Command& command) { return command.item == item; };
    if (!action->menu() && std::none_of(commands_.begin(), commands_.end(), isIt))
      throw std::logic_error("a menu item without a command: " + name);
  }
}

void Commands::Connect(Command& command) {
  const auto run = [this, &command] { Run(command); };
  if (command.item && command.item->isCheckable())
    QObject::connect(command.item, &QAction::toggled, command.item, run);
  else if (command.item)
    QObject::connect(command.item, &QAction::triggered, command.item, run);
  if (command.row->shortcut) {
    QAction* owner = command.item ? command.item : command.button;
    owner->setShortcut(QKeySequence(QString::fromLatin1(command.row->shortcut)));
    if (command.row->windowHasKey) owner->setShortcutContext(Qt::WidgetShortcut);
  }
  if (!command.button) return;
  if (command.row->itemFollows)
    QObject::connect(command.button, &QAction::changed, command.item, [this, &command] { Update(command); });
  if (command.row->keyFollows)
    QObject::connect(command.button, &QAction::triggered, command.item, &QAction::trigger);
  else
    QObject::connect(command.button, &QAction::triggered, command.button, run);
}

void Commands::Bind(std::string_view name, std::function<void()> work) {
  Command* command = Find(name);
  if (!command) throw std::logic_error("work for a command that is not in the table: " + std::string(name));
  if (command->work) throw std::logic_error("a command with two works: " + std::string(name));
  command->work = std::move(work);
  Update(*command);
}

bool Commands::HasWork(std::string_view name) const {
  return std::any_of(commands_.begin(), commands_.end(),
                     [&](const Command& command) { return command.row->Name() == name && command.work; });
}

void Commands::AllowAlso(std::string_view item, std::function<bool()> condition) {
  Command* command = Find(item);
  if (!command || !command->row->condition) throw std::logic_error("an item without a condition: " + std::string(item));
  command->also = std::move(condition);
}

void Commands::ShowStatus(const MessageText& status) {
  for (const auto& [name, allowed] : ForcedStates(table_, status, session_)) AllowItem(name, allowed);
  for (const Command& command : commands_) Update(command);  // why an item is off names the status
}

void Commands::AllowItem(std::string_view item, bool allowed) {
  Command* command = Find(item);
  if (!command) throw std::logic_error("a command that is not in the table: " + std::string(item));
  command->allowed = allowed;
  command->conditionHolds = true;
  Update(*command);
}

void Commands::AllowButton(std::string_view key, bool allowed) {
  const auto found = std::find_if(commands_.begin(), commands_.end(),
                                  [&](const Command& command) { return command.row->key && command.row->key == key; });
  if (found == commands_.end()) throw std::logic_error("a button that is not in the table: " + std::string(key));
  found->buttonAllowed = allowed;
  Update(*found);
}

void Commands::AskConditions(const QMenu& menu) {
  for (Command& command : commands_) {
    const CommandRow& row = *command.row;
    if (!row.condition || row.states.find('?') != row.states.npos || !menu.actions().contains(command.item)) continue;
    command.conditionHolds = row.condition(session_) || (command.also && command.also());
    Update(command);
  }
}

void Commands::Run(const Command& command) const {
  if (!command.row->whileConnecting && isConnecting && isConnecting()) return;
  const auto work = command.work;
  if (work) work();
}

void Commands::Update(const Command& command) const {
  const bool hasWork = command.work != nullptr;
  const bool on = hasWork && command.allowed && HasObject(command);
  if (command.item) {
    command.item->setEnabled(on);
    command.item->setStatusTip(ToQt(language_.In(WhyOff(command))));
  }
  if (command.row->itemFollows) command.item->setIcon(command.button->icon());
  if (command.button) command.button->setEnabled(command.row->keyFollows ? on : hasWork && command.buttonAllowed);
}

bool Commands::HasObject(const Command& command) {
  const bool isOffered = !command.row->itemFollows || (command.button->isVisible() && command.buttonAllowed);
  return command.conditionHolds && isOffered;
}

OperatorText Commands::WhyOff(const Command& command) const {
  if (!command.work) return text::NotInThisVersion;
  if (!command.allowed) return text::NotInThisStatus + session_.CurrentStatus;
  return HasObject(command) ? OperatorText() : text::NothingForThis;
}

Commands::Command* Commands::Find(std::string_view name) {
  const auto found = std::find_if(commands_.begin(), commands_.end(),
                                  [&](const Command& command) { return command.row->Name() == name; });
  return found == commands_.end() ? nullptr : &*found;
}

}  // namespace velk
