#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace velk {

/// A font by its family and its size in points of 1/72 inch.
struct TextFont {
  std::string family;
  double points = 10;
  bool bold = false;
};

/// A picture in memory to be drawn: pixels of 0xffrrggbb, row by row from the top.
struct PictureRows {
  const std::uint32_t* pixels = nullptr;
  std::size_t stride = 0;  ///< pixels from one row to the next
  int width = 0;
  int height = 0;
};

/// Something to draw on. Places and sizes are in logical units, which whoever makes the surface chooses (see units.h):
/// twips on a chart, millimetres or points on a page. y runs down; whatever lies outside is cut off, and what has a
/// place that is no number is not drawn. Colours are 0x00bbggrr.
class Surface {
 public:
  virtual ~Surface() = default;

  virtual double Width() const = 0;
  virtual double Height() const = 0;

  /// Width of the lines and circles that follow, in pixels of 96 dots an inch; a device draws one of its dots at least.
  virtual void SetPenWidth(double pixels) = 0;
  virtual void Line(double x1, double y1, double x2, double y2, std::int32_t colour) = 0;
  virtual void Circle(double x, double y, double radius, std::int32_t colour) = 0;
  /// Fills a rectangle, without an edge of its own; (x, y) is its upper left corner.
  virtual void Fill(double x, double y, double width, double height, std::int32_t colour) = 0;
  /// Draws a picture into a rectangle, stretched to it.
  virtual void Picture(double x, double y, double width, double height, const PictureRows& picture) = 0;

  /// The font of the texts that follow.
  virtual void SetFont(const TextFont& font) = 0;
  /// Prints a line of text; (x, y) is its upper left corner.
  virtual void Print(double x, double y, std::string_view text, std::int32_t colour) = 0;
  virtual double TextWidth(std::string_view text) const = 0;
  virtual double TextHeight(std::string_view text) const = 0;
};

}  // namespace velk
