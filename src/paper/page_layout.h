#pragma once

#include <cstdint>

namespace velk {

// Places on a page, in millimetres of a sheet of A4.

inline constexpr double kSheetWidth = 210, kSheetHeight = 297;
inline constexpr double kFrameLeft = 20, kFrameRight = 190;
inline constexpr double kCurveLeft = 40;  ///< the band left of it holds the times
inline constexpr double kTopOfPage = 20;  ///< of the frame where nothing lies above it
inline constexpr double kRowHeight = 6;   ///< of a curve's row in the header
inline constexpr double kEndOfHead = 90;  ///< what stands above the frame ends there at the lowest

/// What stands above the frame: the company's picture, the lines of client and well.
struct PageBox {
  double left = 0, top = 0, width = 0, height = 0;
  bool isThere = false;

  double Bottom() const { return top + height; }
};

enum class PageTarget { Preview, Paper };

/// Where the frame of a page lies and what is in it.
struct PageLayout {
  double top = kTopOfPage;
  double bottom = 277;
  double rowHeight = kRowHeight;
  double plotTop = 0;

  /// y of a share of the plot, 0 at its top.
  double PlotY(double share) const { return plotTop + (bottom - plotTop) * share; }
  /// Points of a text that has `wanted` where rows have their full height.
  double Points(double wanted) const;
};

/// A curve's colour on paper, which is white by day and night: a pale one gets darker until it can be read.
std::int32_t InkOf(std::int32_t colour);

/// The frame begins 10 mm below the lower of what stands above it, and leaves a third of the sheet for the plot: header
/// rows of many curves get lower than kRowHeight.
PageLayout LayOut(int curves, const PageBox& logo, const PageBox& text, PageTarget target);

}  // namespace velk
