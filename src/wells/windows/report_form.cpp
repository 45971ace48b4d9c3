#include "wells/windows/report_form.h"

#include <QHeaderView>
#include <QPainter>
#include <QPointer>
#include <QRadioButton>
#include <QScreen>
#include <QStyle>
#include <algorithm>
#include <array>

#include "base/dates.h"
#include "base/text_qt.h"
#include "i18n/windows/translate_form.h"
#include "imaging/read_picture.h"
#include "imaging/windows/frm_printer_select.h"
#include "model/help_topics.h"
#include "model/select_file.h"
#include "platform/drawing/painted_surface.h"
#include "platform/files/whole_file.h"
#include "platform/loop/clock.h"
#include "settings/page_lines.h"
#include "ui_report_form.h"
#include "wells/texts.h"
#include "wells/windows/pages_view.h"

namespace velk {

namespace {

constexpr double kSheetWidth = 210, kSheetHeight = 297;
constexpr double kMeasureDots = 300;
constexpr QSize kLargestReportLogo(1200, 1200);

std::string NameOfFile(const std::string& path) {
  return path.substr(path.rfind('/') + 1);
}

}  // namespace

ProfileModel::ProfileModel(const ProfileTable& table, const Language& language)
    : table_(table), language_(language), rows_(table.RowCount() - kProfileHeadRows) {
}

int ProfileModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : rows_;
}

int ProfileModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : kProfileColumns;
}

QVariant ProfileModel::data(const QModelIndex& cell, int role) const {
  if (role == Qt::TextAlignmentRole) return QVariant(Qt::AlignRight | Qt::AlignVCenter);
  if (role != Qt::DisplayRole) return {};
  return ToQt(table_.Cell(cell.row() + kProfileHeadRows, cell.column(), language_));
}

QVariant ProfileModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole) return {};
  if (orientation == Qt::Vertical) return section + 1;
  QString name = ToQt(table_.Cell(0, section, language_));
  if (const auto blank = name.lastIndexOf(QLatin1Char(' ')); blank >= 0) name[blank] = QLatin1Char('\n');
  return name + QLatin1Char('\n') + ToQt(table_.Cell(1, section, language_));
}

void ProfileModel::ShowAnew() {
  beginResetModel();
  rows_ = table_.RowCount() - kProfileHeadRows;
  endResetModel();
}

ReportForm::ReportForm(WindowHost& host, const WellAccess& access)
    : QDialog(host.Parent()),
      host_(host),
      access_(access),
      ui_(std::make_unique<Ui::ReportForm>()),
      table_(access_.well.Path, access_.well.Units),
      model_(table_, host.Words().Translator),
      pages_(new PagesView(this)) {
  ui_->setupUi(this);
  setProperty("helpTopic", topic::Wells);
  pages_->setObjectName(QStringLiteral("Text1"));
  ui_->middle->addWidget(pages_);
  pages_->setMinimumSize(ui_->Grid1->minimumSize());
  ui_->Grid1->setModel(&model_);
  ui_->Grid1->horizontalHeader()->setObjectName(QStringLiteral("qt_GridHeadings"));
  ui_->Grid1->horizontalHeader()->setDefaultAlignment(Qt::AlignCenter);
  connect(ui_->Option1, &QRadioButton::clicked, this, [this] { Option_Click(kApiEnglish); });
  connect(ui_->Option2, &QRadioButton::clicked, this, [this] { Option_Click(kMetric); });
  connect(ui_->Option3, &QRadioButton::clicked, this, [this] { Option_Click(kUserDefined); });
  Bind(ui_->Command1, "Command1_Click", &ReportForm::Command1_Click);
  Bind(ui_->Command3, "Command3_Click", &ReportForm::Command3_Click);
  Bind(ui_->cmdPrintPreview, "cmdPrintPreview_Click", &ReportForm::cmdPrintPreview_Click);
  connect(ui_->Command2, &QPushButton::clicked, this, &QDialog::hide);
  TranslateForm(*this, host.Words());
  ui_->Grid1->setAccessibleName(windowTitle());
  pages_->setAccessibleName(ui_->cmdPrintPreview->text());
  setTabOrder(ui_->Grid1, pages_);
  setTabOrder(pages_, ui_->Command1);
  ShowPreview(false);
  ui_->Option1->setChecked(true);
  ShowAnew();
  FitToScreen();
}

ReportForm::~ReportForm() = default;

void ReportForm::Bind(QAbstractButton* key, const char* procedure, void (ReportForm::*work)(Run)) {
  connect(key, &QAbstractButton::clicked, this, [this, procedure, work] {
    RunProcedure({host_.Boxes(), procedure}, [&](Run run) { (this->*work)(run); });
  });
}

void ReportForm::Refresh() {
  if (isVisible()) ShowAnew();
}

void ReportForm::ShowAnew() {
  model_.ShowAnew();
  FitColumns();
  ui_->lblHint->setVisible(access_.well.Path.stations.empty());
  ui_->lblHint->setText(ToQt(host_.Words().Translator.In(text::NoPathYet)));
  if (report_) ShowPreview(true);
}

void ReportForm::Option_Click(std::int16_t system) {
  table_.SetSystem(system);
  ShowAnew();
}

// --- The table ---

/// As wide as the names of its columns, where the screen has room.
void ReportForm::FitToScreen() {
  const QTableView& grid = *ui_->Grid1;
  int width = grid.verticalHeader()->sizeHint().width() + 2 * grid.frameWidth() +
              style()->pixelMetric(QStyle::PM_ScrollBarExtent);
  for (int column = 0; column < kProfileColumns; ++column) width += grid.horizontalHeader()->sectionSizeHint(column);
  const QSize wanted = sizeHint() + QSize(std::max(0, width - grid.minimumWidth()), 0);
  resize(wanted.boundedTo(screen()->availableSize() * 0.9).expandedTo(minimumSizeHint()));
}

void ReportForm::resizeEvent(QResizeEvent* event) {
  QDialog::resizeEvent(event);
  FitColumns();
}

void ReportForm::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  ShowAnew();
}

/// The first five columns have a share each of the width that a bar of 200 twips leaves, the last two the rest; none is
/// narrower than its name.
void ReportForm::FitColumns() {
  constexpr double kBar = 200.0 / 15, kShares = 6.5;
  QTableView& grid = *ui_->Grid1;
  const double width = grid.viewport()->width() - kBar;
  for (int column = 0; column < kProfileColumns; ++column) {
    const double share = column < 5 ? 1 : (kShares - 5) / 2;
    const int least = grid.horizontalHeader()->sectionSizeHint(column);
    grid.setColumnWidth(column, std::max(least, static_cast<int>(width * share / kShares)));
  }
}

// --- Pages ---

ProfileHead ReportForm::Head() const {
  const PageLines lines = ReadPageLines(access_.platform.settings);
  return {WordsOf(lines, PageLine::Field),
          NameOfFile(FileOfWell(access_.well)),
          {WordsOf(lines, PageLine::Client), WordsOf(lines, PageLine::Well), WordsOf(lines, PageLine::Job)}};
}

ProfileReport::Content ReportForm::Content() const {
  const Well& well = access_.well;
  const double now = access_.platform.clock.Now();
  return {table_,
          well.Survey,
          DepthUnitLabel(well.Units, well.SurveyFileUnits),
          AngleUnitLabel(well.Units, well.SurveyFileUnits),
          Head(),
          logo_,
          FormatDate(now, "dd-mmm-yyyy") + " " + FormatDate(now, "hh:mm"),
          access_.session.CurrentFont};
}

/// Its letters are measured as those of a printer.
ProfileReport ReportForm::MakeReport() const {
  QImage dot(1, 1, QImage::Format_RGB32);
  QPainter painter(&dot);
  PaintedSurface surface(painter, Unit::Millimetre, kSheetWidth, kSheetHeight, kMeasureDots);
  return {surface, Content(), host_.Words().Translator};
}

QImage ReportForm::DrawSheet(int page, QSize dots) const {
  QImage sheet(dots, QImage::Format_RGB32);
  sheet.fill(Qt::white);
  QPainter painter(&sheet);
  PaintedSurface surface(painter, Unit::Millimetre, kSheetWidth, kSheetHeight,
                         dots.width() * PerInch(Unit::Millimetre) / kSheetWidth);
  report_->Draw(surface, page);
  return sheet;
}

/// Once for a preview or a print: a live survey makes the report anew every few seconds.
void ReportForm::ReadLogo() {
  logo_ = ReadPicture(access_.session.CompanyLogoFile, kLargestReportLogo).value_or(QImage());
}

void ReportForm::ShowPreview(bool shown) {
  report_.reset();
  if (shown) {
    if (!pages_->isVisible()) ReadLogo();
    report_.emplace(MakeReport());
    pages_->Show(report_->PageCount(), [this](int page, QSize dots) { return DrawSheet(page, dots); });
  }
  pages_->setVisible(shown);
  ui_->Grid1->setVisible(!shown);
  ui_->cmdPrintPreview->setText(ToQt(host_.Words().Translator.In(shown ? text::ClosePreview : text::PrintPreview)));
}

void ReportForm::cmdPrintPreview_Click(Run run) {
  const bool shows = !report_;
  run([&] { ShowPreview(shows); });
}

std::optional<std::string> ReportForm::AskForFile(const MessageText& filter, std::string_view extension) {
  const std::array<std::string_view, 1> extensions = {extension};
  return SelectFile(host_.Boxes(), {text::SaveProfileTitle, filter, access_.session.DefaultDirectory}, extensions,
                    FileUse::Save, access_.beep);
}

void ReportForm::Command1_Click(Run run) {
  const QPointer<ReportForm> alive(this);
  PrinterChoice& choice = access_.printer();
  if (!host_.Ask<frmPrinterSelect>(choice) || !alive) return;
  std::string file;
  if (choice.PrintsToFile()) {
    const auto path = AskForFile(text::ProfilePdfFiles, "pdf");
    if (!path || !alive) return;
    file = *path;
  }
  run([&] {
    ReadLogo();
    const auto printer = choice.MakePrinter(file);
    MakeReport().Print(*printer);
  });
}

void ReportForm::Command3_Click(Run run) {
  const QPointer<ReportForm> alive(this);
  const auto path = AskForFile(text::OutputFiles, "out");
  if (path && alive) run([&] { WriteWholeFile(*path, ProfileText(table_, Head(), host_.Words().Translator)); });
}

}  // namespace velk
