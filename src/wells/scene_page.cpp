#include "wells/scene_page.h"

#include <algorithm>

#include "base/colour.h"
#include "wells/texts.h"

namespace velk {

namespace {

constexpr double kEdge = 15;
constexpr double kHeadPoints = 10, kTitlePoints = 14, kLabelPoints = 7;
constexpr double kHeadSpacing = 1.3;

}  // namespace

void PrintScene(Printer& printer, const WellScene& scene, const SceneHead& head, const Language& language) {
  Surface& page = printer.Begin(language.In(text::SceneTitle), Unit::Millimetre);
  const Paper sheet = printer.Sheet();
  const double left = std::max(kEdge, sheet.left), right = sheet.width - std::max(kEdge, sheet.right);
  double y = std::max(kEdge, sheet.top);
  const auto print = [&](double points, bool bold, const std::string& text) {
    page.SetFont({head.family, points, bold});
    page.Print(left, y, text, colour::Black);
    y += kHeadSpacing * page.TextHeight(text);
  };
  print(kTitlePoints, true, language.In(text::SceneTitle));
  print(kHeadPoints, false, language.In(text::ClientName) + " " + head.client);
  print(kHeadPoints, false, language.In(text::WellName) + " " + head.well);
  print(kHeadPoints, false, language.In(text::SceneDate) + " " + head.date);
  print(kHeadPoints, false, language.In(text::DepthUnitsAre + head.depthUnit));
  page.SetFont({head.family, kLabelPoints});
  const double side = std::min(right - left, sheet.height - std::max(kEdge, sheet.bottom) - y);
  scene.Draw(page, {left + (right - left - side) / 2, y, side, 0}, kColoursOnPaper, language);
  printer.End();
}

}  // namespace velk
