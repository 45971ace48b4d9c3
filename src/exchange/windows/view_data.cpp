#include "exchange/windows/view_data.h"

#include <QHeaderView>
#include <QMenu>

#include "base/errors.h"
#include "base/numbers.h"
#include "base/text_qt.h"
#include "exchange/csv_times.h"
#include "exchange/texts.h"
#include "exchange/windows/rename_fields.h"
#include "i18n/windows/translate_form.h"
#include "model/help_topics.h"
#include "ui_view_data.h"

namespace velk {

namespace {

// A few milliseconds of work: the window answers meanwhile.
constexpr std::int64_t kBytesAStep = 4 << 20;
constexpr int kLineSpace = 6;

}  // namespace

ViewData::ViewData(WindowHost& host, CsvTable& table, double today, Write write)
    : QDialog(host.Parent()),
      host_(host),
      ui_(std::make_unique<Ui::ViewData>()),
      table_(table),
      write_(std::move(write)),
      model_(table, host.Words().Translator, this) {
  ui_->setupUi(this);
  setProperty("helpTopic", topic::Exchange);
  QTableView& grid = *ui_->Grid1;
  grid.setModel(&model_);
  grid.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  grid.verticalHeader()->setDefaultSectionSize(grid.fontMetrics().height() + kLineSpace);
  grid.horizontalHeader()->setObjectName(QStringLiteral("qt_GridHeadings"));
  grid.addAction(ui_->mnuDeleteRecord);
  connect(&grid, &QWidget::customContextMenuRequested, this,
          [this](const QPoint& place) { ui_->mnuGrid->popup(ui_->Grid1->viewport()->mapToGlobal(place)); });
  connect(ui_->mnuDeleteRecord, &QAction::triggered, this, &ViewData::mnuDeleteRecord_Click);
  connect(ui_->cmdBack, &QPushButton::clicked, this, [this] { Leave(WizardStep::Back); });
  connect(ui_->cmdRename, &QPushButton::clicked, this, &ViewData::cmdRename_Click);
  connect(ui_->cmdCreate, &QPushButton::clicked, this, &ViewData::cmdCreate_Click);
  connect(ui_->cmdFinish, &QPushButton::clicked, this, [this] { Leave(WizardStep::Next); });
  connect(&model_, &CsvGridModel::Unreadable, this, [this](const QString& reason) { ui_->lblNote->setText(reason); });
  TranslateForm(*this, host.Words());
  grid.setAccessibleName(windowTitle());
  FillStartDate(today);
  connect(&indexing_, &QTimer::timeout, this, &ViewData::IndexMore);
  IndexMore();
  if (!table_.File().IsIndexed()) indexing_.start(0);
  grid.resizeColumnsToContents();
  grid.setCurrentIndex(model_.index(0, 0));
  ui_->cmdCreate->setFocus();
}

ViewData::~ViewData() = default;

void ViewData::FillStartDate(double today) {
  const std::string start = table_.JobStartDate();
  ui_->Text1->setText(ToQt(start.empty() ? CsvDayText(today) : start));
  ui_->Text1->setReadOnly(!start.empty());
}

void ViewData::IndexMore() {
  try {
    if (!table_.File().Index(kBytesAStep)) indexing_.stop();
  } catch (const RuntimeError& error) {
    indexing_.stop();
    ui_->lblNote->setText(ToQt(host_.Words().Translator.In(error.Text())));
  }
  model_.Grow();
  ShowRows();
}

void ViewData::ShowRows() {
  OperatorText rows = text::RowsInFile + Format(static_cast<double>(table_.Rows()), "#,##0");
  if (!table_.File().IsIndexed()) rows += text::RowsInFileSoFar;
  ui_->lblRows->setText(ToQt(host_.Words().Translator.In(rows)));
}

/// A file with a column of dates needs none.
std::optional<double> ViewData::StartDay() const {
  if (table_.File().Shape().hasHeader) return 0;
  return CsvDay(FromQt(ui_->Text1->text()));
}

void ViewData::cmdRename_Click() {
  if (auto names = host_.Ask<RenameFields>(table_.ColumnNames)) table_.ColumnNames = *std::move(names);
  model_.ShowAnew();
}

void ViewData::cmdCreate_Click() {
  const auto day = StartDay();
  if (day) return write_(table_, *day);
  ui_->Text1->setFocus();
  ui_->Text1->selectAll();
  host_.Boxes().Message({text::NoStartDate, {}, Buttons::Ok, BoxIcon::Exclamation});
}

void ViewData::mnuDeleteRecord_Click() {
  std::vector<int> rows;
  for (const QModelIndex& index : ui_->Grid1->selectionModel()->selectedRows()) rows.push_back(index.row());
  if (rows.empty()) return;
  const int place = rows.front();
  table_.Delete(rows);
  model_.ShowAnew();
  ui_->Grid1->setCurrentIndex(model_.index(std::min(place, model_.rowCount() - 1), 0));
  ShowRows();
}

void ViewData::Leave(WizardStep step) {
  step_ = step;
  accept();
}

}  // namespace velk
