#include "shell/status_panel.h"

#include <QEvent>

namespace velk {

StatusPanel::StatusPanel(QLabel* label) : label_(label) {
  label_->setParent(this);
  FollowLabel();
}

void StatusPanel::ShowText(const QString& text) {
  if (text == label_->text()) return;
  label_->setText(text);
  FollowLabel();
}

void StatusPanel::FollowLabel() {
  const QSize room = label_->sizeHint(), least = label_->minimumSizeHint();
  if (room == room_ && least == least_) return;
  room_ = room;
  least_ = least;
  updateGeometry();
}

void StatusPanel::resizeEvent(QResizeEvent*) {
  label_->setGeometry(rect());
}

/// Other letters, or another style, need other room. The label follows them by itself.
void StatusPanel::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) FollowLabel();
}

}  // namespace velk
