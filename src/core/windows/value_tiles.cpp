#include "core/windows/value_tiles.h"

#include <QFontMetricsF>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "base/colour.h"
#include "core/alarms.h"
#include "platform/drawing/qt_drawing.h"

namespace velk {

namespace {

constexpr double kReadable = 4.5;
constexpr double kWideAsHigh = 3;  ///< of a tile
constexpr int kGap = 8;
constexpr int kFrame = 4;
constexpr int kSmallestLetters = 9;

std::int32_t ColourOf(const QColor& colour) {
  return Rgb(colour.red(), colour.green(), colour.blue());
}

/// The font at the largest size at which the text fits.
QFont Largest(QFont font, const QString& text, const QSizeF& room) {
  font.setPixelSize(100);
  const QFontMetricsF metrics(font);
  const double scale = std::min(room.width() / std::max(metrics.horizontalAdvance(text), 1.0),
                                room.height() / std::max(metrics.height(), 1.0));
  font.setPixelSize(std::max(kSmallestLetters, static_cast<int>(100 * scale)));
  return font;
}

}  // namespace

void ValueTiles::SetHint(const QString& hint) {
  if (hint == hint_) return;
  hint_ = hint;
  update();
}

void ValueTiles::Show(std::vector<Tile> tiles) {
  if (tiles == tiles_) return;
  tiles_ = std::move(tiles);
  update();
}

void ValueTiles::SetNight(bool night) {
  if (isNight_ == night) return;
  isNight_ = night;
  night_.SetNight(night);
  update();
}

QColor ValueTiles::InkOf(const Tile& tile, const QColor& ground) const {
  const std::int32_t muted = isNight_ ? colour::NightMuted : colour::Muted;
  return ToQColor(ReadableOn(tile.stale ? muted : night_.Shown(tile.colour), ColourOf(ground), kReadable));
}

void ValueTiles::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  if (isNight_) {
    painter.fillRect(rect(), ToQColor(colour::NightPlate));
    painter.setPen(ToQColor(colour::NightRules));
  }
  if (tiles_.empty()) return painter.drawText(rect(), Qt::AlignCenter | Qt::TextWordWrap, hint_);
  const int count = static_cast<int>(tiles_.size());
  const double ideal = std::sqrt(count * (width() / kWideAsHigh) / std::max(height(), 1));
  const int columns = std::clamp(static_cast<int>(std::lround(ideal)), 1, count);
  const int rows = (count + columns - 1) / columns;
  for (int i = 0; i < count; ++i) {
    const int row = i / columns, column = i % columns;
    const QRect box(QPoint(width() * column / columns, height() * row / rows),
                    QPoint(width() * (column + 1) / columns - 1, height() * (row + 1) / rows - 1));
    PaintTile(painter, tiles_[static_cast<std::size_t>(i)], box.adjusted(kGap / 2, kGap / 2, -kGap / 2, -kGap / 2));
  }
}

/// Name and units above, the value below them in all the room that is left.
void ValueTiles::PaintTile(QPainter& painter, const Tile& tile, const QRect& box) const {
  const QColor ground = isNight_ ? ToQColor(colour::NightPaper) : palette().color(QPalette::Base);
  painter.fillRect(box, ground);
  const bool alarmed = tile.side != AlarmSide::None;
  const QColor alarm = ToQColor(isNight_ ? colour::NightAlarm : colour::Alarm);
  if (alarmed) {
    painter.setPen(QPen(alarm, kFrame));
    painter.drawRect(box.adjusted(kFrame / 2, kFrame / 2, -kFrame / 2, -kFrame / 2));
  }
  const QRect inside = box.adjusted(2 * kGap, kGap, -2 * kGap, -kGap);
  const QRect top(inside.left(), inside.top(), inside.width(), inside.height() / 4);
  const QRect bottom(inside.left(), top.bottom() + 1, inside.width(), inside.height() - top.height());
  painter.setPen(InkOf(tile, ground));
  const QString heading = tile.units.isEmpty() ? tile.name : tile.name + QStringLiteral(", ") + tile.units;
  painter.setFont(Largest(font(), heading, top.size()));
  painter.drawText(top, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                   painter.fontMetrics().elidedText(heading, Qt::ElideRight, top.width()));
  const QString mark = QString::fromUtf8(AlarmMark(tile.side));
  if (alarmed && !tile.stale) painter.setPen(ToQColor(ReadableOn(ColourOf(alarm), ColourOf(ground), kReadable)));
  // Room for the mark and a sign, so that the digits keep their size when one comes.
  painter.setFont(Largest(font(), QStringLiteral("\u25B2 -") + tile.value, bottom.size()));
  painter.drawText(bottom, Qt::AlignRight | Qt::AlignVCenter | Qt::TextSingleLine, mark + tile.value);
}

}  // namespace velk
