#include "graphs/windows/label_rows.h"

#include <QEvent>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QToolTip>
#include <algorithm>
#include <cmath>

#include "base/colour.h"
#include "base/numbers.h"
#include "base/text_qt.h"
#include "graphs/windows/chart_fonts.h"
#include "platform/drawing/qt_drawing.h"
#include "platform/windows/paint_target.h"

namespace velk {

namespace {

// Pixels.
constexpr int kTop = 4;  ///< above the first row
constexpr int kLeft = 3;
constexpr int kGap = 2;          ///< 30 twips
constexpr int kInsidePlate = 3;  ///< right of a value
constexpr int kSmallestTexts = 10;
constexpr int kSmallestDigits = 4;    ///< of a value that is wider than the panel
constexpr double kMostReserved = 96;  ///< by the limits of a scale alone
constexpr double kReadable = 4.5;

constexpr const char* kNoValue = "\u2013";  ///< a row that is played back leaves the channel out

std::int32_t ColourOf(const QColor& colour) {
  return Rgb(colour.red(), colour.green(), colour.blue());
}

QRgb Readable(std::int32_t colour, const QColor& ground) {
  return ToQColor(ReadableOn(colour, ColourOf(ground), kReadable)).rgb();
}

bool IsDark(const QColor& ground) {
  return ground.lightness() <= 127;
}

/// Without a painter: a sign or a digit more is no seldom thing.
void FillRows(QImage& picture, const QRect& box, QRgb colour) {
  for (int y = box.top(); y <= box.bottom(); ++y)
    std::fill_n(reinterpret_cast<QRgb*>(picture.scanLine(y)) + box.left(), box.width(), colour);
}

double MarkWidth(const QFont& font) {
  return 0.75 * font.pixelSize();
}

}  // namespace

LabelRows::LabelRows(QWidget* parent) : QWidget(parent) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  rows_.reserve(64);
}

void LabelRows::UseFont(const QFont& font) {
  font_ = font;
  ratio_ = devicePixelRatioF();
  cells_.Use(font_, ratio_);
}

void LabelRows::Fill(const CurveSource& curves) {
  rows_.resize(static_cast<std::size_t>(curves.Count()));
  values_.resize(rows_.size());
  for (int slot = 1; slot <= curves.Count(); ++slot)
    FillRow(rows_[static_cast<std::size_t>(slot - 1)], curves.Curve(slot));
  LayOut();
}

void LabelRows::FillRow(Row& row, const Parameter& curve) {
  row.name = ToQt(curve.name);
  row.units = ToQt(curve.units);
  row.picture = curve.format;
  row.colour = curve.color;
  row.ink = Readable(row.colour, QColor(looks_.plate));
  const auto isSet = [](const std::string& limit) { return !limit.empty() && limit != kNoAlarm; };
  row.canAlarm = isSet(curve.loweralarm) || isSet(curve.upperalarm);
  row.reserved = 0;
  for (const double limit : {curve.min, curve.max})
    row.reserved = std::max(row.reserved, cells_.Width(velk::Format(limit, curve.format)) / ratio_);
  row.reserved = std::min(row.reserved, kMostReserved);
  row.changed = true;
}

double LabelRows::NeedOf(const Row& row) const {
  const int cells = cells_.Width(row.text);
  const double text = cells >= 0 ? cells / ratio_ : QFontMetricsF(font_).horizontalAdvance(ToQt(row.text));
  return std::max(text, row.reserved);
}

double LabelRows::MarkOf(const Row& row) const {
  return row.canAlarm || row.side != AlarmSide::None ? MarkWidth(font_) : 0;
}

void LabelRows::LayOut() {
  const QFontMetricsF metrics(font_);
  needs_ = {};
  for (const Row& row : rows_) {
    needs_.value = std::max(needs_.value, NeedOf(row));
    needs_.mark = std::max(needs_.mark, MarkOf(row));
    needs_.units = std::max(needs_.units, metrics.horizontalAdvance(row.units) + 2 * kGap);
  }
  shares_ = ShareLabels(width() - kLeft - 3 * kGap, needs_);
  const int line = static_cast<int>(std::ceil(1.08 * metrics.height()));
  int top = kTop;
  for (Row& row : rows_) {
    row.top = top;
    row.height = metrics.horizontalAdvance(row.name) >= shares_.name ? 2 * line : line;
    top += static_cast<int>(std::ceil(1.05 * row.height));
    FitTexts(row);
  }
  setMinimumHeight(rows_.empty() ? 0 : rows_.back().top + rows_.back().height + kTop);
  DrawColumn();
}

void LabelRows::FitTexts(Row& row) const {
  const int lines = row.height > 1.5 * 1.08 * QFontMetricsF(font_).height() ? 2 : 1;
  const double width = std::max(shares_.name - 2, 1);
  row.nameFont = lines == 1 ? FitFont(font_, row.name, width, kSmallestTexts)
                            : FitLines(font_, row.name, width, row.height, kSmallestTexts);
  row.nameLines = BrokenLines(row.nameFont, row.name, width, lines);
  const double unitsWidth = std::max(shares_.units - 2 * kGap, 1);
  row.unitsFont = FitFont(font_, row.units, unitsWidth, kSmallestTexts);
  row.shownUnits = QFontMetricsF(row.unitsFont).elidedText(row.units, Qt::ElideRight, unitsWidth);
}

/// All values anew: another width, another palette, another screen.
void LabelRows::DrawColumn() {
  if (ratio_ != devicePixelRatioF()) UseFont(font_);
  const int height = rows_.empty() ? 1 : rows_.back().top + rows_.back().height + 1;
  column_ = QImage(std::max(1, static_cast<int>(std::lround(shares_.value * ratio_))),
                   static_cast<int>(std::ceil(height * ratio_)), QImage::Format_RGB32);
  FollowPalette();
  column_.fill(looks_.ground);
  for (Row& row : rows_) {
    row.drawn.reset();
    DrawValue(row);
  }
  update();
}

// --- Values ---

void LabelRows::ForgetValues() {
  for (std::optional<double>& value : values_) value.reset();
}

void LabelRows::SetAlarm(int row, AlarmSide side) {
  if (row < 0 || row >= Count()) return;
  Row& labels = rows_[static_cast<std::size_t>(row)];
  const Flash before = labels.flash;
  labels.flash = side == AlarmSide::None ? Flash::None : before == Flash::White ? Flash::Button : Flash::White;
  if (labels.flash != before || labels.side != side) labels.changed = true;
  labels.side = side;
}

bool LabelRows::SetStale(bool stale) {
  if (stale_ == stale) return false;
  stale_ = stale;
  for (Row& row : rows_) row.changed = true;
  return true;
}

void LabelRows::SetNight(bool night) {
  if (night_ == night) return;
  night_ = night;
  DrawColumn();
}

void LabelRows::FormatValue(std::optional<double> value, const std::string& picture, std::string& text) {
  text.clear();
  if (!value) return;
  if (std::isnan(*value))
    text = kNoValue;
  else
    FormatTo(text, *value, picture);
}

void LabelRows::ShowChanges(WindowStrips& strips) {
  FollowPalette();
  changed_.clear();
  bool widens = false;
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    Row& row = rows_[i];
    if (!row.changed && row.formatted == values_[i]) continue;
    row.changed = false;
    row.formatted = values_[i];
    FormatValue(row.formatted, row.picture, formatted_);
    const Plate plate = PlateOf(row);
    const bool keepsPlate = row.drawn == plate;
    if (keepsPlate && row.text == formatted_) continue;
    row.text.swap(formatted_);
    if (keepsPlate && row.isWritten && cells_.InSamePlaces(row.text, formatted_)) {
      changed_.push_back(WriteOver(row, plate, formatted_));
      continue;
    }
    if (NeedOf(row) > needs_.value || MarkOf(row) > needs_.mark) widens = true;
    if (!widens) changed_.push_back(DrawValue(row));
  }
  if (widens)
    LayOut();
  else
    strips.Add(*this, changed_);
}

LabelRows::Plate LabelRows::PlateOf(const Row& row) const {
  if (stale_) return {looks_.stale, looks_.ground, looks_.mark, row.side};
  if (row.flash == Flash::None) return {row.ink, looks_.plate, looks_.mark, row.side};
  const bool isWhite = row.flash == Flash::White;
  return {isWhite ? looks_.onWhite : looks_.onPlate, isWhite ? QColor(Qt::white).rgb() : looks_.plate, looks_.mark,
          row.side};
}

/// Of the application: a palette reaches a widget some events later.
void LabelRows::FollowPalette() {
  const QPalette palette = QGuiApplication::palette();
  const QColor window = palette.color(QPalette::Window);
  const bool isOwn = night_ && !IsDark(window);
  const QColor ground = isOwn ? ToQColor(colour::NightPaper) : window;
  const QColor plate = isOwn ? ToQColor(colour::NightPlate) : palette.color(QPalette::Button);
  if (looks_.ground == ground.rgb() && looks_.plate == plate.rgb()) return;
  looks_.ground = ground.rgb();
  looks_.plate = plate.rgb();
  looks_.stale = Readable(IsDark(ground) ? colour::NightMuted : colour::Muted, ground);
  looks_.mark = ToQColor(IsDark(plate) ? colour::NightAlarm : colour::Alarm).rgb();
  looks_.onWhite = Readable(colour::Black, Qt::white);
  // Not the grey that would be readable: that is what an old value looks like.
  looks_.onPlate = IsDark(plate) ? QColor(Qt::white).rgb() : Readable(colour::Black, plate);
  for (Row& row : rows_) {
    row.ink = Readable(row.colour, plate);
    row.changed = true;
  }
}

/// In the column, in device pixels.
QRect LabelRows::PlateBox(const Row& row) const {
  const int top = static_cast<int>(std::lround(row.top * ratio_));
  const int bottom = static_cast<int>(std::lround((row.top + row.height) * ratio_));
  return QRect(0, top, column_.width(), bottom - top) & column_.rect();
}

/// Draws the plate of a row and its text. Gives what has changed, in pixels of the panel.
QRect LabelRows::DrawValue(Row& row) {
  const Plate plate = PlateOf(row);
  const QRect box = PlateBox(row);
  DrawPlate(plate, box);
  row.drawn = plate;
  const int width = cells_.Width(row.text);
  const int right = static_cast<int>(std::lround(kInsidePlate * ratio_));
  const int mark = plate.side == AlarmSide::None ? 0 : static_cast<int>(std::ceil(MarkWidth(font_) * ratio_));
  row.isWritten = width >= 0 && width + mark + right <= box.width() && cells_.Height() <= box.height();
  if (row.isWritten) {
    row.textCorner = {box.right() + 1 - right - width, box.top() + (box.height() - cells_.Height()) / 2};
    cells_.Write(column_, row.textCorner.x(), row.textCorner.y(), row.text, {}, plate.ink, plate.ground);
  } else {
    DrawByPainter(row, plate, box);
  }
  return {ValueLeft(), row.top, shares_.value, row.height};
}

/// Puts the text of a row where `before` stands in the same places: what nearly all samples change.
QRect LabelRows::WriteOver(Row& row, const Plate& plate, const std::string& before) {
  // A value's first digits seldom change.
  const QRect written =
      cells_.Write(column_, row.textCorner.x(), row.textCorner.y(), row.text, before, plate.ink, plate.ground);
  const QRectF pixels(written.x() / ratio_, written.y() / ratio_, written.width() / ratio_, written.height() / ratio_);
  return pixels.toAlignedRect().translated(ValueLeft(), 0);
}

void LabelRows::DrawPlate(const Plate& plate, const QRect& box) {
  if (plate.side == AlarmSide::None) return FillRows(column_, box, plate.ground);
  QPainter painter(&column_);
  const int frame = std::max(1, static_cast<int>(std::lround(2 * ratio_)));
  painter.fillRect(box, QColor(plate.mark));
  painter.fillRect(box.adjusted(frame, frame, -frame, -frame), QColor(plate.ground));
  const double size = 0.55 * font_.pixelSize() * ratio_;
  const QRectF place(box.left() + 1.5 * frame, box.center().y() - size / 2, size, size);
  const bool low = plate.side == AlarmSide::Low;
  const QPointF corners[] = {low ? place.topLeft() : place.bottomLeft(),
                             low ? place.topRight() : place.bottomRight(),
                             {place.center().x(), low ? place.bottom() : place.top()}};
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(Readable(ColourOf(QColor(plate.mark)), QColor(plate.ground))));
  painter.drawPolygon(corners, 3);
}

/// A text that the cells don't have, or that is wider than the plate: smaller letters, since a number that is cut would
/// be another number.
void LabelRows::DrawByPainter(const Row& row, const Plate& plate, const QRect& box) {
  const QString text = ToQt(row.text);
  const int beside = static_cast<int>(std::lround(kInsidePlate * ratio_));
  const int mark = plate.side == AlarmSide::None ? beside : static_cast<int>(std::ceil(MarkWidth(font_) * ratio_));
  const QRect room = box.adjusted(mark, 0, -beside, 0);
  QFont font = font_;
  font.setPixelSize(std::max(1, static_cast<int>(std::lround(font_.pixelSize() * ratio_))));
  QPainter painter(&column_);
  painter.setFont(FitFont(font, text, std::max(room.width(), 1), kSmallestDigits));
  painter.setPen(QColor(plate.ink));
  painter.drawText(room, Qt::AlignRight | Qt::AlignVCenter | Qt::TextSingleLine, text);
}

// --- Geometry ---

int LabelRows::ValueLeft() const {
  return kLeft + shares_.name + kGap;
}

QRect LabelRows::ValueColumn() const {
  return {ValueLeft(), 0, shares_.value, static_cast<int>(column_.height() / ratio_)};
}

QRect LabelRows::Box(const Place& place) const {
  const Row& row = rows_[static_cast<std::size_t>(place.row)];
  const int valueEnd = ValueLeft() + shares_.value;
  switch (place.column) {
    case 1:
      return {kLeft, row.top, shares_.name, row.height};
    case 2:
      return {ValueLeft(), row.top, shares_.value, row.height};
    default:
      return {valueEnd + kGap, row.top, shares_.units, row.height};
  }
}

LabelRows::Place LabelRows::PlaceAt(const QPoint& point) const {
  for (int row = 0; row < Count(); ++row)
    for (const int column : {1, 2, 3})
      if (Box({column, row}).contains(point)) return {column, row};
  return {};
}

QString LabelRows::Text(const Place& place) const {
  const Row& row = rows_[static_cast<std::size_t>(place.row)];
  if (place.column == 1) return row.name;
  if (place.column == 3) return row.units;
  const QString mark = row.side == AlarmSide::Low    ? QStringLiteral("\u25BC")
                       : row.side == AlarmSide::High ? QStringLiteral("\u25B2")
                                                     : QString();
  return mark + ToQt(row.text);
}

// --- Painting ---

void LabelRows::PaintTexts(QPainter& painter, const Row& row) const {
  painter.setPen(QColor(Readable(row.colour, QColor(looks_.ground))));
  painter.setFont(row.nameFont);
  const double line = QFontMetricsF(row.nameFont).height();
  double y = row.top + (row.height - line * static_cast<double>(row.nameLines.size())) / 2;
  for (const QString& text : row.nameLines) {
    painter.drawText(QRectF(kLeft, y, shares_.name, line), Qt::AlignLeft | Qt::AlignVCenter, text);
    y += line;
  }
  painter.setFont(row.unitsFont);
  painter.drawText(QRectF(ValueLeft() + shares_.value + 2 * kGap, row.top, shares_.units, row.height),
                   Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, row.shownUnits);
}

bool LabelRows::CopyDots(const PaintTarget& target, const QRect& part) {
  if (target.Ratio() != ratio_ || !ValueColumn().contains(part)) return false;
  target.Copy(part, column_, ValueColumn().topLeft());
  return true;
}

void LabelRows::paintEvent(QPaintEvent* event) {
  if (ratio_ != devicePixelRatioF()) LayOut();
  QPoint corner;
  const PaintTarget target(redirected(&corner), corner);
  if (CopyAll(target, event->region())) return;
  const QRect rect = event->rect();
  QPainter painter(this);
  if (!ValueColumn().contains(rect)) {
    painter.fillRect(rect, QColor(looks_.ground));
    for (const Row& row : rows_)
      if (row.top < rect.bottom() + 1 && row.top + row.height > rect.top()) PaintTexts(painter, row);
  }
  // Made over the same bytes: setting the ratio on a copy would copy all pixels.
  QImage view(column_.constBits(), column_.width(), column_.height(), column_.bytesPerLine(), column_.format());
  view.setDevicePixelRatio(ratio_);
  painter.drawImage(QPoint(ValueLeft(), 0), view);
}

void LabelRows::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  if (event->size().width() != event->oldSize().width()) LayOut();
}

void LabelRows::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::PaletteChange && ratio_ > 0) DrawColumn();
}

bool LabelRows::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QWidget::event(event);
  const auto& help = *static_cast<QHelpEvent*>(event);
  const Place place = PlaceAt(help.pos());
  if (place.column == 0)
    QToolTip::hideText();
  else
    QToolTip::showText(help.globalPos(), Text({place.column == 2 ? 1 : place.column, place.row}), this, Box(place));
  return true;
}

}  // namespace velk
