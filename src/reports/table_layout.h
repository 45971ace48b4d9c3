#pragma once

#include <string>
#include <vector>

#include "platform/drawing/surface.h"

namespace velk {

enum class CellKind { Date, Time, Number, Text };

/// A column of a table that is printed.
struct PrintedColumn {
  std::string heading;
  CellKind kind = CellKind::Number;
  std::string longest = {};  ///< of its cells, as far as they are known before it is laid out
};

/// Where the columns of a table stand on its pages.
struct TableLayout {
  struct Column {
    int index;  ///< in the table
    double left, width;
    double room;                     ///< for a cell, without what keeps it apart from the next one
    std::vector<std::string> lines;  ///< of its heading
  };
  /// The columns that share a page; those that don't fit beside each other follow in further groups, behind the date
  /// and the time of each row.
  std::vector<std::vector<Column>> groups;
  int points = 10;  ///< size of the letters
  std::size_t headingLines = 0;
};

/// The largest letters from 10 down to 6 points with which all columns fit in 0.92 of the surface's width, less
/// `margin` at the left; at 6 the columns are divided among pages. A column has room for its longest cell, up to a
/// quarter of the sheet; texts at the right of a page for as much as is left there.
TableLayout LayOutTable(Surface& page, const std::vector<PrintedColumn>& columns, const std::string& family,
                        double margin);

}  // namespace velk
