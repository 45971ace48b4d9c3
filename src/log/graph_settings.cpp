#include "log/graph_settings.h"

#include <limits>
#include <string>

#include "log/log_schema.h"
#include "model/texts.h"
#include "platform/database/recordset.h"

namespace velk {

namespace {

std::string TextOr(const FieldValue& field) {
  const auto* text = std::get_if<std::string>(&field);
  return text == nullptr ? std::string() : *text;
}

/// A finite number within limits, or else the other one.
double NumberOr(const FieldValue& field, double least, double most, double otherwise) {
  double number = otherwise;
  if (const auto* whole = std::get_if<std::int64_t>(&field)) number = static_cast<double>(*whole);
  if (const auto* real = std::get_if<double>(&field)) number = *real;
  return number >= least && number <= most ? number : otherwise;
}

/// Of a row that tells none; 0 is a channel on no graph.
constexpr std::int16_t kNoGraphNumber = -1;

/// One row. Columns go by name: a file of another program may have them in another order.
Parameter ReadRow(Recordset& settings) {
  const auto field = [&](const char* name) {
    const int index = settings.FieldIndex(name);
    return index < 0 ? FieldValue() : settings.Field(index);
  };
  constexpr double kLargest = std::numeric_limits<double>::max();
  constexpr double kLargestColor = std::numeric_limits<std::int32_t>::max();
  Parameter parameter;
  parameter.name = TextOr(field("ParameterName"));
  parameter.units = TextOr(field("units"));
  parameter.min = NumberOr(field("Minimum"), -kLargest, kLargest, 0);
  parameter.max = NumberOr(field("Maximum"), -kLargest, kLargest, 0);
  // A scale without length can't be drawn on; it counts as one that was never set.
  if (parameter.min == parameter.max) parameter.min = parameter.max = 0;
  parameter.format = TextOr(field("NumberFormat"));
  parameter.FormIndex = static_cast<std::int16_t>(NumberOr(field("GraphNumber"), 0, kMaxParameters, kNoGraphNumber));
  parameter.color = static_cast<std::int32_t>(NumberOr(field("CurveColor"), 0, kLargestColor, 0));
  parameter.GraphVisible = true;
  return parameter;
}

}  // namespace

void FillEmptyTexts(Parameter& parameter, int number, const Language& language) {
  if (parameter.name.empty()) {
    parameter.name = language.In(text::DefaultParameterName) + std::to_string(number);
    parameter.GraphVisible = true;
  }
  if (parameter.units.empty()) parameter.units = language.In(text::DefaultUnits);
  if (parameter.format.empty()) parameter.format = "#0.000";
}

void FillEmptyScale(Parameter& parameter) {
  if (parameter.min == 0 && parameter.max == 0) parameter.max = 100;
}

void WriteGraphSettings(const std::shared_ptr<Connection>& connection, std::span<Parameter> channels, bool update,
                        const Language& language, const std::vector<std::string>& names) {
  Recordset settings(connection, kGraphSettings);
  if (update) settings.MoveFirst();
  std::size_t number = 0;
  for (Parameter& parameter : channels) {
    if (!update) settings.AddNew();
    FillEmptyTexts(parameter, static_cast<int>(++number), language);
    Parameter row = parameter;
    if (number <= names.size()) row.name = names[number - 1];
    FillEmptyTexts(row, static_cast<int>(number), language);
    FillEmptyScale(row);
    settings.SetField(0, row.name);
    settings.SetField(1, row.units);
    settings.SetField(2, row.min);
    settings.SetField(3, row.max);
    settings.SetField(4, row.format);
    settings.SetField(5, std::int64_t{row.FormIndex});
    settings.SetField(6, std::int64_t{row.color});
    settings.Update();
    if (update) settings.MoveNext();
  }
}

std::optional<std::vector<Parameter>> ReadGraphSettings(const std::shared_ptr<Connection>& connection,
                                                        const Language& language) {
  if (!Catalog(*connection).Find(kGraphSettings)) return std::nullopt;
  Recordset settings(connection, kGraphSettings);
  std::vector<Parameter> channels;
  for (settings.MoveFirst(); !settings.EndOfFile() && channels.size() < kMaxParameters; settings.MoveNext()) {
    channels.push_back(ReadRow(settings));
    Parameter& channel = channels.back();
    const auto number = static_cast<std::int16_t>(channels.size());
    FillEmptyTexts(channel, number, language);
    FillEmptyScale(channel);
    if (channel.FormIndex == kNoGraphNumber) channel.FormIndex = number;
  }
  return channels;
}

}  // namespace velk
