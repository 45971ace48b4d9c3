#pragma once

#include "i18n/windows/window_host.h"
#include "platform/opc/opc_questions.h"

namespace velk {

/// Asks the operator by boxes, over whatever is open.
class OpcQuestionsQt : public OpcQuestions {
 public:
  explicit OpcQuestionsQt(WindowHost& host) : host_(host) {}

  bool Accepts(const OpcCertificate& certificate) override;
  void TellExpired(const OpcCertificate& certificate) override;
  std::optional<OpcLogin> Login(const std::string& url, bool again) override;

 private:
  WindowHost& host_;
};

}  // namespace velk
