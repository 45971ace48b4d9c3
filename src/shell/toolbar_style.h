#pragma once

#include <QProxyStyle>

namespace velk {

/// The desktop's style with our own picture on the button behind which a toolbar keeps what it has no room for. Each
/// toolbar asks for that picture when it is made, and the toolkit's own brings in all plugins for pictures, a good part
/// of the program's start. The keyboard reaches menu items that are off, so that the status bar tells it why they are;
/// and on a dark desktop the title and the buttons of a graph window that is not in front can be seen.
class ToolbarStyle : public QProxyStyle {
  Q_OBJECT

 public:
  using QProxyStyle::QProxyStyle;

  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* more) const override;
  void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                          const QWidget* widget) const override;
  QIcon standardIcon(StandardPixmap picture, const QStyleOption* option, const QWidget* widget) const override;
};

}  // namespace velk
