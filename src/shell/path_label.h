#pragma once

#include "shell/panel_label.h"

namespace velk {

/// A line of text that is never the reason for a wider window. Where there is no room for it a part gives way: the
/// middle of one that ends in a path, so that the name of the file stays in view; else its end.
class PathLabel : public PanelLabel {
  Q_OBJECT

 public:
  explicit PathLabel(QWidget* parent, Qt::TextElideMode givesWay = Qt::ElideMiddle)
      : PanelLabel(parent), givesWay_(givesWay) {}

  QSize sizeHint() const override { return minimumSizeHint(); }
  QSize minimumSizeHint() const override { return {1, QLabel::sizeHint().height()}; }
  /// The text as there is room for it; nothing where that would be the dots alone.
  QString Shown() const override;

 protected:
  QRect Room() const override;

 private:
  const Qt::TextElideMode givesWay_;
};

/// One that would have its whole text in view, ahead of all that stretches beside it. It asks in large steps, so that a
/// text of which only a digit changes has nothing laid out anew.
class WholeLabel : public PathLabel {
  Q_OBJECT

 public:
  explicit WholeLabel(QWidget* parent) : PathLabel(parent, Qt::ElideRight) {}

  QSize sizeHint() const override;
};

}  // namespace velk
