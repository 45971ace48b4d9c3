#include "shell/panel_label.h"

#include <QEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QRawFont>
#include <QStyle>
#include <QTextLayout>
#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/windows/paint_target.h"

namespace velk {

namespace {

constexpr QLatin1String kDigits("0123456789");

bool IsDigit(QChar letter) {
  return letter >= QLatin1Char('0') && letter <= QLatin1Char('9');
}

/// Tabs and ends of lines are laid out otherwise where a text is painted.
bool IsPlain(QChar letter) {
  const QChar::Category category = letter.category();
  return category != QChar::Other_Control && category != QChar::Separator_Line &&
         category != QChar::Separator_Paragraph;
}

/// The letters that stand beside a digit, each once.
QString NeighboursOfDigits(const QString& text) {
  QString neighbours;
  for (qsizetype i = 1; i < text.size(); ++i) {
    if (IsDigit(text[i - 1]) == IsDigit(text[i])) continue;
    const QChar neighbour = IsDigit(text[i]) ? text[i - 1] : text[i];
    if (!neighbours.contains(neighbour)) neighbours += neighbour;
  }
  return neighbours;
}

/// Each digit on both sides of each other, and of each neighbour.
QString EachPair(const QString& neighbours) {
  QString pairs;
  for (qsizetype first = 0; first < kDigits.size(); ++first) {
    pairs += kDigits[first];
    for (qsizetype second = first + 1; second < kDigits.size(); ++second)
      pairs.append(kDigits[first]).append(kDigits[second]);
  }
  for (const QChar neighbour : neighbours)
    for (const char digit : kDigits) pairs.append(QLatin1Char(digit)).append(neighbour);
  return pairs + kDigits.front();
}

/// What a glyph may touch where it stands, its softened edges among that.
QRect Touched(const QRectF& ink, QPointF place) {
  constexpr int kEdge = 2;
  return ink.translated(place).toAlignedRect().adjusted(-kEdge, -kEdge, kEdge, kEdge);
}

}  // namespace

bool DifferInDigitsOnly(const QString& text, const QString& other) {
  const auto alike = [&](QChar a, QChar b) { return a == b || (IsDigit(a) && IsDigit(b)); };
  return std::equal(text.begin(), text.end(), other.begin(), other.end(), alike);
}

bool DigitsKeepPlaces(const QString& text, const QFont& font) {
  const QString letters = EachPair(NeighboursOfDigits(text));
  QTextLayout layout(letters, font);
  layout.beginLayout();
  layout.createLine();
  layout.endLayout();
  const QList<QGlyphRun> runs = layout.glyphRuns();
  if (runs.size() != 1 || runs.front().positions().size() != letters.size()) return false;
  const QList<QPointF> positions = runs.front().positions();
  const auto width = [&](qsizetype i) { return positions[i + 1].x() - positions[i].x(); };
  for (qsizetype i = 0; i + 1 < letters.size(); ++i) {
    const qsizetype alike = IsDigit(letters[i]) ? 0 : letters.indexOf(letters[i]);
    if (!qFuzzyCompare(width(i), width(alike))) return false;
  }
  return true;
}

PanelLabel::PanelLabel(QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
}

void PanelLabel::ShowText(const QString& text) {
  if (const auto changed = ChangeDigits(text)) {
    changed_ |= *changed;
    return SetTextQuietly(text);
  }
  Forget();
  setText(text);
  update();
}

/// A label would have all of itself painted anew, and each of its glyphs takes long.
void PanelLabel::SetTextQuietly(const QString& text) {
  const bool before = testAttribute(Qt::WA_UpdatesDisabled);
  setAttribute(Qt::WA_UpdatesDisabled);
  setText(text);
  setAttribute(Qt::WA_UpdatesDisabled, before);
}

void PanelLabel::ShowChanges(WindowStrips& strips) {
  if (HasChanges()) strips.Add(*this, std::exchange(changed_, {}));
}

/// As a label indents a text in a frame.
QRect PanelLabel::Room() const {
  return contentsRect().adjusted(fontMetrics().horizontalAdvance(QLatin1Char('x')) / 2, 0, 0, 0);
}

bool PanelLabel::CopyDots(const PaintTarget& target, const QRect& part) {
  if (blank_.isNull() || blank_.devicePixelRatio() != target.Ratio() || part.isEmpty()) return false;
  target.Copy(part, blank_, {});
  QImage view = target.View(part);
  QPainter painter(&view);
  painter.translate(-part.topLeft());
  PaintGlyphs(painter, part);
  return true;
}

void PanelLabel::paintEvent(QPaintEvent* event) {
  QPoint corner;
  const PaintTarget target(redirected(&corner), corner);
  if (CopyAll(target, event->region())) return;
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

/// Those that touch a part of the label; they stand in line.
void PanelLabel::PaintGlyphs(QPainter& painter, const QRect& part) const {
  painter.setPen(colour_);
  const auto touches = [&](const QRect& place) { return place.intersects(part); };
  for (const Run& run : runs_) {
    const auto first = std::find_if(run.places.begin(), run.places.end(), touches);
    const auto last = std::find_if(run.places.rbegin(), run.places.rend(), touches).base();
    if (first >= last) continue;
    const QList<quint32> indexes = run.glyphs.glyphIndexes();
    const QList<QPointF> positions = run.glyphs.positions();
    const auto skipped = first - run.places.begin();
    QGlyphRun touched = run.glyphs;
    touched.setRawData(indexes.constData() + skipped, positions.constData() + skipped, static_cast<int>(last - first));
    painter.drawGlyphRun(origin_, touched);
  }
}

/// The glyphs of the text, where the style puts it. None where it is not shown as it is, or would not be with other
/// digits.
void PanelLabel::FindGlyphs() {
  digits_.clear();
  if (!isEnabled() || Shown() != text()) return;
  const QString text = this->text();
  if (!std::all_of(text.begin(), text.end(), IsPlain)) return;
  QTextLayout layout(text, font());
  layout.beginLayout();
  const QTextLine line = layout.createLine();
  layout.endLayout();
  if (!line.isValid() || line.naturalTextWidth() > Room().width() || std::ceil(line.height()) > Room().height()) return;
  origin_ = QPointF(Room().x(), Room().y() + (Room().height() - std::ceil(line.height())) / 2);
  colour_ = palette().color(foregroundRole());
  runs_.clear();
  for (const QGlyphRun& glyphs : layout.glyphRuns()) runs_.push_back(RunOf(glyphs));
  FindDigits(layout);
  if (!digits_.empty() && !DigitsKeepPlaces(text, font())) digits_.clear();
}

PanelLabel::Run PanelLabel::RunOf(const QGlyphRun& glyphs) const {
  const QRawFont font = glyphs.rawFont();
  Run run{glyphs, {}, {}};
  for (qsizetype i = 0; i < glyphs.positions().size(); ++i)
    run.places.push_back(Touched(font.boundingRect(glyphs.glyphIndexes()[i]), origin_ + glyphs.positions()[i]));
  for (const quint32 digit : font.glyphIndexesForString(kDigits))
    run.digits.push_back({digit, font.boundingRect(digit)});
  return run;
}

void PanelLabel::FindDigits(const QTextLayout& layout) {
  for (qsizetype character = 0; character < text().size(); ++character) {
    const qsizetype digit = kDigits.indexOf(text()[character]);
    if (digit < 0) continue;
    const QList<QGlyphRun> own = layout.glyphRuns(static_cast<int>(character), 1);
    if (own.size() != 1 || own.front().positions().size() != 1) return digits_.clear();
    const std::size_t known = digits_.size();
    for (std::size_t run = 0; run < runs_.size(); ++run) {
      const qsizetype glyph = runs_[run].glyphs.positions().indexOf(own.front().positions().front());
      const bool hasShapes = runs_[run].digits.size() == static_cast<std::size_t>(kDigits.size());
      if (glyph >= 0 && hasShapes) digits_.push_back({character, glyph, run});
    }
    if (digits_.size() == known) return digits_.clear();
  }
}

/// Gives what the digits that have changed touch, or nothing where the glyphs are not those of the text now.
std::optional<QRect> PanelLabel::ChangeDigits(const QString& text) {
  const QString before = this->text();
  const bool isKnown = !blank_.isNull() && blank_.devicePixelRatio() == devicePixelRatioF();
  if (!isKnown || !DifferInDigitsOnly(text, before)) return std::nullopt;
  QRect changed;
  for (const Digit& digit : digits_) {
    if (text[digit.character] == before[digit.character]) continue;
    const Run& run = runs_[digit.run];
    const QRect& place = run.places[static_cast<std::size_t>(digit.glyph)];
    changed |= place;
    ChangeDigit(digit, run.digits[static_cast<std::size_t>(text[digit.character].digitValue())]);
    changed |= place;
  }
  return changed;
}

void PanelLabel::ChangeDigit(const Digit& digit, const Shape& shape) {
  Run& run = runs_[digit.run];
  QList<quint32> glyphs = run.glyphs.glyphIndexes();
  glyphs[digit.glyph] = shape.glyph;
  run.glyphs.setGlyphIndexes(glyphs);
  run.places[static_cast<std::size_t>(digit.glyph)] = Touched(shape.ink, origin_ + run.glyphs.positions()[digit.glyph]);
}

void PanelLabel::Forget() {
  if (HasChanges()) update();
  blank_ = {};
  changed_ = {};
  setAttribute(Qt::WA_OpaquePaintEvent, false);
}

/// The ground there may look otherwise.
void PanelLabel::moveEvent(QMoveEvent* event) {
  QLabel::moveEvent(event);
  Forget();
  update();
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

/// There are palettes with other colours for the windows behind.
bool PanelLabel::event(QEvent* event) {
  if (event->type() == QEvent::WindowActivate || event->type() == QEvent::WindowDeactivate) Forget();
  return QLabel::event(event);
}

}  // namespace velk
