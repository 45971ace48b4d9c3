#include "formula/windows/frm_inc_params.h"

#include <QHeaderView>

#include "base/text_qt.h"
#include "formula/formula_entry.h"
#include "formula/texts.h"
#include "i18n/windows/translate_form.h"
#include "model/help_topics.h"
#include "model/texts.h"
#include "platform/windows/letter_size.h"
#include "ui_frm_inc_params.h"

namespace velk {

namespace {

constexpr int kLetters = 100, kLines = 26;

enum Column : int { kName, kUnits, kGraph, kFormula, kColumns };

}  // namespace

frmIncParams::frmIncParams(WindowHost& host, const Session& session)
    : QDialog(host.Parent()), ui_(std::make_unique<Ui::frmIncParams>()), session_(session) {
  ui_->setupUi(this);
  setProperty("helpTopic", topic::Formulas);
  QStringList titles;
  for (const MessageText id : {text::DefaultParameterName, text::DefaultUnits, text::ListedGraph, text::ListedFormula})
    titles.append(ToQt(host.Words().Translator.In(id)));
  ui_->Grid1->setColumnCount(kColumns);
  ui_->Grid1->setHorizontalHeaderLabels(titles);
  QHeaderView* header = ui_->Grid1->horizontalHeader();
  header->setSectionResizeMode(QHeaderView::ResizeToContents);
  for (const Column column : {kName, kFormula}) header->setSectionResizeMode(column, QHeaderView::Stretch);
  connect(ui_->cmdClose, &QPushButton::clicked, this, &QDialog::reject);
  TranslateForm(*this, host.Words());
  ui_->Grid1->setAccessibleName(windowTitle());
  resize(LetterSize(*this, kLetters, kLines));
}

frmIncParams::~frmIncParams() = default;

bool frmIncParams::event(QEvent* event) {
  // A platform without a window manager shows a window and never activates it.
  if (event->type() == QEvent::WindowActivate || event->type() == QEvent::Show) Form_Activate();
  return QDialog::event(event);
}

void frmIncParams::Form_Activate() {
  QTableWidget& grid = *ui_->Grid1;
  grid.setRowCount(0);
  for (int i = 1; i <= session_.TotalParameters; ++i) {
    const Parameter& parameter = session_.CurrentParameters[i];
    if (parameter.name == kBlankName) continue;
    const int row = grid.rowCount();
    grid.insertRow(row);
    const auto write = [&](Column column, const QString& text) {
      auto* cell = new QTableWidgetItem(text);
      cell->setToolTip(text);
      grid.setItem(row, column, cell);
    };
    write(kName, ToQt(parameter.name));
    write(kUnits, ToQt(parameter.units));
    write(kGraph, parameter.GraphVisible ? QString::number(parameter.FormIndex) : QString());
    write(kFormula, ToQt(FormulaOf(session_, i)));
  }
}

}  // namespace velk
