#include "exchange/live_properties.h"

#include "base/numbers.h"

namespace velk {

namespace {

void StoreLimit(const std::string& text, double& limit, bool& isSet) {
  isSet = IsNumeric(text);
  if (isSet) limit = Val(text);
}

}  // namespace

CurveProperties PropertiesOf(const LiveField& field) {
  CurveProperties properties;
  properties.name = field.DisplayName;
  properties.units = field.Unit;
  properties.min = field.min;
  properties.max = field.max;
  properties.format = field.format;
  properties.color = field.Colour;
  properties.Wrapping = field.Wrapping;
  if (field.LowerSet) properties.loweralarm = NumberText(field.Lower);
  if (field.UpperSet) properties.upperalarm = NumberText(field.Upper);
  properties.hasAlarms = true;
  properties.hasSmoothing = false;
  return properties;
}

void StoreProperties(LiveField& field, const CurveProperties& properties) {
  field.DisplayName = properties.name;
  field.Unit = properties.units;
  field.min = properties.min;
  field.max = properties.max;
  field.format = properties.format;
  field.Colour = properties.color;
  field.Wrapping = properties.Wrapping;
  StoreLimit(properties.loweralarm, field.Lower, field.LowerSet);
  StoreLimit(properties.upperalarm, field.Upper, field.UpperSet);
}

}  // namespace velk
