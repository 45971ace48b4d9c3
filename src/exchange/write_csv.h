#pragma once

#include <string>
#include <vector>

#include "exchange/export_source.h"

namespace velk {

/// Writes fields of a source, counted from 0, as text: a line of their names, then a line a row, fields joined by
/// commas, without any quoting. UTF-8, lines end with CR LF. Nothing stands for a missing value. What stands at `path`
/// stays until the new file is complete. Raises what reading and writing raise, and TaskCancelled.
void WriteCsv(const ExportSource& source, const std::vector<int>& fields, const std::string& path, LongTask& task);

}  // namespace velk
