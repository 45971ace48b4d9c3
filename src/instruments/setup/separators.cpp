#include "instruments/setup/separators.h"

#include <array>

#include "base/text.h"
#include "instruments/setup/hardware_choices.h"

namespace velk {

namespace {

constexpr std::array<std::string_view, 4> kDelimiters{" ", "\t", ",", ";"};
constexpr std::array<std::string_view, 4> kTerminators{"\r", "\n", "\r\n", "\n\r"};

}  // namespace

Separators SeparatorsOf(const Session& session) {
  if (HasChosenSeparators(session)) return {session.ChosenDelimiter, session.ChosenTerminator};
  return {session.Delimiter.empty() ? DelimiterOf(0) : session.Delimiter,
          session.Terminator.empty() ? TerminatorOf(0) : session.Terminator};
}

std::string DelimiterOf(int option) {
  return std::string(kDelimiters.at(static_cast<std::size_t>(option)));
}

std::string TerminatorOf(int option) {
  return std::string(kTerminators.at(static_cast<std::size_t>(option)));
}

int DelimiterOption(std::string_view delimiter) {
  const int place = PlaceOf(kDelimiters, delimiter);
  return place < 0 ? kTypedDelimiter : place;
}

std::optional<int> TerminatorOption(std::string_view terminator) {
  const int place = PlaceOf(kTerminators, terminator);
  if (place < 0) return std::nullopt;
  return place;
}

bool IsDelimiter(std::string_view typed) {
  return CharacterCount(typed) == 1;
}

}  // namespace velk
