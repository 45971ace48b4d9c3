#include "wells/windows/survey_command.h"

#include "platform/dialogs/procedure.h"
#include "settings/settings_keys.h"
#include "wells/windows/edit_sur.h"

namespace velk {

void TakeUserUnits(Well& well, const Platform& platform) {
  RunProcedure({platform.dialogs, "ReadUserUnits"}, [&](const Statements& run) {
    run([&] { well.Units.SetUser(ReadUserUnits(platform.settings, kLiveSettings)); });
  });
}

void mnuToolsSurvey_Click(WindowHost& host, Well& well, const Platform& platform, const std::string& directory,
                          const std::function<void()>& beep) {
  const auto keepUnits = [&](const UserUnits& units) {
    well.Units.SetUser(units);
    RunProcedure({platform.dialogs, "cmdConvert_Click"},
                 [&](const Statements& run) { run([&] { SaveUserUnits(platform.settings, kLiveSettings, units); }); });
  };
  if (auto edited = host.Ask<EditSur>(well, SurveyAccess{directory, beep, keepUnits})) well = std::move(*edited);
}

}  // namespace velk
