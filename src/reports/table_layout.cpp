#include "reports/table_layout.h"

#include <algorithm>

#include "reports/cell_lines.h"

namespace velk {

namespace {

constexpr int kLargest = 10, kSmallest = 6;
constexpr double kUsable = 0.92;  ///< of the sheet's width
constexpr double kSpread = 1.1;
constexpr double kMostOfSheet = 0.25;  ///< that a column gets for its cells
constexpr const char* kBetween = "       ";
constexpr const char* kNarrowest = "XXX";

/// What a column has to have room for below its heading.
const char* SampleOf(CellKind kind) {
  switch (kind) {
    case CellKind::Date:
      return "00-May-0000 ";
    case CellKind::Time:
      return "00:00:00 ";
    case CellKind::Number:
      return "-99,999 ";
    case CellKind::Text:
      break;
  }
  return kNarrowest;
}

double WidestWord(const Surface& page, const std::vector<std::string>& words) {
  double widest = page.TextWidth(kNarrowest);
  for (const std::string& word : words) widest = std::max(widest, page.TextWidth(word));
  return widest;
}

/// As wide as its heading and its kind ask for, and as its cells do up to a share of the sheet: what is wider is
/// broken.
TableLayout::Column Measured(const Surface& page, const PrintedColumn& column, int index, double room) {
  const std::vector<std::string> words = WordsOf(column.heading);
  const double heading = WidestWord(page, words);
  const double cells = std::min(page.TextWidth(column.longest + " "), kMostOfSheet * room);
  const double width = std::max({heading + page.TextWidth(kBetween), page.TextWidth(SampleOf(column.kind)), cells});
  return {index, 0, width * kSpread, width, Wrapped(page, words, heading)};
}

/// A text at the right takes what the sheet has left, if it can use it.
void Widen(const Surface& page, TableLayout::Column& last, const PrintedColumn& column, double end) {
  if (column.kind != CellKind::Text) return;
  last.width = std::max(last.width, std::min(kSpread * page.TextWidth(column.longest + " "), end - last.left));
  last.room = last.width / kSpread;
}

bool IsRepeated(const PrintedColumn& column) {
  return column.kind == CellKind::Date || column.kind == CellKind::Time;
}

}  // namespace

TableLayout LayOutTable(Surface& page, const std::vector<PrintedColumn>& columns, const std::string& family,
                        double margin) {
  const double room = kUsable * page.Width() - margin;
  TableLayout layout;
  std::vector<TableLayout::Column> measured;
  for (layout.points = kLargest;; --layout.points) {
    page.SetFont({family, static_cast<double>(layout.points), false});
    measured.clear();
    double total = 0;
    for (std::size_t i = 0; i < columns.size(); ++i) {
      measured.push_back(Measured(page, columns[i], static_cast<int>(i), room));
      total += measured.back().width;
    }
    if (total <= room || layout.points == kSmallest) break;
  }
  std::vector<TableLayout::Column> repeated, group;
  double end = 0;
  const auto add = [&](TableLayout::Column column) {
    column.left = margin + end;
    end += column.width;
    group.push_back(std::move(column));
  };
  for (TableLayout::Column& column : measured) {
    layout.headingLines = std::max(layout.headingLines, column.lines.size());
    if (end + column.width > room && group.size() > repeated.size()) {
      layout.groups.push_back(std::move(group));
      group.clear();
      end = 0;
      for (const TableLayout::Column& again : repeated) add(again);
    }
    if (layout.groups.empty() && IsRepeated(columns[static_cast<std::size_t>(column.index)]))
      repeated.push_back(column);
    add(std::move(column));
  }
  if (!group.empty()) layout.groups.push_back(std::move(group));
  for (auto& shown : layout.groups)
    Widen(page, shown.back(), columns[static_cast<std::size_t>(shown.back().index)], margin + room);
  return layout;
}

}  // namespace velk
