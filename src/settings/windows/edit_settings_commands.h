#pragma once

#include <functional>

#include "i18n/windows/window_host.h"
#include "model/command_binder.h"
#include "settings/clear_sections.h"
#include "settings/edit_settings.h"

namespace velk {

/// The commands of the menu Edit Settings that work on settings and templates.
class EditSettingsCommands {
 public:
  /// `afterwards` runs behind each command: whatever shows a setting shows it anew.
  EditSettingsCommands(WindowHost& host, EditSettings edit, std::function<void()> afterwards)
      : host_(host), edit_(std::move(edit)), afterwards_(std::move(afterwards)) {}

  void Bind(CommandBinder& commands);

  void mnuEditClear_Click();
  void mnuEditUserOptions_Click();

 private:
  bool IsSureToClear(const GroupChoice& groups) const;
  void RememberFor(const GroupChoice& groups);

  WindowHost& host_;
  const EditSettings edit_;
  const std::function<void()> afterwards_;
  BeforeClearing beforeClearing_;  ///< what Take Back brings
};

}  // namespace velk
