#include "settings/windows/parameters_table.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPointer>
#include <QScreen>
#include <QStyle>
#include <algorithm>
#include <numeric>

#include "base/text_qt.h"
#include "i18n/windows/translate_form.h"
#include "model/help_topics.h"
#include "model/number_formats.h"
#include "model/parameter_questions.h"
#include "settings/texts.h"
#include "settings/windows/cell_delegate.h"
#include "ui_parameters_table.h"

namespace velk {

namespace {

constexpr int kNameWidth = 140;

bool IsChosen(TableColumn column) {
  return column == TableColumn::Color || column == TableColumn::Format;
}

/// A key that writes something.
bool IsLetter(const QKeyEvent& key) {
  const bool isCommand = (key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != 0;
  return !isCommand && !key.text().isEmpty() && key.text().front().isPrint();
}

std::vector<std::string> KeysOf(const ParameterTable& table) {
  std::vector<std::string> keys;
  keys.reserve(static_cast<std::size_t>(table.ColumnCount()));
  for (int column = 0; column < table.ColumnCount(); ++column)
    keys.emplace_back(HeadingOf(table.Column(column)).english);
  return keys;
}

}  // namespace

ParametersTable::ParametersTable(WindowHost& host, ParameterTable table, ColumnWidths* widths)
    : QDialog(host.Parent()),
      host_(host),
      ui_(std::make_unique<Ui::ParametersTable>()),
      table_(std::move(table)),
      model_(table_, host.Words(), [this](const QModelIndex& cell, const QString& typed) { Enter(cell, typed); }) {
  ui_->setupUi(this);
  setProperty("helpTopic", topic::Parameters);
  auto* delegate = new CellDelegate(this);
  ui_->Grid1->setItemDelegate(delegate);
  ui_->Grid1->setModel(&model_);
  columns_ = new GridColumns(*ui_->Grid1, KeysOf(table_), widths ? *widths : ownWidths_);
  ui_->Grid1->installEventFilter(this);
  connect(delegate, &CellDelegate::MovesOn, this, &ParametersTable::Move);
  connect(ui_->Grid1, &QTableView::clicked, this, &ParametersTable::Grid1_Click);
  connect(ui_->Grid1->selectionModel(), &QItemSelectionModel::currentChanged, this, &ParametersTable::ShowRemark);
  connect(ui_->cmdClose, &QPushButton::clicked, this, &QDialog::accept);
  ConnectMenu();
  TranslateForm(*this, host.Words());
  ui_->Grid1->setAccessibleName(windowTitle());
  ui_->Grid1->setCurrentIndex(model_.index(0, 0));
  ui_->Grid1->setFocus();
  ShowRemark();
  FitToScreen();
}

ParametersTable::~ParametersTable() = default;

void ParametersTable::ConnectMenu() {
  connect(ui_->Grid1, &QWidget::customContextMenuRequested, this, [this](const QPoint& place) {
    ui_->mnuUndo->setEnabled(table_.CanUndo());
    ui_->mnuGridCopyPaste->popup(ui_->Grid1->viewport()->mapToGlobal(place));
  });
  connect(ui_->mnuChange, &QAction::triggered, this, &ParametersTable::mnuChange_Click);
  connect(ui_->mnuUndo, &QAction::triggered, this, &ParametersTable::mnuUndo_Click);
  connect(ui_->mnuCut, &QAction::triggered, this, &ParametersTable::mnuCut_Click);
  connect(ui_->mnuCopy, &QAction::triggered, this, &ParametersTable::mnuCopy_Click);
  connect(ui_->mnuPaste, &QAction::triggered, this, &ParametersTable::mnuPaste_Click);
}

/// As large as its cells where the screen has room; they scroll where it hasn't.
void ParametersTable::FitToScreen() {
  QTableView& grid = *ui_->Grid1;
  columns_->Fit(kNameWidth);
  const int frame = 2 * grid.frameWidth();
  const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
  const QSize cells(grid.verticalHeader()->sizeHint().width() + grid.horizontalHeader()->length() + frame + bar,
                    grid.horizontalHeader()->sizeHint().height() + grid.verticalHeader()->length() + frame + bar);
  const QSize around = sizeHint() - grid.sizeHint();
  resize((cells + around).expandedTo(minimumSizeHint()).boundedTo(screen()->availableSize() * 0.9));
}

// --- Closing ---

/// The end of the program asks nobody.
void ParametersTable::done(int result) {
  StoreOpenEditor();
  if (host_.Boxes().IsEnding()) return QDialog::done(Accepted);
  const QPointer<ParametersTable> alive(this);
  if (Form_QueryUnload() && alive) QDialog::done(result);
}

/// An editor that loses the keyboard stores what stands in it.
void ParametersTable::StoreOpenEditor() {
  ui_->Grid1->setFocus();
}

bool ParametersTable::Form_QueryUnload() {
  const auto fault = table_.FirstFault();
  if (!fault) return true;
  ui_->Grid1->setCurrentIndex(model_.index(fault->row, fault->column));
  if (*table_.FaultOf(fault->row, fault->column) == text::MaximumNotAbove)
    host_.Boxes().Message({text::MaximumNotAbove, {}, Buttons::Ok, BoxIcon::Critical});
  return false;
}

// --- Keys and clicks ---

bool ParametersTable::eventFilter(QObject* watched, QEvent* event) {
  const bool isKey = watched == ui_->Grid1 && event->type() == QEvent::KeyPress;
  if (isKey && GridKey(*static_cast<QKeyEvent*>(event))) return true;
  return QDialog::eventFilter(watched, event);
}

bool ParametersTable::GridKey(const QKeyEvent& key) {
  auto& pressed = const_cast<QKeyEvent&>(key);  // matches() changes nothing, and is not const
  if (pressed.matches(QKeySequence::Copy)) return mnuCopy_Click(), true;
  if (pressed.matches(QKeySequence::Cut)) return mnuCut_Click(), true;
  if (pressed.matches(QKeySequence::Paste)) return mnuPaste_Click(), true;
  if (pressed.matches(QKeySequence::Undo)) return mnuUndo_Click(), true;
  const QModelIndex cell = ui_->Grid1->currentIndex();
  switch (key.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      Move(1, 0);
      return true;
    case Qt::Key_Delete:
    case Qt::Key_Backspace:
      Clear(Selected());
      return true;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
      return LeavesGrid(key);
    default:
      break;
  }
  if (!cell.isValid() || !IsChosen(table_.Column(cell.column()))) return false;
  if (key.key() != Qt::Key_F2 && !IsLetter(key)) return false;
  Choose(cell);
  return true;
}

/// Behind the last cell, and ahead of the first one, the tabulator leads out of the grid.
bool ParametersTable::LeavesGrid(const QKeyEvent& key) {
  const QModelIndex cell = ui_->Grid1->currentIndex();
  const bool isFirst = cell.row() <= 0 && cell.column() <= 0;
  const bool isLast = cell.row() == table_.RowCount() - 1 && cell.column() == table_.ColumnCount() - 1;
  const bool isForward = key.key() == Qt::Key_Tab;
  if (cell.isValid() && !(isForward ? isLast : isFirst)) return false;
  ui_->cmdClose->setFocus(isForward ? Qt::TabFocusReason : Qt::BacktabFocusReason);
  return true;
}

void ParametersTable::Grid1_Click(const QModelIndex& cell) {
  if (QGuiApplication::keyboardModifiers() == Qt::NoModifier && IsChosen(table_.Column(cell.column()))) Choose(cell);
}

/// Sideways it goes on in the next row, as the grid does where no editor is open.
void ParametersTable::Move(int rows, int columns) {
  const QModelIndex cell = ui_->Grid1->currentIndex();
  const int count = table_.ColumnCount();
  const int place = cell.row() * count + cell.column() + columns;
  if (!cell.isValid() || place < 0) return;
  const QModelIndex next = model_.index(place / count + rows, place % count);
  if (next.isValid()) ui_->Grid1->setCurrentIndex(next);
}

// --- Changes ---

CellRange ParametersTable::Selected() const {
  const QItemSelection selection = ui_->Grid1->selectionModel()->selection();
  const QModelIndex cell = ui_->Grid1->currentIndex();
  if (selection.isEmpty()) return {cell.row(), cell.column(), cell.row(), cell.column()};
  const QItemSelectionRange& range = selection.first();
  return {range.top(), range.left(), range.bottom(), range.right()};
}

void ParametersTable::Clear(const CellRange& range) {
  if (!HasCells()) return;
  std::vector<ParameterTable::Edit> edits;
  for (int row = range.top; row <= range.bottom; ++row)
    for (int column = range.left; column <= range.right; ++column)
      if (!IsChosen(table_.Column(column))) edits.push_back({row, column, {}});
  table_.Change(edits);
  Changed();
}

/// The rows that a choice in this cell is for: the selected ones, where it is one of them.
std::vector<int> ParametersTable::RowsWith(const QModelIndex& cell) const {
  const CellRange range = Selected();
  const bool isIn = cell.row() >= range.top && cell.row() <= range.bottom && cell.column() >= range.left &&
                    cell.column() <= range.right;
  if (!isIn) return {cell.row()};
  std::vector<int> rows(static_cast<std::size_t>(range.bottom - range.top) + 1);
  std::iota(rows.begin(), rows.end(), range.top);
  return rows;
}

void ParametersTable::Enter(const QModelIndex& cell, const QString& typed) {
  const bool isForAll = table_.Column(cell.column()) == TableColumn::Graph;
  EnterInto(cell.column(), isForAll ? RowsWith(cell) : std::vector<int>{cell.row()}, FromQt(typed));
}

void ParametersTable::EnterInto(int column, const std::vector<int>& rows, const std::string& text) {
  std::vector<ParameterTable::Edit> edits;
  edits.reserve(rows.size());
  for (const int row : rows) edits.push_back({row, column, text});
  table_.Change(edits);
  Changed();
}

void ParametersTable::mnuChange_Click() {
  const QModelIndex cell = ui_->Grid1->currentIndex();
  if (!cell.isValid()) return;
  const TableColumn column = table_.Column(cell.column());
  if (IsChosen(column)) return Choose(cell);
  if (column == TableColumn::Graph) return AskGraph(cell);
  ui_->Grid1->edit(cell);
}

void ParametersTable::AskGraph(const QModelIndex& cell) {
  const QPointer<ParametersTable> alive(this);
  const std::vector<int> rows = RowsWith(cell);
  const auto graph = host_.Boxes().Input(text::GraphOfRows, text::HeadingGraph, table_.Cell(cell.row(), cell.column()));
  if (graph && alive) EnterInto(cell.column(), rows, *graph);
}

void ParametersTable::Choose(const QModelIndex& cell) {
  const QPointer<ParametersTable> alive(this);
  const std::vector<int> rows = RowsWith(cell);
  const std::string& present = table_.Cell(cell.row(), cell.column());
  std::optional<std::string> chosen;
  if (table_.Column(cell.column()) == TableColumn::Format) {
    if (const auto format = AskNumberFormat(host_.Boxes())) chosen = SampleOfFormat(*format);
  } else if (const auto colour = AskColour(host_.Boxes(), table_.Cell(cell.row(), TableColumn::Name),
                                           ColourOfCell(present).value_or(0))) {
    chosen = CellOfColour(*colour);
  }
  if (chosen && alive) EnterInto(cell.column(), rows, *chosen);
}

void ParametersTable::mnuCopy_Click() {
  if (!HasCells()) return;
  QGuiApplication::clipboard()->setText(ToQt(table_.Copy(Selected())));
}

void ParametersTable::mnuCut_Click() {
  mnuCopy_Click();
  Clear(Selected());
}

void ParametersTable::mnuPaste_Click() {
  if (!HasCells()) return;
  const auto [cells, isWhole] = table_.Paste(Selected(), FromQt(QGuiApplication::clipboard()->text()));
  Changed();
  ui_->Grid1->selectionModel()->select(
      QItemSelection(model_.index(cells.top, cells.left), model_.index(cells.bottom, cells.right)),
      QItemSelectionModel::ClearAndSelect);
  if (!isWhole) ui_->lblFault->setText(ToQt(host_.Words().Translator.In(text::PastedInPart)));
}

void ParametersTable::mnuUndo_Click() {
  table_.Undo();
  Changed();
}

void ParametersTable::Changed() {
  model_.ShowAnew();
  columns_->Grow();
  ShowRemark();
}

// --- What is wrong ---

void ParametersTable::ShowRemark() {
  const QModelIndex cell = ui_->Grid1->currentIndex();
  const QString remark = model_.RemarkOn(cell);
  const bool isDark = palette().color(QPalette::Window).lightness() < 128;
  const QString colour = isDark ? QStringLiteral("#FF8A8E") : QStringLiteral("#B00020");
  const bool isFault = cell.isValid() && cell.data(FaultRole).toBool();
  ui_->lblFault->setStyleSheet(isFault ? QStringLiteral("QLabel { color: %1; }").arg(colour) : QString());
  ui_->lblFault->setText(remark.isEmpty() ? ToQt(host_.Words().Translator.In(text::TableHint)) : remark);
}

}  // namespace velk
