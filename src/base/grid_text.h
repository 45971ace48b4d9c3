#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace velk {

/// Cells from corner to corner, both of them in it.
struct CellRange {
  int top = 0;
  int left = 0;
  int bottom = 0;
  int right = 0;
};

/// Rows of cells as spreadsheets put them into the clipboard: cells apart by tabs, rows by line ends. A cell that holds
/// one of them, or a quote, stands in quotes, its own quotes doubled.
using CellTexts = std::vector<std::vector<std::string>>;

std::string JoinCells(const CellTexts& rows);

/// The line end behind the last row counts for nothing.
CellTexts SplitCells(std::string_view text);

}  // namespace velk
