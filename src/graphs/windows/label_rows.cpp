#include "graphs/windows/label_rows.h"

#include <QFontMetricsF>
#include <QGuiApplication>
#include <QPalette>
#include <algorithm>
#include <cmath>

#include "base/colour.h"
#include "base/numbers.h"
#include "graphs/windows/chart_fonts.h"

namespace velk {

namespace {

constexpr int kTop = 4;  ///< pixels above the first row
constexpr int kLeft = 3;
constexpr int kNameWidth = 62;
constexpr int kGap = 2;  ///< 30 twips
constexpr int kLeastValueWidth = 46;
constexpr int kLeastUnitsWidth = 24;

QString WithSwatch(std::int32_t colour) {
  const auto css = [](std::int32_t c) {
    return QStringLiteral("rgb(%1,%2,%3)").arg(Red(c)).arg(Green(c)).arg(Blue(c));
  };
  return QStringLiteral("QLabel { color: %1; background: %2; }").arg(css(colour), css(LegibleBackground(colour)));
}

std::int32_t ColourOf(const QColor& colour) {
  return colour.blue() << 16 | colour.green() << 8 | colour.red();
}

/// The colour itself where it can be read on this ground, else black or white.
QColor LegibleOn(const QColor& ground, std::int32_t colour) {
  if (Contrast(colour, ColourOf(ground)) >= 3) return {Red(colour), Green(colour), Blue(colour)};
  return ground.lightness() > 127 ? Qt::black : Qt::white;
}

QColor AlarmColourOn(const QColor& ground) {
  return ground.lightness() > 127 ? QColor(0xC8, 0x10, 0x2E) : QColor(0xFF, 0x5A, 0x5F);
}

/// In front of the value of an alarmed curve.
constexpr const char* kNoValue = "\u2013";  ///< a row that is played back leaves the channel out
constexpr QChar kAlarmMark = u'\u25B2';

}  // namespace

LabelRows::LabelRows(QWidget& panel, QLabel& Label1, QLabel& Label2, QLabel& Label3) : panel_(panel) {
  rows_.push_back({&Label1, &Label2, &Label3, {}});
  Label1.setWordWrap(true);
}

void LabelRows::LoadAnotherFrame(int row) {
  const auto clone = [&](const QLabel* first, const char* name) {
    auto* label = new QLabel(&panel_);
    label->setObjectName(QStringLiteral("%1_%2").arg(QLatin1String(name)).arg(row));
    label->setWordWrap(first->wordWrap());
    label->setAlignment(first->alignment());
    label->setTextFormat(first->textFormat());
    label->setFont(first->font());
    label->setStyleSheet(first->styleSheet());
    label->show();
    return label;
  };
  const Row& first = rows_.front();
  rows_.push_back({clone(first.name, "Label1"), clone(first.value, "Label2"), clone(first.units, "Label3"), {}});
}

void LabelRows::Unload(int count) {
  while (Count() > std::max(count, 1)) {
    for (QLabel* label : {rows_.back().name, rows_.back().value, rows_.back().units}) delete label;
    rows_.pop_back();
  }
}

void LabelRows::Fill(int row, const Parameter& curve) {
  Row& labels = rows_[row];
  const QString name = QString::fromStdString(curve.name);
  const QString units = QString::fromStdString(curve.units);
  Colour(labels, curve.color);
  labels.name->setText(name);
  labels.name->setToolTip(name);
  labels.units->setText(units);
  labels.units->setToolTip(units);
  PlaceName(row, name);
  PlaceValue(labels);
  labels.units->setIndent(kGap);
  panel_.setMinimumHeight(labels.name->geometry().bottom() + kTop);
}

void LabelRows::Colour(Row& row, std::int32_t colour) {
  row.colour = colour;
  const QString style = WithSwatch(colour);
  for (QLabel* label : {row.name, row.units})
    if (label->styleSheet() != style) label->setStyleSheet(style);
  ShowFlash(row);
}

void LabelRows::ShowFlash(Row& row) {
  row.shownFlash = row.flash;
  // Of the application: a label's own palette gives the background of its style sheet as the colour of buttons.
  const QColor button = QGuiApplication::palette().color(QPalette::Button);
  const QColor ground = row.flash == Flash::White ? QColor(Qt::white) : button;
  QString style;
  if (row.flash == Flash::None)
    style = QStringLiteral("QLabel { color: %1; background: %2; }")
                .arg(LegibleOn(ground, row.colour).name(), ground.name());
  else
    style = QStringLiteral("QLabel { color: %1; background: %2; font-weight: bold; border: 2px solid %3; }")
                .arg(LegibleOn(ground, colour::Black).name(), ground.name(), AlarmColourOn(button).name());
  if (row.value->styleSheet() != style) row.value->setStyleSheet(style);
}

void LabelRows::PlaceName(int row, const QString& name) {
  QLabel& label = *rows_[row].name;
  const QFontMetricsF metrics(font_);
  int height = static_cast<int>(std::ceil(1.08 * metrics.height()));
  if (metrics.horizontalAdvance(name) >= kNameWidth) height *= 2;
  label.setFont(FitFont(font_, name, kNameWidth - 2, height));
  int top = kTop;
  if (row > 0) {
    const QRect above = rows_[row - 1].name->geometry();
    top = above.top() + static_cast<int>(std::ceil(1.05 * above.height()));
  }
  label.setGeometry(kLeft, top, kNameWidth, height);
}

void LabelRows::PlaceValue(Row& row) {
  const QRect name = row.name->geometry();
  const int left = name.right() + 1 + kGap;
  const int room = panel_.width() - left - kGap;
  // In a low window a scroll bar takes part of the room: the units give way, down to nothing, before the value does.
  const int mostWidth = std::max(room - kGap - kLeastUnitsWidth, kLeastValueWidth);
  row.value->setFont(FitFont(font_, row.value->text(), mostWidth / 1.15));
  const double text = QFontMetricsF(row.value->font()).horizontalAdvance(row.value->text());
  const int width = std::clamp(static_cast<int>(std::ceil(1.15 * text)), kLeastValueWidth, mostWidth);
  row.value->setGeometry(left, name.top(), width, name.height());
  const int unitsWidth = std::max(room - kGap - width, 1);
  row.units->setFont(FitFont(font_, row.units->text(), std::max(unitsWidth - 2 * kGap, 1)));
  row.units->setGeometry(left + width + kGap, name.top(), unitsWidth, name.height());
}

void LabelRows::FitToPanel() {
  for (Row& row : rows_) PlaceValue(row);
}

LabelRows::Place LabelRows::PlaceAt(const QPoint& place) const {
  const QWidget* label = panel_.childAt(place);
  for (int row = 0; label && row < Count(); ++row) {
    const Row& labels = rows_[row];
    if (label == labels.name) return {1, row};
    if (label == labels.value) return {2, row};
    if (label == labels.units) return {3, row};
  }
  return {};
}

void LabelRows::SetValue(int row, double value, std::string_view picture) {
  Row& labels = rows_[row];
  labels.text.clear();
  if (std::isnan(value))
    labels.text = kNoValue;
  else
    FormatTo(labels.text, value, picture);
  labels.changed = true;
}

void LabelRows::SetAlarm(int row, bool alarmed) {
  Row& labels = rows_[row];
  const Flash before = labels.flash;
  labels.flash = !alarmed ? Flash::None : before == Flash::White ? Flash::Button : Flash::White;
  if (labels.flash != before) labels.changed = true;
}

void LabelRows::ShowChanges() {
  for (Row& row : rows_) {
    if (!row.changed) continue;
    row.changed = false;
    if (row.shownFlash != row.flash) ShowFlash(row);
    const QString text =
        (row.flash == Flash::None ? QString() : QString(kAlarmMark)) + QString::fromStdString(row.text);
    if (text == row.value->text()) continue;
    const bool longer = text.size() != row.value->text().size();
    row.value->setText(text);
    if (longer) PlaceValue(row);
  }
}

}  // namespace velk
