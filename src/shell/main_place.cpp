#include "shell/main_place.h"

#include <QString>
#include <QStringList>
#include <algorithm>

#include "base/text_qt.h"

namespace velk {

namespace {

constexpr const char* kMaximised = "maximised";
constexpr QSize kLeastSize(200, 100);
constexpr int kFarthest = 100'000;

/// The part of a place that a screen shows.
qint64 AreaOn(const QRect& screen, const QRect& place) {
  const QRect common = screen & place;
  return common.isEmpty() ? 0 : qint64{common.width()} * common.height();
}

QRect Within(const QRect& screen, QRect place) {
  place.setSize(place.size().boundedTo(screen.size()));
  place.moveLeft(std::clamp(place.left(), screen.left(), screen.right() + 1 - place.width()));
  place.moveTop(std::clamp(place.top(), screen.top(), screen.bottom() + 1 - place.height()));
  return place;
}

}  // namespace

std::string TextOf(const MainPlace& place) {
  const QRect& normal = place.normal;
  const QString text =
      QStringLiteral("%1 %2 %3 %4").arg(normal.x()).arg(normal.y()).arg(normal.width()).arg(normal.height());
  return FromQt(place.isMaximised ? text + QLatin1Char(' ') + QLatin1String(kMaximised) : text);
}

MainPlace PlaceOf(const std::string& text) {
  const QStringList words = ToQt(text).split(QLatin1Char(' '), Qt::SkipEmptyParts);
  if (words.size() != 4 && !(words.size() == 5 && words[4] == QLatin1String(kMaximised))) return {};
  int numbers[4];
  for (int i = 0; i < 4; ++i) {
    bool isNumber = false;
    numbers[i] = words[i].toInt(&isNumber);
    if (!isNumber || std::abs(numbers[i]) > kFarthest) return {};
  }
  const QRect normal(numbers[0], numbers[1], numbers[2], numbers[3]);
  if (normal.width() < kLeastSize.width() || normal.height() < kLeastSize.height()) return {};
  return {normal, words.size() == 5};
}

MainPlace PlaceOnScreens(const MainPlace& before, QSize wanted, const QList<QRect>& screens) {
  if (screens.isEmpty()) return {QRect(QPoint(0, 0), wanted), false};
  const auto shows = [&](const QRect& a, const QRect& b) {
    return AreaOn(a, before.normal) < AreaOn(b, before.normal);
  };
  const QRect& best = *std::max_element(screens.begin(), screens.end(), shows);
  if (!before.normal.isEmpty() && AreaOn(best, before.normal) > 0)
    return {Within(best, before.normal), before.isMaximised};
  const QRect& first = screens.first();
  const QSize size = (before.normal.isEmpty() ? wanted : before.normal.size());
  QRect place(QPoint(0, 0), size.boundedTo(first.size()));
  place.moveCenter(first.center());
  const bool fills = size.width() >= first.width() || size.height() >= first.height();
  return {Within(first, place), before.isMaximised || fills};
}

}  // namespace velk
