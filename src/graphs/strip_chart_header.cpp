#include <cmath>

#include "graphs/strip_chart.h"
#include "platform/colour.h"
#include "platform/numbers.h"

namespace velk {

void StripChart::InitialHeader() {
  const double width = std::floor(surfaces_.Pic2->Width());
  surfaces_.Picture1->Cls();
  surfaces_.Picture1->SetPenWidth(1);
  for (int slot = 1; slot <= curves_.Count(); ++slot) DrawHeaderRow(slot, width);
  DrawHeaderCorner(width);
}

void StripChart::DrawHeaderRow(int slot, double width) {
  Surface& header = *surfaces_.Picture1;
  const Parameter& curve = curves_.Curve(slot);
  const double bottom = slot * kHeaderRowHeight;
  header.Line(kLeftMargin, bottom, width, bottom, curve.color);

  const std::string min = NumberText(curve.min), max = NumberText(curve.max);
  const std::string title = curve.name + " (" + curve.units + ")";
  header.Print(kLeftMargin + 10, bottom - header.TextHeight(min), min, curve.color);
  header.Print(width - header.TextWidth(max) - 100, bottom - header.TextHeight(max), max, curve.color);
  header.Print((width - kLeftMargin - header.TextWidth(title)) / 2 + kLeftMargin, bottom - header.TextHeight(title),
               title, curve.color);
}

void StripChart::DrawHeaderCorner(double width) {
  Surface& header = *surfaces_.Picture1;
  const double bottom = HeaderHeight();
  header.Line(0, bottom, kLeftMargin, bottom, colour::Black);
  header.Line(width, 0, width, bottom + 150, colour::Black);

  const std::string time = session_.Translator.Translate(MessageId::AxisTime);
  const std::string unit = session_.Translator.Translate(MessageId::AxisTimeUnit);
  header.Print(kLeftMargin - 1.05 * header.TextWidth(time), bottom - 2.1 * header.TextHeight(time), time,
               colour::Black);
  header.Print(kLeftMargin - 1.05 * header.TextWidth(unit), bottom - header.TextHeight(unit), unit, colour::Black);
  header.Line(kLeftMargin, 0, kLeftMargin, bottom + 100, colour::Black);
}

}  // namespace velk
