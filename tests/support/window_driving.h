#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QPushButton>
#include <QWidget>

namespace velk::test {

/// A control of a window by its name.
template <class Control>
Control* FindControl(const QWidget& window, const char* name) {
  auto* control = window.findChild<Control*>(QLatin1String(name));
  EXPECT_NE(control, nullptr) << name;
  return control;
}

inline void Click(const QWidget& window, const char* button) {
  auto* found = FindControl<QPushButton>(window, button);
  ASSERT_NE(found, nullptr);
  EXPECT_TRUE(found->isEnabled()) << button;
  found->click();
}

/// Shows a window, and keeps its picture where VELK_PICTURES says.
inline void ShowWindow(QWidget& window, const char* picture) {
  window.show();
  window.activateWindow();
  QApplication::processEvents();
  const QString folder = qEnvironmentVariable("VELK_PICTURES");
  if (!folder.isEmpty()) window.grab().save(QDir(folder).filePath(QString::fromLatin1(picture) + ".png"));
}

}  // namespace velk::test
