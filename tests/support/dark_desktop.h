#pragma once

#include <QApplication>
#include <QPalette>

namespace velk::test {

/// A desktop with light letters on a dark ground; for windows that are made while it lives.
class DarkDesktop {
 public:
  DarkDesktop() : before_(QApplication::palette()) {
    const QColor ground(45, 45, 45), base(30, 30, 30), letters(235, 235, 235), faint(130, 130, 130);
    QPalette dark(letters, ground, ground.lighter(150), ground.darker(160), ground.darker(120), letters, base);
    dark.setColor(QPalette::AlternateBase, ground);
    dark.setColor(QPalette::ToolTipBase, base);
    dark.setColor(QPalette::ToolTipText, letters);
    dark.setColor(QPalette::PlaceholderText, faint);
    dark.setColor(QPalette::Link, QColor(110, 170, 255));
    dark.setColor(QPalette::LinkVisited, QColor(190, 150, 255));
    dark.setColor(QPalette::Highlight, QColor(42, 110, 190));
    dark.setColor(QPalette::HighlightedText, Qt::white);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
      dark.setColor(QPalette::Disabled, role, faint);
    QApplication::setPalette(dark);
  }
  ~DarkDesktop() { QApplication::setPalette(before_); }
  DarkDesktop(const DarkDesktop&) = delete;
  DarkDesktop& operator=(const DarkDesktop&) = delete;

 private:
  QPalette before_;
};

}  // namespace velk::test
