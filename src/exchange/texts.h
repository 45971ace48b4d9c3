#pragma once

#include "base/message_text.h"

/// What the ways of data in and out say. Each with its number in the message database, which never changes its meaning.
namespace velk::text {

// The progress of long work
inline constexpr MessageText OpeningFile{2840, "Opening the file"};
inline constexpr MessageText ReadingRows{2841, "Writing rows to the log"};
inline constexpr MessageText MakingIndex{2842, "Making the index"};
inline constexpr MessageText Exporting{2843, "Exporting"};
inline constexpr MessageText SortingRows{2844, "Looking for the order of the rows"};

// A text file that becomes a log
inline constexpr MessageText ImportCsv{2845, "Convert data files"};
inline constexpr MessageText TextFilesFilter{2846, "Text Files (*.csv)|*.csv"};
inline constexpr MessageText CurrentFileBefore{2847, "Current file ("};
inline constexpr MessageText CurrentFileAfter{2848, ")"};
inline constexpr MessageText NumberOfColumns{2849, "Number of columns = "};
inline constexpr MessageText EstimatedRows{2850, "Estimated number of rows = "};
inline constexpr MessageText NamesWithoutDate{
    2851,
    "The first line holds names, but they don't begin with Date and Time. It would be taken for a row without a time, "
    "and the import would end there."};
inline constexpr MessageText DividedBySemicolons{
    2852, "The fields are divided by \";\". Only commas divide fields: all of a line would be one field."};
inline constexpr MessageText FileIsEmpty{2853, "The file is empty."};
inline constexpr MessageText NotCreated{2854, "Database file not created"};
inline constexpr MessageText NotCompatableSelectAnother{2855, "file is not compatable, select another? "};
inline constexpr MessageText ImportSettingsQuestion{2856, "Do you wish to import graph settings from another file?"};
inline constexpr MessageText ConvertionCompleted{2857, "Convertion Completed "};
inline constexpr MessageText SettingsNotCompatable{2858, "File not compatable "};
inline constexpr MessageText ErrorNumberIs{2859, "Error number "};
inline constexpr MessageText LineWithoutTimeBefore{2860, "Line "};
inline constexpr MessageText LineWithoutTimeAfter{
    2861, " has no date and time that can be read. The import ended there; the log holds the rows ahead of it: "};
inline constexpr MessageText NoStartDate{2862, "Enter the date of the first row, such as 21-Nov-2026."};
inline constexpr MessageText NoColumnsToImport{2863, "There is no column that a log could hold."};
inline constexpr MessageText LogIsOpenBefore{2864, "The log ["};
inline constexpr MessageText LogIsOpenAfter{
    2865, "] is being recorded or played back here. Choose another file, or end that first."};
inline constexpr MessageText NoSuchTextFile{2884, "There is no such file."};
inline constexpr MessageText SaveLogAs{2866, "Write to DataBase"};
inline constexpr MessageText DataFilesFilterLarge{2867, "Data Files (*.mdb)|*.mdb"};
inline constexpr MessageText SettingsSource{2868, "Graph settings from"};
inline constexpr MessageText RowsInFile{2869, "Rows: "};
inline constexpr MessageText RowsInFileSoFar{2870, ", more are being read"};
inline constexpr MessageText ChosenBefore{2871, "Chosen: "};
inline constexpr MessageText ChosenOf{2872, " of at most "};

// A log that becomes a text file
inline constexpr MessageText ExportLogToCsv{2874, "Export MDB to CSV"};
inline constexpr MessageText ExportLogToXml{2875, "Export MDB to XML"};
inline constexpr MessageText ExportSummaryToCsv{2876, "Export Summary Report to CSV"};
inline constexpr MessageText DataFilesToOpen{2877, "Data files (*.mdb)|*.mdb"};
inline constexpr MessageText TextFilesToSave{2878, "Text files (*.csv)|*.csv"};
inline constexpr MessageText XmlFilesToSave{2879, "XML files (*.xml)|*.xml"};
inline constexpr MessageText SupplyOutputName{2880, "Supply output file name"};
inline constexpr MessageText NothingToExport{2881, "No parameters to export"};
inline constexpr MessageText FileExistsOverwrite{2882, "File Exists, overwrite?"};
inline constexpr MessageText ExportSourceTitle{2885, "Open File"};
inline constexpr MessageText ExportOutputTitle{2886, "Output File"};
inline constexpr MessageText OutputIsTheSource{2883, "The file to write is the log itself. Choose another name."};

// A log of the Jet format
inline constexpr MessageText ForeignUnreadable{2889, "The file is damaged, or no database that can be read: "};
inline constexpr MessageText ReadingForeignLog{2890, "Reading the log"};
inline constexpr MessageText RowsLostBefore{
    3049, "The file is damaged. What could be read of it is shown; so many rows of it could not be read: "};

// A database that another program fills
inline constexpr MessageText InvalidParameters{3040, "Invalid parameters are supplied"};
inline constexpr MessageText FieldUnit{3041, "Unit"};
inline constexpr MessageText LiveDatabaseTitle{3042, "Import External Live Data"};
inline constexpr MessageText SelectDateAndTime{3043, "Please select Time and Date data field?"};
inline constexpr MessageText FieldNotValid{3044, "The field ["};
inline constexpr MessageText NotValidDate{3045, "] is not VALID date type"};
inline constexpr MessageText NotValidTime{3046, "] is not VALID time type"};
inline constexpr MessageText NoFieldsSelected{3047, "No fields are selected"};
inline constexpr MessageText ReadingTables{3048, "Reading the tables"};
inline constexpr MessageText FieldProperties{3050, "Properties..."};

}  // namespace velk::text
