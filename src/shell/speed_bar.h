#pragma once

#include <QWidget>
#include <functional>
#include <string>

class QLabel;
class QSlider;

namespace velk {

/// The speed of playback: what it is in words, and the bar HScroll1 over its scale, 1 to 1000. The arrow keys change it
/// by 1, Page Up and Page Down by 50, Home and End go to the ends.
class SpeedBar : public QWidget {
  Q_OBJECT

 public:
  SpeedBar(const QString& toolTip, QWidget* parent);

  /// Puts the bar to a speed, without onChange, and the words beside it.
  void Show(int speed, const std::string& words);

  /// The operator has moved the bar.
  std::function<void(int speed)> onChange;

 private:
  QLabel* label_;
  QSlider* bar_;
};

}  // namespace velk
