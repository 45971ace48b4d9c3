#pragma once

#include <QColor>
#include <QGlyphRun>
#include <QImage>
#include <QLabel>
#include <optional>
#include <vector>

#include "platform/windows/window_strips.h"

class QTextLayout;

namespace velk {

/// Whether two texts are the same but for digits.
bool DifferInDigitsOnly(const QString& text, const QString& other);

/// Whether the letters of a text stand where they do whatever its digits: there are faces with a narrower 1, and faces
/// where two digits, or a digit and a point, stand closer together than others.
bool DigitsKeepPlaces(const QString& text, const QFont& font);

/// A line of text in the status bar, whose digits may change with every sample. The style paints it first; from then on
/// a text of which only digits differ is shown by its glyphs, on what stood there without a text: to have it shaped and
/// styled anew takes as long as all else that a sample changes in a window.
class PanelLabel : public QLabel, public ReadyDots {
  Q_OBJECT

 public:
  explicit PanelLabel(QWidget* parent);

  /// Digits that differ are on the screen with the next ShowChanges.
  void ShowText(const QString& text);
  bool HasChanges() const { return !changed_.isEmpty(); }
  void ShowChanges(WindowStrips& strips);
  /// Once the style has painted the text.
  bool CopyDots(const PaintTarget& target, const QRect& part) override;
  /// The text as there is room for it.
  virtual QString Shown() const { return text(); }

 protected:
  /// Where the text stands.
  virtual QRect Room() const;
  void paintEvent(QPaintEvent* event) override;
  void moveEvent(QMoveEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  bool event(QEvent* event) override;

 private:
  using QLabel::setText;  // would leave the glyphs as they are

  /// A character that may become another digit: the glyph of a run.
  struct Digit {
    qsizetype character, glyph;
    std::size_t run;
  };

  struct Shape {
    quint32 glyph = 0;
    QRectF ink;  ///< what it touches, from its own origin
  };

  /// The glyphs of a font.
  struct Run {
    QGlyphRun glyphs;
    std::vector<QRect> places;  ///< what each of them touches of the label
    std::vector<Shape> digits;  ///< of 0 to 9
  };

  void PaintFrame();
  void PaintOnBlank();
  void PaintText();
  void PaintGlyphs(QPainter& painter, const QRect& part) const;
  void FindGlyphs();
  void FindDigits(const QTextLayout& layout);
  Run RunOf(const QGlyphRun& glyphs) const;
  std::optional<QRect> ChangeDigits(const QString& text);
  void ChangeDigit(const Digit& digit, const Shape& shape);
  void SetTextQuietly(const QString& text);
  void Forget();

  QImage blank_;    ///< the label without its text; null where the glyphs are not known
  QPointF origin_;  ///< of the glyphs
  QColor colour_;   ///< of the glyphs
  std::vector<Run> runs_;
  std::vector<Digit> digits_;
  QRect changed_;  ///< and not shown yet
};

}  // namespace velk
