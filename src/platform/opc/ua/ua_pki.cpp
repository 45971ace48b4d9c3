#include "platform/opc/ua/ua_pki.h"

#include <fcntl.h>
#include <open62541/plugin/create_certificate.h>
#include <openssl/x509.h>
#include <unistd.h>

#include <QCryptographicHash>
#include <cerrno>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <memory>

#include "base/dates.h"
#include "platform/files/file_errors.h"
#include "platform/opc/ua/ua_owned.h"

namespace velk::ua {

namespace {

constexpr const char* kCertificateFile = "own.der";
constexpr const char* kKeyFile = "own.key";
constexpr const char* kPinsFile = "accepted";
constexpr UA_UInt16 kKeyBits = 2048;
constexpr UA_UInt16 kDays = 3650;

struct FreeCertificate {
  void operator()(X509* certificate) const { X509_free(certificate); }
};

double DaysOfCertificate(const ASN1_TIME* time) {
  std::tm utc{};
  if (ASN1_TIME_to_tm(time, &utc) != 1) return 0;
  const std::time_t seconds = timegm(&utc);
  std::tm local{};
  localtime_r(&seconds, &local);
  return DateSerial(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday) +
         TimeOfDay(local.tm_hour, local.tm_min, local.tm_sec);
}

std::string SubjectOf(const X509& certificate) {
  const std::unique_ptr<BIO, decltype(&BIO_free)> text(BIO_new(BIO_s_mem()), BIO_free);
  X509_NAME_print_ex(text.get(), X509_get_subject_name(&certificate), 0, XN_FLAG_RFC2253 & ~ASN1_STRFLGS_ESC_MSB);
  char* bytes = nullptr;
  const long length = BIO_get_mem_data(text.get(), &bytes);
  return length > 0 ? std::string(bytes, static_cast<std::size_t>(length)) : std::string();
}

void SayNothing(void*, UA_LogLevel, UA_LogCategory, const char*, va_list) {
}

}  // namespace

std::optional<CertificateFacts> FactsOf(const std::string& certificate) {
  const auto* bytes = reinterpret_cast<const unsigned char*>(certificate.data());
  const std::unique_ptr<X509, FreeCertificate> read(d2i_X509(nullptr, &bytes, static_cast<long>(certificate.size())));
  if (!read) return std::nullopt;
  return CertificateFacts{SubjectOf(*read), DaysOfCertificate(X509_get0_notBefore(read.get())),
                          DaysOfCertificate(X509_get0_notAfter(read.get()))};
}

std::string FingerprintOf(const std::string& certificate) {
  const QByteArray hash = QCryptographicHash::hash(
      QByteArray(certificate.data(), static_cast<qsizetype>(certificate.size())), QCryptographicHash::Sha256);
  return hash.toHex(':').toUpper().toStdString();
}

std::optional<Identity> MakeIdentity() {
  UA_Logger silent = {SayNothing, nullptr, nullptr};
  UA_String subject[] = {ViewOf("O=VELK"), ViewOf("CN=VELK")};
  const std::string uri = std::string("URI:") + kApplicationUri;
  UA_String names[] = {ViewOf("DNS:localhost"), ViewOf(uri)};
  UA_KeyValueMap* const options = UA_KeyValueMap_new();
  UA_UInt16 days = kDays;
  UA_UInt16 bits = kKeyBits;
  UA_KeyValueMap_setScalar(options, UA_QUALIFIEDNAME(0, const_cast<char*>("expires-in-days")), &days,
                           &UA_TYPES[UA_TYPES_UINT16]);
  UA_KeyValueMap_setScalar(options, UA_QUALIFIEDNAME(0, const_cast<char*>("key-size-bits")), &bits,
                           &UA_TYPES[UA_TYPES_UINT16]);
  Owned<UA_ByteString> key(UA_TYPES[UA_TYPES_BYTESTRING]);
  Owned<UA_ByteString> certificate(UA_TYPES[UA_TYPES_BYTESTRING]);
  const UA_StatusCode made =
      UA_CreateCertificate(&silent, subject, 2, names, 2, UA_CERTIFICATEFORMAT_DER, options, &*key, &*certificate);
  UA_KeyValueMap_delete(options);
  if (made != UA_STATUSCODE_GOOD) return std::nullopt;
  return Identity{TextOf(*certificate), TextOf(*key)};
}

std::optional<Identity> Pki::Own() const {
  Identity own{Read(kCertificateFile), Read(kKeyFile)};
  if (own.key.empty() || !FactsOf(own.certificate)) return std::nullopt;
  return own;
}

void Pki::KeepOwn(const Identity& identity) const {
  Write(kKeyFile, identity.key);
  Write(kCertificateFile, identity.certificate);
}

std::string Pki::PinOf(const std::string& server) const {
  std::ifstream file(folder_ + "/" + kPinsFile);
  std::string pin;
  for (std::string fingerprint, name; file >> fingerprint && std::getline(file >> std::ws, name);)
    if (name == server) pin = fingerprint;
  return pin;
}

/// Later lines hold over earlier ones.
void Pki::Pin(const std::string& server, const std::string& fingerprint) const {
  Write(kPinsFile, Read(kPinsFile) + fingerprint + " " + server + "\n");
}

void Pki::Write(const std::string& name, const std::string& bytes) const {
  const std::string path = folder_ + "/" + name;
  const std::string fresh = path + ".new";
  std::error_code ignored;
  std::filesystem::create_directories(folder_, ignored);
  std::filesystem::permissions(folder_, std::filesystem::perms::owner_all, ignored);
  const int file = ::open(fresh.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
  const bool written = file >= 0 && ::write(file, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size()) &&
                       ::fsync(file) == 0;
  const int error = errno;
  if (file >= 0) ::close(file);
  if (!written) {
    const ErrorNumber number = FileErrorNumber(error);
    throw RuntimeError(number, FileErrorText(number, path));
  }
  std::filesystem::rename(fresh, path, ignored);
  if (ignored) throw RuntimeError(FileErrorNumber(ignored.value()));
}

std::string Pki::Read(const std::string& name) const {
  std::ifstream file(folder_ + "/" + name, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::string PkiFolder() {
  const char* const data = std::getenv("XDG_DATA_HOME");
  if (data != nullptr && *data == '/') return std::string(data) + "/VELK/pki";
  const char* const home = std::getenv("HOME");
  return std::string(home != nullptr ? home : "") + "/.local/share/VELK/pki";
}

}  // namespace velk::ua
