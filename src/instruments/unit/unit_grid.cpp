#include "instruments/unit/unit_grid.h"

#include <algorithm>

namespace velk {

namespace {

constexpr std::size_t kMostChanges = 100;

}  // namespace

OperatorText UnitGrid::FaultOf(int row, int column) const {
  const std::string& cell = Cell(row, column);
  return cell.empty() && !showsEmpty_ ? OperatorText() : UnitCellFault(column, cell);
}

void UnitGrid::Keep() {
  before_.push_back(table_);
  if (before_.size() > kMostChanges) before_.erase(before_.begin());
}

void UnitGrid::Write(int row, int column, const std::string& text) {
  if (column == unit_column::Channel || row >= RowCount() || column > unit_column::LowerAlarm) return;
  table_[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)] = text;
}

void UnitGrid::Enter(int row, int column, const std::string& text) {
  if (Cell(row, column) == text) return;
  Keep();
  Write(row, column, text);
}

void UnitGrid::Clear(const CellRange& cells) {
  if (cells.top < 0) return;
  Keep();
  for (int row = cells.top; row <= cells.bottom; ++row)
    for (int column = cells.left; column <= cells.right; ++column) Write(row, column, {});
}

std::string UnitGrid::Copy(const CellRange& cells) const {
  CellTexts texts;
  for (int row = std::max(cells.top, 0); row <= cells.bottom; ++row) {
    texts.emplace_back();
    for (int column = cells.left; column <= cells.right; ++column) texts.back().push_back(Cell(row, column));
  }
  return JoinCells(texts);
}

CellRange UnitGrid::Paste(const CellRange& cells, const std::string& text) {
  const CellTexts texts = SplitCells(text);
  if (cells.top < 0 || texts.empty()) return cells;
  Keep();
  const bool isOne = texts.size() == 1 && texts[0].size() == 1;
  CellRange written = cells;
  if (isOne) {
    for (int row = cells.top; row <= cells.bottom; ++row)
      for (int column = cells.left; column <= cells.right; ++column) Write(row, column, texts[0][0]);
    return written;
  }
  written = {cells.top, cells.left, cells.top, cells.left};
  for (std::size_t i = 0; i < texts.size(); ++i) {
    for (std::size_t j = 0; j < texts[i].size(); ++j) {
      const int row = cells.top + static_cast<int>(i), column = cells.left + static_cast<int>(j);
      Write(row, column, texts[i][j]);
      written.bottom = std::min(std::max(written.bottom, row), RowCount() - 1);
      written.right = std::min<int>(std::max(written.right, column), unit_column::LowerAlarm);
    }
  }
  return written;
}

void UnitGrid::Load(UnitRows table) {
  Keep();
  table_ = std::move(table);
}

void UnitGrid::Undo() {
  if (before_.empty()) return;
  table_ = std::move(before_.back());
  before_.pop_back();
}

}  // namespace velk
