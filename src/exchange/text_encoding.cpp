#include "exchange/text_encoding.h"

#include <array>
#include <cstdint>
#include <vector>

namespace velk {

namespace {

constexpr char16_t kUnknown = 0xFFFD;

// What the codes from 128 on stand for.
constexpr std::array<char16_t, 64> kCyrillicTo191 = {
    0x0402, 0x0403, 0x201A, 0x0453, 0x201E, 0x2026, 0x2020, 0x2021, 0x20AC, 0x2030, 0x0409, 0x2039,   0x040A,
    0x040C, 0x040B, 0x040F, 0x0452, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014, kUnknown, 0x2122,
    0x0459, 0x203A, 0x045A, 0x045C, 0x045B, 0x045F, 0x00A0, 0x040E, 0x045E, 0x0408, 0x00A4, 0x0490,   0x00A6,
    0x00A7, 0x0401, 0x00A9, 0x0404, 0x00AB, 0x00AC, 0x00AD, 0x00AE, 0x0407, 0x00B0, 0x00B1, 0x0406,   0x0456,
    0x0491, 0x00B5, 0x00B6, 0x00B7, 0x0451, 0x2116, 0x0454, 0x00BB, 0x0458, 0x0405, 0x0455, 0x0457};
constexpr std::array<char16_t, 32> kWesternTo159 = {
    0x20AC, kUnknown, 0x201A,   0x0192, 0x201E,   0x2026,   0x2020, 0x2021,   0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152,   kUnknown, 0x017D, kUnknown, kUnknown, 0x2018, 0x2019,   0x201C, 0x201D, 0x2022,
    0x2013, 0x2014,   0x02DC,   0x2122, 0x0161,   0x203A,   0x0153, kUnknown, 0x017E, 0x0178};

char16_t CodePoint(unsigned char byte, CodePage page) {
  if (byte < 0x80) return byte;
  const std::size_t place = byte - 0x80U;
  if (page == CodePage::Cyrillic)
    return place < kCyrillicTo191.size() ? kCyrillicTo191[place] : static_cast<char16_t>(0x0410 + byte - 0xC0);
  return place < kWesternTo159.size() ? kWesternTo159[place] : byte;
}

void AppendUtf8(std::string& to, char32_t point) {
  const auto put = [&](char32_t byte) { to += static_cast<char>(static_cast<unsigned char>(byte)); };
  if (point < 0x80) return put(point);
  if (point < 0x800) {
    put(0xC0 | point >> 6);
  } else if (point < 0x10000) {
    put(0xE0 | point >> 12);
    put(0x80 | (point >> 6 & 0x3F));
  } else {
    put(0xF0 | point >> 18);
    put(0x80 | (point >> 12 & 0x3F));
    put(0x80 | (point >> 6 & 0x3F));
  }
  put(0x80 | (point & 0x3F));
}

/// Length of the sound sequence at the front of a text that begins beyond ASCII; 0 where there is none.
std::size_t SequenceLength(std::string_view text) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned char lead = byte(0);
  const std::size_t length = lead >= 0xC2 && lead < 0xE0 ? 2 : lead >= 0xE0 && lead < 0xF0 ? 3 : lead < 0xF5 ? 4 : 0;
  if (lead < 0xC2 || length == 0 || text.size() < length) return 0;
  for (std::size_t i = 1; i < length; ++i)
    if ((byte(i) & 0xC0) != 0x80) return 0;
  // Overlong forms, halves of surrogates, and what lies beyond the last character.
  if (lead == 0xE0 && byte(1) < 0xA0) return 0;
  if (lead == 0xED && byte(1) >= 0xA0) return 0;
  if (lead == 0xF0 && byte(1) < 0x90) return 0;
  if (lead == 0xF4 && byte(1) >= 0x90) return 0;
  return length;
}

/// Two bytes a unit, from one piece of the file to the next.
class Utf16Reader {
 public:
  explicit Utf16Reader(bool bigEndian) : bigEndian_(bigEndian) {}

  /// A piece of an even number of bytes as UTF-8; half of a character waits for the next piece.
  std::string Read(std::string_view bytes) {
    std::string text;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
      const auto first = static_cast<unsigned char>(bytes[i]), second = static_cast<unsigned char>(bytes[i + 1]);
      Put(text, static_cast<char16_t>(bigEndian_ ? first << 8 | second : second << 8 | first));
    }
    return text;
  }

 private:
  void Put(std::string& text, char16_t unit) {
    const bool isLow = unit >= 0xDC00 && unit < 0xE000;
    if (high_ != 0 && isLow) {
      AppendUtf8(text, 0x10000 + (static_cast<char32_t>(high_ - 0xD800) << 10) + (unit - 0xDC00));
      high_ = 0;
      return;
    }
    if (high_ != 0) AppendUtf8(text, kUnknown);
    high_ = unit >= 0xD800 && unit < 0xDC00 ? unit : char16_t{0};
    if (high_ == 0) AppendUtf8(text, isLow ? kUnknown : unit);
  }

  bool bigEndian_;
  char16_t high_ = 0;
};

void CopyAsUtf8(InputFile& file, bool bigEndian, const std::function<void(std::int64_t)>& step) {
  constexpr std::size_t kPiece = 256 * 1024;
  std::vector<char> piece(kPiece);
  Utf16Reader reader(bigEndian);
  file.BeginCopy();
  std::int64_t place = 2;
  for (std::size_t got = kPiece; got == kPiece; place += static_cast<std::int64_t>(got)) {
    got = file.Read(place, piece.data(), piece.size());
    file.Append(reader.Read({piece.data(), got}));
    step(place);
  }
  file.UseCopy();
}

}  // namespace

CodePage CodePageOf(const std::string& language) {
  return language == "Russian" ? CodePage::Cyrillic : CodePage::Western;
}

bool IsUtf8(std::string_view bytes) {
  while (!bytes.empty()) {
    const std::size_t length = static_cast<unsigned char>(bytes[0]) < 0x80 ? 1 : SequenceLength(bytes);
    if (length == 0) return false;
    bytes.remove_prefix(length);
  }
  return true;
}

std::string ToUtf8(std::string_view bytes, CodePage page) {
  if (IsUtf8(bytes)) return std::string(bytes);
  std::string text;
  for (const char byte : bytes) AppendUtf8(text, CodePoint(static_cast<unsigned char>(byte), page));
  return text;
}

std::int64_t BeginText(InputFile& file, const std::function<void(std::int64_t done)>& step) {
  std::array<char, 3> front{};
  const std::string_view mark(front.data(), file.Read(0, front.data(), front.size()));
  if (mark.starts_with("\xFF\xFE") || mark.starts_with("\xFE\xFF")) {
    CopyAsUtf8(file, mark[0] == '\xFE', step);
    return 0;
  }
  return mark == "\xEF\xBB\xBF" ? 3 : 0;
}

}  // namespace velk
