#include "wells/windows/edit_sur.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QPointer>
#include <QRadioButton>
#include <QStyle>
#include <algorithm>
#include <array>

#include "base/errors.h"
#include "base/text.h"
#include "base/text_qt.h"
#include "i18n/windows/translate_form.h"
#include "model/help_topics.h"
#include "model/select_file.h"
#include "platform/dialogs/procedure.h"
#include "platform/files/file_errors.h"
#include "platform/files/whole_file.h"
#include "platform/windows/grid_keys.h"
#include "ui_edit_sur.h"
#include "wells/texts.h"
#include "wells/windows/units_convert.h"

namespace velk {

namespace {

constexpr int kShownRows = 14;
/// No version of a grid.
constexpr std::int64_t kInNoFile = -1;

/// The rows that were loaded or accepted last: a live survey may have added to them.
SurveyGrid GridOf(const Well& well) {
  std::span<const SurveyStation> rows(well.Survey);
  if (well.SavedSurveyCount > 0) rows = rows.first(std::min<std::size_t>(rows.size(), well.SavedSurveyCount));
  return {rows, well.SurveyFileUnits};
}

}  // namespace

EditSur::EditSur(WindowHost& host, Well well, SurveyAccess access)
    : QDialog(host.Parent()),
      host_(host),
      ui_(std::make_unique<Ui::EditSur>()),
      well_(std::move(well)),
      access_(std::move(access)),
      grid_(GridOf(well_)),
      model_(grid_, well_.Units, host.Words(),
             [this](const QModelIndex& cell, const QString& typed) {
               grid_.Enter(cell.row(), cell.column(), FromQt(typed));
               Changed();
             }),
      inFile_(well_.SurveyIsKept ? grid_.Version() : kInNoFile),
      ownFile_(well_.SurveyFileName) {
  ui_->setupUi(this);
  setProperty("helpTopic", topic::Wells);
  ui_->Grid1->setModel(&model_);
  connect(ui_->Grid1->selectionModel(), &QItemSelectionModel::currentChanged, this, &EditSur::ShowRemark);
  ConnectButtons();
  ConnectKeys();
  ConnectMenu();
  TranslateForm(*this, host.Words());
  ui_->Grid1->setAccessibleName(windowTitle());
  ui_->Grid1->horizontalHeader()->setObjectName(QStringLiteral("qt_GridHeadings"));
  ui_->Grid1->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
  ui_->Grid1->setMinimumHeight(ui_->Grid1->horizontalHeader()->sizeHint().height() +
                               kShownRows * ui_->Grid1->verticalHeader()->defaultSectionSize());
  ui_->lblFault->setMinimumHeight(2 * ui_->lblFault->fontMetrics().lineSpacing());
  if (!well_.SurveyFileName.empty()) ShowTitle(well_.SurveyFileName);
  AllowSave();
  ui_->Grid1->setCurrentIndex(model_.index(0, 0));
  ui_->Grid1->setFocus();
  ShowUnits();
  ShowRemark();
}

EditSur::~EditSur() = default;

void EditSur::ConnectButtons() {
  const auto on = [this](QPushButton* button, void (EditSur::*work)()) {
    connect(button, &QPushButton::clicked, this, work);
  };
  on(ui_->cmdNew, &EditSur::cmdNew_Click);
  on(ui_->cmdOpen, &EditSur::cmdOpen_Click);
  on(ui_->cmdSave, &EditSur::cmdSave_Click);
  on(ui_->cmdSaveAs, &EditSur::cmdSaveAs_Click);
  on(ui_->cmdConvert, &EditSur::cmdConvert_Click);
  on(ui_->cmdInsertRow, &EditSur::cmdInsertRow_Click);
  on(ui_->cmdDeleteRow, &EditSur::cmdDeleteRow_Click);
  on(ui_->cmdOK, &EditSur::cmdOK_Click);
  on(ui_->cmdNext, &EditSur::cmdOK_Click);
  connect(ui_->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  connect(ui_->Option1_0, &QRadioButton::clicked, this, [this] { Option1_Click(kApiEnglish); });
  connect(ui_->Option1_1, &QRadioButton::clicked, this, [this] { Option1_Click(kMetric); });
  connect(ui_->Option1_2, &QRadioButton::clicked, this, [this] { Option1_Click(kUserDefined); });
}

void EditSur::ConnectKeys() {
  const auto copy = [this](const CellRange& cells) { QGuiApplication::clipboard()->setText(ToQt(grid_.Copy(cells))); };
  const auto clear = [this](const CellRange& cells) {
    grid_.Clear(cells);
    Changed();
  };
  const auto other = [this](const QKeyEvent& key) {
    if (key.key() != Qt::Key_Insert) return false;
    cmdInsertRow_Click();
    return true;
  };
  keys_ =
      new GridKeys(*ui_->Grid1, *ui_->cmdCancel, *ui_->cmdNew,
                   {copy, [this](const CellRange& cells) { Paste(cells); }, clear, [this] { mnuUndo_Click(); }, other});
}

void EditSur::ConnectMenu() {
  connect(ui_->Grid1, &QWidget::customContextMenuRequested, this, [this](const QPoint& place) {
    ui_->mnuUndo->setEnabled(grid_.CanUndo());
    ui_->mnuGrid->popup(ui_->Grid1->viewport()->mapToGlobal(place));
  });
  connect(ui_->GridInsertRow, &QAction::triggered, this, &EditSur::cmdInsertRow_Click);
  connect(ui_->GridDeleteRow, &QAction::triggered, this, &EditSur::cmdDeleteRow_Click);
  connect(ui_->mnuUndo, &QAction::triggered, this, &EditSur::mnuUndo_Click);
  connect(ui_->mnuCut, &QAction::triggered, keys_, &GridKeys::Cut);
  connect(ui_->mnuCopy, &QAction::triggered, keys_, &GridKeys::Copy);
  connect(ui_->mnuPaste, &QAction::triggered, keys_, &GridKeys::Paste);
}

QString EditSur::Text(const OperatorText& text) const {
  return ToQt(host_.Words().Translator.In(text));
}

std::string EditSur::Directory() const {
  for (const std::string& path : {well_.SurveyFileName, well_.WellFileName})
    if (!path.empty()) return FolderOf(path);
  return access_.directory;
}

// --- Leaving ---

void EditSur::done(int result) {
  if (result == Accepted || host_.Boxes().IsEnding() || !grid_.IsChanged()) return QDialog::done(result);
  const QPointer<EditSur> alive(this);
  const auto answer = host_.Boxes().Message({text::LeaveSurvey, {}, Buttons::YesNo, BoxIcon::Question, {}, {}, true});
  if (alive && answer == velk::Answer::Yes) QDialog::done(result);
}

void EditSur::cmdOK_Click() {
  ui_->Grid1->setFocus();  // what stands in an open editor is stored
  if (TellLiveSurvey() || TellFault()) return;
  const QPointer<EditSur> alive(this);
  const bool computed = RunProcedure({host_.Boxes(), "cmdOK_Click"}, [&](const Statements& run) {
    run([&] {
      const std::vector<SurveyStation> survey = grid_.ReadBack();
      WellPath path;
      if (!survey.empty()) path = CalculateTrajectory(survey, well_.CalculationInterval);
      well_.Path = std::move(path);
      well_.Survey = survey;
    });
  });
  if (!alive || !computed) return;
  well_.SurveyFileUnits = grid_.Units();
  well_.SavedSurveyCount = static_cast<std::int16_t>(well_.Survey.size());
  well_.SurveyAccepted = true;
  well_.SurveyIsKept = grid_.Version() == inFile_;
  accept();
}

/// Rows that were accepted now would be gone with the next ones of the log.
bool EditSur::TellLiveSurvey() {
  if (!access_.isLive()) return false;
  host_.Boxes().Message({text::LiveSurveyGoesOn, {}, Buttons::Ok, BoxIcon::Exclamation});
  return true;
}

/// Tells of the first row that keeps the survey from being taken, and goes there.
bool EditSur::TellFault() {
  const auto row = grid_.FirstFault();
  if (!row) return false;
  ui_->Grid1->setCurrentIndex(model_.index(*row, 0));
  host_.Boxes().Message(
      {text::FaultInRow + std::to_string(*row + 1) + ": " + text::DepthNotBelow, {}, Buttons::Ok, BoxIcon::Critical});
  return true;
}

// --- Files ---

EditSur::Beside EditSur::Present(bool isSameSurvey) const {
  return {grid_.Version(), well_.Sections, isSameSurvey, well_.SurveyFileName, well_.WellFileName, windowTitle()};
}

void EditSur::cmdNew_Click() {
  before_.push_back(Present(false));
  grid_.Fill({}, well_.WellFileUnits);
  well_.SurveyFileName.clear();
  well_.WellFileName.clear();
  well_.Sections.clear();
  AllowSave();
  setWindowTitle(Text(text::NewSurveyTitle));
  Changed();
}

void EditSur::cmdOpen_Click() {
  constexpr std::array<std::string_view, 3> kExtensions = {"d15", "dt5", "*"};
  const QPointer<EditSur> alive(this);
  const auto path = SelectFile(host_.Boxes(), {text::OpenSurveyTitle, text::SurveyFilesToOpen, Directory()},
                               kExtensions, FileUse::Open, access_.beep);
  if (path && alive) Open(*path);
}

void EditSur::Open(const std::string& path) {
  const QPointer<EditSur> alive(this);
  if (!FileExists(path)) {
    host_.Boxes().Message({path + OperatorText(text::SurveyFileMissing), {}, Buttons::Ok, BoxIcon::Exclamation});
    return;
  }
  SurveyFile file;
  const bool isRead = RunProcedure({host_.Boxes(), "cmdOpen_Click"}, [&](const Statements& run) {
    file = run([&] { return ReadSurveyFile(path, std::max(kWellFileRows, well_.Survey.size())); });
  });
  if (!isRead || !alive) return;
  if (!file.rows.empty()) TakeFile(file, path);
  if (!file.fault.IsEmpty()) host_.Boxes().Message({path + "\n" + file.fault, {}, Buttons::Ok, BoxIcon::Exclamation});
}

/// A file that was not read whole is not written over by Save: what could not be read would be gone.
void EditSur::TakeFile(const SurveyFile& file, const std::string& path) {
  before_.push_back(Present(false));
  grid_.Fill(file.rows, file.units.value_or(grid_.Units()));
  const bool isWell = IsWellFile(path);
  well_.WellFileName = isWell ? path : std::string();
  well_.SurveyFileName = isWell || !file.fault.IsEmpty() ? std::string() : path;
  well_.Sections = file.sections;
  if (isWell && file.units) well_.WellFileUnits = *file.units;
  AllowSave();
  ui_->Grid1->setCurrentIndex(model_.index(0, 0));
  ShowTitle(path);
  Changed();
  grid_.Kept();
  inFile_ = grid_.Version();
}

void EditSur::cmdSave_Click() {
  ui_->Grid1->setFocus();  // what stands in an open editor is stored
  if (!well_.SurveyFileName.empty()) Save(well_.SurveyFileName);
}

void EditSur::cmdSaveAs_Click() {
  constexpr std::array<std::string_view, 1> kExtensions = {"d15"};
  ui_->Grid1->setFocus();
  const QPointer<EditSur> alive(this);
  const auto path = SelectFile(host_.Boxes(), {text::SaveSurveyTitle, text::SurveyFilesToSave, Directory()},
                               kExtensions, FileUse::Save, access_.beep);
  if (path && alive) Save(*path);
}

void EditSur::Save(const std::string& path) {
  const QPointer<EditSur> alive(this);
  const bool saved = RunProcedure({host_.Boxes(), "cmdSave_Click"}, [&](const Statements& run) {
    const std::vector<SurveyStation> survey = run([&] { return grid_.ReadBack(); });
    run([&] { WriteWholeFile(path, SurveyText(survey, grid_.Units())); });
  });
  if (!alive || !saved) return;
  FollowOwnRows(path);
  grid_.AddSurface();
  inFile_ = grid_.Version();
  // Rows that the survey leaves out are not in the file.
  if (!grid_.LeavesRowsOut()) grid_.Kept();
  well_.SurveyFileName = path;
  AllowSave();
  ShowTitle(path);
  Changed();
}

/// What is saved stays saved where the editor is left by Cancel, which leaves the well the rows that it had: they are
/// in that file then, or others have taken their place there.
void EditSur::FollowOwnRows(const std::string& path) {
  if (grid_.Version() == 0)
    ownFile_ = path;
  else if (path == ownFile_)
    ownFile_.clear();
  else
    return;
  access_.keepFile(ownFile_);
}

void EditSur::ShowTitle(const std::string& path) {
  setWindowTitle(Text(text::SurveyTitle + UpperCase(path)));
}

void EditSur::AllowSave() {
  ui_->cmdSave->setEnabled(!well_.SurveyFileName.empty());
}

// --- Units ---

void EditSur::Option1_Click(std::int16_t system) {
  grid_.SetUnits(system);
  Changed();
}

void EditSur::cmdConvert_Click() {
  ui_->Grid1->setFocus();
  const QPointer<EditSur> alive(this);
  const std::int16_t from = grid_.Units();
  const auto choice = host_.Ask<UnitsConvert>(from, well_.Units.user);
  if (!alive) return;
  if (choice) {
    well_.Units.SetUser(choice->user);
    access_.keepUnits(choice->user);
  }
  if (!alive) return;
  const bool converted = RunProcedure({host_.Boxes(), "cmdConvert_Click"}, [&](const Statements& run) {
    run([&] {
      well_.Units.Convert(from, choice ? choice->to : from);
      if (choice) ConvertDepths(well_.Units.UnitFactor[kLengthSlot], choice->to);
    });
  });
  if (alive && converted) Changed();
}

/// The sections of the hole lie at the same depths as the rows.
void EditSur::ConvertDepths(double factor, std::int16_t units) {
  Beside before = Present(true);
  std::vector<WellSection> sections = well_.Sections;
  for (WellSection& section : sections) {
    section.start = Divide(section.start, factor);
    section.end = Divide(section.end, factor);
  }
  grid_.Convert(factor, units);
  well_.Sections = std::move(sections);
  before_.push_back(std::move(before));
}

void EditSur::ShowUnits() {
  const std::array<QRadioButton*, 3> options = {ui_->Option1_0, ui_->Option1_1, ui_->Option1_2};
  options[static_cast<std::size_t>(grid_.Units())]->setChecked(true);
  QHeaderView& headings = *ui_->Grid1->horizontalHeader();
  int widest = 0;
  for (int column = 0; column < kSurveyColumns; ++column) widest = std::max(widest, headings.sectionSizeHint(column));
  headings.setMinimumSectionSize(widest);
  const int besides = ui_->Grid1->verticalHeader()->sizeHint().width() + 2 * ui_->Grid1->frameWidth() +
                      style()->pixelMetric(QStyle::PM_ScrollBarExtent);
  ui_->Grid1->setMinimumWidth(kSurveyColumns * widest + besides);
}

// --- The grid ---

void EditSur::cmdInsertRow_Click() {
  grid_.InsertRow(std::max(0, ui_->Grid1->currentIndex().row()));
  Changed();
}

/// All selected rows.
void EditSur::cmdDeleteRow_Click() {
  const CellRange cells = keys_->Selected();
  if (cells.top < 0) return;
  grid_.DeleteRows(cells.top, cells.bottom);
  Changed();
  ui_->Grid1->setCurrentIndex(model_.index(std::min(cells.top, grid_.RowCount() - 1), std::max(0, cells.left)));
}

void EditSur::Paste(const CellRange& cells) {
  const CellRange written = grid_.Paste(cells, FromQt(QGuiApplication::clipboard()->text()));
  Changed();
  keys_->Select(written);
}

void EditSur::mnuUndo_Click() {
  grid_.Undo();
  if (!before_.empty() && before_.back().version == grid_.Version()) {
    const Beside& before = before_.back();
    well_.Sections = before.sections;
    if (!before.isSameSurvey) {
      well_.SurveyFileName = before.surveyFile;
      well_.WellFileName = before.wellFile;
      setWindowTitle(before.title);
      AllowSave();
    }
    before_.pop_back();
  }
  Changed();
}

void EditSur::Changed() {
  model_.ShowAnew();
  ShowUnits();
  ShowRemark();
}

void EditSur::ShowRemark() {
  const QModelIndex cell = ui_->Grid1->currentIndex();
  ShowRemarkOn(*ui_->lblFault, cell, model_.RemarkOn(cell), Text(text::SurveyHint));
}

}  // namespace velk
