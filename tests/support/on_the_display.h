#pragma once

#include <gtest/gtest.h>

#include <QImage>
#include <QScreen>
#include <QTest>
#include <QWidget>

namespace velk::test {

/// What the display shows of a window.
inline QImage OfTheDisplay(const QWidget& window) {
  return window.screen()->grabWindow(window.winId()).toImage().convertToFormat(QImage::Format_RGB32);
}

/// Whether the display comes to show what a painter would paint of a window. It hears of it in messages, so that it may
/// take a moment; what is wrong stays.
inline bool ComesToShow(QWidget& window) {
  const auto isShown = [&] {
    return OfTheDisplay(window) == window.grab().toImage().convertToFormat(QImage::Format_RGB32);
  };
  return QTest::qWaitFor(isShown, 1000);
}

}  // namespace velk::test
