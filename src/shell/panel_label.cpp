#include "shell/panel_label.h"

#include <QEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QRawFont>
#include <QStyle>
#include <QTextLayout>
#include <algorithm>
#include <cmath>

#include "platform/windows/paint_target.h"

namespace velk {

namespace {

constexpr QLatin1String kDigits("0123456789");

}  // namespace

bool DifferInDigitsOnly(const QString& text, const QString& other) {
  const auto isDigit = [](QChar letter) { return letter >= QLatin1Char('0') && letter <= QLatin1Char('9'); };
  const auto alike = [&](QChar a, QChar b) { return a == b || (isDigit(a) && isDigit(b)); };
  return std::equal(text.begin(), text.end(), other.begin(), other.end(), alike);
}

PanelLabel::PanelLabel(QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
}

void PanelLabel::ShowText(const QString& text) {
  if (!ChangeDigits(text)) Forget();
  setText(text);
  update();
}

/// As a label indents a text in a frame.
QRect PanelLabel::Room() const {
  return contentsRect().adjusted(fontMetrics().horizontalAdvance(QLatin1Char('x')) / 2, 0, 0, 0);
}

void PanelLabel::paintEvent(QPaintEvent* event) {
  QPoint corner;
  const PaintTarget target(redirected(&corner), corner);
  if (target.HasDots() && !blank_.isNull() && blank_.devicePixelRatio() == target.Ratio()) {
    for (const QRect& part : event->region()) target.Copy(part, blank_, {});
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    for (const QGlyphRun& run : runs_) painter.drawGlyphRun(origin_, run);
    return;
  }
  if (!blank_.isNull()) return PaintOnBlank();
  PaintFrame();
  if (target.HasDots() && event->region() == QRegion(rect())) {
    FindGlyphs();
    if (!digits_.empty()) blank_ = target.Picture(rect());
    // All of it is painted here from now on: what lies behind need not be.
    setAttribute(Qt::WA_OpaquePaintEvent, !blank_.isNull());
  }
  PaintText();
}

/// In a grab, or on a screen of other dots: nothing stands behind the label there, since it is opaque.
void PanelLabel::PaintOnBlank() {
  QPainter(this).drawImage(0, 0, blank_);
  PaintText();
  if (blank_.devicePixelRatio() == devicePixelRatioF()) return;
  Forget();
  update();
}

void PanelLabel::PaintFrame() {
  QPainter painter(this);
  drawFrame(&painter);
}

void PanelLabel::PaintText() {
  QPainter painter(this);
  style()->drawItemText(&painter, Room(), Qt::AlignLeft | Qt::AlignVCenter, palette(), isEnabled(), Shown(),
                        foregroundRole());
}

/// The glyphs of the text, where the style puts it. None where it is not shown as it is.
void PanelLabel::FindGlyphs() {
  digits_.clear();
  if (!isEnabled() || Shown() != text()) return;
  QTextLayout layout(text(), font());
  layout.beginLayout();
  const QTextLine line = layout.createLine();
  layout.endLayout();
  if (!line.isValid()) return;
  const QList<QGlyphRun> runs = layout.glyphRuns();
  runs_.assign(runs.begin(), runs.end());
  origin_ = QPointF(Room().x(), Room().y() + (Room().height() - std::ceil(line.height())) / 2);
  FindDigits(layout);
}

void PanelLabel::FindDigits(const QTextLayout& layout) {
  for (qsizetype character = 0; character < text().size(); ++character) {
    const qsizetype digit = kDigits.indexOf(text()[character]);
    if (digit < 0) continue;
    const QList<QGlyphRun> own = layout.glyphRuns(static_cast<int>(character), 1);
    if (own.size() != 1 || own.front().positions().size() != 1) return digits_.clear();
    for (std::size_t run = 0; run < runs_.size(); ++run) {
      const qsizetype glyph = runs_[run].positions().indexOf(own.front().positions().front());
      if (glyph >= 0) digits_.push_back({character, glyph, run});
    }
  }
}

/// Gives whether the glyphs are those of the text now.
bool PanelLabel::ChangeDigits(const QString& text) {
  const QString before = this->text();
  if (blank_.isNull() || !DifferInDigitsOnly(text, before)) return false;
  for (const Digit& digit : digits_) {
    if (text[digit.character] == before[digit.character]) continue;
    QGlyphRun& run = runs_[digit.run];
    QList<quint32> glyphs = run.glyphIndexes();
    const QList<quint32> glyph = run.rawFont().glyphIndexesForString(text.mid(digit.character, 1));
    if (glyph.size() != 1) return false;
    glyphs[digit.glyph] = glyph.front();
    run.setGlyphIndexes(glyphs);
  }
  return true;
}

void PanelLabel::Forget() {
  blank_ = {};
  setAttribute(Qt::WA_OpaquePaintEvent, false);
}

void PanelLabel::resizeEvent(QResizeEvent* event) {
  QLabel::resizeEvent(event);
  Forget();
}

/// Other letters or colours, another style, on or off.
void PanelLabel::changeEvent(QEvent* event) {
  QLabel::changeEvent(event);
  if (event->type() != QEvent::ToolTipChange) Forget();
}

}  // namespace velk
