#include "instruments/reading/heard_lines.h"

#include <utility>

#include "instruments/reading/time_check.h"
#include "instruments/texts.h"

namespace velk {

namespace {

/// An instrument at another speed sends bytes without an end.
constexpr std::size_t kLongest = 2000;

std::string Printable(std::string_view line) {
  constexpr std::string_view kHex = "0123456789ABCDEF";
  std::string shown;
  for (const char character : line) {
    const auto byte = static_cast<unsigned char>(character);
    if (byte >= 0x20 && byte < 0x7F)
      shown += character;
    else
      ((shown += "\\x") += kHex[byte >> 4]) += kHex[byte & 15];
  }
  return shown;
}

}  // namespace

OperatorText ValueCountFault(int sent, int expected) {
  return std::to_string(sent) + (sent == 1 ? text::OneValueWhere : text::ValuesWhere) + std::to_string(expected) +
         (expected == 1 ? text::IsExpected : text::AreExpected);
}

void HeardLines::Append(std::string_view bytes) {
  for (const char byte : bytes) {
    if (byte == '\r' || byte == '\n') {
      EndLine();
    } else {
      if (unfinished_.size() >= kLongest) unfinished_.clear();
      unfinished_ += byte;
    }
  }
}

void HeardLines::EndLine() {
  if (unfinished_.empty()) return;
  last_ = std::exchange(unfinished_, {});
  lines_.push_back(Printable(last_));
  if (lines_.size() > kKept) lines_.pop_front();
}

int HeardLines::ValuesOfLast(std::string_view delimiter) const {
  return CountDelimiters(last_, delimiter);
}

OperatorText HeardLines::Verdict(std::string_view delimiter, int expected) const {
  if (lines_.empty()) return HasBytes() ? text::HearsNoLineEnd : text::ListensYet;
  const int sent = ValuesOfLast(delimiter);
  if (sent != expected) return ValueCountFault(sent, expected);
  return std::to_string(sent) + (sent == 1 ? text::OneValueOfLine : text::ValuesOfLine);
}

}  // namespace velk
