#pragma once

namespace velk {

/// A gain or an offset as values are scaled with it: taken through its decimal text of 15 digits and rounded to
/// 32 bits. Raises Overflow beyond that range.
float ThroughText(double value);

/// Whether a value lies within the 32-bit range; NaN does not.
bool FitsSingle(double value);

}  // namespace velk
