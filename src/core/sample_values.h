#pragma once

#include <array>
#include <string_view>

#include "instruments/reading/line_fault.h"
#include "model/session.h"

namespace velk {

/// Whether a line stands in the common form: its terminator comes behind character 9, so that there is a time in front.
/// Decoders reject a line by putting the terminator at its head.
bool IsAccepted(const Session& session, std::string_view line);

/// From the fields of an accepted line to CurrentValue: scaled, then averaged.
class SampleValues {
 public:
  /// Takes the fields 1 to NumberOfParameters behind the time. With a fault nothing has changed: FieldNotDecimal where
  /// the protocol sends decimal text and nothing else, FieldMissing for a line that ends ahead of the last of them,
  /// BeyondRange for a field or its scaled value. An empty field is 0.
  LineFault Take(Session& session, std::string_view line);

 private:
  /// Gain and offset go through their decimal text into 32 bits; the result is kept as long as the parameter's own
  /// numbers stay the same, since the text conversion costs more than the rest of the channel.
  struct Scale {
    double gain = 0, offset = 0;
    float gain32 = 0, offset32 = 0;
  };
  const Scale& ScaleOf(const Session& session, int parameter);

  std::array<Scale, kSlots> scales_{};
  std::array<float, kSlots> scaled_{};
};

/// `value` taken into the moving average of a parameter, over SmoothValue samples; gives the average.
float Smooth(Session& session, int parameter, float value);

/// Whether a parameter has moved by SensitivityCriterion percent of its scale since the last plotted point. Raises
/// DivisionByZero on an empty scale.
bool HasMoved(const Session& session, int parameter);

/// Whether half a sampling interval has gone since the last plotted point, or the clock was set back behind it: an hour
/// of samples must not go unrecorded in autumn.
bool IsDue(const Session& session);

}  // namespace velk
