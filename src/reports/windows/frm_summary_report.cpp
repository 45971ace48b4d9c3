#include "reports/windows/frm_summary_report.h"

#include <QApplication>
#include <QHeaderView>
#include <QPointer>
#include <QPushButton>
#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

#include "base/dates.h"
#include "base/numbers.h"
#include "base/scope.h"
#include "base/text_qt.h"
#include "i18n/windows/translate_form.h"
#include "log/save_as_log.h"
#include "log/texts.h"
#include "log/windows/entry_delegate.h"
#include "model/help_topics.h"
#include "model/select_file.h"
#include "platform/dialogs/long_task.h"
#include "platform/files/file_errors.h"
#include "platform/windows/letter_size.h"
#include "reports/range_entry.h"
#include "reports/report_lines.h"
#include "reports/texts.h"
#include "ui_frm_summary_report.h"

namespace velk {

namespace {

constexpr int kViewerLetters = 170, kViewerLines = 40;
constexpr int kFactorLetters = 7;
constexpr int kBarSteps = 1000;
constexpr const char* kNumberPicture = "#,##0.000";

bool IsDatabaseError(const RuntimeError& error) {
  return static_cast<int>(error.Number()) >= static_cast<int>(ErrorNumber::Database) &&
         error.Number() != ErrorNumber::PortInvalid && error.Number() != ErrorNumber::PortNotOpen;
}

}  // namespace

/// Shows in the window how far a search is.
class frmSummaryReport::FilterBar : public ProgressBox {
 public:
  explicit FilterBar(frmSummaryReport& window) : window_(window) {}

  void Appear() override {}
  void Show(const std::string& doing, double share) override {
    window_.ui_->barFilter->setValue(static_cast<int>(share * kBarSteps));
    window_.ui_->lblNote->setText(ToQt(doing));
  }
  bool IsCancelled() const override { return window_.FilterStop_ != FilterStop::No; }

 private:
  frmSummaryReport& window_;
};

frmSummaryReport::frmSummaryReport(WindowHost& host, const ViewerAccess& access, LogView& view)
    : QDialog(host.Parent()),
      ui_(std::make_unique<Ui::frmSummaryReport>()),
      host_(host),
      access_(access),
      view_(view),
      edits_(access.log, view),
      rows_(new LogGridModel(view, access.platform.language, this)),
      lines_(new SummaryModel(access.platform.language, this, kNumberPicture)),
      delegate_(new EntryDelegate(this)),
      whyNotEdited_(edits_.WhyNot()) {
  ui_->setupUi(this);
  setWindowFlag(Qt::WindowMaximizeButtonHint);
  setProperty("helpTopic", topic::Viewer);
  ui_->lblFile->setText(ToQt(view.Path()));
  ui_->lblFile->setToolTip(ToQt(view.Path()));
  SetUpGrid(*ui_->logDataGrid, *rows_);
  SetUpGrid(*ui_->summaryGrid, *lines_);
  delegate_->Guard(*ui_->summaryGrid);
  lines_->onEntered = [this](std::int64_t key, const std::string& column, std::optional<double> value) {
    return EnterField(key, column, value);
  };
  ui_->cmdSaveAsLog->setVisible(IsJetLog(view.Path()));
  FillCombo1();
  ConnectKeys();
  TranslateForm(*this, host.Words());
  FitTexts();
  cmdALL_Click();
  LayOutLogGrid();
  ReadSummary(0);
  ShowNote({});
  UpdateKeys();
  ui_->logDataGrid->setFocus();
  resize(LetterSize(*this, kViewerLetters, kViewerLines));
  ui_->grids->setSizes({3, 2});
  ui_->grids->setStretchFactor(0, 3);
  ui_->grids->setStretchFactor(1, 2);
}

frmSummaryReport::~frmSummaryReport() {
  // An entry that is still being made loses the focus as the grid goes.
  lines_->onEntered = nullptr;
}

void frmSummaryReport::ConnectKeys() {
  connect(ui_->cmdALL, &QPushButton::clicked, this, &frmSummaryReport::cmdALL_Click);
  Bind(ui_->cmdUpdate, "cmdUpdate_Click", &frmSummaryReport::cmdUpdate_Click);
  Bind(ui_->cmdGo, "cmdGo_Click", &frmSummaryReport::cmdGo_Click);
  Bind(ui_->cmdFilter, "cmdFilter_Click", &frmSummaryReport::cmdFilter_Click);
  Bind(ui_->cmdAddRow, "cmdAddRow_Click", &frmSummaryReport::cmdAddRow_Click);
  Bind(ui_->cmdRemoveRow, "cmdRemoveRow_Click", &frmSummaryReport::cmdRemoveRow_Click);
  Bind(ui_->cmdDelete, "cmdDelete_Click", &frmSummaryReport::cmdDelete_Click);
  Bind(ui_->cmdUndo, "cmdUndo_Click", &frmSummaryReport::cmdUndo_Click);
  Bind(ui_->cmdPrintLog, "PrintGrid", &frmSummaryReport::PrintLog_Click);
  Bind(ui_->cmdPrintSummary, "PrintGrid", &frmSummaryReport::PrintSummary_Click);
  Bind(ui_->cmdSaveAsLog, "cmdSaveAsLog_Click", &frmSummaryReport::cmdSaveAsLog_Click);
  connect(ui_->cmdFilterStop, &QPushButton::clicked, this, [this] { FilterStop_ = FilterStop::Stop; });
  connect(ui_->cmdClose, &QPushButton::clicked, this, &QDialog::reject);
  connect(ui_->logDataGrid->horizontalHeader(), &QHeaderView::sectionClicked, this, &frmSummaryReport::SortLog);
  connect(ui_->summaryGrid->horizontalHeader(), &QHeaderView::sectionClicked, this, &frmSummaryReport::SortSummary);
  connect(rows_, &LogGridModel::Unreadable, this, [this](const QString& reason) { ui_->lblNote->setText(reason); });
  connect(delegate_, &EntryDelegate::Refused, this,
          [this](bool refused) { ShowNote(refused ? OperatorText(text::EnterANumber) : OperatorText()); });
  for (QWidget* entry : {static_cast<QWidget*>(ui_->txtBeginTime), static_cast<QWidget*>(ui_->txtEndTime),
                         static_cast<QWidget*>(ui_->Text1), static_cast<QWidget*>(ui_->Text2)})
    entry->installEventFilter(this);
}

void frmSummaryReport::Bind(QAbstractButton* key, const char* procedure, void (frmSummaryReport::*work)(Run)) {
  connect(key, &QAbstractButton::clicked, this, [this, procedure, work] { Begin(procedure, work); });
}

void frmSummaryReport::Begin(const char* procedure, void (frmSummaryReport::*work)(Run)) {
  if (working_) return;
  working_ = true;
  RunProcedure({access_.platform.dialogs, procedure, text::ViewerTitle}, [&](Run run) { (this->*work)(run); });
  working_ = false;
  UpdateKeys();
}

/// Enter does what belongs to the entry that it is pressed in.
bool frmSummaryReport::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::FocusIn) {
    const bool isRange = watched == ui_->txtBeginTime || watched == ui_->txtEndTime;
    (isRange ? ui_->cmdUpdate : watched == ui_->Text1 ? ui_->cmdGo : ui_->cmdFilter)->setDefault(true);
  }
  return QDialog::eventFilter(watched, event);
}

void frmSummaryReport::FillCombo1() {
  ui_->Combo1->addItem(ToQt(access_.platform.language.In(text::AllColumns)));
  for (const std::string& channel : view_.Channels()) ui_->Combo1->addItem(ToQt(channel));
}

void frmSummaryReport::FitTexts() {
  const int moment = fontMetrics().horizontalAdvance(QStringLiteral("30-May-2000 00:00:00  "));
  const int frame = 4 * ui_->logDataGrid->frameWidth() + 8;
  for (QLineEdit* entry : {ui_->txtBeginTime, ui_->txtEndTime, ui_->Text1}) entry->setMinimumWidth(moment + frame);
  ui_->Text2->setFixedWidth(fontMetrics().averageCharWidth() * kFactorLetters + frame);
  ui_->Text2->setText(QStringLiteral("2"));
  ui_->Text2->setAlignment(Qt::AlignRight);
  // The keys beside it stay where they are as a search ends, just when the mouse may be on its way to one.
  QSizePolicy policy = ui_->barFilter->sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  ui_->barFilter->setSizePolicy(policy);
  ui_->barFilter->setVisible(false);
  ui_->logDataGrid->setAccessibleName(ToQt(access_.platform.language.In(text::DataLogTitle)));
  ui_->summaryGrid->setAccessibleName(ToQt(access_.platform.language.In(text::SummaryDataTitle)));
}

// --- Range and time ---

void frmSummaryReport::cmdALL_Click() {
  const auto shown = [](std::optional<double> time) {
    return time && IsDateTime(*time) ? ToQt(FormatDate(*time, kMomentPicture)) : QString();
  };
  ui_->txtBeginTime->setText(shown(view_.FirstTime()));
  ui_->txtEndTime->setText(shown(view_.LastTime()));
  if (ui_->Text1->text().isEmpty()) ui_->Text1->setText(ui_->txtBeginTime->text());
}

void frmSummaryReport::cmdUpdate_Click(Run run) {
  if (!view_.FirstTime() || !IsDateTime(*view_.FirstTime()) || !IsDateTime(*view_.LastTime())) return;
  const RangeEntry entry = ReadRange(FromQt(ui_->txtBeginTime->text()), FromQt(ui_->txtEndTime->text()),
                                     *view_.FirstTime(), *view_.LastTime());
  for (const bool isSound : {entry.beginIsSound, entry.endIsSound})
    if (!isSound) SayInvalid();
  ui_->txtBeginTime->setText(ToQt(FormatDate(entry.begin, kMomentPicture)));
  ui_->txtEndTime->setText(ToQt(FormatDate(entry.end, kMomentPicture)));
  run([&] { view_.SetRange(entry.begin, entry.end); });
  range_ = {entry.begin, entry.end};
  SortlogDataData();
  ReadSummary(0);
  ShowNote(view_.Count() == 0 ? OperatorText(text::NoRowsInRange) : OperatorText());
}

void frmSummaryReport::SayInvalid() {
  access_.platform.dialogs.Message({text::InvalidDateOrTime, text::ViewerTitle, Buttons::Ok, BoxIcon::Exclamation});
}

void frmSummaryReport::cmdGo_Click(Run run) {
  const double target = ReadTarget(FromQt(ui_->Text1->text()));
  if (std::isnan(target)) return SayInvalid();
  const int row = LogRow();
  if (row < 0) return;
  GoToRow(run([&] {
    LongTask task(access_.platform.dialogs, access_.platform.clock, text::ViewerTitle);
    return view_.RowAtTime(row, target, task);
  }));
}

// --- The next event ---

void frmSummaryReport::cmdFilter_Click(Run run) {
  FilterStop_ = FilterStop::No;
  const double factor = ReadFactor(FromQt(ui_->Text2->text()));
  if (factor < 0) return ShowNote(text::FactorBelowZero);
  const EventSearch search(factor);
  std::vector<int> watched(view_.Channels().size());
  std::iota(watched.begin(), watched.end(), 0);
  if (ui_->Combo1->currentIndex() > 0) watched = {ui_->Combo1->currentIndex() - 1};
  run([&] { Search(search, watched); });
}

/// The window itself shows how far it is: its own key ends the search. Where it stops, however that comes, the row is
/// the present one; leaving it is as if it hadn't begun.
void frmSummaryReport::Search(EventSearch search, const std::vector<int>& watched) {
  const int row = LogRow();
  if (row < 0) return;
  ShowSearching(true);
  const OnLeaving left([&] { ShowSearching(false); });
  int reached = row;
  try {
    LongTask task(access_.platform.dialogs, access_.platform.clock, std::make_unique<FilterBar>(*this));
    task.Doing(text::SearchingEvent);
    const auto found = view_.FindEvent(row, std::move(search), watched, task, reached);
    GoToRow(found.value_or(view_.Count() - 1));
    ShowNote(found ? OperatorText() : OperatorText(text::NothingJumps));
  } catch (const TaskCancelled&) {
    ShowNote({});
    if (FilterStop_ == FilterStop::Stop) GoToRow(reached);
  }
}

void frmSummaryReport::ShowSearching(bool searching) {
  searching_ = searching;
  for (auto* control : {ui_->logSide, ui_->summarySide}) control->setEnabled(!searching);
  for (QWidget* control : findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly))
    if ((qobject_cast<QAbstractButton*>(control) || qobject_cast<QLineEdit*>(control)) && control != ui_->cmdFilterStop)
      control->setEnabled(!searching);
  ui_->Combo1->setEnabled(!searching);
  ui_->cmdFilterStop->setEnabled(searching);
  ui_->barFilter->setValue(0);
  ui_->barFilter->setVisible(searching);
  (searching ? static_cast<QWidget*>(ui_->cmdFilterStop) : ui_->logDataGrid)->setFocus();
}

void frmSummaryReport::reject() {
  if (searching_)
    FilterStop_ = FilterStop::Cancel;
  else if (!working_ || access_.platform.dialogs.IsEnding())
    QDialog::reject();
}

// --- Rows and lines ---

void frmSummaryReport::cmdAddRow_Click(Run run) {
  const int row = LogRow();
  if (row < 0) return;
  const auto comment = access_.platform.dialogs.Input(text::EnterYourComment, text::AddingComment);
  if (!comment || comment->empty()) return;
  if (!OnSummary(run, [&] { edits_.AddLine(row, *comment); })) return;
  // The line that was added is the latest by its key.
  std::int64_t added = 0;
  ReadSummary(0);
  for (const SummaryLine& line : lines_->Report().lines) added = std::max(added, line.key);
  ReadSummary(added);
  if (access_.log.onReportChanged) access_.log.onReportChanged();
}

void frmSummaryReport::cmdRemoveRow_Click(Run run) {
  const std::int64_t key = SummaryKey();
  if (key == 0) return;
  const int line = ui_->summaryGrid->currentIndex().row();
  if (!OnSummary(run, [&] { edits_.RemoveLine(key); })) return;
  ReadSummary(0);
  GoToLine(std::min(line, lines_->rowCount() - 1));
  if (access_.log.onReportChanged) access_.log.onReportChanged();
}

void frmSummaryReport::cmdDelete_Click(Run run) {
  const int row = LogRow();
  if (row < 0) return;
  run([&] { edits_.DeleteRow(row); });
  rows_->ShowAnew();
  GoToRow(std::min(row, view_.Count() - 1));
}

void frmSummaryReport::cmdUndo_Click(Run run) {
  const int present = LogRow();
  const auto place = run([&] { return edits_.Undo(); });
  if (!place) {
    ReadSummary(SummaryKey());
    if (access_.log.onReportChanged) access_.log.onReportChanged();
    return;
  }
  rows_->ShowAnew();
  const int back = view_.Order().RowOf(*place);
  GoToRow(back >= 0 ? back : present);
  ShowNote(back >= 0 ? OperatorText() : OperatorText(text::RowIsBackElsewhere));
}

/// A failure of the database on the report has a box of its own. False where it came.
bool frmSummaryReport::OnSummary(Run run, const std::function<void()>& change) {
  bool done = false;
  run([&] {
    try {
      change();
      done = true;
    } catch (const RuntimeError& error) {
      if (!IsDatabaseError(error)) throw;
      access_.platform.dialogs.Message({text::DatabaseErrorNumber + std::to_string(static_cast<int>(error.Number())) +
                                            text::DatabaseErrorWhich + error.Text(),
                                        text::ViewerTitle, Buttons::Ok, BoxIcon::Exclamation, error.Number()});
    }
  });
  return done;
}

bool frmSummaryReport::EnterField(std::int64_t key, const std::string& column, std::optional<double> value) {
  if (!whyNotEdited_.IsEmpty()) return false;
  bool entered = false;
  RunProcedure({access_.platform.dialogs, "summaryGrid", text::ViewerTitle}, [&](Run run) {
    entered = OnSummary(run, [&] { access_.log.EnterSummaryField(view_.Path(), key, column, value); });
  });
  return entered;
}

/// The lines of the range, in their order. `present` is the key of the line to go to; 0: the first.
void frmSummaryReport::ReadSummary(std::int64_t present) {
  RunProcedure({access_.platform.dialogs, "SortSummaryData", text::ViewerTitle}, [&](Run run) {
    SummaryLines report = run([&] { return OpenLog::Report(view_.Path()); });
    if (range_) KeepLinesWithin(report, range_->first, range_->second);
    if (summaryOrder_.column >= 0) SortLines(report, summaryOrder_.column, summaryOrder_.descending);
    const bool isFirst = lines_->columnCount() == 0;
    lines_->Show(std::move(report));
    if (isFirst) AdjustSummaryGrid();
  });
  int line = 0;
  for (int i = 0; i < lines_->rowCount(); ++i)
    if (lines_->Report().lines[static_cast<std::size_t>(i)].key == present) line = i;
  GoToLine(line);
}

/// A log that can't be changed becomes one that can.
void frmSummaryReport::cmdSaveAsLog_Click(Run run) {
  constexpr std::array<std::string_view, 1> kExtensions = {"mdb"};
  Dialogs& dialogs = access_.platform.dialogs;
  const QPointer<frmSummaryReport> alive(this);
  const std::string from = view_.Path();
  const auto target = SelectFile(dialogs, {text::SaveAsLogTitle, text::DataFilesFilter, FolderOf(from)}, kExtensions,
                                 FileUse::Save, [] { QApplication::beep(); });
  if (!target || !alive) return;
  run([&] {
    LongTask task(dialogs, access_.platform.clock, text::SaveAsLogTitle);
    SaveAsLog(from, *target, [&](double done, double of) { task.Step(done, of); });
  });
  if (alive) ShowNote(text::SavedAsLog + *target);
}

// --- What is shown ---

int frmSummaryReport::LogRow() const {
  const QModelIndex present = ui_->logDataGrid->currentIndex();
  return present.isValid() && present.row() < view_.Count() ? present.row() : -1;
}

void frmSummaryReport::GoToRow(int row) {
  const QModelIndex index = rows_->index(row, std::max(0, ui_->logDataGrid->currentIndex().column()));
  ui_->logDataGrid->setCurrentIndex(index);
  if (index.isValid()) ui_->logDataGrid->scrollTo(index);
  ShowPositions();
}

std::int64_t frmSummaryReport::SummaryKey() const {
  const QModelIndex present = ui_->summaryGrid->currentIndex();
  return present.isValid() ? lines_->Report().lines[static_cast<std::size_t>(present.row())].key : 0;
}

void frmSummaryReport::GoToLine(int line) {
  const QModelIndex index = lines_->index(line, std::max(0, ui_->summaryGrid->currentIndex().column()));
  ui_->summaryGrid->setCurrentIndex(index);
  if (index.isValid()) ui_->summaryGrid->scrollTo(index);
  ShowPositions();
}

void frmSummaryReport::ShowPositions() {
  const Language& language = access_.platform.language;
  const auto number = [](int value) { return Format(static_cast<double>(value), "#,##0"); };
  ui_->lblLogRecord->setText(
      ToQt(language.In(text::RowNumber + number(LogRow() + 1) + text::RowsInAll + number(view_.Count()))));
  ui_->lblRecord->setText(
      ToQt(language.In(text::RecordNumber + std::to_string(ui_->summaryGrid->currentIndex().row() + 1))));
}

void frmSummaryReport::ShowNote(const OperatorText& note) {
  const OperatorText standing = !whyNotEdited_.IsEmpty() ? text::CannotBeEdited + whyNotEdited_
                                : !view_.FirstTime()     ? OperatorText(text::LogIsEmpty)
                                                         : OperatorText();
  ui_->lblNote->setText(ToQt(access_.platform.language.In(note.IsEmpty() ? standing : note)));
}

void frmSummaryReport::UpdateKeys() {
  if (searching_) return;
  const bool edits = whyNotEdited_.IsEmpty();
  const bool hasRow = LogRow() >= 0;
  const bool hasLine = ui_->summaryGrid->currentIndex().isValid();
  for (auto* key : {ui_->cmdGo, ui_->cmdFilter, ui_->cmdPrintLog}) key->setEnabled(hasRow);
  ui_->cmdDelete->setEnabled(edits && hasRow);
  ui_->cmdAddRow->setEnabled(edits && hasRow);
  ui_->cmdRemoveRow->setEnabled(edits && hasLine);
  ui_->cmdPrintSummary->setEnabled(hasLine);
  ui_->cmdUndo->setEnabled(edits && edits_.CanUndo());
}

}  // namespace velk
