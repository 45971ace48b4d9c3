#include "log/windows/frm_rt_sum_rep.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <algorithm>

#include "base/text_qt.h"
#include "i18n/windows/translate_form.h"
#include "log/texts.h"
#include "model/help_topics.h"
#include "platform/dialogs/procedure.h"
#include "platform/windows/letter_size.h"
#include "ui_frm_rt_sum_rep.h"

namespace velk {

namespace {

constexpr int kLetters = 110, kLines = 24;
constexpr int kWidestColumn = 220;  ///< pixels, for what stands in a column that isn't the last

}  // namespace

frmRTSumRep::frmRTSumRep(WindowHost& host, const ReportAccess& access)
    : ui_(std::make_unique<Ui::frmRTSumRep>()),
      access_(access),
      model_(new SummaryModel(access.platform.language, this)),
      delegate_(new EntryDelegate(this)) {
  ui_->setupUi(this);
  setAttribute(Qt::WA_QuitOnClose, false);
  setProperty("helpTopic", topic::Recording);
  model_->onEntered = [this](std::int64_t key, const std::string& column, std::optional<double> value) {
    return Enter(key, column, value);
  };
  connect(delegate_, &EntryDelegate::Refused, this, &frmRTSumRep::ShowNote);
  ui_->DataGrid1->setModel(model_);
  delegate_->Guard(*ui_->DataGrid1);
  connect(ui_->cmdClose, &QPushButton::clicked, this, &QWidget::close);
  TranslateForm(*this, host.Words());
  ui_->DataGrid1->setAccessibleName(windowTitle());
  resize(LetterSize(*this, kLetters, kLines));
  ShowNote(false);
}

frmRTSumRep::~frmRTSumRep() {
  // An entry that is still being made loses the focus as the grid goes.
  model_->onEntered = nullptr;
}

void frmRTSumRep::RefreshGrid() {
  RunProcedure({access_.platform.dialogs, "RefreshGrid"}, [&](const Statements& run) { run([&] { ReadReport(); }); });
}

void frmRTSumRep::ReadReport() {
  const std::string path = access_.Path();
  SummaryLines report = OpenLog::Report(path);
  const bool isOther = path != path_ || model_->columnCount() != static_cast<int>(report.columns.size());
  path_ = path;
  ui_->lblFile->setText(ToQt(path));
  ui_->lblFile->setToolTip(ToQt(path));
  model_->Show(std::move(report));
  if (isOther) FitColumns();
  ShowNote(delegate_->Refuses());
  if (IsEntering() || model_->rowCount() == 0) return;
  ui_->DataGrid1->setCurrentIndex(model_->index(model_->rowCount() - 1, 0));
  ui_->DataGrid1->scrollToBottom();
}

void frmRTSumRep::FitColumns() {
  QTableView& grid = *ui_->DataGrid1;
  grid.resizeColumnsToContents();
  const int least = grid.fontMetrics().horizontalAdvance(QStringLiteral("00-May-0000 "));
  for (int column = 0; column < model_->columnCount(); ++column) {
    const int heading = grid.horizontalHeader()->sectionSizeHint(column);
    const int most = std::max({heading, least, kWidestColumn});
    grid.setColumnWidth(column, std::clamp(grid.columnWidth(column), std::max(heading, least), most));
  }
}

bool frmRTSumRep::IsEntering() const {
  return ui_->DataGrid1->findChild<QLineEdit*>(QStringLiteral("entry")) != nullptr;
}

bool frmRTSumRep::Enter(std::int64_t key, const std::string& column, std::optional<double> value) {
  return RunProcedure({access_.platform.dialogs, "DataGrid1", text::SummaryReportError}, [&](const Statements& run) {
    run([&] { access_.log.EnterSummaryField(path_, key, column, value); });
  });
}

void frmRTSumRep::ShowNote(bool refused) {
  const Language& language = access_.platform.language;
  const bool isEmpty = model_->rowCount() == 0;
  ui_->lblNote->setText(refused   ? ToQt(language.In(text::EnterANumber))
                        : isEmpty ? ToQt(language.In(text::ReportIsEmpty))
                                  : QString());
  ui_->lblNote->setVisible(refused || isEmpty);
}

void frmRTSumRep::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape)
    close();
  else
    QWidget::keyPressEvent(event);
}

}  // namespace velk
