#pragma once

namespace velk {

class MainForm;

/// The toolbar keys Edit and Tools, which pop their menus up, and the keyboard's way to the toolbar: F6 takes it there
/// and back.
class ToolbarMenus {
 public:
  explicit ToolbarMenus(MainForm& form);

 private:
  void PopUp(const char* key, const char* menu);
  void MakeReachableByKeyboard();
  void SwitchFocus();

  MainForm& form_;
};

}  // namespace velk
