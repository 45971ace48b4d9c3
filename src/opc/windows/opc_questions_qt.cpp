#include "opc/windows/opc_questions_qt.h"

#include "base/dates.h"
#include "model/help_topics.h"
#include "opc/texts.h"
#include "opc/windows/frm_opc_login.h"

namespace velk {

bool OpcQuestionsQt::Accepts(const OpcCertificate& certificate) {
  OperatorText question = text::OpcServerAt + OperatorText(certificate.url);
  question += certificate.isChanged ? text::OpcCertificateChanged : text::OpcCertificateUnknown;
  question += "\n\n" + (text::OpcCertificateHolder + OperatorText(certificate.subject));
  question += "\n" + (text::OpcCertificateValidTo + OperatorText(FormatDate(certificate.validTo, "dd-mmm-yyyy")));
  question += "\nSHA-256:\n" + certificate.fingerprint.substr(0, certificate.fingerprint.size() / 2) + "\n" +
              certificate.fingerprint.substr(certificate.fingerprint.size() / 2);
  question += "\n\n" + OperatorText(text::OpcCertificateAccept);
  return host_.Boxes().Message({.text = question,
                                .title = text::OpcCertificateTitle,
                                .buttons = Buttons::YesNo,
                                .icon = certificate.isChanged ? BoxIcon::Critical : BoxIcon::Question,
                                .safeDefault = true,
                                .helpTopic = topic::Opc}) == Answer::Yes;
}

std::optional<OpcLogin> OpcQuestionsQt::Login(const std::string& url, bool again) {
  return host_.Ask<frmOPCLogin>(url, again);
}

}  // namespace velk
