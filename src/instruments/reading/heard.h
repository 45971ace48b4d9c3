#pragma once

#include <cstdint>

#include "base/operator_text.h"
#include "model/session.h"

namespace velk {

/// How far a wait for an instrument's lines or answers has come.
struct Heard {
  std::int64_t bytes = 0;
  bool lineEnd = false;   ///< one, but not the next
  bool rejected = false;  ///< whole lines, none of which passed the check of its protocol
};

/// The text of a time-out, and beneath it `port`, the port with its device, and what was heard there.
OperatorText TimeOutText(const MessageText& text, const OperatorText& port, const Session& session, const Heard& heard);

}  // namespace velk
