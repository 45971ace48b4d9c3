#pragma once

#include <memory>

#include "i18n/windows/window_host.h"

namespace velk {

/// The window that stands while the ports are searched for an instrument; its Cancel ends the search.
std::unique_ptr<ProgressBox> MakeFrmAutoDetect(const WindowHost& host);

}  // namespace velk
