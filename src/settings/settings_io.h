#pragma once

#include <string>
#include <vector>

#include "base/language.h"
#include "model/session.h"
#include "platform/dialogs/procedure.h"
#include "platform/settings/settings.h"

namespace velk {

/// Fills the session from application "VELK2", then the list of templates. A missing key gives its preset. A stored
/// value that is none of its key's type, or would be no use ("0 sampling rate", graph 65), gives the preset too and is
/// told; the rest is loaded all the same.
///
/// Gives one text for each problem, for the operator to see: first what the store could not read of its files, then
/// where a file with a problem is kept as it was, then "section/key: what is wrong".
std::vector<OperatorText> LoadSettings(Session& session, SettingsStore& store, const Language& language);

/// What a box shows of these problems: one a line, of many the first twenty and how many more there are. Empty for
/// none.
OperatorText ProblemText(const std::vector<OperatorText>& problems);

/// The save at the exit: writes all of it back, NumberOfParameters aside, and puts it on the disk. Raises the store's
/// file errors.
void SaveSettings(Session& session, SettingsStore& store);

/// Whenever the operator has changed something: writes all of it with NumberOfParameters, without which the channels
/// of a template that was only loaded would stand under the count of others after a power cut. Raises the store's file
/// errors.
void KeepSettings(Session& session, SettingsStore& store);

/// The same as a procedure: Cancel in its error's box leaves the save only.
void KeepSettings(const Report& report, Session& session, SettingsStore& store);

/// Writes NumberOfParameters, which comes to the disk with the next save.
void StoreParameterCount(Session& session, SettingsStore& store);

}  // namespace velk
