#include "instruments/windows/intermittent.h"

#include <QPushButton>

#include "i18n/windows/translate_form.h"
#include "model/help_topics.h"
#include "ui_intermittent.h"

namespace velk {

Intermittent::Intermittent(const Separators& separators, Dialogs& dialogs, const Translation& translation,
                           QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::Intermittent>()) {
  ui_->setupUi(this);
  setProperty("helpTopic", topic::Instruments);
  ui_->separators->Show(separators, dialogs);
  connect(ui_->cmdOK, &QPushButton::clicked, this, &Intermittent::accept);
  connect(ui_->cmdCancel, &QPushButton::clicked, this, &Intermittent::reject);
  TranslateForm(*this, translation);
}

Intermittent::~Intermittent() = default;

const Separators& Intermittent::Chosen() const {
  return ui_->separators->Chosen();
}

}  // namespace velk
