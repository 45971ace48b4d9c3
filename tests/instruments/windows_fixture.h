#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QPixmap>
#include <QTest>
#include <QWidget>

#include "i18n/languages.h"
#include "i18n/translator.h"
#include "support/host.h"

namespace velk::test {

/// The control of a window by its name; the test fails where there is none.
template <class Control>
Control& Find(const QWidget& window, const QString& name) {
  auto* control = window.findChild<Control*>(name);
  if (control == nullptr) throw std::runtime_error("no control " + name.toStdString());
  return *control;
}

/// The two languages of the program, from the texts that it ships.
inline Translation In(const std::string& name) {
  Translation translation;
  EXPECT_EQ(translation.Load(VELK_TRANSLATIONS_DIR, name), name);
  return translation;
}

/// Shows a window, and keeps its picture at the scales 1 and 1.5 where VELK_PICTURES says.
inline void Show(QWidget& window, const QString& picture) {
  window.show();
  window.activateWindow();
  QApplication::processEvents();
  const QString folder = qEnvironmentVariable("VELK_PICTURES");
  if (folder.isEmpty()) return;
  for (const double scale : {1.0, 1.5}) {
    QPixmap pixmap(window.size() * scale);
    pixmap.setDevicePixelRatio(scale);
    window.render(&pixmap);
    pixmap.save(QDir(folder).filePath(QStringLiteral("%1@%2.png").arg(picture).arg(scale)));
  }
}

/// Where Tab leads, from the control that has the keyboard until it comes round, divided by blanks.
inline std::string TabOrder(QWidget& window) {
  QStringList names;
  const QWidget* const first = window.focusWidget();
  for (QWidget* at = window.focusWidget(); at != nullptr; at = window.focusWidget()) {
    if (at == first && !names.isEmpty()) break;
    names << at->objectName();
    QTest::keyClick(at, Qt::Key_Tab);
    if (names.size() > 1000) break;
  }
  return names.join(' ').toStdString();
}

}  // namespace velk::test
