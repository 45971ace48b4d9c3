#include "settings/windows/clear_settings.h"

#include "i18n/windows/translate_form.h"
#include "model/help_topics.h"
#include "ui_clear_settings.h"

namespace velk {

ClearSettings::ClearSettings(WindowHost& host) : QDialog(host.Parent()), ui_(std::make_unique<Ui::ClearSettings>()) {
  ui_->setupUi(this);
  setProperty("helpTopic", topic::Templates);
  connect(ui_->cmdOK, &QPushButton::clicked, this, &QDialog::accept);
  connect(ui_->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  TranslateForm(*this, host.Words());
}

ClearSettings::~ClearSettings() = default;

GroupChoice ClearSettings::Answer() const {
  return {ui_->Check1_0->isChecked(), ui_->Check1_1->isChecked(), ui_->Check1_2->isChecked(),
          ui_->Check1_3->isChecked(), ui_->Check1_4->isChecked(), ui_->Check1_5->isChecked()};
}

}  // namespace velk
