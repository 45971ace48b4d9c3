#include "settings/windows/parameters_table.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
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
#include "platform/windows/grid_keys.h"
#include "settings/texts.h"
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
  ui_->Grid1->setModel(&model_);
  keys_ =
      new GridKeys(*ui_->Grid1, *ui_->cmdClose, *ui_->cmdClose,
                   {[this](const CellRange& range) { Copy(range); }, [this](const CellRange& range) { Paste(range); },
                    [this](const CellRange& range) { Clear(range); }, [this] { mnuUndo_Click(); },
                    [this](const QKeyEvent& key) { return ChoiceKey(key); }});
  columns_ = new GridColumns(*ui_->Grid1, KeysOf(table_), widths ? *widths : ownWidths_);
  connect(ui_->Grid1, &QTableView::clicked, this, &ParametersTable::Grid1_Click);
  connect(ui_->Grid1->selectionModel(), &QItemSelectionModel::currentChanged, this, &ParametersTable::ShowRemark);
  connect(ui_->cmdClose, &QPushButton::clicked, this, &QDialog::accept);
  ConnectMenu();
  TranslateForm(*this, host.Words());
  ui_->Grid1->setAccessibleName(windowTitle());
  ui_->Grid1->setCurrentIndex(model_.index(0, table_.PlaceOf(TableColumn::Name)));
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
  connect(ui_->mnuCut, &QAction::triggered, keys_, &GridKeys::Cut);
  connect(ui_->mnuCopy, &QAction::triggered, keys_, &GridKeys::Copy);
  connect(ui_->mnuPaste, &QAction::triggered, keys_, &GridKeys::Paste);
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

/// A colour or a format is chosen instead of typed.
bool ParametersTable::ChoiceKey(const QKeyEvent& key) {
  const QModelIndex cell = ui_->Grid1->currentIndex();
  if (!cell.isValid() || !IsChosen(table_.Column(cell.column()))) return false;
  if (key.key() != Qt::Key_F2 && !IsLetter(key)) return false;
  Choose(cell);
  return true;
}

void ParametersTable::Grid1_Click(const QModelIndex& cell) {
  if (QGuiApplication::keyboardModifiers() == Qt::NoModifier && IsChosen(table_.Column(cell.column()))) Choose(cell);
}

// --- Changes ---

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
  const CellRange range = keys_->Selected();
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

void ParametersTable::Copy(const CellRange& range) {
  if (HasCells()) QGuiApplication::clipboard()->setText(ToQt(table_.Copy(range)));
}

void ParametersTable::Paste(const CellRange& range) {
  if (!HasCells()) return;
  const auto [cells, isWhole] = table_.Paste(range, FromQt(QGuiApplication::clipboard()->text()));
  Changed();
  keys_->Select(cells);
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
  ShowRemarkOn(*ui_->lblFault, cell, model_.RemarkOn(cell), ToQt(host_.Words().Translator.In(text::TableHint)));
}

}  // namespace velk
