#pragma once

#include <QLabel>

namespace velk {

/// A line of text that is never the reason for a wider window. Where there is no room for it a part gives way: the
/// middle of one that ends in a path, so that the name of the file stays in view; else its end.
class PathLabel : public QLabel {
  Q_OBJECT

 public:
  explicit PathLabel(QWidget* parent, Qt::TextElideMode givesWay = Qt::ElideMiddle)
      : QLabel(parent), givesWay_(givesWay) {}

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  const Qt::TextElideMode givesWay_;
};

}  // namespace velk
