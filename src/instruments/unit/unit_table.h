#pragma once

#include <array>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "base/operator_text.h"

namespace velk {

/// The table of an own unit as it is edited: texts, a row a channel.
using UnitRows = std::vector<std::array<std::string, 6>>;

namespace unit_column {
inline constexpr int Channel = 0;
inline constexpr int Offset = 1;
inline constexpr int Gain = 2;
inline constexpr int NumberFormat = 3;  ///< is no business of the board's
inline constexpr int UpperAlarm = 4;    ///< empty where it is off
inline constexpr int LowerAlarm = 5;
}  // namespace unit_column

/// The headings of the columns, in their order.
const MessageText& UnitHeading(int column);

/// What keeps a text of a column from being sent; empty where nothing does.
OperatorText UnitCellFault(int column, const std::string& text);

/// A cell of the table.
struct UnitCell {
  int row = 0;
  int column = 0;
};
std::optional<UnitCell> FirstUnitFault(const UnitRows& table);

/// Whether the number of this text has an exponent when it is sent: the board reads it back as another one.
bool HasExponent(const std::string& text);
/// The channels with such a number in a cell that differs from what the unit has, divided by commas; empty where there
/// is none. `unitHas` is empty where nobody knows.
std::string ChannelsWithExponents(const UnitRows& table, const UnitRows& unitHas);

/// A template: the unit's name in the first line, then a row a channel, its cells divided by tabs.
std::string UnitTemplateText(const std::string& unit, const UnitRows& table);
/// The table of a template; else what is wrong with it, with the number of the line.
std::variant<UnitRows, OperatorText> ReadUnitTemplate(const std::string& text, const std::string& unit, int channels);

}  // namespace velk
