#pragma once

#include <QAbstractScrollArea>
#include <QImage>
#include <functional>
#include <map>

namespace velk {

/// Sheets of A4 below each other, as wide as the view. Those in view are drawn.
class PagesView : public QAbstractScrollArea {
  Q_OBJECT

 public:
  explicit PagesView(QWidget* parent);

  /// Shows so many sheets. `draw` gives the picture of one in so many dots.
  void Show(int pages, std::function<QImage(int page, QSize dots)> draw);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  QSize SheetSize() const;
  void UpdateBar();

  int pages_ = 0;
  std::function<QImage(int, QSize)> draw_;
  std::map<int, QImage> drawn_;
};

}  // namespace velk
