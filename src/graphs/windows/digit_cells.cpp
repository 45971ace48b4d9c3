#include "graphs/windows/digit_cells.h"

#include <QFontInfo>
#include <QFontMetricsF>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

namespace velk {

namespace {

/// Colours that take turns; what is beyond begins anew.
constexpr std::size_t kMostPairs = 160;

/// Copies a picture's rows of so many dots, one behind the other, into an image of `stride` bytes a row.
using CopyRows = void (*)(const QRgb* from, uchar* to, int rows, std::size_t stride);

/// A known number of dots is copied in place, which for so few is several times faster than by a call.
template <std::size_t width>
void CopyRowsOf(const QRgb* from, uchar* to, int rows, std::size_t stride) {
  for (int row = 0; row < rows; ++row, from += width, to += stride) std::memcpy(to, from, 4 * width);
}

template <std::size_t... widths>
constexpr auto CopiesOf(std::index_sequence<widths...>) {
  return std::array<CopyRows, sizeof...(widths)>{&CopyRowsOf<widths>...};
}

/// By the width; digits of the largest letters at a ratio of 2 are wider.
constexpr auto kCopies = CopiesOf(std::make_index_sequence<25>());

void CopyPicture(const QRgb* from, int width, int rows, uchar* to, std::size_t stride) {
  const auto dots = static_cast<std::size_t>(width);
  if (dots < kCopies.size()) return kCopies[dots](from, to, rows, stride);
  for (int row = 0; row < rows; ++row, from += dots, to += stride) std::memcpy(to, from, 4 * dots);
}

}  // namespace

void DigitCells::Use(const QFont& font, double ratio) {
  font_ = font;
  font_.setPixelSize(std::max(1, static_cast<int>(std::lround(QFontInfo(font).pixelSize() * ratio))));
  pictures_.clear();
  inked_ = {};
  const QFontMetricsF metrics(font_);
  height_ = static_cast<int>(std::ceil(metrics.height()));
  ascent_ = static_cast<int>(std::ceil(metrics.ascent()));
  const auto width = [&](char character) {
    return static_cast<int>(std::lround(metrics.horizontalAdvance(QLatin1Char(character))));
  };
  for (int c = kFirst; c <= kLast; ++c) widths_[static_cast<std::size_t>(c - kFirst)] = width(static_cast<char>(c));
  int widest = 0;
  for (char digit = '0'; digit <= '9'; ++digit) widest = std::max(widest, width(digit));
  for (char digit = '0'; digit <= '9'; ++digit) widths_[static_cast<std::size_t>(digit - kFirst)] = widest;
}

int DigitCells::Width(std::string_view text) const {
  int width = 0;
  for (const char character : text) {
    if (!Has(character)) return -1;
    width += WidthOf(character);
  }
  return width;
}

QRect DigitCells::Write(QImage& image, int x, int y, std::string_view text, std::string_view before, QRgb ink,
                        QRgb ground) {
  Pictures& pictures = In(ink, ground);
  const auto stride = static_cast<std::size_t>(image.bytesPerLine());
  uchar* const top = image.bits() + static_cast<std::size_t>(y) * stride;
  Rows rows{0, height_};
  int left = x, behind = x;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const int width = WidthOf(text[i]);
    if (i >= before.size() || before[i] != text[i]) {
      const QRgb* const picture = Picture(pictures, text[i]);
      if (!before.empty()) rows = inked_;
      CopyPicture(picture + rows.first * width, width, rows.behind - rows.first,
                  top + static_cast<std::size_t>(rows.first) * stride + 4 * static_cast<std::size_t>(x), stride);
      if (left == behind) left = x;
      behind = x + width;
    }
    x += width;
  }
  return {left, y + rows.first, behind - left, rows.behind - rows.first};
}

DigitCells::Pictures& DigitCells::In(QRgb ink, QRgb ground) {
  for (std::size_t tried = 0; tried < pictures_.size(); ++tried, ++next_) {
    if (next_ >= pictures_.size()) next_ = 0;
    Pictures& pictures = pictures_[next_];
    if (pictures.ink != ink || pictures.ground != ground) continue;
    ++next_;
    return pictures;
  }
  if (pictures_.size() >= kMostPairs) pictures_.clear();
  Pictures& pictures = pictures_.emplace_back(Pictures{ink, ground, {}, {}});
  pictures.dots.reserve(static_cast<std::size_t>(WidthOf('0') * height_) * 12);  // with a point and a sign
  for (char digit = '0'; digit <= '9'; ++digit) Draw(pictures, digit);           // each is needed soon
  return pictures;
}

const QRgb* DigitCells::Picture(Pictures& pictures, char character) {
  const std::size_t& begin = pictures.begins[static_cast<std::size_t>(character - kFirst)];
  if (begin == 0) Draw(pictures, character);
  return pictures.dots.data() + begin - 1;
}

void DigitCells::Draw(Pictures& pictures, char character) {
  const auto index = static_cast<std::size_t>(character - kFirst);
  const int width = widths_[index];
  QImage picture(std::max(width, 1), height_, QImage::Format_RGB32);
  picture.fill(pictures.ground);
  QPainter painter(&picture);
  painter.setFont(font_);
  painter.setPen(QColor(pictures.ink));
  const double own = QFontMetricsF(font_).horizontalAdvance(QLatin1Char(character));
  painter.drawText(QPointF((width - own) / 2, ascent_), QString(QLatin1Char(character)));
  painter.end();
  pictures.begins[index] = pictures.dots.size() + 1;
  for (int row = 0; row < height_; ++row) {
    const auto* const from = reinterpret_cast<const QRgb*>(picture.constScanLine(row));
    pictures.dots.insert(pictures.dots.end(), from, from + width);
    if (std::all_of(from, from + width, [&](QRgb dot) { return dot == pictures.ground; })) continue;
    inked_ = inked_.first == inked_.behind ? Rows{row, row + 1}
                                           : Rows{std::min(inked_.first, row), std::max(inked_.behind, row + 1)};
  }
}

}  // namespace velk
