#include "base/grid_text.h"

#include <algorithm>

#include "base/text.h"

namespace velk {

namespace {

std::string Quoted(const std::string& cell) {
  if (cell.find_first_of("\t\r\n\"") == std::string::npos) return cell;
  return '"' + ReplaceAll(cell, "\"", "\"\"") + '"';
}

/// The length of a cell that begins with a quote and is closed by one, both included; 0 where it isn't closed, or more
/// stands behind it: such a quote is a character like any other (the inches of a pipe).
std::size_t QuotedLength(std::string_view text) {
  if (!text.starts_with('"')) return 0;
  std::size_t i = 1;
  while (i < text.size() && (text[i] != '"' || text.substr(i + 1).starts_with('"'))) i += text[i] == '"' ? 2 : 1;
  if (i >= text.size()) return 0;
  const bool endsCell = i + 1 == text.size() || std::string_view("\t\r\n").find(text[i + 1]) != std::string_view::npos;
  return endsCell ? i + 1 : 0;
}

/// Takes one cell off the front.
std::string TakeCell(std::string_view& text) {
  const std::size_t quoted = QuotedLength(text);
  const std::size_t end = quoted > 0 ? quoted : std::min(text.find_first_of("\t\r\n"), text.size());
  const std::string_view cell = text.substr(0, end);
  text.remove_prefix(end);
  return quoted > 0 ? ReplaceAll(std::string(cell.substr(1, quoted - 2)), "\"\"", "\"") : std::string(cell);
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
