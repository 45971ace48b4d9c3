#pragma once

#include <QDialog>
#include <QImage>
#include <functional>
#include <memory>

#include "i18n/windows/window_host.h"

namespace Ui {
class frmImage;
}

namespace velk {

/// The company's picture in a window of its own: what the window is sized to, the picture on the page gets.
class frmImage : public QDialog {
  Q_OBJECT

 public:
  /// `size` is the picture's, in pixels, at which the window begins, if the screen and its other parts allow; `onSized`
  /// is told how many times as wide and as high as at first it has become.
  frmImage(WindowHost& host, const QImage& picture, QSize size, std::function<void(double wide, double high)> onSized);
  ~frmImage() override;

 protected:
  void showEvent(QShowEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  std::unique_ptr<Ui::frmImage> ui_;
  const std::function<void(double wide, double high)> onSized_;
  QSize first_;  ///< of the picture in the window as it came up
};

}  // namespace velk
