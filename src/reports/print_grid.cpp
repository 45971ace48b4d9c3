#include "reports/print_grid.h"

#include <algorithm>
#include <string_view>

#include "base/colour.h"
#include "base/dates.h"
#include "base/text.h"
#include "reports/cell_lines.h"
#include "reports/table_cell.h"
#include "reports/texts.h"

namespace velk {

namespace {

constexpr double kTitlePoints = 12, kLeastTitlePoints = 6;
constexpr double kRowSpacing = 1.2;
constexpr double kEdge = 28;  ///< points that stay white above and below, beyond the printer's margins
constexpr const char* kLeftMargin = "        ";
constexpr std::size_t kMeasured = 10'000;  ///< records whose cells say how wide the columns are
constexpr std::string_view kLettersOfNumbers = "0123456789+-.,:";

using Cells = std::vector<std::string>;

std::string Moment(double time) {
  return IsDateTime(time) ? FormatDate(time, "dd-mmm-yyyy") + " " + FormatDate(time, "hh:mm:ss") : std::string();
}

/// The pages of one table.
class TablePages {
 public:
  TablePages(Printer& printer, TableSource& source, const std::vector<PrintedColumn>& columns, const TablePrint& print,
             const Language& language)
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
    layout_ = LayOutTable(page_, columns, family_, margin_);
    page_.SetFont(Letters());
    rowHeight_ = kRowSpacing * page_.TextHeight("X");
    linesOfPage_ = static_cast<std::size_t>(std::max(1.0, (bottom_ - HeadHeight() - top_) / rowHeight_));
    room_.resize(columns.size());
    for (const auto& group : layout_.groups)
      for (const TableLayout::Column& column : group) room_[static_cast<std::size_t>(column.index)] = column.room;
    for (const char letter : kLettersOfNumbers)
      numberLetter_ = std::max(numberLetter_, page_.TextWidth(std::string(1, letter)));
  }

  /// Prints the page that the row would pass.
  void Add(const Cells& cells) {
    Row row = Broken(cells);
    if (!rows_.empty() && lines_ + row.lines > linesOfPage_) PrintPage();
    lines_ += row.lines;
    rows_.push_back(std::move(row));
  }
  /// A table without rows has a page too.
  void Finish() {
    if (!rows_.empty() || number_ == 0) PrintPage();
  }

 private:
  struct Row {
    std::vector<std::vector<std::string>> cells;  ///< the lines of each
    std::size_t lines = 1;
  };

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
  void PrintRow(const std::vector<TableLayout::Column>& group, const Row& row, double y) {
    for (const TableLayout::Column& column : group) {
      const std::vector<std::string>& lines = row.cells[static_cast<std::size_t>(column.index)];
      for (std::size_t line = 0; line < lines.size(); ++line)
        if (!lines[line].empty())
          page_.Print(column.left, y + static_cast<double>(line) * rowHeight_, lines[line], colour::Black);
    }
  }
  /// Once for each group of columns.
  void PrintPage() {
    for (const auto& group : layout_.groups) {
      if (++number_ > 1) printer_.NewPage();
      double y = PrintHead(group);
      for (const Row& row : rows_) {
        PrintRow(group, row, y);
        y += static_cast<double>(row.lines) * rowHeight_;
      }
    }
    rows_.clear();
    lines_ = 0;
  }

  Row Broken(const Cells& cells) const {
    Row row;
    for (std::size_t i = 0; i < cells.size(); ++i) {
      row.cells.push_back(IsShortNumber(cells[i], room_[i]) ? std::vector<std::string>{cells[i]}
                                                            : CellLines(page_, cells[i], room_[i], linesOfPage_));
      row.lines = std::max(row.lines, row.cells.back().size());
    }
    return row;
  }
  /// Most cells are: what takes long is to measure them.
  bool IsShortNumber(const std::string& cell, double room) const {
    return static_cast<double>(cell.size()) * numberLetter_ <= room &&
           cell.find_first_not_of(kLettersOfNumbers) == std::string::npos;
  }

  Printer& printer_;
  const std::string family_;
  Surface& page_;
  const std::string title_;
  const double top_, bottom_;
  double margin_ = 0;
  TableLayout layout_;
  double rowHeight_ = 0;
  std::size_t linesOfPage_ = 1;
  std::vector<double> room_;  ///< by the number of the column
  double numberLetter_ = 0;   ///< width of the widest
  std::vector<Row> rows_;     ///< of the next page
  std::size_t lines_ = 0;     ///< that they have
  int number_ = 0;
};

/// The records that are printed, one after the other.
class PrintedRecords {
 public:
  PrintedRecords(TableSource& source, int skipLines, LongTask& task)
      : source_(source), task_(task), each_(std::int64_t{std::max(0, skipLines)} + 1) {}

  /// False behind the last one.
  bool Next(Cells& cells) {
    while (!ended_) {
      ended_ = !(read_ == 0 ? source_.First() : source_.Next());
      if (ended_) break;
      Step();
      if (read_++ % each_ != 0) continue;
      cells = CellsOfRecord();
      return true;
    }
    return false;
  }
  /// One that was read is on its page.
  void IsPrinted() {
    printed_ += each_;
    Step();
  }

 private:
  Cells CellsOfRecord() {
    const std::vector<PrintedColumn>& columns = source_.Columns();
    Cells cells;
    for (int i = 0; i < static_cast<int>(columns.size()); ++i) {
      const bool isNumber = columns[static_cast<std::size_t>(i)].kind == CellKind::Number;
      const auto number = isNumber ? source_.Number(i) : std::nullopt;
      cells.push_back(number ? FormatByMagnitude(*number) : source_.Text(i));
    }
    return cells;
  }
  /// Reading is half of the work.
  void Step() { task_.Step(static_cast<double>(read_ + printed_), 2 * static_cast<double>(source_.Count())); }

  TableSource& source_;
  LongTask& task_;
  const std::int64_t each_;
  std::int64_t read_ = 0, printed_ = 0;
  bool ended_ = false;
};

/// The columns with their longest cells.
std::vector<PrintedColumn> WithLongestCells(std::vector<PrintedColumn> columns, const std::vector<Cells>& rows) {
  for (const Cells& cells : rows)
    for (std::size_t i = 0; i < columns.size(); ++i)
      if (CharacterCount(cells[i]) > CharacterCount(columns[i].longest)) columns[i].longest = cells[i];
  return columns;
}

}  // namespace

void PrintGrid(Printer& printer, TableSource& source, const TablePrint& print, const Language& language,
               LongTask& task) {
  PrintedRecords records(source, print.skipLines, task);
  std::vector<Cells> ahead;
  for (Cells cells; ahead.size() < kMeasured && records.Next(cells);) ahead.push_back(std::move(cells));
  TablePages pages(printer, source, WithLongestCells(source.Columns(), ahead), print, language);
  const auto add = [&](const Cells& cells) {
    pages.Add(cells);
    records.IsPrinted();
  };
  for (const Cells& cells : ahead) add(cells);
  ahead.clear();
  for (Cells cells; records.Next(cells);) add(cells);
  pages.Finish();
  printer.End();
}

}  // namespace velk
