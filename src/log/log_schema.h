#pragma once

#include <string>
#include <vector>

#include "log/field_names.h"
#include "platform/database/catalog.h"

namespace velk {

inline constexpr const char* kLogData = "logData";
inline constexpr const char* kGraphSettings = "GraphSettings";
inline constexpr const char* kSummaryReport = "SummaryReport";

/// The index over Date and Time of logData, by which a page of history is found.
inline constexpr const char* kLogDataTimes = "logDataTimes";

/// Fields of logData ahead of the first channel: ID, Date, Time. Channel i is field i + 2, counted from 0.
inline constexpr int kFieldsBeforeChannels = 3;

// Names in, tables out.

/// One row a logged sample: ID, Date, Time and a column for each channel.
Table LogDataTable(const std::vector<std::string>& channels);
/// One row a channel: what a machine that has other settings needs to play the file back.
Table GraphSettingsTable();
/// One row a line of the report: Date, Time, the included channels, the additional fields, the comment. `included` says
/// of each channel whether it has a column.
Table SummaryReportTable(const SummaryColumns& columns, const std::vector<bool>& included);

/// Whether a logData table has a column for channel `number` of the channels of these names.
bool TakesChannel(const Table& logData, const std::vector<std::string>& names, int number);
/// Whether the columns stand in the order of the channels: rows are written by position.
bool HasOrderOf(const Table& logData, const std::vector<std::string>& names);
/// Whether the table begins as logData does and has room for so many channels.
bool HasRoomFor(const Table& logData, int channels);

}  // namespace velk
