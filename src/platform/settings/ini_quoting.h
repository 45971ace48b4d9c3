#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace velk {

// How a single text stands in a settings file: bare where it reads back as itself, else in quotes with escapes. See
// ini_file.h for the file.

/// Valid UTF-8 without control characters, tabs aside.
bool IsText(std::string_view text);

/// Without blanks and tabs at both ends.
std::string_view TrimBlanks(std::string_view text);

/// What stands behind the "=" for a value, ahead of it for a key, and the whole header line of a section.
std::string ValueText(std::string_view value);
std::string KeyText(std::string_view key);
std::string HeaderText(std::string_view section);

/// Takes a text in quotes, which `rest` begins with, off its front; nothing where quotes or escapes are wrong.
std::optional<std::string> TakeQuoted(std::string_view& rest);

}  // namespace velk
