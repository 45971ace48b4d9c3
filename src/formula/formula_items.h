#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace velk {

inline constexpr std::int8_t kNoToken = -1;  ///< where no FormulaToken is

/// What stands between two operators of a formula, or ahead of the first one, with the operator ahead of it; or a
/// bracket.
struct FormulaItem {
  enum class Kind : std::uint8_t { Number, Nothing, Opening, Closing };

  Kind kind = Kind::Number;
  /// Blanks stand between the operator and it: the operator is no sign of it then. Blanks alone are a number, 0.
  bool isApart = false;
  /// A minus stands ahead of a bracket that is the first thing in its own.
  bool isNegated = false;
  std::int8_t ahead = kNoToken;
  std::int8_t function = kNoToken;  ///< whose argument the bracket encloses
  double value = 0;
};

/// The items of a formula that is plain: of nothing else than numbers, operators, functions, blanks and as many
/// brackets as `bracketCount`, which belong together; good until the next call. Nothing for any other text: it is
/// worked off as text.
std::optional<std::span<FormulaItem>> ItemsOf(std::string_view formula, int bracketCount);

}  // namespace velk
