#include "shell/path_label.h"

#include <algorithm>

namespace velk {

namespace {

constexpr int kLeastAsked = 300;  ///< pixels
constexpr int kAskedStep = 100;

}  // namespace

QRect PathLabel::Room() const {
  const int beside = fontMetrics().averageCharWidth() / 2;
  return contentsRect().adjusted(beside, 0, -beside, 0);
}

QString PathLabel::Shown() const {
  const QString shown = fontMetrics().elidedText(text(), givesWay_, Room().width());
  const bool isDots = shown.size() == 1 && shown != text();
  return isDots ? QString() : shown;
}

QSize WholeLabel::sizeHint() const {
  const int beside = fontMetrics().averageCharWidth() + 2 * frameWidth();
  const int wanted = fontMetrics().horizontalAdvance(text()) + beside + 1;
  return {std::max(kLeastAsked, (wanted + kAskedStep - 1) / kAskedStep * kAskedStep), minimumSizeHint().height()};
}

}  // namespace velk
