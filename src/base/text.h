#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace velk {

// Texts are UTF-8 in std::string. Positions and lengths of names and messages count characters (code points), not
// bytes; lines from instruments are bytes and use std::string's own members instead. Bytes that are no valid UTF-8
// count as one character each and are kept as they are.

std::size_t CharacterCount(std::string_view text);

/// The first / last `count` characters, or all of a shorter text.
std::string Left(std::string_view text, std::size_t count);
std::string Right(std::string_view text, std::size_t count);

/// Characters from `start`, counted from 1, at most `count` of them.
std::string Mid(std::string_view text, std::size_t start, std::size_t count = std::string::npos);

/// Unicode case mapping, the same in every locale.
std::string LowerCase(std::string_view text);
std::string UpperCase(std::string_view text);

/// Without blanks (code 32) at both ends.
std::string Trim(std::string_view text);
/// The same as a part of `text`, as long as that lives.
std::string_view Trimmed(std::string_view text);

/// Every occurrence of `what` replaced; an empty `what` changes nothing.
std::string ReplaceAll(std::string text, std::string_view what, std::string_view with);

}  // namespace velk
