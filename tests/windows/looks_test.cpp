#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QImage>
#include <QToolBar>
#include <cmath>
#include <map>

#include "shell/path_label.h"
#include "support/dark_desktop.h"
#include "support/window_texts.h"
#include "windows/every_window.h"

namespace velk {
namespace {

using namespace test;

constexpr double kLegible = 4.5;  ///< contrast that letters of this size need

double Brightness(QRgb colour) {
  const auto linear = [](int channel) {
    const double value = channel / 255.0;
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(qRed(colour)) + 0.7152 * linear(qGreen(colour)) + 0.0722 * linear(qBlue(colour));
}

double Contrast(QRgb a, QRgb b) {
  const double first = Brightness(a), second = Brightness(b);
  return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

/// How far the colour that differs most stands out from the one that there is most of.
double BestContrast(const QImage& picture) {
  std::map<QRgb, int> counts;
  for (int y = 0; y < picture.height(); ++y)
    for (int x = 0; x < picture.width(); ++x) ++counts[picture.pixel(x, y)];
  QRgb ground = 0;
  int most = 0;
  for (const auto& [colour, count] : counts)
    if (count > most) most = count, ground = colour;
  double best = 1;
  for (const auto& [colour, count] : counts) best = std::max(best, Contrast(colour, ground));
  return best;
}

/// Curves have the colours that the operator gave them, what a toolbar shows are its buttons, and a path that has no
/// room gives way whole.
bool HasNoLettersOfOurs(const QWidget& control) {
  if (const auto* path = qobject_cast<const PathLabel*>(&control)) return path->Shown().isEmpty();
  return control.parentWidget()->objectName() == "LabelPanel" || qobject_cast<const QToolBar*>(&control);
}

/// Controls whose letters can hardly be told from their ground. What is off may be faint.
Faults TextsThatAreFaint(const QWidget& window, const QImage& picture) {
  Faults faults;
  const QWidget& top = *window.window();
  for (const WindowText& text : TextsOf(window)) {
    if (!text.control || text.isToolTip || text.control == &window || !text.control->isEnabled()) continue;
    const bool isWhole = text.control->visibleRegion().boundingRect() == text.control->rect();
    if (!text.control->isVisible() || !isWhole || HasNoLettersOfOurs(*text.control)) continue;
    const QRect place(text.control->mapTo(&top, QPoint(0, 0)), text.control->size());
    const double contrast = BestContrast(picture.copy(place));
    if (contrast < kLegible)
      faults.push_back(text.control->objectName().toStdString() + " \"" + text.text.toStdString() +
                       "\": " + std::to_string(contrast));
  }
  return faults;
}

/// Shows every window, looks at its letters, and keeps its picture where VELK_PICTURES says.
void Look(const char* language, const char* desktop, double scale) {
  const LargeText text(scale);
  const QString folder = qEnvironmentVariable("VELK_PICTURES");
  for (const ListedWindow& listed : EveryWindow()) {
    const auto window = listed.open(language);
    window->show();
    QApplication::processEvents();
    const QImage picture = window->window()->grab().toImage();
    EXPECT_EQ(TextsThatAreFaint(*window, picture), kNone) << listed.Title() << ' ' << language << ' ' << desktop;
    const QString file = QStringLiteral("%1-%2-%3-%4.png")
                             .arg(QString::fromStdString(listed.Title()), QString(language).left(2).toLower(),
                                  QLatin1String(desktop), QString::number(scale));
    if (!folder.isEmpty()) picture.save(QDir(folder).filePath(file));
  }
}

class Looks : public testing::TestWithParam<double> {};

TEST_P(Looks, AreLegibleOnALightDesktop) {
  for (const char* language : kLanguages) Look(language, "light", GetParam());
}

TEST_P(Looks, AreLegibleOnADarkDesktop) {
  const DarkDesktop dark;
  for (const char* language : kLanguages) Look(language, "dark", GetParam());
}

INSTANTIATE_TEST_SUITE_P(AtScale, Looks, testing::Values(1.0, 1.5, 2.0));

}  // namespace
}  // namespace velk
