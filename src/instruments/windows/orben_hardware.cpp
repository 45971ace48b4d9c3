#include "instruments/windows/orben_hardware.h"

#include <QPointer>

#include "base/text_qt.h"
#include "i18n/windows/translate_form.h"
#include "instruments/texts.h"
#include "model/help_topics.h"
#include "ui_orben_hardware.h"

namespace velk {

ORBENHardware::ORBENHardware(WindowHost& host, OrbenHardwareWork work)
    : QDialog(host.Parent()), host_(host), ui_(std::make_unique<Ui::ORBENHardware>()), work_(std::move(work)) {
  ui_->setupUi(this);
  setProperty("helpTopic", topic::UnitTable);
  for (const UnitCommand& command : UnitCommands()) ui_->List1->addItem(ToQt(host.Words().Translator.In(command.text)));
  ui_->UpDown1->setMaximum(work_.lastChannel);
  connect(ui_->List1, &QListWidget::currentRowChanged, this, &ORBENHardware::ShowTextBox);
  connect(ui_->Command2, &QPushButton::clicked, this, &ORBENHardware::Command2_Click);
  connect(ui_->Command3, &QPushButton::clicked, this, [this] { work_.cancel(); });
  connect(ui_->Command1, &QPushButton::clicked, this, &QDialog::accept);
  TranslateForm(*this, host.Words());
  ui_->List1->setAccessibleName(ui_->lblCommands->text().remove('&'));
  QSizePolicy keepsRoom = ui_->Text1->sizePolicy();
  keepsRoom.setRetainSizeWhenHidden(true);
  ui_->Text1->setSizePolicy(keepsRoom);
  ui_->List1->setCurrentRow(ui_->List1->count() - 1);
  SetBusy(false);
  ShowHint();
  if (work_.isReady())
    ui_->List1->setFocus();
  else
    ui_->Command1->setFocus();
}

ORBENHardware::~ORBENHardware() = default;

void ORBENHardware::done(int result) {
  if (!busy_) return QDialog::done(result);
  closing_ = result;
  work_.cancel();
}

const UnitCommand& ORBENHardware::Selected() const {
  return UnitCommands()[static_cast<std::size_t>(std::max(ui_->List1->currentRow(), 0))];
}

void ORBENHardware::ShowTextBox() {
  ui_->Text1->clear();
  ui_->Text1->setVisible(Selected().hasValue);
  ui_->lblValue->setVisible(Selected().hasValue);
}

void ORBENHardware::Command2_Click() {
  if (busy_) return;
  const QPointer<ORBENHardware> alive(this);
  SetBusy(true);
  const auto sent = work_.send(Selected(), ui_->UpDown1->value(), FromQt(ui_->Text1->text()));
  if (!alive) return;
  SetBusy(false);
  ShowHint();
  if (sent) ui_->Text1->setText(ToQt(*sent));
  ui_->Command2->setFocus();
  if (closing_) QDialog::done(*closing_);
}

void ORBENHardware::SetBusy(bool busy) {
  busy_ = busy;
  const bool canSend = !busy && work_.isReady();
  for (QWidget* control : std::initializer_list<QWidget*>{ui_->List1, ui_->UpDown1, ui_->Text1, ui_->Command2})
    control->setEnabled(canSend);
  ui_->Command1->setEnabled(!busy);
  const bool calibrates = busy && Selected().letter == 'c';
  ui_->Command3->setEnabled(calibrates);
  if (calibrates) ui_->lblFault->setText(ToQt(host_.Words().Translator.In(text::CalibratingChannel)));
}

void ORBENHardware::ShowHint() {
  const MessageText& hint = work_.isReady() ? text::ToolsHint : text::ToolsNotReady;
  ui_->lblFault->setText(ToQt(host_.Words().Translator.In(hint)));
}

}  // namespace velk
