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
  parameter.FormIndex = static_cast<std::int16_t>(NumberOr(field("GraphNumber"), 1, kMaxParameters, 0));
  parameter.color = static_cast<std::int32_t>(NumberOr(field("CurveColor"), 0, kLargestColor, 0));
  parameter.GraphVisible = true;
  return parameter;
}

}  // namespace

void FillEmptyFields(Parameter& parameter, int number, const Language& language) {
  if (parameter.name.empty()) {
    parameter.name = language.In(text::DefaultParameterName) + std::to_string(number);
    parameter.GraphVisible = true;
  }
  if (parameter.units.empty()) parameter.units = language.In(text::DefaultUnits);
  if (parameter.min == 0 && parameter.max == 0) parameter.max = 100;
  if (parameter.format.empty()) parameter.format = "#0.000";
  if (parameter.FormIndex == 0) parameter.FormIndex = static_cast<std::int16_t>(number);
}

void WriteGraphSettings(const std::shared_ptr<Connection>& connection, std::span<Parameter> channels, bool update,
                        const Language& language) {
  Recordset settings(connection, kGraphSettings);
  if (update) settings.MoveFirst();
  int number = 0;
  for (Parameter& parameter : channels) {
    if (!update) settings.AddNew();
    FillEmptyFields(parameter, ++number, language);
    settings.SetField(0, parameter.name);
    settings.SetField(1, parameter.units);
    settings.SetField(2, parameter.min);
    settings.SetField(3, parameter.max);
    settings.SetField(4, parameter.format);
    settings.SetField(5, std::int64_t{parameter.FormIndex});
    settings.SetField(6, std::int64_t{parameter.color});
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
    FillEmptyFields(channels.back(), static_cast<int>(channels.size()), language);
  }
  return channels;
}

}  // namespace velk
