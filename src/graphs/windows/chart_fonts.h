#pragma once

#include <QFont>
#include <QString>
#include <QStringList>
#include <string>

namespace velk {

/// The font of charts and their labels, in points of 1/72 inch at 96 dots an inch.
QFont ChartFont(const std::string& family, int points);

/// Pixels; smaller letters can't be read at all.
inline constexpr int kSmallestLetters = 8;

/// `font` narrowed, and made smaller where that does not do, until `text` is at most `width` pixels wide or the letters
/// are `smallest` pixels high.
QFont FitFont(QFont font, const QString& text, double width, int smallest = kSmallestLetters);

/// The same for a text that may run over several lines, broken between words, in `width` x `height` pixels.
QFont FitLines(QFont font, const QString& text, double width, double height, int smallest = kSmallestLetters);

/// A text broken between words into `most` lines at most, each shortened where it is wider than `width` pixels.
QStringList BrokenLines(const QFont& font, const QString& text, double width, int most);

}  // namespace velk
