#include "platform/settings/ini_quoting.h"

#include <algorithm>

namespace velk {

namespace {

constexpr std::string_view kBlanks = " \t";

/// Bytes of the UTF-8 character at the front of a text that isn't empty; 0 where there is none.
std::size_t CharacterLength(std::string_view text) {
  const auto byte = [&](std::size_t i) { return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U; };
  const auto isTail = [&](std::size_t i) { return (byte(i) & 0xC0U) == 0x80U; };
  const unsigned first = byte(0);
  if (first < 0x80) return 1;
  if (first >= 0xC2 && first <= 0xDF) return isTail(1) ? 2 : 0;
  if (first >= 0xE0 && first <= 0xEF) {
    const bool overlong = first == 0xE0 && byte(1) < 0xA0;
    const bool surrogate = first == 0xED && byte(1) > 0x9F;
    return isTail(1) && isTail(2) && !overlong && !surrogate ? 3 : 0;
  }
  if (first >= 0xF0 && first <= 0xF4) {
    const bool overlong = first == 0xF0 && byte(1) < 0x90;
    const bool beyond = first == 0xF4 && byte(1) > 0x8F;
    return isTail(1) && isTail(2) && isTail(3) && !overlong && !beyond ? 4 : 0;
  }
  return 0;
}

bool IsControl(char character) {
  const auto byte = static_cast<unsigned char>(character);
  return byte < 0x20 || byte == 0x7F;
}

std::string Quote(std::string_view text) {
  constexpr std::string_view kHex = "0123456789ABCDEF";
  std::string out = "\"";
  while (!text.empty()) {
    const std::size_t length = CharacterLength(text);
    const char character = text[0];
    if (character == '\\' || character == '"') {
      (out += '\\') += character;
    } else if (character == '\r') {
      out += "\\r";
    } else if (character == '\n') {
      out += "\\n";
    } else if (character == '\t') {
      out += "\\t";
    } else if (length == 0 || IsControl(character)) {
      const auto byte = static_cast<unsigned char>(character);
      ((out += "\\x") += kHex[byte >> 4]) += kHex[byte & 15];
    } else {
      out += text.substr(0, length);
    }
    text.remove_prefix(std::max<std::size_t>(length, 1));
  }
  return out += '"';
}

/// Text that reads back as itself without quotes.
bool IsBare(std::string_view text) {
  return IsText(text) && text.find('\t') == std::string_view::npos && TrimBlanks(text) == text &&
         !text.starts_with('"');
}

std::optional<int> HexDigit(char character) {
  if (character >= '0' && character <= '9') return character - '0';
  if (character >= 'A' && character <= 'F') return character - 'A' + 10;
  if (character >= 'a' && character <= 'f') return character - 'a' + 10;
  return std::nullopt;
}

/// Takes one escape, behind its backslash, off the front of `rest`.
std::optional<char> TakeEscape(std::string_view& rest) {
  if (rest.empty()) return std::nullopt;
  const char kind = rest[0];
  rest.remove_prefix(1);
  switch (kind) {
    case '\\':
    case '"':
      return kind;
    case 'r':
      return '\r';
    case 'n':
      return '\n';
    case 't':
      return '\t';
    case 'x':
      break;
    default:
      return std::nullopt;
  }
  if (rest.size() < 2) return std::nullopt;
  const auto high = HexDigit(rest[0]);
  const auto low = HexDigit(rest[1]);
  if (!high || !low) return std::nullopt;
  rest.remove_prefix(2);
  return static_cast<char>(*high * 16 + *low);
}

}  // namespace

bool IsText(std::string_view text) {
  while (!text.empty()) {
    const std::size_t length = CharacterLength(text);
    if (length == 0 || (IsControl(text[0]) && text[0] != '\t')) return false;
    text.remove_prefix(length);
  }
  return true;
}

std::string_view TrimBlanks(std::string_view text) {
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::string ValueText(std::string_view value) {
  return IsBare(value) ? std::string(value) : Quote(value);
}

std::string KeyText(std::string_view key) {
  const bool bare = IsBare(key) && !key.empty() && key.find('=') == std::string_view::npos &&
                    std::string_view("[;#").find(key[0]) == std::string_view::npos;
  return bare ? std::string(key) : Quote(key);
}

std::string HeaderText(std::string_view section) {
  const bool bare = IsBare(section) && section.find(']') == std::string_view::npos;
  return '[' + (bare ? std::string(section) : Quote(section)) + ']';
}

std::optional<std::string> TakeQuoted(std::string_view& rest) {
  std::string text;
  for (rest.remove_prefix(1); !rest.empty();) {
    const char character = rest[0];
    rest.remove_prefix(1);
    if (character == '"') return text;
    if (character != '\\') {
      text += character;
      continue;
    }
    const auto escaped = TakeEscape(rest);
    if (!escaped) return std::nullopt;
    text += *escaped;
  }
  return std::nullopt;
}

}  // namespace velk
