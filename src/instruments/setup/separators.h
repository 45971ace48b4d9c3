#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "model/session.h"

namespace velk {

/// What stands between the values of a line and behind the last one.
struct Separators {
  std::string Delimiter;
  std::string Terminator;
};

inline constexpr int kDelimiterOptions = 5;
inline constexpr int kTerminatorOptions = 4;
/// The option whose delimiter is typed.
inline constexpr int kTypedDelimiter = 4;

/// What was chosen for the session's protocol; a blank and CR where it holds nothing.
Separators SeparatorsOf(const Session& session);

/// The delimiter of an option other than kTypedDelimiter, and the terminator of an option.
std::string DelimiterOf(int option);
std::string TerminatorOf(int option);

/// The option that stands for a delimiter; kTypedDelimiter for one that no other option gives.
int DelimiterOption(std::string_view delimiter);
/// Nothing for a terminator that no option gives.
std::optional<int> TerminatorOption(std::string_view terminator);

/// Whether a typed text can be the delimiter: one character.
bool IsDelimiter(std::string_view typed);

}  // namespace velk
