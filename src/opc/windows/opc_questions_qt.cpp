#include "opc/windows/opc_questions_qt.h"

#include "base/dates.h"
#include "model/help_topics.h"
#include "opc/texts.h"
#include "opc/windows/frm_opc_login.h"

namespace velk {

namespace {

/// What is wrong with a certificate, whose it is and how long it holds.
OperatorText Described(const OpcCertificate& certificate, const MessageText& why) {
  OperatorText text = text::OpcServerAt + OperatorText(certificate.url) + why;
  text += "\n\n" + (text::OpcCertificateHolder + OperatorText(certificate.subject));
  return text += "\n" + (text::OpcCertificateValidTo + OperatorText(FormatDate(certificate.validTo, "dd-mmm-yyyy")));
}

}  // namespace

bool OpcQuestionsQt::Accepts(const OpcCertificate& certificate) {
  OperatorText question =
      Described(certificate, certificate.isChanged ? text::OpcCertificateChanged : text::OpcCertificateUnknown);
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

void OpcQuestionsQt::TellExpired(const OpcCertificate& certificate) {
  host_.Boxes().Message({.text = Described(certificate, text::OpcCertificateOver),
                         .title = text::OpcCertificateTitle,
                         .icon = BoxIcon::Critical,
                         .helpTopic = topic::Opc});
}

std::optional<OpcLogin> OpcQuestionsQt::Login(const std::string& url, bool again) {
  return host_.Ask<frmOPCLogin>(url, again);
}

}  // namespace velk
