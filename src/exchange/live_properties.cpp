#include "exchange/live_properties.h"

#include "base/numbers.h"

namespace velk {

namespace {

std::string LimitText(double limit, bool isSet) {
  return isSet ? NumberText(limit) : kNoAlarm;
}

/// A limit that nobody has touched keeps the digits that its text doesn't show.
void StoreLimit(const std::string& text, double& limit, bool& isSet) {
  if (text == LimitText(limit, isSet)) return;
  isSet = IsNumeric(text);
  if (isSet) limit = Val(text);
}

}  // namespace

Parameter CurveOf(const LiveField& field) {
  Parameter curve;
  curve.name = field.DisplayName;
  curve.units = field.Unit;
  curve.min = field.min;
  curve.max = field.max;
  curve.color = field.Colour;
  curve.format = field.format;
  curve.Wrapping = field.Wrapping;
  curve.loweralarm = LimitText(field.Lower, field.LowerSet);
  curve.upperalarm = LimitText(field.Upper, field.UpperSet);
  curve.GraphVisible = true;
  return curve;
}

void StoreCurve(LiveField& field, const Parameter& curve) {
  field.DisplayName = curve.name;
  field.Unit = curve.units;
  field.min = curve.min;
  field.max = curve.max;
  field.Colour = curve.color;
  field.format = curve.format;
  field.Wrapping = curve.Wrapping;
  StoreLimit(curve.loweralarm, field.Lower, field.LowerSet);
  StoreLimit(curve.upperalarm, field.Upper, field.UpperSet);
}

CurveProperties PropertiesOf(const LiveField& field) {
  return PropertiesOf(CurveOf(field));
}

void StoreProperties(LiveField& field, const CurveProperties& properties) {
  Parameter curve = CurveOf(field);
  StoreProperties(curve, properties);
  StoreCurve(field, curve);
}

}  // namespace velk
