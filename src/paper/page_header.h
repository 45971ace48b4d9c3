#pragma once

#include <array>
#include <string>
#include <vector>

#include "base/language.h"
#include "graphs/curve_source.h"
#include "log/summary_rows.h"
#include "paper/page_layout.h"
#include "paper/page_times.h"
#include "platform/drawing/surface.h"

namespace velk {

// What stands on a page besides its curves. Surfaces are in millimetres.

/// How a page is lettered.
struct PageFont {
  std::string family;
  double points = 10;  ///< of the page; small letters are 0.8 of it
};

/// The frame, the grid, the times and a row for each curve.
void DrawHeader(Surface& page, const CurveSource& curves, const PageLayout& layout, const PageTimes& times,
                const PageFont& font, const Language& language);

/// Below the frame: the file, the range and when it was printed.
void DrawFoot(Surface& page, const PageLayout& layout, const PageTimes& times, const std::string& file, double printed,
              const PageFont& font, const Language& language);

/// Prints the comments of the page's times, each with its middle at its time, up to the right edge of the frame.
void InsertReportComments(Surface& page, const PageLayout& layout, const PageTimes& times,
                          const std::vector<ReportComment>& comments, const PageFont& font);

/// The lines of client, field, well and job.
using TextBlock = std::array<std::string, 4>;

/// Width and height of the text block, with 5 hundredths of its width around it on each side.
PageBox SizeOf(Surface& page, const TextBlock& lines, const PageFont& font);
void DrawTextBlock(Surface& page, const PageBox& box, const TextBlock& lines, const PageFont& font);

}  // namespace velk
