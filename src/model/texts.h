#pragma once

#include "base/message_text.h"

/// Words of the status, and what every folder calls the same. Each with its number in the message database, which never
/// changes its meaning.
namespace velk::text {

// Acquisition
inline constexpr MessageText StatusAcquiringData{252, "Acquiring Data"};
inline constexpr MessageText StatusReady{2000, "Ready"};
inline constexpr MessageText StatusCheckingHardware{2001, "Checking Hardware"};
inline constexpr MessageText StatusReadyToAcquire{2002, "Ready to Acquire"};
inline constexpr MessageText StatusAcquiringPaused{2003, "Acquiring Paused"};
inline constexpr MessageText StatusConfirmingFileFormat{2004, "Confirming File Format"};
inline constexpr MessageText StatusReadyToPlayback{2005, "Ready to Playback"};
inline constexpr MessageText StatusPlayingBack{2006, "Playing Back"};
inline constexpr MessageText StatusPlayingBackPaused{2007, "Playing Back Paused"};
inline constexpr MessageText Pause{2012, "Pause"};
inline constexpr MessageText Resume{2013, "Resume"};
inline constexpr MessageText Start{2014, "Start"};
inline constexpr MessageText PlaybackMenu{2015, "Playback"};
inline constexpr MessageText DataAcquisitionMenu{2016, "&Data Acquisition"};
inline constexpr MessageText CurrentFile{2018, "Current File: "};

// The log and the settings
inline constexpr MessageText DefaultParameterName{2208, "Parameter"};
inline constexpr MessageText SameNameBefore{2202,
                                            "Cannot have two parameters with the same name, please change name of ("};
inline constexpr MessageText SameNameAfter{2203, ")"};

// What is asked about a parameter in tables, dialogs and charts
inline constexpr MessageText NumberFormatTitle{2280, "Number Format"};
inline constexpr MessageText NumberFormatPrompt{2281, "Select Number Format"};
inline constexpr MessageText SelectColour{2282, "Select a color for "};
inline constexpr MessageText MinimumNotBelow{2283, "Minimum scale must be less than maximum scale"};
inline constexpr MessageText NumberUnclear{
    2284, "This number can be read in two ways. Write one decimal point or comma, and nothing between the thousands."};
inline constexpr MessageText NumberTooLarge{2299, "This number is too large."};

// The choice of a file
inline constexpr MessageText NoExtensionBefore{2903, "Filename -  "};
inline constexpr MessageText NoExtensionAfter{2904, "  has no extension"};
inline constexpr MessageText FileNameIncompleteBefore{2905, "File name -  "};
inline constexpr MessageText FileNameIncompleteAfter{2906, "  incomplete"};
inline constexpr MessageText NoSuchFileBefore{2907, "File -  "};
inline constexpr MessageText NoSuchFileAfter{2908, "  does not exist"};
inline constexpr MessageText ReplaceFileBefore{2909, "["};
inline constexpr MessageText ReplaceFileAfter{2939, "] is there already. Replace it?"};

// Formulas
inline constexpr MessageText DefaultUnits{140, "Units"};

}  // namespace velk::text
