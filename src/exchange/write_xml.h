#pragma once

#include <string>
#include <string_view>

#include "exchange/export_source.h"

namespace velk {

/// Writes all fields of a source in the persistence form of a record set: a schema that names the attributes of a row
/// and their types, then a z:row element a row, with its values as attributes; a missing value has none. What stands at
/// `path` stays until the new file is complete. Raises what reading and writing raise, and TaskCancelled.
void WriteXml(const ExportSource& source, const std::string& path, LongTask& task);

/// A column's name as that of an attribute: what can't stand there is written as "_x0020_".
std::string XmlName(std::string_view name);

/// A text as it stands in an attribute between apostrophes. What XML has no way to write becomes U+FFFD.
std::string XmlText(std::string_view text);

}  // namespace velk
