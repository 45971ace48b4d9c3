#pragma once

#include <functional>

#include "imaging/printer_choice.h"
#include "model/session.h"
#include "platform/platform.h"
#include "wells/well.h"

namespace velk {

/// What windows that show the path of a well work with; all outlives them.
struct WellAccess {
  const Well& well;
  const Session& session;
  const Platform& platform;
  std::function<PrinterChoice&()> printer;
  std::function<void()> beep;
};

}  // namespace velk
