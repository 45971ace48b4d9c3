#pragma once

#include <QFont>
#include <QImage>
#include <QRect>
#include <array>
#include <string_view>
#include <vector>

namespace velk {

/// The characters of values as little pictures, each drawn once for a pair of colours: a value that changes with every
/// sample is put together by copying them. All digits are equally wide, so that nothing moves when one changes.
class DigitCells {
 public:
  /// The font counts at ratio 1, all places and sizes below in device pixels of this ratio. Forgets all pictures.
  void Use(const QFont& font, double ratio);

  int Height() const { return height_; }
  /// Width of a text; -1 where it holds a character that has no picture.
  int Width(std::string_view text) const;
  /// Writes a text into an image of 32 bits a pixel, its upper left corner at (x, y); both have to lie in it. Where
  /// `before`, as wide in each character, stands there already, only what differs is copied. Gives what was written to.
  QRect Write(QImage& image, int x, int y, std::string_view text, std::string_view before, QRgb ink, QRgb ground);
  /// Whether each character of two texts stands at the same place.
  bool InSamePlaces(std::string_view a, std::string_view b) const {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i)
      if (a[i] != b[i] && !(Has(a[i]) && Has(b[i]) && WidthOf(a[i]) == WidthOf(b[i]))) return false;
    return true;
  }

 private:
  static constexpr int kFirst = ' ', kLast = '~';
  /// The characters of a pair of colours, one behind the other, row by row: many pairs take turns with each sample, and
  /// what lies close together is read faster.
  struct Pictures {
    QRgb ink, ground;
    std::vector<QRgb> dots;
    std::array<std::size_t, kLast - kFirst + 1> begins{};  ///< in `dots`, plus 1; 0: not drawn yet
  };

  /// Up to, and without, the last.
  struct Rows {
    int first = 0, behind = 0;
  };

  int WidthOf(char character) const { return widths_[static_cast<std::size_t>(character - kFirst)]; }
  static bool Has(char character) { return character >= kFirst && character <= kLast; }
  Pictures& In(QRgb ink, QRgb ground);
  const QRgb* Picture(Pictures& pictures, char character);
  void Draw(Pictures& pictures, char character);

  QFont font_;
  int height_ = 0;
  int ascent_ = 0;
  Rows inked_;  ///< those that any character has touched: the others look alike under all of them
  std::array<int, kLast - kFirst + 1> widths_{};
  std::vector<Pictures> pictures_;
  std::size_t next_ = 0;  ///< the pair that comes next if the order is that of the last sample
};

}  // namespace velk
