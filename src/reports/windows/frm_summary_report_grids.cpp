#include <QHeaderView>
#include <algorithm>

#include "base/numbers.h"
#include "base/scope.h"
#include "imaging/windows/print_target.h"
#include "reports/print_grid.h"
#include "reports/report_lines.h"
#include "reports/table_sources.h"
#include "reports/texts.h"
#include "reports/windows/frm_summary_report.h"
#include "ui_frm_summary_report.h"

// The grids of frmSummaryReport: their order and layout, and how they come on paper.

namespace velk {

namespace {

constexpr double kMostSkipped = 32767;
constexpr double kValueWidths = 1.3;  ///< of "99.999"
constexpr int kRowsMeasured = 50;     ///< for the widths of the columns
constexpr int kCellSpace = 10;        ///< pixels beside the letters of a cell
constexpr int kRowSpace = 6;          ///< pixels between the letters of two rows

}  // namespace

// --- Order and layout ---

/// Up at first, down at the next click on the same head.
void frmSummaryReport::Turn(Order& order, int column) {
  order.descending = order.column == column && !order.descending;
  order.column = column;
}

void frmSummaryReport::SortLog(int column) {
  if (working_) return;
  working_ = true;
  RunProcedure({access_.platform.dialogs, "SortlogDataData", text::ViewerTitle}, [&](Run run) {
    Order order = logOrder_;
    Turn(order, column);
    setCursor(Qt::WaitCursor);
    const OnLeaving left([this] { unsetCursor(); });
    run([&] {
      LongTask task(access_.platform.dialogs, access_.platform.clock, text::ViewerTitle);
      view_.SortBy(order.column, order.descending, task);
    });
    logOrder_ = order;
    SortlogDataData();
  });
  working_ = false;
  UpdateKeys();
}

void frmSummaryReport::SortSummary(int column) {
  if (working_) return;
  Turn(summaryOrder_, column);
  SortSummaryData();
  UpdateKeys();
}

void frmSummaryReport::SortSummaryData() {
  ReadSummary(0);
  AdjustSummaryGrid();
}

/// What the rows look like is said ahead of them: each word to the heads goes through all.
void frmSummaryReport::SetUpGrid(QTableView& grid, QAbstractItemModel& model) {
  grid.horizontalHeader()->setSectionsClickable(true);
  grid.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  grid.verticalHeader()->setDefaultSectionSize(grid.fontMetrics().height() + kRowSpace);
  grid.setModel(&model);
  connect(grid.selectionModel(), &QItemSelectionModel::currentChanged, this, [this] {
    ShowPositions();
    UpdateKeys();
  });
}

void frmSummaryReport::SortlogDataData() {
  rows_->ShowAnew();
  LayOutLogGrid();
}

void frmSummaryReport::LayOutLogGrid() {
  QHeaderView& heads = *ui_->logDataGrid->horizontalHeader();
  heads.setSortIndicatorShown(logOrder_.column >= 0);
  heads.setSortIndicator(logOrder_.column, logOrder_.descending ? Qt::DescendingOrder : Qt::AscendingOrder);
  std::vector<CellKind> kinds;
  for (int i = 0; i < rows_->columnCount(); ++i) kinds.push_back(view_.KindOf(i));
  SetWidths(*ui_->logDataGrid, kinds);
  GoToRow(0);
}

void frmSummaryReport::AdjustSummaryGrid() {
  QHeaderView& heads = *ui_->summaryGrid->horizontalHeader();
  heads.setSortIndicatorShown(summaryOrder_.column >= 0);
  heads.setSortIndicator(summaryOrder_.column, summaryOrder_.descending ? Qt::DescendingOrder : Qt::AscendingOrder);
  heads.setStretchLastSection(true);
  std::vector<CellKind> kinds;
  for (const SummaryColumn& column : lines_->Report().columns) kinds.push_back(KindOfColumn(column));
  SetWidths(*ui_->summaryGrid, kinds);
}

/// A value's column is 1.3 times as wide as "99.999", a date's and a time's as a sample of it; more where the head or
/// one of the first rows needs it. The toolkit itself would measure a thousand rows.
void frmSummaryReport::SetWidths(QTableView& grid, const std::vector<CellKind>& kinds) {
  const QFontMetrics letters = grid.fontMetrics();
  const int value = static_cast<int>(kValueWidths * letters.horizontalAdvance(QStringLiteral("99.999")));
  const auto width = [&](const QString& text) { return letters.horizontalAdvance(text) + kCellSpace; };
  const QAbstractItemModel& model = *grid.model();
  const int rows = std::min(model.rowCount(), kRowsMeasured);
  for (int i = 0; i < static_cast<int>(kinds.size()); ++i) {
    const CellKind kind = kinds[static_cast<std::size_t>(i)];
    int widest = kind == CellKind::Date   ? width(QStringLiteral("30-May-2000"))
                 : kind == CellKind::Time ? width(QStringLiteral("00:00:00"))
                                          : value;
    for (int row = 0; row < rows; ++row) widest = std::max(widest, width(model.index(row, i).data().toString()));
    grid.setColumnWidth(i, std::max(widest, grid.horizontalHeader()->sectionSizeHint(i)));
  }
}

// --- Paper ---

void frmSummaryReport::PrintLog_Click(Run run) {
  const auto skipped = access_.platform.dialogs.Input(text::SkipEveryLines, text::SkipLines, "0");
  if (!skipped) return;
  LogTable table(view_, access_.platform.language);
  Print(run, table, text::DataLogTitle, static_cast<int>(std::clamp(Val(*skipped), 0.0, kMostSkipped)));
}

void frmSummaryReport::PrintSummary_Click(Run run) {
  const SummaryLines report = lines_->Report();
  ReportTable table(report, access_.platform.language);
  Print(run, table, text::SummaryDataTitle, 0);
}

void frmSummaryReport::Print(Run run, TableSource& source, const MessageText& title, int skipLines) {
  const auto file = AskForPrinter(host_, access_.printer, access_.session.DefaultDirectory);
  if (!file) return;
  const Language& language = access_.platform.language;
  run([&] {
    LongTask task(access_.platform.dialogs, access_.platform.clock, text::ViewerTitle);
    task.Doing(text::PrintingTable);
    PrintGrid(*access_.printer.MakePrinter(*file), source,
              {.title = language.In(title), .skipLines = skipLines, .now = access_.platform.clock.Now()}, language,
              task);
  });
}

}  // namespace velk
