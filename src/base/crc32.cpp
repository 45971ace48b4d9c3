#include "base/crc32.h"

#include <array>

namespace velk {

namespace {

constexpr std::array<std::uint32_t, 256> MakeTable() {
  std::array<std::uint32_t, 256> table{};
  for (std::uint32_t i = 0; i < table.size(); ++i) {
    std::uint32_t rest = i;
    for (int bit = 0; bit < 8; ++bit) rest = (rest >> 1) ^ ((rest & 1U) != 0 ? 0xEDB88320U : 0U);
    table[i] = rest;
  }
  return table;
}

constexpr auto kTable = MakeTable();

}  // namespace

void Crc32::Add(std::string_view bytes) {
  for (const char byte : bytes) rest_ = kTable[(rest_ ^ static_cast<unsigned char>(byte)) & 0xFFU] ^ (rest_ >> 8);
}

}  // namespace velk
