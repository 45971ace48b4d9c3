#include "shell/status_panel.h"

#include <QEvent>
#include <QHBoxLayout>
#include <algorithm>

namespace velk {

namespace {

/// Keeps the label as large as the panel. A label asks to be laid out anew with each text, which without a layout is an
/// event that wakes the loop up; here it is dropped, since the panel finds out by itself when its label needs other
/// room.
class QuietLayout : public QHBoxLayout {
 public:
  explicit QuietLayout(QWidget* panel) : QHBoxLayout(panel) {
    setContentsMargins(0, 0, 0, 0);
    setSizeConstraint(SetNoConstraint);  // of a panel without a bar the least width would be kept for good
  }
  void invalidate() override {}
  /// Whatever the label has asked for.
  void setGeometry(const QRect& rect) override { itemAt(0)->widget()->setGeometry(rect); }
};

}  // namespace

StatusPanel::StatusPanel(PanelLabel* label) : label_(label) {
  (new QuietLayout(this))->addWidget(label_);
  FollowLabel();
}

void StatusPanel::ShowText(const QString& text) {
  if (text == label_->text()) return;
  // To ask for the room shapes the text twice: as much work as a sample's on the screen.
  const bool needsTheSame = digitsKeepPlaces_ && label_->font() == letters_ && DifferInDigitsOnly(text, label_->text());
  label_->ShowText(text);
  if (!needsTheSame) FollowLabel();
}

void StatusPanel::FollowLabel() {
  letters_ = label_->font();
  digitsKeepPlaces_ = DigitsKeepPlaces(label_->text(), letters_);
  const QSize room = label_->sizeHint(), least = label_->minimumSizeHint();
  if (room == room_ && least == least_) return;
  room_ = room;
  least_ = least;
  updateGeometry();
}

/// Other letters, or another style, need other room. The label follows them by itself.
void StatusPanel::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) FollowLabel();
}

}  // namespace velk
