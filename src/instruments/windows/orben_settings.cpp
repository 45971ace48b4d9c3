#include "instruments/windows/orben_settings.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPointer>
#include <QScreen>
#include <QStyle>
#include <algorithm>
#include <array>
#include <utility>

#include "base/text.h"
#include "base/text_qt.h"
#include "i18n/windows/translate_form.h"
#include "instruments/texts.h"
#include "model/help_topics.h"
#include "model/select_file.h"
#include "platform/dialogs/procedure.h"
#include "platform/files/file_errors.h"
#include "platform/files/whole_file.h"
#include "ui_orben_settings.h"

namespace velk {

namespace {

constexpr int kRefreshMs = 500;
constexpr int kShownRows = 18;
constexpr std::size_t kLargestTemplate = 1 << 20;
constexpr std::array<std::string_view, 1> kExtensions{"txt"};

}  // namespace

OrbenSettings::OrbenSettings(WindowHost& host, OrbenSettingsWork work)
    : QDialog(host.Parent()),
      host_(host),
      ui_(std::make_unique<Ui::OrbenSettings>()),
      work_(std::move(work)),
      grid_(work_.table),
      model_(grid_, host.Words(), [this](const QModelIndex& cell, const QString& typed) {
        grid_.Enter(cell.row(), cell.column(), FromQt(typed));
        Changed();
      }) {
  ui_->setupUi(this);
  setProperty("helpTopic", topic::UnitTable);
  ui_->Grid1->setModel(&model_);
  ConnectButtons();
  ConnectGrid();
  if (work_.wasRead) unitHas_ = work_.table;
  grid_.ShowEmpty(work_.wasRead);
  TranslateForm(*this, host.Words());
  ui_->Grid1->setAccessibleName(windowTitle());
  ui_->Grid1->horizontalHeader()->setObjectName(QStringLiteral("qt_GridHeadings"));
  FitGrid();
  connect(&refresh_, &QTimer::timeout, this, &OrbenSettings::ShowUnit);
  refresh_.start(kRefreshMs);
  ui_->Grid1->setCurrentIndex(model_.index(0, unit_column::Offset));
  ui_->Grid1->setFocus();
  ShowUnit();
  SetBusy(false);
  ShowRemark();
}

OrbenSettings::~OrbenSettings() = default;

/// As wide as headings and numbers need, as high as the screen has room for.
void OrbenSettings::FitGrid() {
  QTableView& grid = *ui_->Grid1;
  QHeaderView& header = *grid.horizontalHeader();
  const QAbstractItemView& cells = grid;
  const int number = fontMetrics().horizontalAdvance(QStringLiteral("-000000.000"));
  for (int column = 0; column < model_.columnCount(); ++column)
    header.resizeSection(column, std::max({header.sectionSizeHint(column), cells.sizeHintForColumn(column),
                                           column == unit_column::Channel ? 0 : number}));
  const int frame = 2 * grid.frameWidth();
  grid.setMinimumWidth(header.length() + style()->pixelMetric(QStyle::PM_ScrollBarExtent) + frame);
  const int rows = std::min(kShownRows, grid_.RowCount()) * grid.verticalHeader()->defaultSectionSize();
  grid.setMinimumHeight(std::min(screen()->availableSize().height() / 2, header.sizeHint().height() + rows + frame));
  header.setStretchLastSection(true);
}

void OrbenSettings::ConnectButtons() {
  const auto on = [this](QPushButton* button, void (OrbenSettings::*work)()) {
    connect(button, &QPushButton::clicked, this, work);
  };
  on(ui_->Command1, &OrbenSettings::Command1_Click);
  on(ui_->Command3, &OrbenSettings::Command3_Click);
  on(ui_->Command4, &OrbenSettings::Command4_Click);
  on(ui_->Command8, &OrbenSettings::Command8_Click);
  on(ui_->cmdTools, &OrbenSettings::cmdTools_Click);
  on(ui_->cmdOpen, &OrbenSettings::cmdOpen_Click);
  on(ui_->cmdSave, &OrbenSettings::cmdSave_Click);
  on(ui_->cmdSaveAs, &OrbenSettings::cmdSaveAs_Click);
  connect(ui_->cmdClose, &QPushButton::clicked, this, &QDialog::accept);
  connect(ui_->Text1, &QLineEdit::textChanged, this, [this] { SetBusy(busy_); });
  ui_->Text1->installEventFilter(this);
}

void OrbenSettings::ConnectGrid() {
  connect(ui_->Grid1->selectionModel(), &QItemSelectionModel::currentChanged, this, &OrbenSettings::ShowRemark);
  const auto copy = [this](const CellRange& cells) { QGuiApplication::clipboard()->setText(ToQt(grid_.Copy(cells))); };
  const auto paste = [this](const CellRange& cells) {
    const CellRange written = grid_.Paste(cells, FromQt(QGuiApplication::clipboard()->text()));
    Changed();
    keys_->Select(written);
  };
  const auto clear = [this](const CellRange& cells) {
    grid_.Clear(cells);
    Changed();
  };
  const auto undo = [this] {
    grid_.Undo();
    Changed();
  };
  keys_ = new GridKeys(*ui_->Grid1, *ui_->Text1, *ui_->Command1, {copy, paste, clear, undo, {}});
  connect(ui_->Grid1, &QWidget::customContextMenuRequested, this, [this](const QPoint& place) {
    ui_->mnuUndo->setEnabled(grid_.CanUndo());
    ui_->mnuGrid->popup(ui_->Grid1->viewport()->mapToGlobal(place));
  });
  connect(ui_->mnuUndo, &QAction::triggered, this, undo);
  connect(ui_->mnuCut, &QAction::triggered, keys_, &GridKeys::Cut);
  connect(ui_->mnuCopy, &QAction::triggered, keys_, &GridKeys::Copy);
  connect(ui_->mnuPaste, &QAction::triggered, keys_, &GridKeys::Paste);
}

/// Enter behind a command sends it, and is no answer to the window.
bool OrbenSettings::eventFilter(QObject* watched, QEvent* event) {
  if (watched != ui_->Text1 || event->type() != QEvent::KeyPress) return QDialog::eventFilter(watched, event);
  const int key = static_cast<QKeyEvent*>(event)->key();
  if (key != Qt::Key_Return && key != Qt::Key_Enter) return false;
  Command8_Click();
  return true;
}

QString OrbenSettings::Text(const OperatorText& text) const {
  return ToQt(host_.Words().Translator.In(text));
}

void OrbenSettings::done(int result) {
  if (busy_) {
    closing_ = result;
    work_.cancel();
    return;
  }
  StoreOpenEditor();
  const QPointer<OrbenSettings> alive(this);
  if (MayLeave() && alive) QDialog::done(result);
}

bool OrbenSettings::MayLeave() {
  if (!grid_.IsChanged() || host_.Boxes().IsEnding()) return true;
  return host_.Boxes().Message({.text = text::LeaveUnitTable,
                                .buttons = Buttons::YesNo,
                                .icon = BoxIcon::Question,
                                .safeDefault = true}) == velk::Answer::Yes;
}

/// An editor that loses the keyboard stores what stands in it.
void OrbenSettings::StoreOpenEditor() {
  if (ui_->Grid1->isAncestorOf(focusWidget())) ui_->Grid1->setFocus();
}

// --- Work on the unit ---

void OrbenSettings::Run(const std::function<void()>& work) {
  if (busy_) return;
  const QPointer<OrbenSettings> alive(this);
  const QPointer<QWidget> before = focusWidget();
  SetBusy(true);
  work();
  if (!alive) return;
  SetBusy(false);
  if (before) before->setFocus();
  ShowUnit();
  if (closing_) done(*std::exchange(closing_, std::nullopt));
}

void OrbenSettings::SetBusy(bool busy) {
  busy_ = busy;
  for (QWidget* control : std::initializer_list<QWidget*>{ui_->Grid1, ui_->Text1, ui_->Command1, ui_->Command3,
                                                          ui_->Command4, ui_->cmdTools, ui_->cmdOpen, ui_->cmdSaveAs})
    control->setEnabled(!busy);
  ui_->cmdSave->setEnabled(!busy && !template_.empty());
  ui_->Command8->setEnabled(!busy && !ui_->Text1->text().trimmed().isEmpty());
}

bool OrbenSettings::IsSound() {
  StoreOpenEditor();
  const auto fault = FirstUnitFault(grid_.Table());
  if (!fault) return true;
  grid_.ShowEmpty(true);
  ui_->Grid1->setCurrentIndex(model_.index(fault->row, fault->column));
  ui_->Grid1->setFocus();
  Changed();
  return false;
}

bool OrbenSettings::MaySend() {
  if (!IsSound()) return false;
  const std::string channels = ChannelsWithExponents(grid_.Table(), unitHas_);
  return channels.empty() || host_.Boxes().Message({.text = text::ExponentsBefore + channels + text::ExponentsAfter,
                                                    .buttons = Buttons::YesNo,
                                                    .icon = BoxIcon::Exclamation,
                                                    .safeDefault = true}) == velk::Answer::Yes;
}

void OrbenSettings::Command1_Click() {
  const QPointer<OrbenSettings> alive(this);
  if (!MaySend() || !alive) return;
  Run([this, alive, table = grid_.Table()] {
    const bool isSent = work_.send(table);
    if (!alive) return;
    unitHas_ = isSent ? table : UnitRows();
    if (isSent) grid_.Kept();
  });
}

void OrbenSettings::Command3_Click() {
  const QPointer<OrbenSettings> alive(this);
  const auto answer = host_.Boxes().Message(
      {.text = text::ResetQuestion, .buttons = Buttons::YesNo, .icon = BoxIcon::Exclamation, .safeDefault = true});
  if (answer != velk::Answer::Yes || !alive) return;
  unitHas_.clear();
  Run(work_.reset);
}

void OrbenSettings::Command4_Click() {
  Run(work_.setClock);
}

void OrbenSettings::Command8_Click() {
  const std::string command = Trim(FromQt(ui_->Text1->text()));
  if (command.empty()) return;
  unitHas_.clear();
  Run([&] { work_.sendCommand(command); });
}

void OrbenSettings::cmdTools_Click() {
  unitHas_.clear();
  Run(work_.tools);
}

// --- Templates ---

void OrbenSettings::cmdOpen_Click() {
  const QPointer<OrbenSettings> alive(this);
  RunProcedure({host_.Boxes(), "cmdOpen_Click"}, [&](const Statements& run) {
    const std::string folder = template_.empty() ? work_.directory : FolderOf(template_);
    const auto path = SelectFile(host_.Boxes(), {text::OpenUnitTemplate, text::UnitTemplateFilter, folder}, kExtensions,
                                 FileUse::Open, work_.beep);
    if (!path || !alive) return;
    const std::string text = run([&] { return ReadWholeFile(*path, kLargestTemplate); });
    if (!alive) return;
    auto read = ReadUnitTemplate(text, work_.unit, grid_.RowCount());
    if (const auto* const fault = std::get_if<OperatorText>(&read)) {
      host_.Boxes().Message({*path + "\n" + *fault, {}, Buttons::Ok, BoxIcon::Exclamation});
      return;
    }
    grid_.Load(std::get<UnitRows>(std::move(read)));
    grid_.Kept();
    ShowTemplate(*path);
    Changed();
  });
}

void OrbenSettings::cmdSave_Click() {
  if (IsSound()) Write(template_);
}

void OrbenSettings::cmdSaveAs_Click() {
  if (!IsSound()) return;
  const QPointer<OrbenSettings> alive(this);
  const std::string folder = template_.empty() ? work_.directory : FolderOf(template_);
  std::optional<std::string> path;
  RunProcedure({host_.Boxes(), "cmdSaveAs_Click"}, [&](const Statements&) {
    path = SelectFile(host_.Boxes(), {text::SaveUnitTemplate, text::UnitTemplateFilter, folder}, kExtensions,
                      FileUse::Save, work_.beep);
  });
  if (path && alive) Write(*path);
}

void OrbenSettings::Write(const std::string& path) {
  const QPointer<OrbenSettings> alive(this);
  RunProcedure({host_.Boxes(), "cmdSave_Click"}, [&](const Statements& run) {
    run([&] {
      if (alive) WriteWholeFile(path, UnitTemplateText(work_.unit, grid_.Table()));
    });
    if (!alive) return;
    grid_.Kept();
    ShowTemplate(path);
  });
}

void OrbenSettings::ShowTemplate(const std::string& path) {
  template_ = path;
  setWindowTitle(Text(text::UnitTemplateTitle) + ToQt(path.substr(path.rfind('/') + 1)));
  SetBusy(busy_);
}

// --- What is shown ---

void OrbenSettings::Changed() {
  model_.ShowAnew();
  ShowRemark();
}

void OrbenSettings::ShowRemark() {
  const QModelIndex cell = ui_->Grid1->currentIndex();
  const MessageText& hint = work_.wasRead ? text::UnitTableHint : text::UnitTableUnread;
  ShowRemarkOn(*ui_->lblFault, cell, model_.RemarkOn(cell), Text(hint));
}

void OrbenSettings::ShowUnit() {
  ui_->lblClock->setText(ToQt(work_.clock()));
  const std::string issued = work_.issued();
  ui_->lblIssued->setText(issued.empty() ? QString() : Text(text::CommandIssuedIs) + ToQt(issued));
}

}  // namespace velk
