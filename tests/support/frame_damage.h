#pragma once

#include <string>

namespace velk::test {

/// Whether a frame still has "hh:mm:" with an hour and a minute that a clock shows, and `fields` delimiters. Digits,
/// blanks, tabs, a sign and a point are weighed as a person reads a number: "1x" is 1, "x" is no number and 0.
inline bool IsTimedFrame(const std::string& frame, char delimiter, int fields) {
  if (frame.size() < 6 || frame[2] != ':' || frame[5] != ':') return false;
  const auto twoCharacters = [](char first, char second) {
    const auto digit = [](char c) { return c >= '0' && c <= '9'; };
    if (digit(first)) return digit(second) ? (first - '0') * 10 + (second - '0') : first - '0';
    if (!digit(second)) return 0;
    if (first == '-') return second == '0' ? 0 : -1;
    const bool led = first == ' ' || first == '\t' || first == '+';
    return led ? second - '0' : 0;  // ".5" is below 1
  };
  const int hour = twoCharacters(frame[0], frame[1]);
  const int minute = twoCharacters(frame[3], frame[4]);
  int count = 0;
  for (const char c : frame) count += c == delimiter;
  return hour >= 0 && hour < 24 && minute >= 0 && minute < 60 && count == fields;
}

/// Every frame that differs from a sound one in a single byte.
template <class Each>
void ForEveryChangedByte(const std::string& sound, Each each) {
  for (std::size_t at = 0; at < sound.size(); ++at)
    for (int value = 0; value < 256; ++value) {
      std::string changed = sound;
      changed[at] = static_cast<char>(value);
      if (changed != sound) each(changed);
    }
}

}  // namespace velk::test
