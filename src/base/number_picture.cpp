#include "base/number_picture.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>

#include "base/number_text.h"

namespace velk {

namespace {

bool IsPlaceholder(char c) {
  return c == '0' || c == '#';
}

/// What a character of a section means.
enum class Mark { Literal, Digit, Point, Thousands, Percent, Exponent, End };

struct Token {
  Mark mark = Mark::End;
  std::string_view text;  ///< as it stands; of a literal only what is shown
};

/// Takes a section apart, a token at a time. What a character means hangs on what came before it: one point, one
/// exponent, a "," only between digits in front of the point.
class Tokens {
 public:
  explicit Tokens(std::string_view section) : rest_(section) {}

  Token Next() {
    if (rest_.empty()) return {};
    const char c = rest_.front();
    if (IsPlaceholder(c) && !exponentSeen_) {
      digitSeen_ = true;
      return Take(1, Mark::Digit);
    }
    if (c == '"') return Quoted();
    if (c == '\\' && rest_.size() > 1) {
      Take(1);
      return Take(1);
    }
    if (exponentSeen_) return Take(1);
    if (c == '.' && !pointSeen_) {
      pointSeen_ = true;
      return Take(1, Mark::Point);
    }
    if (c == ',' && digitSeen_ && !pointSeen_ && rest_.size() > 1 && IsPlaceholder(rest_[1])) {
      return Take(1, Mark::Thousands);
    }
    if (c == '%') return Take(1, Mark::Percent);
    if (const std::size_t length = ExponentLength()) {
      exponentSeen_ = true;
      return Take(length, Mark::Exponent);
    }
    return Take(1);
  }

 private:
  Token Take(std::size_t length, Mark mark = Mark::Literal) {
    const Token token{mark, rest_.substr(0, length)};
    rest_.remove_prefix(length);
    return token;
  }

  Token Quoted() {
    const std::size_t close = rest_.find('"', 1);
    const Token token{Mark::Literal, rest_.substr(1, close == std::string_view::npos ? close : close - 1)};
    rest_.remove_prefix(close == std::string_view::npos ? rest_.size() : close + 1);
    return token;
  }

  /// Of "e+00" and its like at the front, behind a digit; else 0.
  std::size_t ExponentLength() const {
    if (!digitSeen_ || rest_.size() < 3 || (rest_[0] != 'e' && rest_[0] != 'E')) return 0;
    if ((rest_[1] != '+' && rest_[1] != '-') || !IsPlaceholder(rest_[2])) return 0;
    return static_cast<std::size_t>(std::find_if_not(rest_.begin() + 2, rest_.end(), IsPlaceholder) - rest_.begin());
  }

  std::string_view rest_;
  bool digitSeen_ = false;
  bool pointSeen_ = false;
  bool exponentSeen_ = false;
};

/// What a section asks for as a whole.
struct Layout {
  int whole = 0;          ///< placeholders in front of the point
  int wholeShown = 0;     ///< of these, digits that are always there
  int fraction = 0;       ///< placeholders behind the point
  int fractionShown = 0;  ///< of these, digits that are always there
  int percents = 0;
  bool thousands = false;
  bool exponent = false;

  bool ShowsNumber() const { return whole + fraction > 0; }
};

Layout LayoutOf(std::string_view section) {
  Layout layout;
  bool behindPoint = false;
  Tokens tokens(section);
  for (Token token = tokens.Next(); token.mark != Mark::End; token = tokens.Next()) {
    switch (token.mark) {
      case Mark::Digit:
        if (behindPoint) {
          ++layout.fraction;
          if (token.text == "0") layout.fractionShown = layout.fraction;
        } else {
          ++layout.whole;
          if (token.text == "0" || layout.wholeShown > 0) ++layout.wholeShown;
        }
        break;
      case Mark::Point:
        behindPoint = true;
        break;
      case Mark::Thousands:
        layout.thousands = true;
        break;
      case Mark::Percent:
        ++layout.percents;
        break;
      case Mark::Exponent:
        layout.exponent = true;
        break;
      case Mark::Literal:
      case Mark::End:
        break;
    }
  }
  return layout;
}

/// A number cut and rounded to what a layout shows: `number` x 10^`exponent`.
struct Shown {
  Decimal number;
  int exponent = 0;
};

Shown Fit(Decimal number, const Layout& layout) {
  if (!layout.ShowsNumber() || number.IsZero()) return {number};
  number.exponent += 2 * layout.percents;
  if (!layout.exponent) {
    number.RoundTo(-layout.fraction);
    return {number};
  }
  number.RoundTo(number.exponent + 1 - layout.whole - layout.fraction);
  const int exponent = number.exponent + 1 - layout.whole;
  number.exponent -= exponent;
  return {number, exponent};
}

/// Writes the digits of one number into the places of a section.
class Writer {
 public:
  Writer(std::string& out, const Layout& layout, const Shown& shown)
      : out_(out), layout_(layout), shown_(shown), wholeLeft_(layout.whole) {}

  void Write(std::string_view section) {
    Tokens tokens(section);
    for (Token token = tokens.Next(); token.mark != Mark::End; token = tokens.Next()) {
      switch (token.mark) {
        case Mark::Digit:
          WriteDigit();
          break;
        case Mark::Point:
          WritePoint();
          break;
        case Mark::Exponent:
          WriteExponent(token.text);
          break;
        case Mark::Literal:
        case Mark::Percent:
          out_ += token.text;
          break;
        case Mark::Thousands:
        case Mark::End:
          break;
      }
    }
  }

 private:
  /// The first place in front of the point also takes all digits that have no place of their own.
  void WriteDigit() {
    if (behindPoint_) {
      --fractionPower_;
      if (-fractionPower_ <= FractionDigits()) out_ += shown_.number.DigitAt(fractionPower_);
      return;
    }
    const int lowest = --wholeLeft_;
    const int highest = lowest + 1 == layout_.whole ? std::max(WholeDigits() - 1, lowest) : lowest;
    for (int power = highest; power >= lowest; --power) {
      if (power >= WholeDigits()) continue;
      out_ += shown_.number.DigitAt(power);
      if (layout_.thousands && power > 0 && power % 3 == 0) out_ += ',';
    }
  }

  /// Without a place in front of the point the whole digits stand before it all the same.
  void WritePoint() {
    if (layout_.whole == 0 && layout_.ShowsNumber()) {
      for (int power = WholeDigits() - 1; power >= 0; --power) out_ += shown_.number.DigitAt(power);
    }
    out_ += '.';
    behindPoint_ = true;
  }

  void WriteExponent(std::string_view form) {
    char digits[8];
    const auto end = std::to_chars(digits, std::end(digits), std::abs(shown_.exponent)).ptr;
    const auto least = std::count(form.begin(), form.end(), '0');
    out_ += form[0];
    if (shown_.exponent < 0) {
      out_ += '-';
    } else if (form[1] == '+') {
      out_ += '+';
    }
    for (auto padding = least - (end - digits); padding > 0; --padding) out_ += '0';
    out_.append(digits, end);
  }

  int WholeDigits() const {
    const int present = shown_.number.IsZero() ? 0 : shown_.number.exponent + 1;
    return std::max(present, layout_.wholeShown);
  }

  int FractionDigits() const {
    const int present = shown_.number.IsZero() ? 0 : shown_.number.count - 1 - shown_.number.exponent;
    return std::max(present, layout_.fractionShown);
  }

  std::string& out_;
  const Layout& layout_;
  const Shown& shown_;
  int wholeLeft_;
  int fractionPower_ = 0;
  bool behindPoint_ = false;
};

/// Cuts the first section off `picture`.
std::string_view TakeSection(std::string_view& picture) {
  bool quoted = false;
  std::size_t at = 0;
  for (; at < picture.size() && (quoted || picture[at] != ';'); ++at) {
    if (picture[at] == '"') quoted = !quoted;
    if (picture[at] == '\\' && !quoted) ++at;
  }
  const std::string_view section = picture.substr(0, at);
  picture.remove_prefix(std::min(picture.size(), at + 1));
  return section;
}

/// What nearly all pictures are: digits, and digits behind a point. Read at a glance, since a value's label is written
/// with each sample. Gives false, and writes nothing, for any other picture, and for a number of very many digits.
bool WritePlain(std::string& out, Decimal number, std::string_view picture) {
  Layout layout;
  std::size_t at = 0;
  for (; at < picture.size() && IsPlaceholder(picture[at]); ++at)
    if (picture[at] == '0' || layout.wholeShown > 0) ++layout.wholeShown;
  layout.whole = static_cast<int>(at);
  const bool hasPoint = at < picture.size() && picture[at] == '.';
  if (hasPoint) ++at;
  for (; at < picture.size() && IsPlaceholder(picture[at]); ++at) {
    ++layout.fraction;
    if (picture[at] == '0') layout.fractionShown = layout.fraction;
  }
  if (at < picture.size() || !layout.ShowsNumber()) return false;

  if (!number.IsZero()) number.RoundTo(-layout.fraction);
  const bool isZero = number.IsZero();
  const int whole = std::max(isZero ? 0 : number.exponent + 1, layout.wholeShown);
  const int fraction = std::max(isZero ? 0 : number.count - 1 - number.exponent, layout.fractionShown);
  char text[48];
  if (whole + fraction + 2 > static_cast<int>(sizeof text)) return false;
  char* end = text;
  if (number.negative && !isZero) *end++ = '-';
  // Of the digits, counted from the first that isn't 0: where the text begins, where the point stands, where it ends.
  const auto write = [&](int from, int to) {
    for (; from < to; ++from) *end++ = from >= 0 && from < number.count ? number.digits[from] : '0';
  };
  const int point = number.exponent + 1;
  write(point - whole, point);
  if (hasPoint) *end++ = '.';
  write(point, point + fraction);
  out.append(text, end);
  return true;
}

void WriteSection(std::string& out, const Decimal& number, std::string_view section) {
  const Layout layout = LayoutOf(section);
  const Shown shown = Fit(number, layout);
  if (number.negative && layout.ShowsNumber() && !shown.number.IsZero()) out += '-';
  Writer(out, layout, shown).Write(section);
}

bool RoundsToZero(const Decimal& number, std::string_view section) {
  return Fit(number, LayoutOf(section)).number.IsZero();
}

void WriteSections(std::string& out, Decimal number, std::string_view picture) {
  const std::string_view positive = TakeSection(picture);
  if (picture.empty()) return WriteSection(out, number, positive);
  const std::string_view negative = TakeSection(picture);
  const std::string_view zero = TakeSection(picture);
  const bool ownNegative = number.negative && !negative.empty();
  const std::string_view section = ownNegative ? negative : positive;
  if (RoundsToZero(number, section)) return WriteSection(out, Decimal{}, zero.empty() ? positive : zero);
  if (ownNegative) number.negative = false;
  WriteSection(out, number, section);
}

}  // namespace

void FormatTo(std::string& out, double value, std::string_view picture) {
  if (!std::isfinite(value) || picture.empty()) {
    out += NumberText(value);
  } else {
    const Decimal number = ToDecimal(value, Decimal::kDigits64);
    if (!WritePlain(out, number, picture)) WriteSections(out, number, picture);
  }
}

std::string Format(double value, std::string_view picture) {
  std::string out;
  FormatTo(out, value, picture);
  return out;
}

std::string Format(float value, std::string_view picture) {
  return Format(static_cast<double>(value), picture);
}

}  // namespace velk
