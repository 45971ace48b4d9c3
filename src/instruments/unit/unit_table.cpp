#include "instruments/unit/unit_table.h"

#include <algorithm>

#include "base/number_entry.h"
#include "base/numbers.h"
#include "base/text.h"
#include "instruments/texts.h"
#include "model/texts.h"

namespace velk {

namespace {

constexpr std::array<MessageText, 6> kHeadings{text::UnitChannel,      text::UnitOffset,     text::UnitGain,
                                               text::UnitNumberFormat, text::UnitUpperAlarm, text::UnitLowerAlarm};

bool IsAlarm(int column) {
  return column == unit_column::UpperAlarm || column == unit_column::LowerAlarm;
}

/// The lines of a text, whatever their ends; the last one may have none.
std::vector<std::string> LinesOf(const std::string& text) {
  std::vector<std::string> lines;
  std::size_t from = text.starts_with("\xEF\xBB\xBF") ? 3 : 0;
  while (from < text.size()) {
    std::size_t end = text.find('\n', from);
    if (end == std::string::npos) end = text.size();
    std::string line = text.substr(from, end - from);
    if (line.ends_with('\r')) line.pop_back();
    lines.push_back(std::move(line));
    from = end + 1;
  }
  return lines;
}

/// The cells of a row; nothing where it isn't a sound one of this channel.
std::optional<UnitRows::value_type> CellsOf(const std::string& line, std::size_t channel) {
  UnitRows::value_type cells;
  std::size_t from = 0;
  for (std::size_t i = 0; i < cells.size(); ++i) {
    const std::size_t end = line.find('\t', from);
    const bool isLast = i + 1 == cells.size();
    if (isLast != (end == std::string::npos)) return std::nullopt;
    cells[i] = line.substr(from, end - from);
    from = end + 1;
    if (!UnitCellFault(static_cast<int>(i), cells[i]).IsEmpty()) return std::nullopt;
  }
  if (cells[unit_column::Channel] != std::to_string(channel)) return std::nullopt;
  return cells;
}

OperatorText FaultInLine(const MessageText& text, std::size_t line) {
  return text + OperatorText(std::to_string(line));
}

}  // namespace

const MessageText& UnitHeading(int column) {
  return kHeadings.at(static_cast<std::size_t>(column));
}

OperatorText UnitCellFault(int column, const std::string& text) {
  if (column == unit_column::Channel) return {};
  if (column == unit_column::NumberFormat)
    return text.find_first_not_of("0#.,") == std::string::npos && std::count(text.begin(), text.end(), '.') <= 1
               ? OperatorText()
               : text::NoNumberFormat;
  if (Trim(text).empty()) return IsAlarm(column) ? OperatorText() : text::NotANumber;
  if (IsUnclearNumber(text)) return text::NumberUnclear;
  return IsNumeric(WithDecimalPoint(text)) ? OperatorText() : text::NotANumber;
}

std::optional<UnitCell> FirstUnitFault(const UnitRows& table) {
  for (std::size_t row = 0; row < table.size(); ++row)
    for (int column = 0; column < static_cast<int>(kHeadings.size()); ++column)
      if (!UnitCellFault(column, table[row][static_cast<std::size_t>(column)]).IsEmpty())
        return UnitCell{static_cast<int>(row), column};
  return std::nullopt;
}

bool HasExponent(const std::string& text) {
  return NumberText(Val(WithDecimalPoint(text))).find('E') != std::string::npos;
}

std::string ChannelsWithExponents(const UnitRows& table, const UnitRows& unitHas) {
  std::string channels;
  for (std::size_t row = 0; row < table.size(); ++row) {
    bool has = false;
    for (const int column :
         {unit_column::Offset, unit_column::Gain, unit_column::UpperAlarm, unit_column::LowerAlarm}) {
      const auto place = static_cast<std::size_t>(column);
      const bool isSent = row >= unitHas.size() || unitHas[row][place] != table[row][place];
      has = has || (isSent && HasExponent(table[row][place]));
    }
    if (has) channels += (channels.empty() ? "" : ", ") + std::to_string(row + 1);
  }
  return channels;
}

std::string UnitTemplateText(const std::string& unit, const UnitRows& table) {
  std::string text = unit + "\n";
  for (const auto& row : table)
    for (std::size_t i = 0; i < row.size(); ++i) text += row[i] + (i + 1 < row.size() ? '\t' : '\n');
  return text;
}

std::variant<UnitRows, OperatorText> ReadUnitTemplate(const std::string& text, const std::string& unit, int channels) {
  const std::vector<std::string> lines = LinesOf(text);
  if (lines.empty()) return FaultInLine(text::TemplateDamaged, 1);
  if (lines[0] != unit) return FaultInLine(text::TemplateOfAnotherUnit, 1);
  UnitRows table;
  for (std::size_t channel = 1; channel <= static_cast<std::size_t>(channels); ++channel) {
    const auto cells = channel < lines.size() ? CellsOf(lines[channel], channel) : std::nullopt;
    if (!cells) return FaultInLine(text::TemplateDamaged, channel + 1);
    table.push_back(*cells);
  }
  if (lines.size() > table.size() + 1) return FaultInLine(text::TemplateDamaged, table.size() + 2);
  return table;
}

}  // namespace velk
