#pragma once

#include "base/operator_text.h"

namespace velk {

/// What has become of the lines of an instrument since Connect.
struct DataState {
  int rejected = 0;         ///< lines whose values were not taken
  OperatorText lastReason;  ///< why the last of them was rejected
  double heldSince = 0;     ///< time in days from which on the last values stand for rejected lines; 0: they do not
};

}  // namespace velk
