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

CurveProperties PropertiesOf(const Session& session, int parameter) {
  const Parameter& edited = session.CurrentParameters[static_cast<std::size_t>(parameter)];
  return {.name = edited.name,
          .units = edited.units,
          .min = edited.min,
          .max = edited.max,
          .format = edited.format,
          .color = edited.color,
          .Wrapping = edited.Wrapping,
          .smoothing = session.SmoothValue[static_cast<std::size_t>(parameter)],
          .loweralarm = edited.loweralarm,
          .upperalarm = edited.upperalarm,
          .hasAlarms = session.AcquisitionMode,
          .hasSmoothing = !ShowsFile(session) && parameter <= session.NumberOfParameters};
}

void StoreProperties(Session& session, int parameter, const CurveProperties& properties) {
  Parameter& edited = session.CurrentParameters[static_cast<std::size_t>(parameter)];
  edited.name = properties.name;
  edited.units = properties.units;
  edited.min = properties.min;
  edited.max = properties.max;
  edited.format = properties.format;
  edited.color = properties.color;
  edited.Wrapping = properties.Wrapping;
  if (properties.hasSmoothing)
    session.SmoothValue[static_cast<std::size_t>(parameter)] = static_cast<std::int16_t>(properties.smoothing);
  if (!properties.hasAlarms) return;
  edited.loweralarm = properties.loweralarm;
  edited.upperalarm = properties.upperalarm;
}

}  // namespace velk
