#include "opc/opc_texts.h"

#include <algorithm>

#include "base/dates.h"
#include "base/text.h"
#include "opc/texts.h"

namespace velk {

namespace {

constexpr std::size_t kMostShown = 1000;  ///< elements; a list that is looked at often has no time for more

std::string ElementText(const OpcElement& element) {
  return std::get<std::string>(*Converted(element, OpcType::String));
}

}  // namespace

std::string OpcDisplayText(const OpcValue& value) {
  std::string text;
  for (std::size_t i = 0; i < std::min(value.elements.size(), kMostShown); ++i) {
    if (i > 0) text += ", ";
    text += ElementText(value.elements[i]);
  }
  return value.elements.size() > kMostShown ? text + ", \u2026" : text;
}

OperatorText OpcStatusText(std::int32_t quality) {
  if ((quality & kOpcQualityGood) != 0) return text::OpcGood;
  return text::OpcBad + OperatorText((quality < 0 ? "" : " ") + std::to_string(quality));
}

OperatorText OpcStatusTextAtFirst(std::int32_t quality) {
  if ((quality & kOpcQualityGood) != 0) return text::OpcGood;
  return text::OpcBad + OperatorText((quality < 0 ? " " : "  ") + std::to_string(quality));
}

std::string OpcLineText(const OpcValue& value, std::string_view delimiter, std::string_view terminator) {
  if (value.elements.empty()) return {};
  const OpcElement& first = value.elements.front();
  if (const bool* const flag = std::get_if<bool>(&first)) return *flag ? "1" : "0";
  std::string text = ElementText(first);
  if (!std::holds_alternative<std::string>(first)) return text;
  // What is left when one is taken out may be another: "<<>>" without "<>" is "<>".
  for (std::string before; before != text;) {
    before = text;
    text = ReplaceAll(ReplaceAll(std::move(text), delimiter, ""), terminator, "");
  }
  return text;
}

std::optional<std::string> JoinOpcLine(double now, std::span<const OpcLineItem> items, std::string_view delimiter,
                                       std::string_view terminator) {
  const bool isComplete = std::all_of(items.begin(), items.end(),
                                      [](const OpcLineItem& item) { return item.hasReported || item.hasFailed; });
  if (!isComplete) return std::nullopt;
  std::string line = FormatDate(now, "hh:mm:ss");
  for (const OpcLineItem& item : items) {
    line += delimiter;
    line += OpcLineText(item.value, delimiter, terminator);
  }
  return line += terminator;
}

}  // namespace velk
