#include "opc/windows/frm_opc_group_properties.h"

#include "base/numbers.h"
#include "base/text_qt.h"
#include "i18n/windows/translate_form.h"
#include "model/help_topics.h"
#include "opc/opc_entries.h"
#include "opc/texts.h"
#include "opc/windows/refuse_entry.h"
#include "ui_frm_opc_group_properties.h"

namespace velk {

frmOPCGroupProperties::frmOPCGroupProperties(WindowHost& host, const OpcGroupShown& group, Set set)
    : QDialog(host.Parent()), host_(host), set_(std::move(set)), ui_(std::make_unique<Ui::frmOPCGroupProperties>()) {
  ui_->setupUi(this);
  setProperty("helpTopic", topic::Opc);
  ui_->GroupName->setText(ToQt(group.name));
  ui_->GroupName->setReadOnly(true);
  ui_->UpdateRate->setText(QString::number(group.updateRate));
  ui_->DeadBand->setText(ToQt(NumberText(group.deadBand)));
  ui_->ActiveState->setChecked(group.isActive);
  connect(ui_->OkButton, &QPushButton::clicked, this, &frmOPCGroupProperties::OkButton_Click);
  connect(ui_->CancelButton, &QPushButton::clicked, this, &QDialog::reject);
  if (!group.itemsWithoutRange.empty())
    ui_->lblNote->setText(ToQt(host.Words().Translator.In(text::OpcNoRangeBefore) + group.itemsWithoutRange));
  // Few lines: a window is fitted to a text that is broken as if it were broken less.
  ui_->lblNote->setMinimumWidth(48 * fontMetrics().averageCharWidth());
  ui_->lblNote->setVisible(!group.itemsWithoutRange.empty());
  // Behind the note, so that the window is fitted to it too.
  TranslateForm(*this, host.Words());
  ui_->UpdateRate->setFocus();
}

frmOPCGroupProperties::~frmOPCGroupProperties() = default;

void frmOPCGroupProperties::OkButton_Click() {
  const QPointer<frmOPCGroupProperties> alive(this);
  const auto rate = EnteredUpdateRate(FromQt(ui_->UpdateRate->text()));
  if (!rate) return RefuseEntry(host_, *ui_->UpdateRate, text::OpcRateOutOfRange);
  const auto deadBand = EnteredDeadBand(FromQt(ui_->DeadBand->text()));
  if (!deadBand) return RefuseEntry(host_, *ui_->DeadBand, text::OpcDeadBandOutOfRange);
  const bool isSet = set_(*rate, *deadBand, ui_->ActiveState->isChecked());
  if (alive && isSet) accept();
}

}  // namespace velk
