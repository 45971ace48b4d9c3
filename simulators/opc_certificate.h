#pragma once

#include <string>

namespace sim {

/// A server's certificate and its key, DER.
struct Certificate {
  std::string certificate;
  std::string key;
};

/// A fresh one of 2048 bits for the application of that URI, valid for a day; or one that has ended an hour ago.
Certificate MakeCertificate(const std::string& uri, bool expired);

}  // namespace sim
