#include "opc/opc_keys.h"

#include <charconv>

namespace velk {

namespace {

std::string Numbered(std::string word, std::int32_t number) {
  if (number >= 0) word += ' ';
  return word += std::to_string(number);
}

}  // namespace

std::string OpcServerKey(int server) {
  return Numbered("Server", server);
}

std::string OpcGroupKey(int group, int server) {
  return Numbered(Numbered("Group", group), server);
}

std::string OpcItemKey(std::int32_t clientHandle) {
  return Numbered("Item", clientHandle);
}

std::optional<std::int32_t> NumberOfOpcKey(std::string_view key) {
  const std::size_t blank = key.find(' ');
  if (blank == std::string_view::npos) return std::nullopt;
  std::int32_t number = 0;
  const char* const first = key.data() + blank + 1;
  return std::from_chars(first, key.data() + key.size(), number).ec == std::errc() ? std::optional(number)
                                                                                   : std::nullopt;
}

}  // namespace velk
