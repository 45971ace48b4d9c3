#include "settings/windows/edit_settings_commands.h"

#include "platform/dialogs/procedure.h"
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
    const std::optional<GroupChoice> groups = host_.Ask<ClearSettings>();
    if (!groups) return;
    ShowProblems(edit_, run([&] {
                   return ClearSections(edit_.session, edit_.platform.settings, edit_.platform.language, *groups);
                 }));
  });
}

void EditSettingsCommands::mnuEditUserOptions_Click() {
  RunProcedure({edit_.platform.dialogs, "mnuEditUserOptions_Click"}, [&](const Statements&) {
    if (const auto options = host_.Ask<frmUserOptions>(TextsOfUserOptions(edit_.session)))
      TakeUserOptions(edit_, *options);
  });
}

}  // namespace velk
