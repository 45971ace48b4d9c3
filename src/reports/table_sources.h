#pragma once

#include "log/summary_rows.h"
#include "reports/log_view.h"
#include "reports/print_grid.h"

namespace velk {

/// The heading of a column: dates and times in the operator's words, all others by their names.
std::string HeadingOfColumn(const std::string& name, CellKind kind, const Language& language);

/// The rows of a log, as they are shown, for printing.
class LogTable : public TableSource {
 public:
  /// The view outlives it.
  LogTable(LogView& view, const Language& language);

  const std::vector<PrintedColumn>& Columns() const override { return columns_; }
  double FirstTime() override;
  double LastTime() override;
  std::int64_t Count() override { return view_.Count(); }
  bool First() override;
  bool Next() override;
  std::optional<double> Number(int column) override;
  std::string Text(int column) override { return view_.Text(row_, column); }

 private:
  LogView& view_;
  std::vector<PrintedColumn> columns_;
  int row_ = 0;
};

/// The lines of a report, as they are shown, for printing.
class ReportTable : public TableSource {
 public:
  /// The report outlives it.
  ReportTable(const SummaryLines& report, const Language& language);

  const std::vector<PrintedColumn>& Columns() const override { return columns_; }
  double FirstTime() override;
  double LastTime() override;
  std::int64_t Count() override { return static_cast<std::int64_t>(report_.lines.size()); }
  bool First() override;
  bool Next() override;
  std::optional<double> Number(int column) override;
  std::string Text(int column) override;

 private:
  const SummaryLines& report_;
  std::vector<PrintedColumn> columns_;
  std::size_t line_ = 0;
};

}  // namespace velk
