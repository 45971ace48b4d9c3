#include <algorithm>
#include <cmath>

#include "base/colour.h"
#include "base/numbers.h"
#include "base/text.h"
#include "graphs/strip_chart.h"
#include "graphs/texts.h"

namespace velk {

namespace {

constexpr double kBesideTitle = 60;  ///< twips between a title and the numbers beside it

/// `text`, shortened until it is at most `room` wide.
std::string Shortened(const Surface& surface, const std::string& text, double room) {
  std::string shown = text;
  for (std::size_t kept = CharacterCount(text); surface.TextWidth(shown) > room && kept > 0;)
    shown = --kept > 0 ? Left(text, kept) + "\u2026" : std::string();
  return shown;
}

/// Name and units of a curve. Where they are wider than `room` the name is cut first: a value without its units is
/// none. Where no letter of it has room the units stand alone, and where they have none, nothing.
std::string TitleOf(const Surface& surface, const Parameter& curve, double room) {
  const std::string units = " (" + curve.units + ")";
  const std::string name = Shortened(surface, curve.name, room - surface.TextWidth(units));
  if (!name.empty() || curve.name.empty()) return name + units;
  const std::string unitsAlone = "(" + curve.units + ")";
  return surface.TextWidth(unitsAlone) <= room ? unitsAlone : std::string();
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
  const double first = minEnd + kBesideTitle, behind = maxStart - kBesideTitle;
  const std::string title = TitleOf(header, curve, behind - first);
  header.Print(kLeftMargin + 10, bottom - header.TextHeight(min), min, curve.color);
  header.Print(width - header.TextWidth(max) - 100, bottom - header.TextHeight(max), max, curve.color);
  if (title.empty()) return;
  // In the middle, unless that would run over a number.
  const double titleWidth = header.TextWidth(title);
  const double left = std::max(std::min((width - kLeftMargin - titleWidth) / 2, behind - titleWidth), first);
  header.Print(kLeftMargin + left, bottom - header.TextHeight(title), title, curve.color);
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
