#pragma once

#include "platform/drawing/surface.h"

namespace velk {

/// A surface that keeps what was drawn, so that it can be moved and copied. Hidden ones take what is drawn while
/// something else stands on the visible ones.
class RetainedSurface : public Surface {
 public:
  /// Height in device pixels.
  virtual int PixelHeight() const = 0;
  /// Clears the surface to white.
  virtual void Cls() = 0;
  /// Moves the picture up by so many device pixels; what comes free at the bottom is cleared.
  virtual void ScrollUp(int pixels) = 0;
  /// Takes over the size, the picture, pixel for pixel, and the font of another surface, so that what is drawn on
  /// either from now on looks alike. Both are of one class.
  virtual void CopyFrom(const RetainedSurface& other) = 0;
};

}  // namespace velk
