#include "platform/settings/ini_file.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "base/crc32.h"
#include "platform/settings/ini_quoting.h"

namespace velk {

namespace {

constexpr std::string_view kFirstLine = "; VELK settings. Edit only while VELK is not running; leave the last line.";
constexpr std::string_view kEndLine = "; End of settings.";
/// Lines of a usual section, a parameter's: its keys and the blank line ahead of the next one.
constexpr std::size_t kUsualLines = 18;
/// Stands behind kEndLine, so that it can't be lost without a word.
constexpr std::string_view kChecks = "Checks, to be taken out after an edit by hand:";
constexpr std::size_t kCheckDigits = 8;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

std::string CheckText(std::uint32_t check) {
  constexpr std::string_view kHex = "0123456789ABCDEF";
  std::string text(kCheckDigits, '0');
  for (std::size_t i = kCheckDigits; i > 0; check >>= 4) text[--i] = kHex[check & 15];
  return text;
}

/// The checks in what stands behind kEndLine. Words that are none match no section.
std::vector<std::string> ReadChecks(std::string_view text) {
  std::vector<std::string> checks;
  if (!text.starts_with(kChecks)) return checks;
  text.remove_prefix(kChecks.size());
  while (!(text = TrimBlanks(text)).empty()) {
    const std::string_view word = text.substr(0, text.find(' '));
    checks.emplace_back(word);
    text.remove_prefix(word.size());
  }
  return checks;
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
  std::optional<std::vector<std::string>> checks;
};

IniFile::IniFile(std::string_view bytes) {
  if (bytes.starts_with(kByteOrderMark)) bytes.remove_prefix(kByteOrderMark.size());
  Reading reading;
  while (!bytes.empty()) {
    ++reading.lineNumber;
    const std::size_t length = bytes.find('\n');
    const std::string_view line = bytes.substr(0, length);
    if (length == std::string_view::npos) {
      ReadOpenLine(line, reading);
      break;
    }
    ReadLine(line, reading);
    bytes.remove_prefix(length + 1);
  }
  cutOff_ = reading.ours && !reading.ended;
  CompareChecks(reading);
}

void IniFile::ReadOpenLine(std::string_view line, Reading& reading) {
  if (ReadEndLine(line, reading)) {
    lastLineOpen_ = !reading.checks;
    return;
  }
  const bool beginsOurs = reading.lineNumber == 1 && kFirstLine.starts_with(line);
  if (beginsOurs || (reading.ours && !reading.ended)) {
    badLines_.push_back(reading.lineNumber);
    return;
  }
  const std::size_t badBefore = badLines_.size();
  ReadLine(line, reading);
  lastLineOpen_ = badLines_.size() == badBefore;
}

void IniFile::CompareChecks(const Reading& reading) {
  if (!reading.checks) return;
  std::vector<std::string> checks = *reading.checks;
  const auto count = static_cast<int>(checks.size());
  std::sort(checks.begin(), checks.end());
  for (const auto& [name, check] : ChecksOfSections()) {
    if (!std::binary_search(checks.begin(), checks.end(), check)) changedSections_.emplace_back(name);
  }
  missingSections_ = std::max(0, count - static_cast<int>(sections_.size()));
}

std::vector<std::pair<std::string_view, std::string>> IniFile::ChecksOfSections() const {
  constexpr std::string_view kEnd("\0", 1);
  std::vector<std::pair<std::string_view, std::string>> checks(sections_.size());
  for (const auto& [name, at] : indexOf_) {
    Crc32 crc;
    crc.Add(name);
    crc.Add(kEnd);
    for (const Line& line : sections_[at].lines) {
      if (!line.hasKey) continue;
      for (const std::string_view part : {std::string_view(line.key), kEnd, std::string_view(line.value), kEnd}) {
        crc.Add(part);
      }
    }
    checks[at] = {name, CheckText(crc.Value())};
  }
  return checks;
}

bool IniFile::ReadEndLine(std::string_view line, Reading& reading) {
  if (!line.starts_with(kEndLine)) return false;
  reading.ended = true;
  line = TrimBlanks(line.substr(kEndLine.size()));
  if (!line.empty()) reading.checks = ReadChecks(line);
  return true;
}

void IniFile::ReadLine(std::string_view raw, Reading& reading) {
  std::string_view line = raw.ends_with('\r') ? raw.substr(0, raw.size() - 1) : raw;
  if (ReadEndLine(line, reading)) return;
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
  if (isNew) {
    sections_.push_back({std::move(header), {}});
    sections_.back().lines.reserve(kUsualLines);
  }
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
  text += kEndLine;
  if (!sections_.empty()) (text += ' ') += kChecks;
  for (const auto& [name, check] : ChecksOfSections()) (text += ' ') += check;
  return text += '\n';
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

void IniFile::TakeOver(const IniFile& other, std::string_view section) {
  Delete(section);
  const Section* const taken = other.FindSection(section);
  if (taken == nullptr) return;
  sections_[AddSection(section, taken->header)].lines = taken->lines;
}

bool IniFile::IsEmpty() const {
  return sections_.empty() && preamble_.empty();
}

}  // namespace velk
