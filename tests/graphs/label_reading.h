#pragma once

#include <QTest>
#include <cstdlib>
#include <string>

#include "graphs/windows/label_rows.h"

namespace velk::test {

/// The panel of labels within a window.
inline LabelRows& LabelsOf(const QWidget& window) {
  return *window.findChild<LabelRows*>(QStringLiteral("LabelPanel"));
}

/// "Label2_0" is column 2 of the first row.
inline LabelRows::Place LabelPlace(const std::string& label) {
  return {label.at(5) - '0', std::atoi(label.c_str() + 7)};
}

inline std::string LabelText(const QWidget& window, const std::string& label) {
  return LabelsOf(window).Text(LabelPlace(label)).toStdString();
}

inline QRect LabelBox(const QWidget& window, const std::string& label) {
  return LabelsOf(window).Box(LabelPlace(label));
}

/// A label as it stands on the screen.
inline QImage LabelPicture(const QWidget& window, const std::string& label) {
  return LabelsOf(window).grab(LabelBox(window, label)).toImage();
}

inline void ClickLabel(const QWidget& window, const std::string& label, Qt::MouseButton button = Qt::LeftButton) {
  QTest::mouseClick(&LabelsOf(window), button, {}, LabelBox(window, label).center());
}

}  // namespace velk::test
