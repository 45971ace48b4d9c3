#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "platform/dialogs/dialogs.h"

namespace velk {

enum class FileUse { Open, Save };

/// Asks for a file until its name can stand, with a beep and a box for each that can't: one without an extension, one
/// that ends in a path separator, one to open that isn't there. `extensions` are those that it may have, without the
/// point and in any case of letters; "*" allows any. A name that has none of them gets the first one, unless that is
/// "*". A file that would be replaced is asked about. Nothing on Cancel.
std::optional<std::string> SelectFile(Dialogs& dialogs, FileQuestion question,
                                      std::span<const std::string_view> extensions, FileUse use,
                                      const std::function<void()>& beep);

}  // namespace velk
