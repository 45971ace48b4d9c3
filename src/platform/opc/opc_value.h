#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace velk {

/// The types that an item can be asked for. Native is whatever the server keeps it in.
enum class OpcType { Native, Boolean, Byte, Short, Long, Float, Double, String, Date };

struct OpcDataType {
  OpcType type = OpcType::Native;
  bool isArray = false;

  bool operator==(const OpcDataType&) const = default;
};

/// A date-time (see dates.h), local wall clock.
struct OpcDate {
  double day = 0;

  bool operator==(const OpcDate&) const = default;
};

/// One element of a value; the alternatives stand in the order of OpcType, Boolean first.
using OpcElement = std::variant<bool, std::uint8_t, std::int16_t, std::int32_t, float, double, std::string, OpcDate>;

/// A value of an item: one element, or an array of elements of one type. Without elements, and no array: none yet.
struct OpcValue {
  std::vector<OpcElement> elements;
  bool isArray = false;

  OpcValue() = default;
  explicit OpcValue(OpcElement element) : elements{std::move(element)} {}
  explicit OpcValue(std::vector<OpcElement> array) : elements(std::move(array)), isArray(true) {}

  bool operator==(const OpcValue&) const = default;
};

/// The type of an element; never Native.
OpcType TypeOf(const OpcElement& element);

/// Whether values of one type can be brought into another. A single value becomes no array, nor an array a single
/// value; Native takes each. Dates become texts and texts dates; between dates and numbers there is no way.
bool CanConvert(const OpcDataType& from, const OpcDataType& to);

/// The element in a type: whole numbers by rounding half to even, texts as NumberText writes them and Val-like numbers
/// read them, Boolean as "True" and "False" and as 1 and 0, dates as "yyyy-mm-dd hh:mm:ss". Nothing where it is
/// beyond the type's range or can't be read. Native leaves it as it is.
std::optional<OpcElement> Converted(const OpcElement& element, OpcType type);

/// All elements in a type; nothing where one of them has no such value, or where the one is an array and the other not.
std::optional<OpcValue> Converted(const OpcValue& value, const OpcDataType& type);

}  // namespace velk
