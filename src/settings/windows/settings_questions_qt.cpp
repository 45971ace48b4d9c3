#include "settings/windows/settings_questions_qt.h"

#include "settings/windows/clear_settings.h"
#include "settings/windows/frm_user_options.h"
#include "settings/windows/list_input_box.h"

namespace velk {

// The windows are made on the heap and watched: the parent may be destroyed while one stands, and takes it along.

std::string SettingsQuestionsQt::Choose(const ListQuestion& question) {
  const QPointer<ListInputBox> window = new ListInputBox(translation_, question, parent_);
  const std::string chosen = windows_.Run(window.data()) ? window->Chosen() : std::string();
  delete window;
  return chosen;
}

std::optional<GroupChoice> SettingsQuestionsQt::GroupsToClear() {
  const QPointer<ClearSettings> window = new ClearSettings(translation_, parent_);
  std::optional<GroupChoice> choice;
  if (windows_.Run(window.data())) choice = window->Choice();
  delete window;
  return choice;
}

void SettingsQuestionsQt::UserOptions(const UserOptionTexts& shown,
                                      const std::function<bool(const UserOptionTexts&)>& accept) {
  const QPointer<frmUserOptions> window = new frmUserOptions(translation_, shown, accept, parent_);
  windows_.Run(window.data());
  delete window;
}

}  // namespace velk
