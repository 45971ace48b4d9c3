#pragma once

#include <QPointer>
#include <QWidget>

#include "i18n/translation.h"
#include "platform/windows/modal_windows.h"
#include "settings/settings_questions.h"

namespace velk {

/// Asks with ListInputBox, ClearSettings and frmUserOptions.
class SettingsQuestionsQt : public SettingsQuestions {
 public:
  SettingsQuestionsQt(Dialogs& dialogs, const Translation& translation)
      : translation_(translation), windows_(dialogs) {}

  /// The main window, over which the windows stand.
  void SetParent(QWidget* parent) { parent_ = parent; }

  std::string Choose(const ListQuestion& question) override;
  std::optional<GroupChoice> GroupsToClear() override;
  void UserOptions(const UserOptionTexts& shown, const std::function<bool(const UserOptionTexts&)>& accept) override;

 private:
  const Translation& translation_;
  ModalWindows windows_;
  QPointer<QWidget> parent_;
};

}  // namespace velk
