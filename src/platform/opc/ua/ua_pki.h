#pragma once

#include <optional>
#include <string>

namespace velk::ua {

/// What the program shows of itself: a certificate of its own and the key to it, DER.
struct Identity {
  std::string certificate;
  std::string key;
};

/// What a certificate says of its holder.
struct CertificateFacts {
  std::string subject;
  double validFrom = 0;  ///< date-times, local wall clock
  double validTo = 0;
};

/// Nothing for bytes that are no certificate.
std::optional<CertificateFacts> FactsOf(const std::string& certificate);
/// SHA-256 as "3A:F2:...".
std::string FingerprintOf(const std::string& certificate);

/// The name by which the program's own certificate calls it.
inline constexpr const char* kApplicationUri = "urn:velk:client";

/// A fresh identity: 2048 bits, ten years. Takes a tenth of a second and more, so it is made in a thread. Nothing where
/// the library can't.
std::optional<Identity> MakeIdentity();

/// The folder of keys and of certificates that were accepted. Files are the user's alone. Raises the file errors.
class Pki {
 public:
  explicit Pki(std::string folder) : folder_(std::move(folder)) {}

  /// Nothing where none was made yet, or the files are damaged.
  std::optional<Identity> Own() const;
  void KeepOwn(const Identity& identity) const;

  /// The fingerprint that was accepted of a server; empty for none.
  std::string PinOf(const std::string& server) const;
  void Pin(const std::string& server, const std::string& fingerprint) const;

 private:
  void Write(const std::string& name, const std::string& bytes) const;
  std::string Read(const std::string& name) const;

  const std::string folder_;
};

/// $XDG_DATA_HOME/VELK/pki.
std::string PkiFolder();

}  // namespace velk::ua
