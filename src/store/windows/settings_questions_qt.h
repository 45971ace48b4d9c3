#pragma once

#include <QPointer>
#include <QWidget>

#include "i18n/languages.h"
#include "platform/windows/modal_windows.h"
#include "store/settings_questions.h"

namespace velk {

/// Asks with ListInputBox, ClearSettings and frmUserOptions.
class SettingsQuestionsQt : public SettingsQuestions {
 public:
  explicit SettingsQuestionsQt(Dialogs& dialogs) : windows_(dialogs) {}

  /// For the language, which is known only after the first settings were read.
  void SetLanguages(const clsLanguages& languages) { languages_ = languages; }
  /// The main window, over which the windows stand.
  void SetParent(QWidget* parent) { parent_ = parent; }

  std::string Choose(const ListQuestion& question) override;
  std::optional<GroupChoice> GroupsToClear() override;
  void UserOptions(const UserOptionTexts& shown, const std::function<bool(const UserOptionTexts&)>& accept) override;

 private:
  ModalWindows windows_;
  clsLanguages languages_;
  QPointer<QWidget> parent_;
};

}  // namespace velk
