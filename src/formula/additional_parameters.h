#pragma once

#include <span>
#include <string>
#include <string_view>

#include "formula/formula_checks.h"
#include "model/session.h"

namespace velk {

// Computed channels stand twice: AdditionalParameters with Formula, which the settings keep, and their copies in
// CurrentParameters behind the inputs, which everything else reads. `index` counts from 1 to NumberOfFormulae. Neither
// adding nor removing one rebuilds the graph map and the windows; the caller does that afterwards.

/// Adds a computed channel with that formula. A reference to a channel that does not exist is told in a box, and
/// nothing changes; gives whether the channel was added. Raises SubscriptOutOfRange, with nothing changed, when all 64
/// slots are taken.
bool ReadFormulae(Session& session, const FormulaReport& report, const std::string& text);

/// Sets the running state of a channel whose formula begins with a statistic to its start: when the formula is entered
/// and when it is read back. One further in starts from zero.
void PrepareStatistics(Parameter& channel, std::string_view formula);

/// Whether so many more computed channels have room: behind the channels that stand there, and, while a file is played
/// back, behind those of the unit too.
bool HasRoomForAdditional(const Session& session, int more);

/// Puts all computed channels behind those of a file that is played back, where they do not stand yet, each with a
/// graph of its own; without a file nothing. Only the file's copies are made: AdditionalParameters stay. The caller has
/// seen to the room.
void PlaceBehindFile(Session& session);

/// Whether the computed channels stand in CurrentParameters behind the inputs. A file that is played back begins
/// without them.
bool AdditionalStandBehindInputs(const Session& session);

/// Takes a computed channel out; those behind it move up, with their values. Raises SubscriptOutOfRange.
void RemoveAdditional(Session& session, int index);

/// The present value of the formula of a computed channel; avg, max and min count the call as a sample. Raises what
/// FormulaValue raises, and Overflow beyond the 32-bit range; the error's text names the channel. NaN, and no
/// sample, where a channel that it asks for has no value. Must not be called for a linked channel, whose value comes
/// from the decoder.
float ValueOf(Session& session, int index);
/// The same of other values, indexed like CurrentValue, with running statistics of their own in `statistics`, one a
/// computed channel (slot 0 unused): what looks back must not disturb what is being recorded.
float ValueOf(const Session& session, const Session::PerParameter<float>& values, std::span<Parameter> statistics,
              int index);

}  // namespace velk
