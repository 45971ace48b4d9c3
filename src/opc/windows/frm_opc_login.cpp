#include "opc/windows/frm_opc_login.h"

#include "base/text_qt.h"
#include "i18n/windows/translate_form.h"
#include "model/help_topics.h"
#include "opc/texts.h"
#include "ui_frm_opc_login.h"

namespace velk {

frmOPCLogin::frmOPCLogin(WindowHost& host, const std::string& url, bool again)
    : QDialog(host.Parent()), ui_(std::make_unique<Ui::frmOPCLogin>()) {
  ui_->setupUi(this);
  setProperty("helpTopic", topic::Opc);
  connect(ui_->OkButton, &QPushButton::clicked, this, &QDialog::accept);
  connect(ui_->CancelButton, &QPushButton::clicked, this, &QDialog::reject);
  TranslateForm(*this, host.Words());
  const OperatorText why =
      text::OpcServerAt + OperatorText(url) + (again ? text::OpcLoginRefused : text::OpcLoginWanted);
  ui_->lblServer->setText(ToQt(host.Words().Translator.In(why)));
}

frmOPCLogin::~frmOPCLogin() = default;

OpcLogin frmOPCLogin::Answer() const {
  return {FromQt(ui_->UserName->text()), FromQt(ui_->Password->text())};
}

}  // namespace velk
