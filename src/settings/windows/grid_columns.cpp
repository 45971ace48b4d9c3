#include "settings/windows/grid_columns.h"

#include <QHeaderView>
#include <algorithm>

#include "base/scope.h"

namespace velk {

GridColumns::GridColumns(QTableView& grid, std::vector<std::string> keys, ColumnWidths& widths)
    : QObject(&grid), grid_(grid), keys_(std::move(keys)), widths_(widths) {
  const QHeaderView* header = grid.horizontalHeader();
  connect(header, &QHeaderView::sectionResized, this, [this](int column, int, int width) { Resized(column, width); });
  connect(header, &QHeaderView::sectionHandleDoubleClicked, this,
          [this](int column) { widths_.erase(keys_.at(static_cast<std::size_t>(column))); });
}

void GridColumns::Resized(int column, int width) {
  if (!fitting_) widths_[keys_.at(static_cast<std::size_t>(column))] = width;
}

void GridColumns::Fit(int firstAtLeast) {
  fitting_ = true;
  const OnLeaving done([this] { fitting_ = false; });
  grid_.resizeColumnsToContents();
  grid_.setColumnWidth(0, std::max(grid_.columnWidth(0), firstAtLeast));
  for (std::size_t i = 0; i < keys_.size(); ++i)
    if (const auto own = widths_.find(keys_[i]); own != widths_.end())
      grid_.setColumnWidth(static_cast<int>(i), own->second);
}

void GridColumns::Grow() {
  fitting_ = true;
  const OnLeaving done([this] { fitting_ = false; });
  for (std::size_t i = 0; i < keys_.size(); ++i) {
    if (widths_.contains(keys_[i])) continue;
    const int column = static_cast<int>(i);
    const int before = grid_.columnWidth(column);
    grid_.resizeColumnToContents(column);
    grid_.setColumnWidth(column, std::max(grid_.columnWidth(column), before));
  }
}

}  // namespace velk
