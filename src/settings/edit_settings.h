#pragma once

#include <functional>

#include "model/session.h"
#include "platform/platform.h"
#include "settings/settings_questions.h"

namespace velk {

/// What the commands below need, and what they ask the shell to do.
struct EditSettings {
  Session& session;
  Platform& platform;
  SettingsQuestions& questions;
  std::function<void()> resetConnection;  ///< own units: a template may have changed the port settings
  std::function<void()> saveAndEnd;       ///< saves the settings and ends the program without its question
};

void mnuEditSaveTemplate_Click(const EditSettings& edit);
void mnuEditLoadTemplate_Click(const EditSettings& edit);
void mnuEditDeleteTemplate_Click(const EditSettings& edit);
void mnuEditClear_Click(const EditSettings& edit);
void mnuEditUserOptions_Click(const EditSettings& edit);
void mnuEditLanguage_Click(const EditSettings& edit);

}  // namespace velk
