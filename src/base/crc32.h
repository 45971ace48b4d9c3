#pragma once

#include <cstdint>
#include <string_view>

namespace velk {

/// The CRC-32 of ISO 3309, as compressed files and pictures carry it: finds every change within four bytes.
class Crc32 {
 public:
  void Add(std::string_view bytes);
  std::uint32_t Value() const { return ~rest_; }

 private:
  std::uint32_t rest_ = 0xFFFFFFFFU;
};

}  // namespace velk
