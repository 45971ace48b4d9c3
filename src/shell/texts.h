#pragma once

#include "base/message_text.h"

/// What the main window says. Each with its number in the message database, which never changes its meaning.
namespace velk::text {

// The frame
inline constexpr MessageText BaseTitle{2041, "Velk Acquisition Console (VELK) - version"};
inline constexpr MessageText SureToExit{2042, "Are you sure you want to exit VELK?"};
inline constexpr MessageText IsRecordingTo{2580, "A job is recorded to "};
inline constexpr MessageText RowsSoFar{2581, "Rows so far: "};
inline constexpr MessageText RecordingEnds{2582, ". The recording ends with VELK; the file is kept."};
inline constexpr MessageText ContinueWithPort{2043, "Continue with current serial port settings?"};
// Stop has the letter P already
inline constexpr MessageText MenuStart{2621, "&Start"};
inline constexpr MessageText MenuPause{2622, "Pa&use"};
inline constexpr MessageText MenuResume{2623, "&Resume"};
inline constexpr MessageText NoSimulatedUnit{2633,
                                             "The simulated unit is not there: velk_sim_unit is missing beside VELK."};
inline constexpr MessageText TreatingPressure{3400, "Treating Pressure"};
inline constexpr MessageText SlurryRate{3401, "Slurry Rate"};
inline constexpr MessageText SlurryDensity{3402, "Slurry Density"};
inline constexpr MessageText AnnulusPressure{3403, "Annulus Pressure"};
inline constexpr MessageText StageTotal{3404, "Stage Total"};
inline constexpr MessageText ReopenGraph{2629, "Open Again: "};
inline constexpr MessageText NotInThisStatus{2630, "Not possible in the status "};
inline constexpr MessageText NothingForThis{2631, "Not possible: there is nothing to do this with."};
inline constexpr MessageText NotInThisVersion{2632, "Not part of this version."};
inline constexpr MessageText PresentProtocol{2583, "Protocol: "};
inline constexpr MessageText PresentDevice{2584, "Device: "};
inline constexpr MessageText PresentSpeed{2585, "Speed: "};
inline constexpr MessageText PresentChannels{2586, "Channels: "};
inline constexpr MessageText StartUpErrorTitle{2044, "Start Up Error"};
inline constexpr MessageText StartUpErrorLine{2045, "Line = "};
inline constexpr MessageText OfferNewStart{
    2067, "The choice takes full effect after a new start of VELK. Save the settings and start VELK anew now?"};
inline constexpr MessageText PlaybackSpeed{2105, "Playback Speed "};
inline constexpr MessageText ChooseCompanyLogo{2060, "Choose a picture for the company logo"};
inline constexpr MessageText Pictures{2061, "Pictures"};
inline constexpr MessageText PictureCannotBeRead{
    2062, "This file is no picture that can be read, or is larger than 64 megapixels: "};
inline constexpr MessageText LicenceQt{2063, "Qt 6: GNU Lesser General Public License, version 3"};
inline constexpr MessageText LicenceSqlite{2064, "SQLite 3: public domain"};
inline constexpr MessageText LicenceCppRuntime{
    2065, "GNU C++ library: GNU General Public License, version 3, with the GCC Runtime Library Exception"};
inline constexpr MessageText LicenceC{2066, "GNU C library: GNU Lesser General Public License, version 2.1"};

}  // namespace velk::text
