#include "instruments/windows/formatted_data.h"

#include <QPushButton>

#include "i18n/windows/translate_form.h"
#include "model/help_topics.h"
#include "ui_formatted_data.h"

namespace velk {

FormattedData::FormattedData(const Separators& separators, Dialogs& dialogs, const Translation& translation,
                             QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::FormattedData>()) {
  ui_->setupUi(this);
  setProperty("helpTopic", topic::Instruments);
  ui_->separators->Show(separators, dialogs);
  connect(ui_->cmdOK, &QPushButton::clicked, this, &FormattedData::accept);
  connect(ui_->cmdCancel, &QPushButton::clicked, this, &FormattedData::reject);
  TranslateForm(*this, translation);
}

FormattedData::~FormattedData() = default;

const Separators& FormattedData::Chosen() const {
  return ui_->separators->Chosen();
}

}  // namespace velk
