#include "instruments/windows/formatted_data.h"

#include <QPushButton>

#include "i18n/windows/translate_form.h"
#include "model/help_topics.h"
#include "ui_formatted_data.h"

namespace velk {

FormattedData::FormattedData(WindowHost& host, const Separators& separators)
    : QDialog(host.Parent()), ui_(std::make_unique<Ui::FormattedData>()) {
  ui_->setupUi(this);
  setProperty("helpTopic", topic::Instruments);
  ui_->separators->Show(separators, host.Boxes());
  connect(ui_->cmdOK, &QPushButton::clicked, this, &FormattedData::accept);
  connect(ui_->cmdCancel, &QPushButton::clicked, this, &FormattedData::reject);
  TranslateForm(*this, host.Words());
}

FormattedData::~FormattedData() = default;

const Separators& FormattedData::Answer() const {
  return ui_->separators->Chosen();
}

}  // namespace velk
