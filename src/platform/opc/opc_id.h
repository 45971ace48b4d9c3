#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velk {

/// A step of a path: a name, and the name space that it is of where the path says so ("2:Pump").
struct OpcStep {
  std::optional<std::uint16_t> nameSpace;
  std::string name;

  bool operator==(const OpcStep&) const = default;
};

/// Whether an item is named by its node's identifier: "s=Pump", "ns=2;i=7", and "g=" and "b=" likewise.
bool IsOpcNodeId(std::string_view id);

/// The steps of a path from the root, as "Objects/Pump/Rate" or "/Objects/2:Pump"; a "/" of a name is written "&/", an
/// "&" as "&&", and a ":" behind digits at its front as "&:". Nothing for an empty path, an empty step, a path of more
/// than 64 steps, and an "&" at the end.
std::optional<std::vector<OpcStep>> OpcPathOf(std::string_view path);

/// The endpoint of a host: "10.0.0.5", "rig:4841", "[::1]:4841" or nothing for this machine. Nothing for a port that
/// is none and for characters that no host has.
std::optional<std::string> OpcHostUrl(std::string_view host);

/// The host of such a text without its port, this machine's name for none.
std::optional<std::string> OpcHostName(std::string_view host);

/// A URL of an endpoint with the host that was named in place of its own; its port stays, unless `host` names one.
/// Nothing where one of the two can't be read. An empty host changes nothing.
std::optional<std::string> WithOpcHost(std::string_view url, std::string_view host);

}  // namespace velk
