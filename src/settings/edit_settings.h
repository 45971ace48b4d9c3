#pragma once

#include <functional>
#include <vector>

#include "base/operator_text.h"
#include "model/session.h"
#include "platform/platform.h"

namespace velk {

/// What the commands below need, and what they ask the shell to do.
struct EditSettings {
  Session& session;
  Platform& platform;
  std::function<void()> resetConnection;  ///< own units: a template may have changed the port settings
  std::function<void()> saveAndEnd;       ///< saves the settings and ends the program without its question
  std::function<void()> offerNewStart;    ///< a template's protocol takes full effect after the next start only
};

// Those that ask with boxes only; the others stand in settings/windows/edit_settings_commands.h.
void mnuEditSaveTemplate_Click(const EditSettings& edit);
void mnuEditLoadTemplate_Click(const EditSettings& edit);
void mnuEditDeleteTemplate_Click(const EditSettings& edit);
void mnuEditLanguage_Click(const EditSettings& edit);

/// Tells what could not be read when the settings were loaded again.
void ShowProblems(const EditSettings& edit, const std::vector<OperatorText>& problems);
/// Shows that the program ends for a change, which is on the disk by then, and ends it.
void EndForChange(const EditSettings& edit);

}  // namespace velk
