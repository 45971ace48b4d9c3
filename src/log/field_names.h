#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "model/field_name.h"

namespace velk {

/// The columns of logData behind ID, Date and Time for channels of these names, in order: the cleaned name; "BLANK" and
/// the channel's number where nothing is left or the name is "BLANK". The database tells column names apart without
/// case, so a name that is taken by an earlier column, or by ID, Date or Time, gets "_" and the channel's number behind
/// it. The same names in the same order always give the same columns.
std::vector<std::string> LogColumnNames(const std::vector<std::string>& names);

struct SummaryColumns {
  std::vector<std::string> parameters;  ///< one a channel, whether it is included or not
  std::vector<std::string> extraFields;
  std::string comments;
};

/// The columns of SummaryReport behind Date and Time. A channel has the column name that it has in logData, unless that
/// is the comments column's; an additional field never has the name of a channel, so that a column tells what it holds.
SummaryColumns SummaryColumnNames(const std::vector<std::string>& channels, const std::vector<std::string>& extraFields,
                                  const std::string& comments);

/// Whether a name begins with "BLANK", in any case.
bool BeginsWithBlank(std::string_view name);

}  // namespace velk
