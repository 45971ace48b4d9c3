#pragma once

#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <functional>

namespace velk {

/// The box in which a comment is entered over a graph: a line that tells what becomes of it, and Text1 below. Enter and
/// Esc hide it.
class CommentBox : public QFrame {
  Q_OBJECT

 public:
  explicit CommentBox(QWidget* parent);

  /// Shows the box, empty, across `place`, with the focus in Text1.
  void Begin(const QString& hint, const QRect& place);
  bool IsOpen() const { return !isHidden(); }

  /// Told once the box is gone: what was entered; empty behind Esc.
  std::function<void(const QString& comment)> onDone;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Leave(const QString& comment);

  QLabel* hint_;
  QLineEdit* Text1_;
};

}  // namespace velk
