#include "base/text.h"

#include <algorithm>

#include "base/text_qt.h"

namespace velk {

namespace {

bool IsContinuation(std::string_view text, std::size_t at) {
  return at < text.size() && (static_cast<unsigned char>(text[at]) & 0xC0) == 0x80;
}

/// Bytes of the valid UTF-8 character at `at`; 0 where there is none: a stray or cut byte, an overlong form, a
/// surrogate, a code beyond U+10FFFF.
std::size_t ValidBytes(std::string_view text, std::size_t at) {
  const auto first = static_cast<unsigned char>(text[at]);
  if (first < 0x80) return 1;
  if (first < 0xC2 || first > 0xF4 || !IsContinuation(text, at + 1)) return 0;
  if (first < 0xE0) return 2;
  const auto second = static_cast<unsigned char>(text[at + 1]);
  if (!IsContinuation(text, at + 2)) return 0;
  if (first < 0xF0) {
    const bool overlong = first == 0xE0 && second < 0xA0;
    const bool surrogate = first == 0xED && second > 0x9F;
    return overlong || surrogate ? 0 : 3;
  }
  const bool overlong = first == 0xF0 && second < 0x90;
  const bool beyond = first == 0xF4 && second > 0x8F;
  return overlong || beyond || !IsContinuation(text, at + 3) ? 0 : 4;
}

/// The place behind `count` characters from `at`, or the end.
std::size_t Skip(std::string_view text, std::size_t at, std::size_t count) {
  for (; count > 0 && at < text.size(); --count) at += std::max<std::size_t>(1, ValidBytes(text, at));
  return at;
}

bool IsAscii(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

char LowerAscii(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}
char UpperAscii(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

/// `map` on each stretch of valid characters; the other bytes stay as they are.
template <class Map>
std::string MapValid(std::string_view text, Map map) {
  std::string mapped;
  for (std::size_t at = 0; at < text.size();) {
    std::size_t end = at;
    while (end < text.size()) {
      const std::size_t bytes = ValidBytes(text, end);
      if (bytes == 0) break;
      end += bytes;
    }
    if (end > at) mapped += FromQt(map(ToQt(text.substr(at, end - at))));
    if (end < text.size()) mapped += text[end++];
    at = end;
  }
  return mapped;
}

}  // namespace

std::size_t CharacterCount(std::string_view text) {
  std::size_t count = 0;
  for (std::size_t at = 0; at < text.size(); at = Skip(text, at, 1)) ++count;
  return count;
}

std::string Left(std::string_view text, std::size_t count) {
  return std::string(text.substr(0, Skip(text, 0, count)));
}

std::string Right(std::string_view text, std::size_t count) {
  const std::size_t all = CharacterCount(text);
  return std::string(text.substr(count >= all ? 0 : Skip(text, 0, all - count)));
}

std::string Mid(std::string_view text, std::size_t start, std::size_t count) {
  const std::size_t begin = Skip(text, 0, start == 0 ? 0 : start - 1);
  return std::string(text.substr(begin, Skip(text, begin, count) - begin));
}

std::string LowerCase(std::string_view text) {
  if (!IsAscii(text)) return MapValid(text, [](const QString& valid) { return valid.toLower(); });
  std::string mapped(text);
  std::transform(mapped.begin(), mapped.end(), mapped.begin(), LowerAscii);
  return mapped;
}

std::string UpperCase(std::string_view text) {
  if (!IsAscii(text)) return MapValid(text, [](const QString& valid) { return valid.toUpper(); });
  std::string mapped(text);
  std::transform(mapped.begin(), mapped.end(), mapped.begin(), UpperAscii);
  return mapped;
}

std::string Trim(std::string_view text) {
  return std::string(Trimmed(text));
}

std::string_view Trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string ReplaceAll(std::string text, std::string_view what, std::string_view with) {
  if (what.empty()) return text;
  std::string replaced;
  std::size_t at = 0;
  for (std::size_t found = text.find(what); found != std::string::npos; found = text.find(what, at)) {
    replaced.append(text, at, found - at).append(with);
    at = found + what.size();
  }
  return replaced.append(text, at);
}

}  // namespace velk
