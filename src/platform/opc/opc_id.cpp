#include "platform/opc/opc_id.h"

#include <algorithm>
#include <charconv>

namespace velk {

namespace {

constexpr std::string_view kScheme = "opc.tcp://";
constexpr std::uint16_t kUsualPort = 4840;
constexpr std::size_t kMostSteps = 64;

template <class Number>
std::optional<Number> WholeOf(std::string_view digits) {
  Number number = 0;
  const char* const end = digits.data() + digits.size();
  const auto read = std::from_chars(digits.data(), end, number);
  return read.ec == std::errc() && read.ptr == end ? std::optional(number) : std::nullopt;
}

/// Takes a step off the front; `isLast` tells that nothing is left. Nothing for an "&" at the end.
std::optional<OpcStep> TakeStep(std::string_view& path, bool& isLast) {
  OpcStep step;
  isLast = true;
  std::size_t i = 0;
  for (; i < path.size(); ++i) {
    if (path[i] == '/') {
      isLast = false;
      break;
    }
    if (path[i] == ':' && !step.nameSpace) {
      if (const auto space = WholeOf<std::uint16_t>(step.name)) {
        step.nameSpace = space;
        step.name.clear();
        continue;
      }
    }
    if (path[i] == '&' && ++i == path.size()) return std::nullopt;
    step.name += path[i];
  }
  path.remove_prefix(isLast ? path.size() : i + 1);
  return step;
}

struct Host {
  std::string name;  ///< with its brackets, where it has some
  std::optional<std::uint16_t> port;
};

bool IsHostName(std::string_view name) {
  return !name.empty() && std::all_of(name.begin(), name.end(), [](char c) {
    const bool isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
    return isLetter || (c >= '0' && c <= '9') || c == '.' || c == '-' || c == '_' || c == '[' || c == ']' || c == ':';
  });
}

std::optional<Host> HostOf(std::string_view text) {
  if (text.empty()) return Host{"localhost", std::nullopt};
  std::size_t colon = text.rfind(':');
  // Colons inside of brackets are the address's own.
  if (colon != std::string_view::npos && text.find(']', colon) != std::string_view::npos)
    colon = std::string_view::npos;
  Host host{std::string(text.substr(0, colon)), std::nullopt};
  if (colon != std::string_view::npos) {
    host.port = WholeOf<std::uint16_t>(text.substr(colon + 1));
    if (!host.port || *host.port == 0) return std::nullopt;
  }
  if (!IsHostName(host.name)) return std::nullopt;
  const bool hasBrackets = host.name.front() == '[' && host.name.back() == ']';
  if (!hasBrackets && host.name.find_first_of("[]:") != std::string::npos) return std::nullopt;
  return host;
}

std::string UrlOf(const Host& host, std::string_view path) {
  return std::string(kScheme) + host.name + ":" + std::to_string(host.port.value_or(kUsualPort)) + std::string(path);
}

}  // namespace

bool IsOpcNodeId(std::string_view id) {
  if (id.substr(0, 3) == "ns=") {
    const std::size_t end = id.find(';');
    if (end == std::string_view::npos || !WholeOf<std::uint16_t>(id.substr(3, end - 3))) return false;
    id.remove_prefix(end + 1);
  }
  return id.size() >= 2 && id[1] == '=' && std::string_view("isgb").find(id[0]) != std::string_view::npos;
}

std::optional<std::vector<OpcStep>> OpcPathOf(std::string_view path) {
  if (!path.empty() && path.front() == '/') path.remove_prefix(1);
  std::vector<OpcStep> steps;
  for (bool isLast = false; !isLast;) {
    std::optional<OpcStep> step = TakeStep(path, isLast);
    if (!step || step->name.empty() || steps.size() == kMostSteps) return std::nullopt;
    steps.push_back(std::move(*step));
  }
  return steps;
}

std::optional<std::string> OpcHostUrl(std::string_view text) {
  const std::optional<Host> host = HostOf(text);
  if (!host) return std::nullopt;
  return UrlOf(*host, "");
}

std::optional<std::string> OpcHostName(std::string_view text) {
  const std::optional<Host> host = HostOf(text);
  return host ? std::optional(host->name) : std::nullopt;
}

std::optional<std::string> WithOpcHost(std::string_view url, std::string_view host) {
  if (url.substr(0, kScheme.size()) != kScheme) return std::nullopt;
  url.remove_prefix(kScheme.size());
  const std::size_t slash = std::min(url.find('/'), url.size());
  const std::optional<Host> own = slash == 0 ? std::nullopt : HostOf(url.substr(0, slash));
  std::optional<Host> named = HostOf(host);
  if (!own || !named) return std::nullopt;
  if (host.empty()) named = own;
  if (!named->port) named->port = own->port;
  return UrlOf(*named, url.substr(slash));
}

}  // namespace velk
