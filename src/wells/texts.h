#pragma once

#include "base/message_text.h"

/// What the well tools say. Each with its number in the message database, which never changes its meaning.
namespace velk::text {

// Units
inline constexpr MessageText UnitFeet{612, "feet"};
inline constexpr MessageText UnitDegrees{613, "degrees"};
inline constexpr MessageText UnitMetres{614, "m"};
inline constexpr MessageText UnitsApiEnglish{2900, "API-English"};
inline constexpr MessageText UnitsMetric{2901, "Metric"};
inline constexpr MessageText UnitsUserDefined{2902, "User Defined"};

// Survey files
inline constexpr MessageText SurveyFileEmpty{2910,
                                             "The file holds no survey. Its first line has to be the number of rows."};
inline constexpr MessageText SurveyFileShort{2911, "The file ends ahead of its last row."};
inline constexpr MessageText SurveyRowsAnnounced{2912, "Rows announced: "};
inline constexpr MessageText SurveyRowsRead{2913, ", read and kept: "};
inline constexpr MessageText SurveyUnitUnknown{
    2914,
    "The number behind the last row is none of the units 0, 1 and 2. The present unit stays. Is the number of rows "
    "right?"};
inline constexpr MessageText WellSectionsLeftOut{
    2915, "The well has more than 20 sections. Those below the 20th are left out."};

// The rows of a survey
inline constexpr MessageText HeadingDepth{2920, "Depth"};
inline constexpr MessageText HeadingInclination{2921, "Inclination"};
inline constexpr MessageText HeadingAzimuth{2922, "Azimuth"};
inline constexpr MessageText CellIsNoNumber{2923, "This is no number. What it begins with counts, or 0."};
inline constexpr MessageText DepthNotBelow{2924, "A depth has to be below the one above it."};
inline constexpr MessageText RowIsLeftOut{2925,
                                          "The survey ends at the first row without a depth: this one is left out."};

// The editor of the survey
inline constexpr MessageText SurveyTitle{2930, "Well Survey: "};
inline constexpr MessageText NewSurveyTitle{2931, "Well Survey"};
inline constexpr MessageText OpenSurveyTitle{2932, "Open a Survey"};
inline constexpr MessageText SaveSurveyTitle{2933, "Save the Survey"};
inline constexpr MessageText SurveyFilesToOpen{
    2934, "Survey Files (*.d15) |*.d15|Well Files (*.dt5) |*.dt5|All Files (*.*) |*.*"};
inline constexpr MessageText SurveyFilesToSave{2935, "Survey Files (*.d15) |*.d15"};
inline constexpr MessageText SurveyFileMissing{2936, " does not exist, please check path and file name"};
inline constexpr MessageText LeaveSurvey{2937, "Leave the survey without what you have changed?"};
inline constexpr MessageText FaultInRow{2938, "Row "};
inline constexpr MessageText LiveSurveyGoesOn{
    3230,
    "A live survey makes this well from the log and would take the place of these rows within seconds. Save them to a "
    "file, or end it first: Tools, Live Survey, STOP."};
inline constexpr MessageText SurveyHint{
    2940, "Type or paste depth, inclination and azimuth. An empty angle is that of the row above."};

// At the exit
inline constexpr MessageText SurveyGoesWithProgram{
    3238, "The well survey holds rows that are in no file: they go with the program."};

// Conversion of units: these with the present system between them
inline constexpr MessageText ConvertUnitsFrom{2941, "Convert Units from "};
inline constexpr MessageText ConvertUnitsTo{2942, " to"};
inline constexpr MessageText UserLengthNotAbove{2943, "The length has to be a number above 0."};

// The table of the computed stations
inline constexpr MessageText ProfileTvd{2950, "True Vertical Depth"};
inline constexpr MessageText ProfileNorth{2951, "Horizon. Distance North"};
inline constexpr MessageText ProfileEast{2952, "Horizon. Distance East"};
inline constexpr MessageText ProfileDogLeg{2953, "Dog leg"};
inline constexpr MessageText ProfileDogLegUnit{2954, "deg/100 "};
inline constexpr MessageText ClientName{2955, "Client Name:"};
inline constexpr MessageText WellName{2956, "Well Name:"};
inline constexpr MessageText JobDescription{2957, "Job Description:"};

// Its pages; the foot has the date, and the number of the page and how many there are
inline constexpr MessageText ProjectBefore{2958, "Project - "};
inline constexpr MessageText ReportInput{2959, "Input Data"};
inline constexpr MessageText ReportResults{2960, "Well Profile Results"};
inline constexpr MessageText ReportPage{2961, "Page "};
inline constexpr MessageText ReportPageOf{2962, " of "};
inline constexpr MessageText ReportPrinted{2963, "Printed "};

// Its window
inline constexpr MessageText SaveProfileTitle{2964, "Print to File"};
inline constexpr MessageText OutputFiles{2965, "Output Files (*.out) |*.out"};
inline constexpr MessageText ProfilePdfFiles{2966, "PDF Files (*.pdf)|*.pdf"};
inline constexpr MessageText PrintPreview{2967, "Print Preview"};
inline constexpr MessageText ClosePreview{2968, "Close"};
inline constexpr MessageText NoPathYet{
    2969, "There is no path yet: enter or open a survey under Tools, Survey Data, and press OK."};

// The view in three dimensions
inline constexpr MessageText SceneWindowTitle{2970, "3D Well Profile: "};
inline constexpr MessageText SceneTitle{2971, "3D Well Profile"};
inline constexpr MessageText SceneDate{2972, "Date:"};
inline constexpr MessageText DepthUnitsAre{2973, "Depth units are "};
inline constexpr MessageText SpinNot{2974, "AutoScroll Off"};
inline constexpr MessageText SpinBoth{2975, "AutoScroll Both"};
inline constexpr MessageText SpinDown{2976, "AutoScroll Vertically"};
inline constexpr MessageText SpinAcross{2977, "AutoScroll Horizontally"};
inline constexpr MessageText SceneHint{
    2978, "Drag with the left button to turn, with the right one to move; the wheel goes nearer."};

// Its marks, each with the depth or the distance behind it
inline constexpr MessageText MarkDepth{3233, "TVD "};
inline constexpr MessageText MarkNorth{3234, "N  "};
inline constexpr MessageText MarkSouth{3235, "S  "};
inline constexpr MessageText MarkEast{3236, "E  "};
inline constexpr MessageText MarkWest{3237, "W  "};

// The live survey
inline constexpr MessageText QuantitySpeed{2980, "Speed"};
inline constexpr MessageText QuantityDate{2981, "Date"};
inline constexpr MessageText QuantityTime{2982, "Time"};
inline constexpr MessageText QuantityDeviation{2983, "Deviation"};
inline constexpr MessageText QuantityRpm{2984, "RPM"};
inline constexpr MessageText NothingToImport{2985, "No parameters to import"};
inline constexpr MessageText IntervalOutOfRange{2986, "The calculation interval has to be from 1 to 32767."};
inline constexpr MessageText LiveSurveyEnded{2988, "The live survey has ended; the recording goes on. "};
inline constexpr MessageText LiveSurveyWouldGo{
    3231, "A new live survey begins at the surface and takes the place of the one before. Stations of that one: "};
inline constexpr MessageText BeginLiveSurvey{3232, ". Begin it?"};
inline constexpr MessageText SurveyWouldGo{
    2987, "The survey holds rows that are in no file. A live survey takes their place. Begin it?"};

}  // namespace velk::text
