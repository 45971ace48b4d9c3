#include "settings/grid_text.h"

#include <algorithm>

#include "base/text.h"

namespace velk {

namespace {

std::string Quoted(const std::string& cell) {
  if (cell.find_first_of("\t\r\n\"") == std::string::npos) return cell;
  return '"' + ReplaceAll(cell, "\"", "\"\"") + '"';
}

/// Takes one cell off the front. A quote inside a cell that doesn't begin with one is a character like any other.
std::string TakeCell(std::string_view& text) {
  std::string cell;
  if (text.starts_with('"')) {
    text.remove_prefix(1);
    while (!text.empty()) {
      const bool isQuote = text.front() == '"';
      if (isQuote) text.remove_prefix(1);
      if (isQuote && !text.starts_with('"')) break;
      if (text.empty()) break;
      cell += text.front();
      text.remove_prefix(1);
    }
  }
  const std::size_t end = std::min(text.find_first_of("\t\r\n"), text.size());
  cell += text.substr(0, end);
  text.remove_prefix(end);
  return cell;
}

}  // namespace

std::string JoinCells(const CellTexts& rows) {
  std::string text;
  for (const auto& row : rows) {
    for (std::size_t i = 0; i < row.size(); ++i) text += (i > 0 ? "\t" : "") + Quoted(row[i]);
    text += '\n';
  }
  return text;
}

CellTexts SplitCells(std::string_view text) {
  CellTexts rows;
  while (!text.empty()) {
    std::vector<std::string> row{TakeCell(text)};
    while (text.starts_with('\t')) {
      text.remove_prefix(1);
      row.push_back(TakeCell(text));
    }
    if (text.starts_with('\r')) text.remove_prefix(1);
    if (text.starts_with('\n')) text.remove_prefix(1);
    rows.push_back(std::move(row));
  }
  return rows;
}

}  // namespace velk
