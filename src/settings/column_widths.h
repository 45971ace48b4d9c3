#pragma once

#include <map>
#include <string>

#include "platform/settings/settings.h"

namespace velk {

/// Widths that an operator gave to columns of the table of parameters, in pixels, by the English heading. A column that
/// isn't named is as wide as its texts.
using ColumnWidths = std::map<std::string, int>;

/// Those that were saved. A width that can't be one is passed over.
ColumnWidths ReadColumnWidths(SettingsStore& settings);
/// Puts them in place of those that were saved; the caller flushes the store.
void SaveColumnWidths(SettingsStore& settings, const ColumnWidths& widths);

}  // namespace velk
