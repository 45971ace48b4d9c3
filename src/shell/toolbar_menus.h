#pragma once

#include <QKeySequence>

#include "model/session.h"

class QMenu;

namespace velk {

class MainForm;

/// What opens menus: the toolbar keys Edit and Tools pop theirs up, and the menu Tools looks at its items first. F6
/// takes the keyboard to the bars and back; buttons that no menu has get a key.
class ToolbarMenus {
 public:
  ToolbarMenus(MainForm& form, const Session& session);

  /// The menu Tools is about to open: items that would have nothing to work on are off, whatever the status allows.
  void mnuTools_Click();

 private:
  void PopUp(const char* key, const char* menu);
  void MakeReachableByKeyboard();
  void GiveKey(const char* key, const QKeySequence& shortcut);
  void SwitchFocus();

  MainForm& form_;
  const Session& session_;
};

}  // namespace velk
