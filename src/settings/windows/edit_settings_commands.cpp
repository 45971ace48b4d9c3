#include "settings/windows/edit_settings_commands.h"

#include <optional>

#include "platform/dialogs/procedure.h"
#include "settings/settings_io.h"
#include "settings/settings_keys.h"
#include "settings/windows/clear_settings.h"
#include "settings/windows/frm_user_options.h"

namespace velk {

void EditSettingsCommands::Bind(CommandBinder& commands) {
  const auto bind = [&](const char* item, std::function<void()> work) {
    commands.Bind(item, [this, work = std::move(work)] {
      work();
      afterwards_();
    });
  };
  bind("mnuEditSaveTemplate", [this] { mnuEditSaveTemplate_Click(edit_); });
  bind("mnuEditLoadTemplate", [this] { mnuEditLoadTemplate_Click(edit_); });
  bind("mnuEditDeleteTemplate", [this] { mnuEditDeleteTemplate_Click(edit_); });
  bind("mnuEditClear", [this] { mnuEditClear_Click(); });
  bind("mnuEditUserOptions", [this] { mnuEditUserOptions_Click(); });
  bind("mnuEditLanguage", [this] { mnuEditLanguage_Click(edit_); });
}

void EditSettingsCommands::mnuEditClear_Click() {
  RunProcedure({edit_.platform.dialogs, "mnuEditClear_Click"}, [&](const Statements& run) {
    const std::optional<ClearChoice> choice = host_.Ask<ClearSettings>(beforeClearing_ != BeforeClearing{});
    if (!choice) return;
    Platform& platform = edit_.platform;
    if (choice->takeBack) {
      run([&] { KeepSettings(edit_.session, platform.settings); });
      ShowProblems(edit_, run([&] {
                     return TakeBackClearing(edit_.session, platform.settings, platform.language, beforeClearing_);
                   }));
      beforeClearing_ = {};
      return;
    }
    if (!IsEmpty(choice->groups)) {
      if (!IsSureToClear(choice->groups)) return;
      run([&] { KeepSettings(edit_.session, platform.settings); });
      RememberFor(choice->groups);
    }
    ShowProblems(
        edit_, run([&] { return ClearSections(edit_.session, platform.settings, platform.language, choice->groups); }));
  });
}

/// Of a group that is cleared twice the first time counts: by the second one it holds little but presets.
void EditSettingsCommands::RememberFor(const GroupChoice& groups) {
  for (std::size_t i = 0; i < groups.size(); ++i)
    if (groups[i] && !beforeClearing_[i]) beforeClearing_[i] = edit_.platform.settings.TextOf(kLiveSettings);
}

bool EditSettingsCommands::IsSureToClear(const GroupChoice& groups) const {
  return edit_.platform.dialogs.Message({.text = ClearQuestion(groups),
                                         .buttons = Buttons::YesNo,
                                         .icon = BoxIcon::Question,
                                         .safeDefault = true}) == Answer::Yes;
}

void EditSettingsCommands::mnuEditUserOptions_Click() {
  RunProcedure({edit_.platform.dialogs, "mnuEditUserOptions_Click"}, [&](const Statements&) {
    const auto options = host_.Ask<frmUserOptions>(TextsOfUserOptions(edit_.session));
    if (!options) return;
    TakeUserOptions(edit_.session, *options);
    // Ahead of the box, which may stand for hours.
    KeepSettings({edit_.platform.dialogs, "mnuEditUserOptions_Click"}, edit_.session, edit_.platform.settings);
    EndForChange(edit_);
  });
}

}  // namespace velk
