#include "opc/windows/frm_item_update_interval.h"

#include "base/text_qt.h"
#include "i18n/windows/translate_form.h"
#include "model/help_topics.h"
#include "opc/opc_entries.h"
#include "opc/texts.h"
#include "opc/windows/refuse_entry.h"
#include "ui_frm_item_update_interval.h"

namespace velk {

frmItemUpdateInterval::frmItemUpdateInterval(WindowHost& host, int interval)
    : QDialog(host.Parent()), host_(host), ui_(std::make_unique<Ui::frmItemUpdateInterval>()), interval_(interval) {
  ui_->setupUi(this);
  setProperty("helpTopic", topic::Opc);
  ui_->Text1->setText(QString::number(interval));
  ui_->Text1->selectAll();
  connect(ui_->OkButton, &QPushButton::clicked, this, &frmItemUpdateInterval::OkButton_Click);
  connect(ui_->CancelButton, &QPushButton::clicked, this, &QDialog::reject);
  TranslateForm(*this, host.Words());
}

frmItemUpdateInterval::~frmItemUpdateInterval() = default;

void frmItemUpdateInterval::OkButton_Click() {
  const std::optional<int> interval = EnteredDisplayInterval(FromQt(ui_->Text1->text()));
  if (!interval) return RefuseEntry(host_, *ui_->Text1, text::OpcIntervalOutOfRange);
  interval_ = *interval;
  accept();
}

}  // namespace velk
