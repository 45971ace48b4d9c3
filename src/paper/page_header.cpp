#include "paper/page_header.h"

#include <algorithm>

#include "base/colour.h"
#include "base/dates.h"
#include "base/numbers.h"
#include "base/one_line.h"
#include "base/text.h"
#include "graphs/texts.h"
#include "paper/texts.h"
#include "platform/drawing/units.h"

namespace velk {

namespace {

constexpr double kBeside = 1;  ///< mm between a rule and a text
constexpr std::int32_t kMuted = 0x70665B;
constexpr int kColumns = 10, kRows = 16, kLabels = 4;

const double kRule = Convert(0.25, Unit::Millimetre, Unit::Pixel);
const double kGrid = Convert(0.1, Unit::Millimetre, Unit::Pixel);

/// `text` without as many of its last characters as it takes to fit in `room`.
std::string Fitted(const Surface& page, const std::string& text, double room) {
  std::string shown = text;
  for (std::size_t kept = CharacterCount(text); page.TextWidth(shown) > room && kept > 0;)
    shown = --kept > 0 ? Left(text, kept) + "\u2026" : std::string();
  return shown;
}

void DrawFrame(Surface& page, const PageLayout& layout) {
  page.SetPenWidth(kGrid);
  for (int i = 1; i < kColumns; ++i) {
    const double x = kCurveLeft + (kFrameRight - kCurveLeft) * i / kColumns;
    page.Line(x, layout.plotTop, x, layout.bottom, colour::Grid);
  }
  for (int i = 1; i < kRows; ++i) {
    const double y = layout.PlotY(static_cast<double>(i) / kRows);
    page.Line(kCurveLeft, y, kFrameRight, y, colour::Grid);
  }
  page.SetPenWidth(kRule);
  page.Line(kFrameLeft, layout.top, kFrameRight, layout.top, colour::Black);
  page.Line(kFrameRight, layout.top, kFrameRight, layout.bottom, colour::Black);
  page.Line(kFrameRight, layout.bottom, kFrameLeft, layout.bottom, colour::Black);
  page.Line(kFrameLeft, layout.bottom, kFrameLeft, layout.top, colour::Black);
  page.Line(kCurveLeft, layout.top, kCurveLeft, layout.bottom, colour::Black);
}

void DrawTimes(Surface& page, const PageLayout& layout, const PageTimes& times) {
  constexpr double kTick = 2;
  std::string date;
  for (int i = 0; i <= kLabels; ++i) {
    const double time = times.start + i * times.step;
    const double y = layout.PlotY(static_cast<double>(i) / kLabels);
    page.Line(kCurveLeft - kTick, y, kCurveLeft, y, colour::Black);
    const std::string label = FormatDate(time, "hh:mm:ss"), day = FormatDate(time, "dd-mmm-yy");
    const double height = page.TextHeight(label);
    // The frame ends there: its line would cross the letters.
    if (i == kLabels)
      page.Fill(kFrameLeft + kBeside / 2, y - height / 2, page.TextWidth(label) + kBeside, height, colour::White);
    page.Print(kFrameLeft + kBeside, y - height / 2, label, colour::Black);
    if (day != date)
      page.Print(kFrameLeft + kBeside, i == kLabels ? y + height / 2 : y - 1.5 * height, day, colour::Black);
    date = day;
  }
}

void DrawCurveRow(Surface& page, const Parameter& curve, double bottom) {
  page.Line(kCurveLeft, bottom, kFrameRight, bottom, InkOf(curve.color));
  const std::string min = NumberText(curve.min), max = NumberText(curve.max);
  const double minEnd = kCurveLeft + kBeside + page.TextWidth(min);
  const double maxStart = kFrameRight - kBeside - page.TextWidth(max);
  const double middle = (kCurveLeft + kFrameRight) / 2;
  const std::string title = Fitted(page, curve.name + " (" + curve.units + ")",
                                   2 * std::min(middle - minEnd, maxStart - middle) - 2 * kBeside);
  const double y = bottom - page.TextHeight(min);
  page.Print(kCurveLeft + kBeside, y, min, InkOf(curve.color));
  page.Print(maxStart, y, max, InkOf(curve.color));
  if (!title.empty()) page.Print(middle - page.TextWidth(title) / 2, y, title, InkOf(curve.color));
}

TextFont Small(const PageFont& font) {
  return {font.family, 0.8 * font.points, false};
}

}  // namespace

void DrawHeader(Surface& page, const CurveSource& curves, const PageLayout& layout, const PageTimes& times,
                const PageFont& font, const Language& language) {
  DrawFrame(page, layout);
  page.SetFont(Small(font));
  const std::string time = language.In(text::AxisTime);
  page.Print((kFrameLeft + kCurveLeft - page.TextWidth(time)) / 2, layout.top + kRowHeight - page.TextHeight(time),
             time, colour::Black);
  DrawTimes(page, layout, times);
  page.SetFont({font.family, layout.Points(font.points), false});
  for (int slot = 1; slot <= curves.Count(); ++slot)
    DrawCurveRow(page, curves.Curve(slot), layout.top + slot * layout.rowHeight);
}

void DrawFoot(Surface& page, const PageLayout& layout, const PageTimes& times, const std::string& file, double printed,
              const PageFont& font, const Language& language) {
  page.SetFont(Small(font));
  const double y = layout.bottom + 1.5 * page.TextHeight(file);
  const std::string when = language.In(text::Printed) + FormatDate(printed, "dd-mmm-yyyy hh:mm");
  const double right = kFrameRight - page.TextWidth(when);
  const std::string range =
      FormatDate(times.start, "dd-mmm-yyyy hh:mm:ss") + " – " + FormatDate(times.End(), "dd-mmm-yyyy hh:mm:ss");
  page.Print(right, y, when, kMuted);
  page.Print(kFrameLeft, y, Fitted(page, range, right - kFrameLeft - kBeside), kMuted);
  page.Print(kFrameLeft, y + 1.2 * page.TextHeight(file),
             Fitted(page, file.substr(file.rfind('/') + 1), kFrameRight - kFrameLeft), kMuted);
}

void InsertReportComments(Surface& page, const PageLayout& layout, const PageTimes& times,
                          const std::vector<ReportComment>& comments, const PageFont& font) {
  page.SetFont(Small(font));
  for (const ReportComment& comment : comments) {
    if (!times.Covers(comment.time)) continue;
    const std::string shown = Fitted(page, OnOneLine(comment.text), kFrameRight - kCurveLeft - 2 * kBeside);
    const double y = layout.PlotY((comment.time - times.start) / (times.End() - times.start));
    page.Print(kFrameRight - kBeside - page.TextWidth(shown), y - page.TextHeight(shown) / 2, shown, colour::Black);
  }
}

PageBox SizeOf(Surface& page, const TextBlock& lines, const PageFont& font) {
  page.SetFont({font.family, font.points, false});
  double width = 0;
  for (const std::string& line : lines) width = std::max(width, page.TextWidth(line));
  PageBox box;
  box.width = 1.1 * width;
  box.height = static_cast<double>(lines.size() + 1) * page.TextHeight("X");
  return box;
}

void DrawTextBlock(Surface& page, const PageBox& box, const TextBlock& lines, const PageFont& font) {
  page.SetFont({font.family, font.points, false});
  double y = box.top + page.TextHeight("X") / 2;
  for (const std::string& line : lines) {
    page.Print(box.left + 0.05 * box.width, y, line, colour::Black);
    y += page.TextHeight(line);
  }
}

}  // namespace velk
