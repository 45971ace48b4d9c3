#pragma once

#include <QFont>
#include <QString>
#include <string>

namespace velk {

/// The font of charts and their labels, in points of 1/72 inch at 96 dots an inch.
QFont ChartFont(const std::string& family, int points);

/// `font` narrowed, and made smaller where that does not do, until `text` is at most `width` pixels wide.
QFont FitFont(QFont font, const QString& text, double width);

/// The same for a text that may run over several lines, broken between words, in `width` x `height` pixels.
QFont FitFont(QFont font, const QString& text, double width, double height);

}  // namespace velk
