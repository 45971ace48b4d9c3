#pragma once

#include <optional>
#include <string>

namespace velk {

/// A server's certificate, as the operator is asked about it.
struct OpcCertificate {
  std::string url;          ///< of the endpoint
  std::string subject;      ///< "CN=Plant, O=Maker"
  std::string fingerprint;  ///< SHA-256, as "3A:F2:..."
  double validTo = 0;       ///< a date-time, local wall clock
  bool isChanged = false;   ///< another one was accepted before
};

struct OpcLogin {
  std::string user;
  std::string password;
};

/// What only the operator can say of a server. Asked from the event loop; the answers may take as long as they like.
class OpcQuestions {
 public:
  virtual ~OpcQuestions() = default;
  /// Whether a certificate is the server's that is meant. What is accepted is not asked about again.
  virtual bool Accepts(const OpcCertificate& certificate) = 0;
  /// A certificate whose time is over is refused, and nobody is asked.
  virtual void TellExpired(const OpcCertificate& certificate) = 0;
  /// User and password; `again` behind some that were refused. Nothing leaves the server alone.
  virtual std::optional<OpcLogin> Login(const std::string& url, bool again) = 0;
};

}  // namespace velk
