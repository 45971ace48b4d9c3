#pragma once

#include <string_view>

namespace velk {

/// Whether the work behind a menu item or toolbar button is there. One that is not stays disabled, whatever the status
/// allows.
bool IsBuilt(std::string_view item);

}  // namespace velk
