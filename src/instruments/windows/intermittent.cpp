#include "instruments/windows/intermittent.h"

#include <QPushButton>

#include "i18n/windows/translate_form.h"
#include "model/help_topics.h"
#include "ui_intermittent.h"

namespace velk {

Intermittent::Intermittent(WindowHost& host, const Separators& separators)
    : QDialog(host.Parent()), ui_(std::make_unique<Ui::Intermittent>()) {
  ui_->setupUi(this);
  setProperty("helpTopic", topic::Instruments);
  ui_->separators->Show(separators, host.Boxes());
  connect(ui_->cmdOK, &QPushButton::clicked, this, &Intermittent::accept);
  connect(ui_->cmdCancel, &QPushButton::clicked, this, &Intermittent::reject);
  TranslateForm(*this, host.Words());
}

Intermittent::~Intermittent() = default;

const Separators& Intermittent::Answer() const {
  return ui_->separators->Chosen();
}

}  // namespace velk
