#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "base/language.h"
#include "model/parameter.h"
#include "platform/database/connection.h"

namespace velk {

/// Gives the empty texts of channel `number` what the log needs: name, units, number format. A channel that had no name
/// becomes visible.
void FillEmptyTexts(Parameter& parameter, int number, const Language& language);
/// 0 to 100 for a scale that was never set (both ends 0).
void FillEmptyScale(Parameter& parameter);

/// Writes name, units, scale, format, graph and colour of each channel into GraphSettings, to new rows or, with
/// `update`, over the present ones. Empty texts of the channels get their defaults; a scale that was never set gets its
/// own in the row only, and a channel on no graph (0) stays on none. `names`, where any are given, one a channel, are
/// written in place of the channels' own.
void WriteGraphSettings(const std::shared_ptr<Connection>& connection, std::span<Parameter> channels, bool update,
                        const Language& language, const std::vector<std::string>& names = {});

/// The channels as GraphSettings tells them, 64 at most, all visible. What a row or the whole table leaves out (a
/// column that isn't there, Null, what is no number) has its default. Nothing without the table.
std::optional<std::vector<Parameter>> ReadGraphSettings(const std::shared_ptr<Connection>& connection,
                                                        const Language& language);

}  // namespace velk
