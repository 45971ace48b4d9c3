#pragma once

#include "base/message_text.h"

/// What settings and templates say. Each with its number in the message database, which never changes its meaning.
namespace velk::text {

// The log and the settings
inline constexpr MessageText SettingOutOfRange{2250, "The value is out of range"};
inline constexpr MessageText SettingsFileKept{2251, "The file as it was is kept as "};
inline constexpr MessageText SaveTemplateTitle{2260, "Save Settings Template"};
inline constexpr MessageText SaveTemplatePrompt{2261, "Select or enter the template name"};
inline constexpr MessageText LoadTemplateTitle{2262, "Load Settings Template"};
inline constexpr MessageText LoadTemplatePrompt{2263, "Select the template to load"};
inline constexpr MessageText DeleteTemplateTitle{2264, "Delete Settings Template"};
inline constexpr MessageText DeleteTemplatePrompt{2265, "Select the template to delete"};
inline constexpr MessageText TemplateNameTooLong{2266, "The template name is too long"};
inline constexpr MessageText SelectLanguage{2267, "Select language"};
inline constexpr MessageText MustEnd{2268, "VELK MUST NOW END for this change to take effect"};
inline constexpr MessageText UnacceptableValues{2269, "Unacceptable values"};
inline constexpr MessageText MinimumFontSize{2270, "Minimum font size is 6"};
inline constexpr MessageText MaximumFontSize{2271, "Maximum font size is 20"};
inline constexpr MessageText MinimumCurves{2272, "Minimum number of curves per graph is 1"};

}  // namespace velk::text
