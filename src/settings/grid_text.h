#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace velk {

/// Rows of cells as spreadsheets put them into the clipboard: cells apart by tabs, rows by line ends. A cell that holds
/// one of them, or a quote, stands in quotes, its own quotes doubled.
using CellTexts = std::vector<std::vector<std::string>>;

std::string JoinCells(const CellTexts& rows);

/// The line end behind the last row counts for nothing.
CellTexts SplitCells(std::string_view text);

}  // namespace velk
