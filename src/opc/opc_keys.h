#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace velk {

// Keys of the tree and of the list: a word and numbers in the form that has a blank in front of a positive number.

/// "Server 1"
std::string OpcServerKey(int server);
/// "Group 2 1": the group's own index and its server's.
std::string OpcGroupKey(int group, int server);
/// "Item 5", by the client handle.
std::string OpcItemKey(std::int32_t clientHandle);

/// The number behind the first blank of a key; nothing where there is no whole number.
std::optional<std::int32_t> NumberOfOpcKey(std::string_view key);

}  // namespace velk
