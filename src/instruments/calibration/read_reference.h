#pragma once

#include <functional>
#include <optional>

#include "instruments/link/link.h"
#include "model/main_timers.h"
#include "model/session.h"
#include "platform/platform.h"

namespace velk {

/// Readings that a reference is judged by, unless it is stopped earlier.
inline constexpr int kReferenceReadings = 15;

/// Whether the session's instrument can be read for a calibration: one that sends formatted lines, or that is asked.
bool CanReadReferences(const Session& session);

/// Reads a channel, unscaled, kReferenceReadings times or until StopRequested is set, and hands each reading to `show`.
/// Gives the last one; nothing where none came. The link is leased meanwhile, and events run. StopRequested is clear at
/// the end. What fails is told in a box: a port that can't be opened, an instrument that sends nothing for TheTimeOut
/// sampling intervals.
std::optional<double> ReadReference(Session& session, const Platform& platform, Link& link, MainTimers& timers,
                                    int parameter, const std::function<void(double reading)>& show);

}  // namespace velk
