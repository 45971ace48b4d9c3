// What an operator or a settings file may name: identifiers and paths of items, hosts, endpoints, filters.

#include <cstdint>
#include <cstdlib>
#include <string>

#include "opc/opc_browser_class.h"
#include "opc/opc_keys.h"
#include "platform/opc/opc_id.h"

namespace {

void Require(bool holds) {
  if (!holds) std::abort();
}

/// A path as it is written for steps.
std::string PathText(const std::vector<velk::OpcStep>& steps) {
  std::string path;
  for (const velk::OpcStep& step : steps) {
    if (!path.empty()) path += '/';
    if (step.nameSpace) path += std::to_string(*step.nameSpace) + ":";
    for (const char c : step.name) {
      if (c == '/' || c == '&' || c == ':') path += '&';
      path += c;
    }
  }
  return path;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  velk::IsOpcNodeId(text);
  if (const auto steps = velk::OpcPathOf(text)) Require(velk::OpcPathOf(PathText(*steps)) == steps);
  if (const auto url = velk::OpcHostUrl(text)) Require(velk::WithOpcHost(*url, "") == url);
  if (const auto url = velk::WithOpcHost(text, "rig")) Require(velk::WithOpcHost(*url, "rig") == url);
  const std::size_t half = size / 2;
  Require(velk::PassesOpcFilter(text, "*"));
  velk::PassesOpcFilter(text.substr(0, half), text.substr(half));
  velk::NumberOfOpcKey(text);
  return 0;
}
