#include "paper/page_layout.h"

#include <algorithm>

#include "base/colour.h"

namespace velk {

namespace {

constexpr double kAboveFrame = 10;
constexpr double kAbovePlot = 2;
constexpr double kLowestPlotTop = 180;
constexpr double kLowestTop = kEndOfHead + kAboveFrame;
constexpr double kPreviewBottom = 277;
constexpr double kPaperBottom = 257;
constexpr double kReadable = 3;  ///< contrast

}  // namespace

std::int32_t InkOf(std::int32_t colour) {
  return ReadableOn(colour & 0xFFFFFF, colour::White, kReadable);
}

double PageLayout::Points(double wanted) const {
  return std::min(wanted, wanted * rowHeight / kRowHeight);
}

PageLayout LayOut(int curves, const PageBox& logo, const PageBox& text, PageTarget target) {
  PageLayout layout;
  if (logo.isThere || text.isThere)
    layout.top = kAboveFrame + std::max(logo.isThere ? logo.Bottom() : 0, text.isThere ? text.Bottom() : 0);
  layout.top = std::clamp(layout.top, kAboveFrame, kLowestTop);
  layout.bottom = target == PageTarget::Paper ? kPaperBottom : kPreviewBottom;
  if (curves > 0) layout.rowHeight = std::min(kRowHeight, (kLowestPlotTop - kAbovePlot - layout.top) / curves);
  layout.plotTop = layout.top + curves * layout.rowHeight + kAbovePlot;
  return layout;
}

}  // namespace velk
