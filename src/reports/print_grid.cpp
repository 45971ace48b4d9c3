#include "reports/print_grid.h"

#include <algorithm>

#include "base/colour.h"
#include "base/dates.h"
#include "reports/table_cell.h"
#include "reports/texts.h"

namespace velk {

namespace {

constexpr double kTitlePoints = 12, kLeastTitlePoints = 6;
constexpr double kRowSpacing = 1.2;
constexpr double kEdge = 28;  ///< points that stay white above and below, beyond the printer's margins
constexpr const char* kLeftMargin = "        ";

using Cells = std::vector<std::string>;

std::string Moment(double time) {
  return IsDateTime(time) ? FormatDate(time, "dd-mmm-yyyy") + " " + FormatDate(time, "hh:mm:ss") : std::string();
}

/// The pages of one table.
class TablePages {
 public:
  TablePages(Printer& printer, TableSource& source, const TablePrint& print, const Language& language)
      : printer_(printer),
        family_(print.family),
        page_(printer.Begin(print.title, Unit::Point)),
        title_(print.title + language.In(text::TablePrintedOn) + FormatDate(print.now, "dd-mmm-yyyy") +
               language.In(text::TableFrom) + Moment(source.FirstTime()) + language.In(text::TableTo) +
               Moment(source.LastTime()) + language.In(text::TablePage)),
        top_(Convert(printer.Sheet().top, Unit::Millimetre, Unit::Point) + kEdge),
        bottom_(page_.Height() - Convert(printer.Sheet().bottom, Unit::Millimetre, Unit::Point) - kEdge) {
    page_.SetFont({family_, kTitlePoints, false});
    margin_ = std::max(page_.TextWidth(kLeftMargin), Convert(printer.Sheet().left, Unit::Millimetre, Unit::Point));
    layout_ = LayOutTable(page_, source.Columns(), family_, margin_);
    page_.SetFont(Letters());
    rowHeight_ = kRowSpacing * page_.TextHeight("X");
  }

  /// Rows of a page; one at least.
  std::size_t RowsOfPage() const {
    const double room = bottom_ - HeadHeight() - top_;
    return static_cast<std::size_t>(std::max(1.0, room / rowHeight_));
  }
  /// A page for each group of columns.
  void PrintRows(const std::vector<Cells>& rows) {
    for (const auto& group : layout_.groups) {
      if (++number_ > 1) printer_.NewPage();
      double y = PrintHead(group);
      for (const Cells& row : rows) {
        PrintRow(group, row, y);
        y += rowHeight_;
      }
    }
  }

 private:
  TextFont Letters() const { return {family_, static_cast<double>(layout_.points), false}; }
  double TextHeight() const { return rowHeight_ / kRowSpacing; }
  double TitleHeight() const { return kTitlePoints * kRowSpacing * kRowSpacing; }
  double HeadHeight() const {
    return TitleHeight() + TextHeight() * (0.5 + static_cast<double>(layout_.headingLines) + 0.2);
  }

  double PrintHead(const std::vector<TableLayout::Column>& group) {
    const std::string title = title_ + std::to_string(number_);
    double points = kTitlePoints;
    do page_.SetFont({family_, points--, false});
    while (points >= kLeastTitlePoints && margin_ + page_.TextWidth(title) > page_.Width() - kEdge);
    page_.Print(margin_, top_, title, colour::Black);
    page_.SetFont(Letters());
    const double y = top_ + TitleHeight() + 0.5 * TextHeight();
    for (const TableLayout::Column& column : group)
      for (std::size_t line = 0; line < column.lines.size(); ++line)
        PrintHeading(column, column.lines[line], y + static_cast<double>(line) * TextHeight());
    return top_ + HeadHeight();
  }
  void PrintHeading(const TableLayout::Column& column, const std::string& line, double y) {
    page_.Print(column.left + (column.width - page_.TextWidth(line)) / 2, y, line, colour::Black);
  }
  void PrintRow(const std::vector<TableLayout::Column>& group, const Cells& row, double y) {
    for (const TableLayout::Column& column : group) {
      const std::string& cell = row[static_cast<std::size_t>(column.index)];
      if (!cell.empty()) page_.Print(column.left, y, cell, colour::Black);
    }
  }

  Printer& printer_;
  const std::string family_;
  Surface& page_;
  const std::string title_;
  const double top_, bottom_;
  double margin_ = 0;
  TableLayout layout_;
  double rowHeight_ = 0;
  int number_ = 0;
};

Cells CellsOf(TableSource& source) {
  const std::vector<TableColumn>& columns = source.Columns();
  Cells cells;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    const std::string shown = source.Text(static_cast<int>(i));
    cells.push_back(columns[i].kind == CellKind::Number ? PrintedNumber(shown) : shown);
  }
  return cells;
}

}  // namespace

void PrintGrid(Printer& printer, TableSource& source, const TablePrint& print, const Language& language,
               LongTask& task) {
  TablePages pages(printer, source, print, language);
  const std::size_t rowsOfPage = pages.RowsOfPage();
  const double count = static_cast<double>(source.Count());
  std::vector<Cells> rows;
  std::int64_t number = 0;
  bool printed = false;
  for (bool there = source.First(); there; there = source.Next()) {
    task.Step(static_cast<double>(number), count);
    if (number++ % (std::int64_t{std::max(0, print.skipLines)} + 1) != 0) continue;
    rows.push_back(CellsOf(source));
    if (rows.size() < rowsOfPage) continue;
    pages.PrintRows(rows);
    rows.clear();
    printed = true;
  }
  if (!rows.empty() || !printed) pages.PrintRows(rows);
  printer.End();
}

}  // namespace velk
