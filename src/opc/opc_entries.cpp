#include "opc/opc_entries.h"

#include <cmath>
#include <limits>

#include "base/number_entry.h"
#include "base/text.h"

namespace velk {

namespace {

std::optional<double> Within(std::optional<double> number, double least, double most) {
  return number && *number >= least && *number <= most ? number : std::nullopt;
}

std::optional<double> NumberOrNone(std::string_view text) {
  return Trim(text).empty() ? std::optional(0.0) : EnteredNumber(text);
}

std::optional<double> Whole(std::optional<double> number) {
  return number && std::floor(*number) == *number ? number : std::nullopt;
}

}  // namespace

std::optional<std::int32_t> EnteredUpdateRate(std::string_view text) {
  const auto number = Whole(Within(NumberOrNone(text), 0, std::numeric_limits<std::int32_t>::max()));
  return number ? std::optional(static_cast<std::int32_t>(*number)) : std::nullopt;
}

std::optional<float> EnteredDeadBand(std::string_view text) {
  const auto number = Within(NumberOrNone(text), 0, 100);
  return number ? std::optional(static_cast<float>(*number)) : std::nullopt;
}

std::optional<int> EnteredDisplayInterval(std::string_view text) {
  const auto number = Whole(Within(EnteredNumber(text), 50, 10000));
  return number ? std::optional(static_cast<int>(*number)) : std::nullopt;
}

OpcValue EnteredOpcValue(const std::string& text, bool isArray) {
  if (!isArray) return OpcValue(text);
  std::vector<OpcElement> elements;
  for (std::size_t start = 0; start <= text.size();) {
    const std::size_t comma = std::min(text.find(',', start), text.size());
    elements.emplace_back(Trim(text.substr(start, comma - start)));
    start = comma + 1;
  }
  return OpcValue(std::move(elements));
}

}  // namespace velk
