#pragma once

#include <string>
#include <string_view>

namespace velk {

/// A parameter name without the characters that a column name can't hold: . ! ' [ ] and the codes 0 to 31. The
/// whole name may vanish.
std::string CleanFieldName(std::string_view name);

}  // namespace velk
