#pragma once

#include <functional>
#include <future>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>

#include "platform/opc/opc_questions.h"
#include "platform/opc/ua/ua_connection.h"
#include "platform/opc/ua/ua_reading.h"

namespace velk::ua {

/// What the operator has said while the program runs; nothing of it is stored.
struct Said {
  std::map<std::string, OpcLogin> logins;  ///< by the URL of the endpoint, with the host as it is called
  std::set<std::string> refused;           ///< URLs that he doesn't want to be asked about again
};

/// The way to a session of an endpoint that nobody is connected to yet: its ways in are listed, the most secure is
/// taken, the operator is asked about a certificate that is unknown and for user and password where the server wants
/// them.
class Opening : private ConnectionUser {
 public:
  /// Told once, from the event loop. The connection goes on by itself from then on.
  using Done = std::function<void(OpcStatus, const ConnectionPointer&)>;

  /// What is asked and where answers are kept; all outlive the opening. Without questions nothing unknown is accepted
  /// and nobody logs in.
  struct Trust {
    const Pki& pki;
    OpcQuestions* questions;
    Said& said;
  };
  /// `name` is the URL with the host as the operator calls it; by it a certificate and a login are known.
  Opening(Clock& clock, const Trust& trust, std::string url, std::string name, Done done);
  ~Opening() override;

  void Begin();

 private:
  void OnLive() override;
  void OnLost() override {}
  void Choose(const UA_GetEndpointsResponse& response);
  void CheckCertificate();
  void RefuseExpired(const OpcCertificate& certificate);
  /// Whether what was told to be kept is on the disk.
  bool Kept(const std::function<void()>& keep);
  void TakeIdentity();
  void FinishIdentity();
  void TakeLogin(bool again);
  void Connect();
  void TakeEnd(OpcStatus status);
  void Post(std::function<void()> task);
  void End(OpcStatus status, const ConnectionPointer& connection = nullptr);

  Clock& clock_;
  const Trust trust_;
  const std::string url_;
  const std::string name_;
  Done done_;
  ConnectionPointer connection_;  ///< for the question first, then the session's
  Access access_;
  bool isSecured_ = false;
  bool wantsLogin_ = false;
  int logins_ = 0;
  std::future<std::optional<Identity>> making_;
  std::unique_ptr<Timer> makingTimer_;
  std::shared_ptr<char> life_ = std::make_shared<char>();
};

}  // namespace velk::ua
