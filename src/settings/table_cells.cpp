#include "settings/table_cells.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <cstdio>

#include "base/colour.h"
#include "base/number_entry.h"
#include "base/numbers.h"
#include "base/one_line.h"
#include "base/text.h"
#include "model/number_formats.h"
#include "model/parameter_questions.h"
#include "model/texts.h"
#include "settings/texts.h"

namespace velk {

namespace {

constexpr MessageText kHeadings[kTableColumns] = {
    text::HeadingTag,        text::HeadingName,  text::HeadingUnits,  text::HeadingMinimum,
    text::HeadingMaximum,    text::HeadingColor, text::HeadingFormat, text::HeadingLowerAlarm,
    text::HeadingUpperAlarm, text::HeadingGraph, text::HeadingGain,   text::HeadingOffset};

bool IsNoAlarm(std::string_view text) {
  return Trim(text).empty() || LowerCase(Trim(text)) == LowerCase(kNoAlarm);
}

}  // namespace

const MessageText& HeadingOf(TableColumn column) {
  return kHeadings[static_cast<int>(column)];
}

bool IsNumberColumn(TableColumn column) {
  return column != TableColumn::Tag && column != TableColumn::Name && column != TableColumn::Units &&
         column != TableColumn::Color;
}

std::string CellOf(const Parameter& parameter, TableColumn column) {
  switch (column) {
    case TableColumn::Name:
      break;
    case TableColumn::Tag:
      return {};
    case TableColumn::Units:
      return parameter.units;
    case TableColumn::Minimum:
      return NumberText(parameter.min);
    case TableColumn::Maximum:
      return NumberText(parameter.max);
    case TableColumn::Color:
      return CellOfColour(parameter.color);
    case TableColumn::Format:
      return SampleOfFormat(parameter.format);
    case TableColumn::LowerAlarm:
      return parameter.loweralarm == kNoAlarm ? "" : parameter.loweralarm;
    case TableColumn::UpperAlarm:
      return parameter.upperalarm == kNoAlarm ? "" : parameter.upperalarm;
    case TableColumn::Graph:
      return std::to_string(parameter.FormIndex);
    case TableColumn::Gain:
      return NumberText(parameter.Gain);
    case TableColumn::Offset:
      return NumberText(parameter.Offset);
  }
  return parameter.name;
}

std::string AsKept(TableColumn column, std::string_view entered) {
  if (column != TableColumn::Format) return OnOneLine(std::string(entered));
  const std::string sample = WithDecimalPoint(Trim(entered));
  // Whoever knows the pictures may paste one.
  for (const NumberFormat& row : kNumberFormats)
    if (row.format == sample) return std::string(row.sample);
  return SampleOfFormat(FormatOfSample(sample));
}

std::optional<MessageText> FaultOfCell(TableColumn column, std::string_view text) {
  switch (column) {
    case TableColumn::Tag:
    case TableColumn::Name:
    case TableColumn::Units:
    case TableColumn::Format:
      return std::nullopt;
    case TableColumn::Color:
      if (!ColourOfCell(text)) return text::NotAColour;
      return std::nullopt;
    case TableColumn::LowerAlarm:
    case TableColumn::UpperAlarm:
      if (IsNoAlarm(text)) return std::nullopt;
      break;
    case TableColumn::Graph:
      if (!IsUnclearNumber(text) && !GraphOfCell(text)) return text::GraphOutOfRange;
      break;
    case TableColumn::Minimum:
    case TableColumn::Maximum:
    case TableColumn::Gain:
    case TableColumn::Offset:
      break;
  }
  if (!EnteredNumber(text)) return FaultOfNumber(text);
  return std::nullopt;
}

std::string NameOfCell(std::string_view text) {
  const bool isBlank = Trim(text).empty() || UpperCase(text) == kBlankName;
  return isBlank ? kBlankName : std::string(text);
}

std::optional<std::int16_t> GraphOfCell(std::string_view text) {
  const std::optional<double> number = EnteredNumber(text);
  if (!number) return std::nullopt;
  const double whole = std::nearbyint(*number);
  if (whole < 0 || whole > kMaxParameters) return std::nullopt;
  return static_cast<std::int16_t>(whole);
}

std::optional<std::int32_t> ColourOfCell(std::string_view text) {
  const std::string cell = Trim(text);
  if (cell.size() != 7 || cell[0] != '#') return std::nullopt;
  int rgb = 0;
  const auto [end, error] = std::from_chars(cell.data() + 1, cell.data() + cell.size(), rgb, 16);
  if (error != std::errc() || end != cell.data() + cell.size() || cell[1] == '-') return std::nullopt;
  return (rgb & 0xFF) << 16 | (rgb & 0xFF00) | rgb >> 16;
}

std::string CellOfColour(std::int32_t colour) {
  char cell[8];
  std::snprintf(cell, sizeof cell, "#%02X%02X%02X", static_cast<unsigned>(Red(colour)),
                static_cast<unsigned>(Green(colour)), static_cast<unsigned>(Blue(colour)));
  return cell;
}

std::string AlarmOfCell(std::string_view text) {
  return IsNoAlarm(text) ? kNoAlarm : NumberText(EnteredNumber(text).value_or(0));
}

}  // namespace velk
