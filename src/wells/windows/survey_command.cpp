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
                          const std::function<void()>& beep, const std::function<bool()>& isLive) {
  const auto keepUnits = [&](const UserUnits& units) {
    well.Units.SetUser(units);
    RunProcedure({platform.dialogs, "cmdConvert_Click"},
                 [&](const Statements& run) { run([&] { SaveUserUnits(platform.settings, kLiveSettings, units); }); });
  };
  // The rows of a live survey go on growing behind what was saved of them.
  const auto keepFile = [&](const std::string& file) {
    if (isLive()) return;
    well.SurveyFileName = file;
    well.SurveyIsKept = !file.empty();
  };
  const SurveyAccess access{directory, beep, keepUnits, keepFile, isLive};
  if (auto edited = host.Ask<EditSur>(well, access)) well = std::move(*edited);
}

}  // namespace velk
