#include "opc/windows/frm_add_group.h"

#include "base/text_qt.h"
#include "i18n/windows/translate_form.h"
#include "model/help_topics.h"
#include "opc/opc_entries.h"
#include "opc/texts.h"
#include "opc/windows/refuse_entry.h"
#include "ui_frm_add_group.h"

namespace velk {

frmAddGroup::frmAddGroup(WindowHost& host, AddOPCGroupMain add)
    : QDialog(host.Parent()), host_(host), add_(std::move(add)), ui_(std::make_unique<Ui::frmAddGroup>()) {
  ui_->setupUi(this);
  setProperty("helpTopic", topic::Opc);
  // What a server gives a group that doesn't say.
  ui_->UpdateRate->setText(QStringLiteral("100"));
  ui_->DeadBand->setText(QStringLiteral("0"));
  ui_->ActiveState->setChecked(true);
  connect(ui_->AddGroup, &QPushButton::clicked, this, &frmAddGroup::AddGroup_Click);
  connect(ui_->CancelButton, &QPushButton::clicked, this, &QDialog::reject);
  TranslateForm(*this, host.Words());
}

frmAddGroup::~frmAddGroup() = default;

void frmAddGroup::AddGroup_Click() {
  const QPointer<frmAddGroup> alive(this);
  const auto rate = EnteredUpdateRate(FromQt(ui_->UpdateRate->text()));
  if (!rate) return RefuseEntry(host_, *ui_->UpdateRate, text::OpcRateOutOfRange);
  const auto deadBand = EnteredDeadBand(FromQt(ui_->DeadBand->text()));
  if (!deadBand) return RefuseEntry(host_, *ui_->DeadBand, text::OpcDeadBandOutOfRange);
  const bool isAdded = add_(FromQt(ui_->GroupName->text()), *rate, *deadBand, ui_->ActiveState->isChecked());
  if (alive && isAdded) accept();
}

}  // namespace velk
