#include "platform/opc/opc_value.h"

#include <cmath>
#include <limits>

#include "base/dates.h"
#include "base/errors.h"
#include "base/numbers.h"
#include "base/text.h"

namespace velk {

namespace {

/// How many types stand ahead of the first alternative of OpcElement.
constexpr int kFirstAlternative = static_cast<int>(OpcType::Boolean);

constexpr std::string_view kDatePicture = "yyyy-mm-dd hh:nn:ss";

std::optional<double> NumberOf(const std::string& text) {
  const std::string trimmed = LowerCase(Trim(text));
  if (trimmed == "true") return 1;
  if (trimmed == "false") return 0;
  if (!IsNumeric(text)) return std::nullopt;
  return Val(text);
}

std::optional<double> NumberOf(const OpcElement& element) {
  return std::visit(
      [](const auto& held) -> std::optional<double> {
        using Held = std::decay_t<decltype(held)>;
        if constexpr (std::is_same_v<Held, OpcDate>) {
          return std::nullopt;
        } else if constexpr (std::is_same_v<Held, std::string>) {
          return NumberOf(held);
        } else {
          return static_cast<double>(held);
        }
      },
      element);
}

std::string TextOf(const OpcElement& element) {
  return std::visit(
      [](const auto& held) -> std::string {
        using Held = std::decay_t<decltype(held)>;
        if constexpr (std::is_same_v<Held, OpcDate>) {
          return IsDateTime(held.day) ? FormatDate(held.day, kDatePicture) : std::string();
        } else if constexpr (std::is_same_v<Held, std::string>) {
          return held;
        } else if constexpr (std::is_same_v<Held, bool>) {
          return held ? "True" : "False";
        } else if constexpr (std::is_same_v<Held, float>) {
          return NumberText(held);
        } else {
          return NumberText(static_cast<double>(held));
        }
      },
      element);
}

template <class Whole>
std::optional<OpcElement> WholeOf(double number) {
  const double rounded = std::nearbyint(number);
  if (!(rounded >= std::numeric_limits<Whole>::min() && rounded <= std::numeric_limits<Whole>::max()))
    return std::nullopt;
  return OpcElement(static_cast<Whole>(rounded));
}

/// A number that is no number stays one in both kinds of floats.
std::optional<OpcElement> SingleOf(double number) {
  if (std::isfinite(number) && std::abs(number) > std::numeric_limits<float>::max()) return std::nullopt;
  return OpcElement(static_cast<float>(number));
}

std::optional<OpcElement> BooleanOf(double number) {
  if (std::isnan(number)) return std::nullopt;
  return OpcElement(number != 0);
}

std::optional<OpcElement> DateOf(const OpcElement& element) {
  const auto* text = std::get_if<std::string>(&element);
  // A number alone would read as a count of days.
  if (text == nullptr || IsNumeric(*text)) return std::nullopt;
  try {
    return OpcElement(OpcDate{CDate(*text)});
  } catch (const RuntimeError&) {
    return std::nullopt;
  }
}

std::optional<OpcElement> OfNumber(double number, OpcType type) {
  switch (type) {
    case OpcType::Boolean:
      return BooleanOf(number);
    case OpcType::Byte:
      return WholeOf<std::uint8_t>(number);
    case OpcType::Short:
      return WholeOf<std::int16_t>(number);
    case OpcType::Long:
      return WholeOf<std::int32_t>(number);
    case OpcType::Float:
      return SingleOf(number);
    default:
      return OpcElement(number);
  }
}

}  // namespace

OpcType TypeOf(const OpcElement& element) {
  return static_cast<OpcType>(static_cast<int>(element.index()) + kFirstAlternative);
}

bool CanConvert(const OpcDataType& from, const OpcDataType& to) {
  if (to == OpcDataType{}) return true;
  if (from.isArray != to.isArray) return false;
  if (from.type == to.type || to.type == OpcType::Native) return true;
  if (from.type == OpcType::Native || from.type == OpcType::String || to.type == OpcType::String) return true;
  return from.type != OpcType::Date && to.type != OpcType::Date;
}

std::optional<OpcElement> Converted(const OpcElement& element, OpcType type) {
  if (type == OpcType::Native || TypeOf(element) == type) return element;
  if (type == OpcType::String) return OpcElement(TextOf(element));
  if (type == OpcType::Date) return DateOf(element);
  const std::optional<double> number = NumberOf(element);
  if (!number) return std::nullopt;
  return OfNumber(*number, type);
}

std::optional<OpcValue> Converted(const OpcValue& value, const OpcDataType& type) {
  if (type == OpcDataType{}) return value;
  if (value.isArray != type.isArray) return std::nullopt;
  OpcValue converted;
  converted.isArray = value.isArray;
  converted.elements.reserve(value.elements.size());
  for (const OpcElement& element : value.elements) {
    std::optional<OpcElement> one = Converted(element, type.type);
    if (!one) return std::nullopt;
    converted.elements.push_back(std::move(*one));
  }
  return converted;
}

}  // namespace velk
