#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/language.h"
#include "model/session.h"
#include "model/settings_names.h"
#include "platform/settings/settings.h"

namespace velk {

/// Fills the session from a template, with the presets of LoadSettings, and takes over the constants of the unit that
/// it names. What templates don't hold stays. Raises FileNotFound where there is no such template, DeviceIOError where
/// its file is damaged, and the error of the first value that can't be read, with its section and key; the session is
/// as it was before then.
void LoadTemplate(Session& session, SettingsStore& store, const Language& language, const std::string& name);

/// Writes the template to the disk, but doesn't list it. Raises BadFileName for a name that is too long, and the
/// store's file errors; the template is then as it was on the disk.
void SaveTemplate(Session& session, SettingsStore& store, const std::string& name);

/// Puts the templates that come with the program into an empty list: protocols that the list of Serial Port can't
/// select. Only where there was never a list, so that those that the operator has deleted stay away. Raises the store's
/// file errors.
void AddReadyMadeTemplates(Session& session, SettingsStore& store, const Language& language);

/// What the operator is asked ahead of LoadTemplate: what of the present set-up goes.
OperatorText LoadTemplateQuestion(const Session& session);

/// Takes the template off the store and the list, then loads the live settings: a session that was set up by a template
/// doesn't keep what came from it. Gives the problems of LoadSettings; raises the store's file errors.
std::vector<OperatorText> DeleteTemplate(Session& session, SettingsStore& store, const Language& language,
                                         const std::string& name);

bool HasTemplate(const Session& session, std::string_view name);

/// Fills TemplateNames; gives a text for each value that could not be read.
std::vector<OperatorText> LoadTemplateList(Session& session, SettingsStore& store, const Language& language);

/// Writes TemplateNames, and puts it and whatever else waits on the disk. Raises the store's file errors.
void SaveTemplateList(Session& session, SettingsStore& store);

}  // namespace velk
