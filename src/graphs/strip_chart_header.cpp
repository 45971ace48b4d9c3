#include <algorithm>
#include <cmath>

#include "base/colour.h"
#include "base/numbers.h"
#include "base/text.h"
#include "graphs/strip_chart.h"
#include "graphs/texts.h"

namespace velk {

namespace {

/// `text`, shortened until it is at most `room` wide: a name must not run over the numbers beside it.
std::string Shortened(const Surface& surface, const std::string& text, double room) {
  std::string shown = text;
  for (std::size_t kept = CharacterCount(text); surface.TextWidth(shown) > room && kept > 0;)
    shown = --kept > 0 ? Left(text, kept) + "\u2026" : std::string();
  return shown;
}

}  // namespace

void StripChart::InitialHeader() {
  const double width = std::floor(surfaces_.Pic2.Width());
  surfaces_.Picture1.Cls();
  surfaces_.Picture1.SetPenWidth(1);
  for (int slot = 1; slot <= curves_.Count(); ++slot) DrawHeaderRow(slot, width);
  DrawHeaderCorner(width);
}

void StripChart::DrawHeaderRow(int slot, double width) {
  Surface& header = surfaces_.Picture1;
  const Parameter& curve = curves_.Curve(slot);
  const double bottom = slot * kHeaderRowHeight;
  header.Line(kLeftMargin, bottom, width, bottom, curve.color);

  const std::string min = NumberText(curve.min), max = NumberText(curve.max);
  const double minEnd = 10 + header.TextWidth(min), maxStart = width - kLeftMargin - 100 - header.TextWidth(max);
  const double middle = (width - kLeftMargin) / 2;
  const std::string title =
      Shortened(header, curve.name + " (" + curve.units + ")", 2 * std::min(middle - minEnd, maxStart - middle));
  header.Print(kLeftMargin + 10, bottom - header.TextHeight(min), min, curve.color);
  header.Print(width - header.TextWidth(max) - 100, bottom - header.TextHeight(max), max, curve.color);
  if (title.empty()) return;
  header.Print((width - kLeftMargin - header.TextWidth(title)) / 2 + kLeftMargin, bottom - header.TextHeight(title),
               title, curve.color);
}

void StripChart::DrawHeaderCorner(double width) {
  Surface& header = surfaces_.Picture1;
  const double bottom = HeaderHeight();
  header.Line(0, bottom, kLeftMargin, bottom, colour::Black);
  header.Line(width, 0, width, bottom + 150, colour::Black);

  const std::string time = language_.In(text::AxisTime);
  const std::string unit = language_.In(text::AxisTimeUnit);
  header.Print(kLeftMargin - 1.05 * header.TextWidth(time), bottom - 2.1 * header.TextHeight(time), time,
               colour::Black);
  header.Print(kLeftMargin - 1.05 * header.TextWidth(unit), bottom - header.TextHeight(unit), unit, colour::Black);
  header.Line(kLeftMargin, 0, kLeftMargin, bottom + 100, colour::Black);
}

}  // namespace velk
