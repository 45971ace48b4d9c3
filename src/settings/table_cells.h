#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/message_text.h"
#include "model/parameter.h"

namespace velk {

/// The columns of the table of parameters, in their order.
enum class TableColumn {
  Tag,  ///< where the channel comes from
  Name,
  Units,
  Minimum,
  Maximum,
  Color,
  Format,
  LowerAlarm,
  UpperAlarm,
  Graph,
  Gain,
  Offset,
};
inline constexpr int kTableColumns = 12;

const MessageText& HeadingOf(TableColumn column);
/// Shown at the right of its cell.
bool IsNumberColumn(TableColumn column);

/// What the cell of a parameter shows, but for its tag, which no parameter holds: numbers with a point, an alarm that
/// isn't set as nothing, a format by its sample, a colour as "#RRGGBB".
std::string CellOf(const Parameter& parameter, TableColumn column);

/// A text as the column keeps it: a format that none of the samples stands for is "1234.123". Other columns keep what
/// was entered, on one line.
std::string AsKept(TableColumn column, std::string_view entered);

/// Why a text can't stand in its column; nothing where it can. The scales are compared by ParameterTable.
std::optional<MessageText> FaultOfCell(TableColumn column, std::string_view text);

/// "BLANK" for an empty name and for that word in whatever case.
std::string NameOfCell(std::string_view text);
/// Graph number, or nothing outside 0 to 64.
std::optional<std::int16_t> GraphOfCell(std::string_view text);
/// "#RRGGBB" as 0x00bbggrr.
std::optional<std::int32_t> ColourOfCell(std::string_view text);
std::string CellOfColour(std::int32_t colour);
/// An alarm level: "None" where the cell is empty or says so.
std::string AlarmOfCell(std::string_view text);

}  // namespace velk
