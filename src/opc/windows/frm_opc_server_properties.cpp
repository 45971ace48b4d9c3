#include "opc/windows/frm_opc_server_properties.h"

#include "base/dates.h"
#include "base/text_qt.h"
#include "i18n/windows/translate_form.h"
#include "model/help_topics.h"
#include "opc/texts.h"
#include "ui_frm_opc_server_properties.h"

namespace velk {

namespace {

/// Empty for no time.
QString TimeText(const std::optional<double>& time) {
  return time && *time != 0 ? ToQt(FormatDate(*time, "dd-mmm-yyyy hh:mm:ss")) : QString();
}

}  // namespace

OperatorText OpcStateText(int code) {
  constexpr MessageText kStates[] = {text::OpcServerRunning,   text::OpcServerFailed,   text::OpcServerNoConfiguration,
                                     text::OpcServerSuspended, text::OpcServerTestMode, text::OpcServerDisconnected};
  return code >= 1 && code <= 6 ? OperatorText(kStates[code - 1]) : OperatorText();
}

frmOPCServerProperties::frmOPCServerProperties(WindowHost& host, OpcCalls& calls, OPCServerClass& server)
    : QDialog(host.Parent()), host_(host), ui_(std::make_unique<Ui::frmOPCServerProperties>()) {
  ui_->setupUi(this);
  setProperty("helpTopic", topic::Opc);
  // As wide as a time with its date.
  ui_->StartTime->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("00-MMM-0000 00:00:00 WWW")));
  connect(ui_->OkButton, &QPushButton::clicked, this, &QDialog::accept);
  TranslateForm(*this, host.Words());
  Fill(calls, server);
  ui_->OkButton->setFocus();
}

frmOPCServerProperties::~frmOPCServerProperties() = default;

void frmOPCServerProperties::Fill(OpcCalls& calls, OPCServerClass& server) {
  const OpcCalls::Quiet quiet(calls);
  const auto inWords = [this](const OperatorText& text) { return ToQt(host_.Words().Translator.In(text)); };
  const std::string& name = server.GetServerName();
  ui_->ProgID->setText(name.empty() ? inWords(text::OpcNoId) : ToQt(name));
  const std::optional<std::string> vendor = server.GetVendorInfo();
  ui_->VendorInfo->setText(vendor ? ToQt(*vendor) : inWords(text::OpcNoVendor));
  // A server that is silent is not asked seven times more.
  if (!vendor) return;
  ui_->StartTime->setText(TimeText(server.GetStartTime()));
  ui_->CurrentTime->setText(TimeText(server.GetCurrentTime()));
  ui_->LastUpdateTime->setText(TimeText(server.GetLastUpdateTime()));
  ui_->ServerState->setText(inWords(OpcStateText(server.GetServerState().value_or(0))));
  const auto major = server.GetMajorVersion();
  const auto minor = server.GetMinorVersion();
  const auto build = server.GetBuildNumber();
  if (major && minor && build) ui_->Version->setText(QStringLiteral("%1.%2.%3").arg(*major).arg(*minor).arg(*build));
}

}  // namespace velk
