#include "graphs/windows/chart_fonts.h"

#include <QFontMetricsF>
#include <algorithm>
#include <cmath>

#include "base/text_qt.h"
#include "platform/drawing/units.h"

namespace velk {

namespace {

constexpr double kSlack = 0.5;  ///< pixels that nobody sees
constexpr int kNarrowest = 70;  ///< percent of the normal width; narrower letters run together

}  // namespace

QFont ChartFont(const std::string& family, int points) {
  QFont font(ToQt(family));
  font.setPixelSize(
      std::max(kSmallestLetters, static_cast<int>(std::lround(Convert(points, Unit::Point, Unit::Pixel)))));
  return font;
}

QFont FitFont(QFont font, const QString& text, double width, int smallest) {
  const auto advance = [&] { return QFontMetricsF(font).horizontalAdvance(text); };
  for (;;) {
    font.setStretch(100);
    const double natural = advance();
    if (natural <= width) return font;
    // Letters are set to parts of pixels, so that the one that is worked out may be a little too wide.
    for (int stretch = static_cast<int>(std::floor(97 * width / natural)); stretch >= kNarrowest; --stretch) {
      font.setStretch(stretch);
      if (advance() <= width) return font;
    }
    font.setStretch(kNarrowest);
    if (font.pixelSize() <= smallest) return font;
    font.setPixelSize(font.pixelSize() - 1);
  }
}

QFont FitLines(QFont font, const QString& text, double width, double height, int smallest) {
  QString longest;
  for (const QString& word : text.split(QLatin1Char(' ')))
    if (word.size() > longest.size()) longest = word;
  for (;;) {
    font = FitFont(font, longest, width, smallest);
    const QRectF lines = QFontMetricsF(font).boundingRect(QRectF(0, 0, width, 10 * height), Qt::TextWordWrap, text);
    if (lines.height() <= height || font.pixelSize() <= smallest) return font;
    font.setPixelSize(font.pixelSize() - 1);
  }
}

QStringList BrokenLines(const QFont& font, const QString& text, double width, int most) {
  const QFontMetricsF metrics(font);
  QStringList lines;
  for (const QString& word : text.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
    const QString longer = lines.isEmpty() ? word : lines.last() + QLatin1Char(' ') + word;
    if (!lines.isEmpty() && (lines.size() >= most || metrics.horizontalAdvance(longer) <= width))
      lines.last() = longer;
    else
      lines += word;
  }
  // A word without a break goes on in the next line where there is one.
  if (lines.size() == 1 && most > 1 && metrics.horizontalAdvance(lines[0]) > width + kSlack) {
    qsizetype first = lines[0].size();
    while (first > 1 && metrics.horizontalAdvance(lines[0].left(first)) > width) --first;
    lines += lines[0].mid(first);
    lines[0].truncate(first);
  }
  for (QString& line : lines)
    if (metrics.horizontalAdvance(line) > width + kSlack) line = metrics.elidedText(line, Qt::ElideRight, width);
  return lines;
}

}  // namespace velk
