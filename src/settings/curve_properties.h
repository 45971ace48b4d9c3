#pragma once

#include <cstdint>
#include <string>
#include <variant>

#include "base/message_text.h"
#include "model/session.h"

namespace velk {

/// What the dialog of one parameter edits. Gain and offset are no part of it.
struct CurveProperties {
  std::string name;
  std::string units;
  double min = 0;
  double max = 100;
  std::string format = "#0.000";
  std::int32_t color = 0;
  bool Wrapping = false;
  int smoothing = 1;  ///< length of the moving average, 1 to 10
  std::string loweralarm = kNoAlarm;
  std::string upperalarm = kNoAlarm;
  bool hasAlarms = false;    ///< they are edited too
  bool hasSmoothing = true;  ///< so is the smoothing
};

/// The same as the dialog's fields show it.
struct PropertyTexts {
  std::string minimum;
  std::string maximum;
  std::string loweralarm;
  std::string upperalarm;
};

PropertyTexts TextsOf(const CurveProperties& properties);

/// A field whose text can't stand, and why.
struct PropertyFault {
  std::string PropertyTexts::*field;
  MessageText text;
};

/// `properties` with the numbers as they were entered, alarms where they are edited; one that is no number isn't set.
/// Or the first fault: a number that can be read in two ways, a minimum that isn't below the maximum.
std::variant<CurveProperties, PropertyFault> WithTexts(CurveProperties properties, const PropertyTexts& texts);

/// Those of a parameter by itself: with its alarms, without a moving average.
CurveProperties PropertiesOf(const Parameter& parameter);
/// Alarms are stored where they were edited.
void StoreProperties(Parameter& parameter, const CurveProperties& properties);

/// Those of a parameter of the working set. Alarms are edited while AcquisitionMode is set. Smoothing is edited for the
/// unit's own channels: a played file goes through the same lengths, but they are the unit's set-up.
CurveProperties PropertiesOf(const Session& session, int parameter);
void StoreProperties(Session& session, int parameter, const CurveProperties& properties);

}  // namespace velk
