#include "settings/curve_properties.h"

#include "base/number_entry.h"
#include "base/numbers.h"
#include "model/parameter_questions.h"
#include "model/texts.h"

namespace velk {

namespace {

std::string AlarmOfText(const std::string& text) {
  const std::string number = WithDecimalPoint(text);
  return IsNumeric(number) ? NumberText(Val(number)) : kNoAlarm;
}

}  // namespace

PropertyTexts TextsOf(const CurveProperties& properties) {
  return {NumberText(properties.min), NumberText(properties.max), properties.loweralarm, properties.upperalarm};
}

std::variant<CurveProperties, PropertyFault> WithTexts(CurveProperties properties, const PropertyTexts& texts) {
  for (auto field :
       {&PropertyTexts::minimum, &PropertyTexts::maximum, &PropertyTexts::loweralarm, &PropertyTexts::upperalarm}) {
    const bool isAlarm = field == &PropertyTexts::loweralarm || field == &PropertyTexts::upperalarm;
    if (isAlarm && !properties.hasAlarms) continue;
    if (!EnteredNumber(texts.*field)) return PropertyFault{field, FaultOfNumber(texts.*field)};
  }
  const PropertyTexts before = TextsOf(properties);
  // A number that nobody has touched keeps the digits that its text doesn't show.
  if (texts.minimum != before.minimum) properties.min = *EnteredNumber(texts.minimum);
  if (texts.maximum != before.maximum) properties.max = *EnteredNumber(texts.maximum);
  if (!(properties.min < properties.max)) return PropertyFault{&PropertyTexts::minimum, text::MinimumNotBelow};
  if (!properties.hasAlarms) return properties;
  properties.loweralarm = AlarmOfText(texts.loweralarm);
  properties.upperalarm = AlarmOfText(texts.upperalarm);
  return properties;
}

CurveProperties PropertiesOf(const Parameter& parameter) {
  return {.name = parameter.name,
          .units = parameter.units,
          .min = parameter.min,
          .max = parameter.max,
          .format = parameter.format,
          .color = parameter.color,
          .Wrapping = parameter.Wrapping,
          .smoothing = 1,
          .loweralarm = parameter.loweralarm,
          .upperalarm = parameter.upperalarm,
          .hasAlarms = true,
          .hasSmoothing = false};
}

void StoreProperties(Parameter& parameter, const CurveProperties& properties) {
  parameter.name = properties.name;
  parameter.units = properties.units;
  parameter.min = properties.min;
  parameter.max = properties.max;
  parameter.format = properties.format;
  parameter.color = properties.color;
  parameter.Wrapping = properties.Wrapping;
  if (!properties.hasAlarms) return;
  parameter.loweralarm = properties.loweralarm;
  parameter.upperalarm = properties.upperalarm;
}

CurveProperties PropertiesOf(const Session& session, int parameter) {
  const auto slot = static_cast<std::size_t>(parameter);
  CurveProperties properties = PropertiesOf(session.CurrentParameters[slot]);
  properties.smoothing = session.SmoothValue[slot];
  properties.hasAlarms = session.AcquisitionMode;
  properties.hasSmoothing = !ShowsFile(session) && parameter <= session.NumberOfParameters;
  return properties;
}

void StoreProperties(Session& session, int parameter, const CurveProperties& properties) {
  const auto slot = static_cast<std::size_t>(parameter);
  StoreProperties(session.CurrentParameters[slot], properties);
  if (properties.hasSmoothing) session.SmoothValue[slot] = static_cast<std::int16_t>(properties.smoothing);
}

}  // namespace velk
