#pragma once

#include <QLabel>

namespace velk {

/// A line of text that ends in a path. Where there is no room for it the middle gives way, so that the name of the file
/// stays in view.
class PathLabel : public QLabel {
  Q_OBJECT

 public:
  using QLabel::QLabel;

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace velk
