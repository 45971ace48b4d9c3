#include "opc_certificate.h"

#include <openssl/evp.h>
#include <openssl/rsa.h>
#include <openssl/x509.h>
#include <openssl/x509v3.h>

namespace sim {

namespace {

constexpr long kDay = 86400;
constexpr long kHour = 3600;

void Extend(X509& certificate, int kind, const std::string& value) {
  X509_EXTENSION* const extension = X509V3_EXT_conf_nid(nullptr, nullptr, kind, value.c_str());
  X509_add_ext(&certificate, extension, -1);
  X509_EXTENSION_free(extension);
}

void Name(X509& certificate, const char* what, const std::string& value) {
  X509_NAME_add_entry_by_txt(X509_get_subject_name(&certificate), what, MBSTRING_UTF8,
                             reinterpret_cast<const unsigned char*>(value.c_str()), -1, -1, 0);
}

template <class Thing>
std::string DerOf(int (*write)(const Thing*, unsigned char**), const Thing* thing) {
  unsigned char* bytes = nullptr;
  const int length = write(thing, &bytes);
  const std::string der(reinterpret_cast<char*>(bytes), static_cast<std::size_t>(length > 0 ? length : 0));
  OPENSSL_free(bytes);
  return der;
}

}  // namespace

Certificate MakeCertificate(const std::string& uri, bool expired) {
  EVP_PKEY* const key = EVP_RSA_gen(2048);
  X509* const certificate = X509_new();
  X509_set_version(certificate, 2);
  ASN1_INTEGER_set(X509_get_serialNumber(certificate), 1);
  X509_gmtime_adj(X509_getm_notBefore(certificate), -kDay);
  X509_gmtime_adj(X509_getm_notAfter(certificate), expired ? -kHour : kDay);
  Name(*certificate, "O", "VELK simulators");
  Name(*certificate, "CN", "VELK Plant");
  X509_set_issuer_name(certificate, X509_get_subject_name(certificate));
  Extend(*certificate, NID_subject_alt_name, "URI:" + uri + ",DNS:localhost");
  Extend(*certificate, NID_key_usage,
         "critical,digitalSignature,nonRepudiation,keyEncipherment,dataEncipherment,keyCertSign");
  Extend(*certificate, NID_ext_key_usage, "serverAuth,clientAuth");
  X509_set_pubkey(certificate, key);
  X509_sign(certificate, key, EVP_sha256());
  const Certificate made{DerOf<X509>(i2d_X509, certificate), DerOf<EVP_PKEY>(i2d_PrivateKey, key)};
  X509_free(certificate);
  EVP_PKEY_free(key);
  return made;
}

}  // namespace sim
