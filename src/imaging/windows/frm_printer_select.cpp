#include "imaging/windows/frm_printer_select.h"

#include <algorithm>

#include "base/text_qt.h"
#include "i18n/windows/translate_form.h"
#include "imaging/texts.h"
#include "model/help_topics.h"
#include "platform/windows/letter_size.h"
#include "ui_frm_printer_select.h"

namespace velk {

namespace {

constexpr int kPrinterLetters = 48, kPrinterLines = 14;

}  // namespace

frmPrinterSelect::frmPrinterSelect(WindowHost& host, PrinterChoice& choice)
    : QDialog(host.Parent()),
      ui_(std::make_unique<Ui::frmPrinterSelect>()),
      language_(host.Words().Translator),
      choice_(choice),
      before_(choice.PrinterName()),
      names_(choice.Names()) {
  ui_->setupUi(this);
  setProperty("helpTopic", topic::Printing);
  for (const std::string& name : names_)
    ui_->List1->addItem(ToQt(name == kPrintToFile ? language_.In(text::PrintToFile) : name));
  const auto present = std::find(names_.begin(), names_.end(), before_);
  if (present != names_.end()) ui_->List1->setCurrentRow(static_cast<int>(present - names_.begin()));
  connect(ui_->List1, &QListWidget::currentRowChanged, this, &frmPrinterSelect::List1_Click);
  connect(ui_->List1, &QListWidget::itemDoubleClicked, this, &frmPrinterSelect::Command1_Click);
  connect(ui_->Command1, &QPushButton::clicked, this, &frmPrinterSelect::Command1_Click);
  connect(ui_->Command2, &QPushButton::clicked, this, &QDialog::reject);
  TranslateForm(*this, host.Words());
  ui_->List1->setAccessibleName(windowTitle());
  resize(LetterSize(*this, kPrinterLetters, kPrinterLines));
}

frmPrinterSelect::~frmPrinterSelect() = default;

void frmPrinterSelect::List1_Click(int row) {
  if (row < 0) return;
  const QString shown = ui_->List1->item(row)->text();
  const bool isSet = choice_.SetPrinterAsDefault(names_[static_cast<std::size_t>(row)]);
  ui_->lblSaid->setText(shown + ToQt(language_.In(isSet ? text::HasBeenSelected : text::FailedToBeSet)));
}

void frmPrinterSelect::Command1_Click() {
  if (ui_->List1->currentRow() >= 0) return accept();
  ui_->lblSaid->setText(ToQt(language_.In(text::SelectAPrinter)));
  ui_->List1->setFocus();
}

void frmPrinterSelect::done(int result) {
  if (result != Accepted) choice_.Restore(before_);
  QDialog::done(result);
}

}  // namespace velk
