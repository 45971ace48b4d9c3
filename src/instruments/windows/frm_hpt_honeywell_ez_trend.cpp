#include "instruments/windows/frm_hpt_honeywell_ez_trend.h"

#include <QPushButton>

#include "base/text.h"
#include "base/text_qt.h"
#include "i18n/windows/translate_form.h"
#include "model/help_topics.h"
#include "ui_frm_hpt_honeywell_ez_trend.h"

namespace velk {

frmHPTHoneywellEZtrend::frmHPTHoneywellEZtrend(WindowHost& host, const UnitAddress& address)
    : QDialog(host.Parent()), ui_(std::make_unique<Ui::frmHPTHoneywellEZtrend>()) {
  ui_->setupUi(this);
  setProperty("helpTopic", topic::Instruments);
  ui_->txtIPAddress->setText(ToQt(address.daqIPAddress));
  // With no page stored, the folder that the design shows is where units of this kind keep theirs.
  if (!address.daqHTML.empty()) ui_->txtHTML->setText(ToQt(address.daqHTML));
  connect(ui_->cmdOK, &QPushButton::clicked, this, &frmHPTHoneywellEZtrend::accept);
  connect(ui_->cmdCancel, &QPushButton::clicked, this, &frmHPTHoneywellEZtrend::reject);
  TranslateForm(*this, host.Words());
}

frmHPTHoneywellEZtrend::~frmHPTHoneywellEZtrend() = default;

UnitAddress frmHPTHoneywellEZtrend::Answer() const {
  return {Trim(FromQt(ui_->txtIPAddress->text())), Trim(FromQt(ui_->txtHTML->text()))};
}

}  // namespace velk
