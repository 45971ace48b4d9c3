#pragma once

#include <QProxyStyle>

namespace velk {

/// The desktop's style with our own picture on the button behind which a toolbar keeps what it has no room for. Each
/// toolbar asks for that picture when it is made, and the toolkit's own brings in all plugins for pictures, a good part
/// of the program's start.
class ToolbarStyle : public QProxyStyle {
  Q_OBJECT

 public:
  using QProxyStyle::QProxyStyle;

  QIcon standardIcon(StandardPixmap picture, const QStyleOption* option, const QWidget* widget) const override;
};

}  // namespace velk
