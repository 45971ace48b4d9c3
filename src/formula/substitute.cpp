#include "formula/substitute.h"

#include <algorithm>
#include <cmath>

#include "base/numbers.h"
#include "base/text.h"

namespace velk {

namespace {

/// The lower case of a Cyrillic letter U+0400 to U+045F.
unsigned LowerCyrillic(unsigned letter) {
  if (letter < 0x410) return letter + 0x50;
  if (letter < 0x430) return letter + 0x20;
  return letter;
}

unsigned char LowerAscii(unsigned char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<unsigned char>(c + 0x20) : c;
}

/// Whether a look at the ends of two texts tells that they differ in more than case. The names of channels mostly do so
/// by a number there.
bool EndsDiffer(std::string_view text, std::string_view lowered) {
  constexpr unsigned kCase = 0x20;
  if (text.empty() || lowered.empty()) return text.empty() != lowered.empty();
  const auto last = static_cast<unsigned char>(text.back());
  return last < 0x80 && ((last ^ static_cast<unsigned char>(lowered.back())) & ~kCase) != 0;
}

/// LowerCase(text) == lowered, without allocating for ASCII and Russian names: this runs for each channel of each
/// reference at each sample.
bool LowerCaseIs(std::string_view text, std::string_view lowered) {
  std::size_t at = 0;
  while (at < text.size()) {
    const auto byte = static_cast<unsigned char>(text[at]);
    if (byte < 0x80) {
      if (at >= lowered.size() || static_cast<unsigned char>(lowered[at]) != LowerAscii(byte)) return false;
      ++at;
      continue;
    }
    const auto next = at + 1 < text.size() ? static_cast<unsigned char>(text[at + 1]) : 0U;
    const unsigned letter = (byte & 0x1FU) << 6 | (next & 0x3FU);
    const bool cyrillic = (byte == 0xD0 || byte == 0xD1) && (next & 0xC0U) == 0x80 && letter <= 0x45F;
    if (!cyrillic) return LowerCase(text.substr(at)) == lowered.substr(std::min(at, lowered.size()));
    const unsigned lower = LowerCyrillic(letter);
    if (at + 1 >= lowered.size() || static_cast<unsigned char>(lowered[at]) != (0xC0U | lower >> 6) ||
        static_cast<unsigned char>(lowered[at + 1]) != (0x80U | (lower & 0x3FU))) {
      return false;
    }
    at += 2;
  }
  return at == lowered.size();
}

}  // namespace

int FindChannel(const Session& session, std::string_view name) {
  for (int i = 1; i <= kMaxParameters; ++i) {
    const std::string_view own = session.CurrentParameters[i].name;
    if (!EndsDiffer(own, name) && LowerCaseIs(own, name)) return i;
  }
  return 0;
}

int SubstituteParameters(const Session& session, std::string_view formula, std::string& text) {
  return SubstituteParameters(session, session.CurrentValue, formula, text);
}

int SubstituteParameters(const Session& session, const Session::PerParameter<float>& values, std::string_view formula,
                         std::string& text) {
  // The text is as long as its room while it is written, which is faster than to append each piece. Ahead of a number
  // there is always room for it and all that is left of the formula.
  const std::size_t room = formula.size() + kNumberTextSize;
  text.resize(std::max(text.capacity(), room));
  char* out = text.data();
  const char* read = formula.data();
  const char* const end = read + formula.size();
  int brackets = 0;
  bool closed = false;  // by a "}" ahead of its "{", which encloses no name
  for (;;) {
    for (; read != end && *read != '{'; ++read) {
      *out++ = *read;
      brackets += *read == ')' ? 1 : 0;
      closed |= *read == '}';
    }
    if (read == end) break;
    const char* const close = closed ? end : std::find(read, end, '}');
    const int channel = close == end ? 0 : FindChannel(session, {read + 1, close});
    const auto written = static_cast<std::size_t>(out - text.data());
    if (channel == 0) {
      text.replace(written, std::string::npos, {read, end});
      return 0;
    }
    if (std::isnan(values[channel])) return kValueMissing;
    if (text.size() - written < room) {
      text.resize(text.size() + room);
      out = text.data() + written;
    }
    out = WriteNumberText(out, values[channel]);
    read = close + 1;
  }
  text.resize(static_cast<std::size_t>(out - text.data()));
  return brackets;
}

std::vector<int> ReferencesOf(const Session& session, std::string_view formula) {
  std::vector<int> channels;
  for (std::size_t open = formula.find('{'); open != std::string_view::npos; open = formula.find('{', open + 1)) {
    const std::size_t close = formula.find('}', open);
    if (close == std::string_view::npos) break;
    const int channel = FindChannel(session, formula.substr(open + 1, close - open - 1));
    if (channel != 0) channels.push_back(channel);
  }
  return channels;
}

}  // namespace velk
