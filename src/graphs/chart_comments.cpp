#include "graphs/chart_comments.h"

#include <cmath>

#include "base/colour.h"
#include "base/dates.h"
#include "base/one_line.h"
#include "base/text.h"

namespace velk {

namespace {

/// Room around a text.
constexpr double kWider = 1.1;

/// `text` without as many of its last characters as it takes until it is `room` wide.
std::string Cut(const Surface& surface, const std::string& text, double room) {
  const auto fits = [&](std::size_t kept) { return kWider * surface.TextWidth(Left(text, kept)) <= room; };
  std::size_t kept = CharacterCount(text);
  if (fits(kept)) return text;
  std::size_t least = 0;
  while (kept - least > 1) {
    const std::size_t middle = least + (kept - least) / 2;
    (fits(middle) ? least : kept) = middle;
  }
  return Left(text, least);
}

void PrintAtRight(Surface& surface, const std::string& comment, double room, double y) {
  const std::string shown = Cut(surface, OnOneLine(comment), room);
  if (shown.empty()) return;
  surface.Print(surface.Width() - kWider * surface.TextWidth(shown), y, shown, colour::Black);
}

}  // namespace

RowFilter CommentsOfPage(double from, double to) {
  return {CutToMinute(from), CutToMinute(to)};
}

RowFilter CommentsFrom(double from) {
  return {CutToMinute(from)};
}

void InsertComments(Surface& surface, const StripChart& chart, const std::vector<ReportComment>& comments, double to) {
  for (const ReportComment& comment : comments) {
    if (comment.time > to) return;
    const float y = chart.YOf(comment.time);
    if (std::isnan(y)) continue;
    PrintAtRight(surface, comment.text, surface.Width(), static_cast<double>(y) - surface.TextHeight(comment.text) / 2);
  }
}

void PrintTheComment(StripChart& chart, const std::string& comment, double time) {
  Surface& surface = chart.PlotTarget();
  const float y = chart.YOf(time);
  if (!std::isnan(y)) PrintAtRight(surface, comment, surface.Width() - kLeftMargin, static_cast<double>(y));
}

}  // namespace velk
