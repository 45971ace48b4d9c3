#pragma once

#include <cstdint>
#include <string_view>

namespace velk {

/// A retained drawing surface: it keeps what was drawn. Places and sizes are in logical units (twips on the screen,
/// 1440 to the inch), y runs down; whatever lies outside is cut off. Colours are 0x00bbggrr.
class Surface {
 public:
  virtual ~Surface() = default;

  virtual double Width() const = 0;
  virtual double Height() const = 0;
  /// Height in device pixels.
  virtual int PixelHeight() const = 0;

  /// Clears the surface to white.
  virtual void Cls() = 0;
  /// Width of the lines and circles that follow: 1, 2 or 3 units of the device (a pixel at 96 dots an inch).
  virtual void SetPenWidth(int width) = 0;
  virtual void Line(double x1, double y1, double x2, double y2, std::int32_t colour) = 0;
  virtual void Circle(double x, double y, double radius, std::int32_t colour) = 0;

  /// Prints a line of text; (x, y) is its upper left corner.
  virtual void Print(double x, double y, std::string_view text, std::int32_t colour) = 0;
  virtual double TextWidth(std::string_view text) const = 0;
  virtual double TextHeight(std::string_view text) const = 0;

  /// Moves the picture up by so many device pixels; what comes free at the bottom is cleared.
  virtual void ScrollUp(int pixels) = 0;
};

/// Logical units of a pixel at 96 dots an inch.
inline constexpr double kTwipsPerPixel = 15;

}  // namespace velk
