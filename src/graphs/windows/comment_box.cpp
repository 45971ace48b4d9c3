#include "graphs/windows/comment_box.h"

#include <QKeyEvent>
#include <QVBoxLayout>

namespace velk {

CommentBox::CommentBox(QWidget* parent) : QFrame(parent), hint_(new QLabel(this)), Text1_(new QLineEdit(this)) {
  setObjectName("CommentBox");
  setFrameStyle(QFrame::StyledPanel | QFrame::Raised);
  setAutoFillBackground(true);
  hint_->setObjectName("CommentHint");
  hint_->setTextFormat(Qt::PlainText);
  hint_->setWordWrap(true);
  hint_->setBuddy(Text1_);
  Text1_->setObjectName("Text1");
  Text1_->installEventFilter(this);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(8, 8, 8, 8);
  layout->setSpacing(4);
  layout->addWidget(hint_);
  layout->addWidget(Text1_);
  hide();
}

void CommentBox::Begin(const QString& hint, const QRect& place) {
  hint_->setText(hint);
  Text1_->setAccessibleName(hint);
  Text1_->clear();
  setGeometry(place.left(), place.top(), place.width(), heightForWidth(place.width()));
  show();
  raise();
  Text1_->setFocus();
}

/// Enter and Esc are the box's own; F7 within it begins no second comment.
bool CommentBox::eventFilter(QObject* watched, QEvent* event) {
  if (watched != Text1_ || event->type() != QEvent::KeyPress) return QFrame::eventFilter(watched, event);
  switch (static_cast<const QKeyEvent*>(event)->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      Leave(Text1_->text());
      return true;
    case Qt::Key_Escape:
      Leave(QString());
      return true;
    case Qt::Key_F7:
      return true;
    default:
      return false;
  }
}

void CommentBox::Leave(const QString& comment) {
  Text1_->clear();
  hide();
  if (onDone) onDone(comment);
}

}  // namespace velk
