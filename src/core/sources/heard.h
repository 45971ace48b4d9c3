#pragma once

#include <cstdint>

#include "base/operator_text.h"
#include "instruments/link/link.h"
#include "model/session.h"

namespace velk {

/// How far a wait for an instrument's lines has come.
struct Heard {
  std::int64_t bytes = 0;
  bool lineEnd = false;  ///< one, but not the next
};

/// The text of a time-out, and beneath it the port, its device and what was heard there.
OperatorText TimeOutText(const MessageText& text, const Session& session, const Link& link, const Heard& heard);

}  // namespace velk
