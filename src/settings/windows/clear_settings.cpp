#include "settings/windows/clear_settings.h"

#include "i18n/windows/translate_form.h"
#include "model/help_topics.h"
#include "ui_clear_settings.h"

namespace velk {

ClearSettings::ClearSettings(WindowHost& host, bool canTakeBack)
    : QDialog(host.Parent()), ui_(std::make_unique<Ui::ClearSettings>()) {
  ui_->setupUi(this);
  setProperty("helpTopic", topic::Templates);
  connect(ui_->cmdOK, &QPushButton::clicked, this, &QDialog::accept);
  connect(ui_->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  ui_->cmdTakeBack->setEnabled(canTakeBack);
  connect(ui_->cmdTakeBack, &QPushButton::clicked, this, [this] {
    takesBack_ = true;
    accept();
  });
  TranslateForm(*this, host.Words());
}

ClearSettings::~ClearSettings() = default;

ClearChoice ClearSettings::Answer() const {
  if (takesBack_) return {.takeBack = true};
  return {.groups = {ui_->Check1_0->isChecked(), ui_->Check1_1->isChecked(), ui_->Check1_2->isChecked(),
                     ui_->Check1_3->isChecked(), ui_->Check1_4->isChecked(), ui_->Check1_5->isChecked()}};
}

}  // namespace velk
