#pragma once

#include <string>

#include "platform/settings/settings.h"
#include "shell/application.h"

namespace velk::demo {

/// Names the channels of a unit that tells of a trip into a well, as the simulator does with --trip.
void SetUpTrip(SettingsStore& settings);

/// Chooses Live Survey from the menu of a program that records, all samples to be used, and prints behind which row it
/// has begun: "survey behind row 3".
void BeginSurvey(Application& application, int interval);

/// Opens the table of the well profile and the view, saves a picture of the latter and prints what the table holds:
/// "path of 41 stations down to 1000".
void ShowSurvey(Application& application, const std::string& picture);

}  // namespace velk::demo
