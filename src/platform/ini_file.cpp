#include "platform/ini_file.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace velk {

namespace {

constexpr std::string_view kFirstLine = "; VELK settings. Edit only while VELK is not running; leave the last line.";
constexpr std::string_view kEndLine = "; End of settings.";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
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

/// Valid UTF-8 without control characters, tabs aside.
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

/// Takes a quoted text off the front of `rest`; nothing where its quotes or escapes are wrong.
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

/// Takes a name off the front of `rest` together with the `end` behind it.
std::optional<std::string> TakeName(std::string_view& rest, char end) {
  std::optional<std::string> name;
  if (rest.starts_with('"')) {
    name = TakeQuoted(rest);
    rest = TrimBlanks(rest);
    if (!name || !rest.starts_with(end)) return std::nullopt;
  } else {
    const std::size_t at = rest.find(end);
    if (at == std::string_view::npos) return std::nullopt;
    name = TrimBlanks(rest.substr(0, at));
    rest.remove_prefix(at);
  }
  rest.remove_prefix(1);
  return name;
}

/// "[name]" and nothing else.
std::optional<std::string> ReadHeader(std::string_view line) {
  line.remove_prefix(1);
  line = TrimBlanks(line);
  auto name = TakeName(line, ']');
  if (!TrimBlanks(line).empty()) return std::nullopt;
  return name;
}

/// "key=value".
std::optional<std::pair<std::string, std::string>> ReadKey(std::string_view line) {
  const bool quotedKey = line.starts_with('"');
  auto key = TakeName(line, '=');
  if (!key || (key->empty() && !quotedKey)) return std::nullopt;
  line = TrimBlanks(line);
  if (!line.starts_with('"')) return std::pair(std::move(*key), std::string(line));
  auto value = TakeQuoted(line);
  if (!value || !TrimBlanks(line).empty()) return std::nullopt;
  return std::pair(std::move(*key), std::move(*value));
}

}  // namespace

struct IniFile::Reading {
  int lineNumber = 0;
  bool lostSection = false;            ///< under a header that could not be read
  std::optional<std::size_t> section;  ///< none ahead of the first header
  bool ours = false;
  bool ended = false;
};

IniFile::IniFile(std::string_view bytes) {
  if (bytes.starts_with(kByteOrderMark)) bytes.remove_prefix(kByteOrderMark.size());
  Reading reading;
  while (!bytes.empty()) {
    ++reading.lineNumber;
    const std::size_t length = bytes.find('\n');
    const std::string_view line = bytes.substr(0, length);
    if (length == std::string_view::npos) {
      // A last line without an end may be half a value.
      if (line == kEndLine) {
        reading.ended = true;
      } else {
        badLines_.push_back(reading.lineNumber);
      }
      break;
    }
    ReadLine(line, reading);
    bytes.remove_prefix(length + 1);
  }
  cutOff_ = reading.ours && !reading.ended;
}

void IniFile::ReadLine(std::string_view raw, Reading& reading) {
  std::string_view line = raw.ends_with('\r') ? raw.substr(0, raw.size() - 1) : raw;
  if (line == kEndLine) {
    reading.ended = true;
    return;
  }
  if (reading.lineNumber == 1 && line == kFirstLine) {
    reading.ours = true;
    return;
  }
  line = TrimBlanks(line);
  const auto lines = [&]() -> std::vector<Line>& {
    return reading.section ? sections_[*reading.section].lines : preamble_;
  };
  if (line.empty() || line[0] == ';' || line[0] == '#') {
    if (!reading.lostSection) lines().push_back({std::string(raw), false, {}, {}});
    return;
  }
  const bool isText = IsText(line);
  if (line[0] == '[') {
    const auto name = isText ? ReadHeader(line) : std::nullopt;
    reading.lostSection = !name;
    if (name) {
      reading.section = AddSection(*name, std::string(raw));
    } else {
      badLines_.push_back(reading.lineNumber);
    }
    return;
  }
  auto entry = isText && reading.section && !reading.lostSection ? ReadKey(line) : std::nullopt;
  if (entry) {
    lines().push_back({std::string(raw), true, std::move(entry->first), std::move(entry->second)});
  } else {
    badLines_.push_back(reading.lineNumber);
  }
}

const IniFile::Section* IniFile::FindSection(std::string_view name) const {
  const auto found = indexOf_.find(name);
  return found == indexOf_.end() ? nullptr : &sections_[found->second];
}

std::size_t IniFile::AddSection(std::string_view name, std::string header) {
  const auto [entry, isNew] = indexOf_.emplace(name, sections_.size());
  if (isNew) sections_.push_back({std::move(header), {}});
  return entry->second;
}

std::string IniFile::Text() const {
  std::string text(kFirstLine);
  text += '\n';
  const auto append = [&](std::string_view raw) { (text += raw) += '\n'; };
  for (const Line& line : preamble_) append(line.raw);
  for (const Section& section : sections_) {
    append(section.header);
    for (const Line& line : section.lines) append(line.raw);
  }
  append(kEndLine);
  return text;
}

const std::string* IniFile::Find(std::string_view name, std::string_view key) const {
  const Section* section = FindSection(name);
  if (!section) return nullptr;
  const auto isKey = [&](const Line& line) { return line.hasKey && line.key == key; };
  const auto line = std::find_if(section->lines.rbegin(), section->lines.rend(), isKey);
  return line == section->lines.rend() ? nullptr : &line->value;
}

bool IniFile::Set(std::string_view section, std::string_view key, std::string_view value) {
  const std::string* present = Find(section, key);
  if (present && *present == value) return false;
  // A new section has a blank line ahead of it.
  const std::size_t index =
      FindSection(section) ? indexOf_.find(section)->second : AddSection(section, '\n' + HeaderText(section));
  std::vector<Line>& lines = sections_[index].lines;
  Line line{KeyText(key) + '=' + ValueText(value), true, std::string(key), std::string(value)};
  if (present) {
    const auto isKey = [&](const Line& other) { return other.hasKey && other.key == key; };
    *std::find_if(lines.rbegin(), lines.rend(), isKey) = std::move(line);
  } else {
    // Behind the last key, so that comments ahead of the next section stay there.
    const auto hasKey = [](const Line& other) { return other.hasKey; };
    lines.insert(std::find_if(lines.rbegin(), lines.rend(), hasKey).base(), std::move(line));
  }
  return true;
}

bool IniFile::Delete(std::string_view section) {
  const auto found = indexOf_.find(section);
  if (found == indexOf_.end()) return false;
  const std::size_t index = found->second;
  sections_.erase(sections_.begin() + static_cast<std::ptrdiff_t>(index));
  indexOf_.erase(found);
  for (auto& [name, at] : indexOf_) {
    if (at > index) --at;
  }
  return true;
}

bool IniFile::IsEmpty() const {
  return sections_.empty() && preamble_.empty();
}

}  // namespace velk
