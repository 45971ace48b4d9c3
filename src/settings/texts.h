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

// Clearing the settings
inline constexpr MessageText TheseSettingsGo{2587, "These settings go back to what a new program has:"};
inline constexpr MessageText GroupGeneral{2588, "General"};
inline constexpr MessageText GroupProtocol{2589, "Protocol and port"};
inline constexpr MessageText GroupPrinting{2590, "Graph printing"};
inline constexpr MessageText GroupParameters{2591, "Parameters: names, units, scales, alarms, graphs"};
inline constexpr MessageText GroupPlayback{2592, "Playback parameters"};
inline constexpr MessageText GroupFormulae{2593, "Additional parameters with their formulas"};
inline constexpr MessageText ClearThem{
    2594, "Until VELK ends, Take Back in the same window brings them back. Clear them now?"};

// Templates that come with the program, and what loading one does
inline constexpr MessageText TemplateBlankCr{2595, "Formatted lines (blank, CR)"};
inline constexpr MessageText TemplateCommaCrLf{2596, "Formatted lines (comma, CR LF)"};
inline constexpr MessageText TemplateAnyLines{2597, "Any serial lines"};
inline constexpr MessageText LoadingReplaces{2598, "Loading this template replaces:"};
inline constexpr MessageText ReplacedChannels{2599, "Channels: "};
inline constexpr MessageText ReplacedFormulae{2600, "Additional parameters with their formulas: "};
inline constexpr MessageText ReplacedProtocol{2601, "Protocol: "};
inline constexpr MessageText LoadItNow{2602, "Load it now?"};
inline constexpr MessageText SavedButNotLoadable{2603,
                                                 "The template is saved. It holds additional parameters, and a "
                                                 "template that does can't be loaded again: remove them "
                                                 "and save it once more where it is to be loaded later."};

// The table of parameters
inline constexpr MessageText HeadingTag{3312, "Tag"};
inline constexpr MessageText HeadingName{2273, "Name"};
inline constexpr MessageText HeadingUnits{2274, "Units"};
inline constexpr MessageText HeadingMinimum{2275, "Minimum"};
inline constexpr MessageText HeadingMaximum{2276, "Maximum"};
inline constexpr MessageText HeadingColor{2277, "Color"};
inline constexpr MessageText HeadingFormat{2278, "Format"};
inline constexpr MessageText HeadingLowerAlarm{2279, "Lower Alarm"};
inline constexpr MessageText HeadingUpperAlarm{2285, "Upper Alarm"};
inline constexpr MessageText HeadingGraph{2286, "Graph"};
inline constexpr MessageText HeadingGain{2287, "Gain"};
inline constexpr MessageText HeadingOffset{2288, "Offset"};
inline constexpr MessageText MaximumNotAbove{2289, "Graph maximum scales must be greater than minimum scales"};
inline constexpr MessageText GraphOutOfRange{
    2290, "The graph is a number from 0 to 64: curves of one number share a window, 0 hides the curve."};
inline constexpr MessageText NotAColour{2291, "A color is # and six digits from 0 to F, such as #C8102E."};
inline constexpr MessageText TableHint{
    2292, "Type into a cell. Click a color or a format to choose another one; F2 does it for all selected rows."};
inline constexpr MessageText PastedInPart{
    2298, "What was copied is larger than the table from this cell on: the rest was left out."};
inline constexpr MessageText GraphOfRows{2293, "Enter the graph number of the selected rows"};

// The properties of one parameter
inline constexpr MessageText WrappingOn{2294, "On"};
inline constexpr MessageText WrappingOff{2295, "Off"};
inline constexpr MessageText NoDataSaved{2296, "No data is saved"};
inline constexpr MessageText NoDataExist{2297, "No data exist"};

}  // namespace velk::text
