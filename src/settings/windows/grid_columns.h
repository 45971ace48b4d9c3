#pragma once

#include <QObject>
#include <QTableView>
#include <string>
#include <vector>

#include "settings/column_widths.h"

namespace velk {

/// Keeps the columns of the table of parameters as wide as their texts, but those that the operator has drawn to a
/// width of his own. A double click on the edge of a heading gives a column back to its texts.
class GridColumns : public QObject {
  Q_OBJECT

 public:
  /// `keys` names the columns of the grid in their order. `widths` holds those of the operator, and is kept up to date;
  /// both outlive this.
  GridColumns(QTableView& grid, std::vector<std::string> keys, ColumnWidths& widths);

  /// Every column at its width; the first one, of names, no narrower than `firstAtLeast`.
  void Fit(int firstAtLeast);
  /// Columns grow with their texts, and never shrink under the operator's hand.
  void Grow();

 private:
  void Resized(int column, int width);

  QTableView& grid_;
  const std::vector<std::string> keys_;
  ColumnWidths& widths_;
  bool fitting_ = false;
};

}  // namespace velk
