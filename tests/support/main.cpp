#include <gtest/gtest.h>
#include <QApplication>
#include <QFont>
#include <QLocale>
#include <QStyleFactory>
#include <clocale>

#include "platform/windows/moved_windows.h"

/// Every test program runs offscreen with one style, font, scale and locale, so that pictures are the same bytes
/// everywhere. VELK_PICTURES_SCALE is another scale, for the pictures of VELK_PICTURES and for what copies dots;
/// VELK_ON_A_DISPLAY has what tells how a display takes copies run on one.
int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("VELK_ON_A_DISPLAY")) qputenv("QT_QPA_PLATFORM", "offscreen");
  velk::PaintMovedWindows();
  qputenv("QT_SCALE_FACTOR", qEnvironmentVariableIsSet("VELK_PICTURES_SCALE") ? qgetenv("VELK_PICTURES_SCALE") : "1");
  const QApplication application(argc, argv);
  // The toolkit takes over the desktop's decimal comma; what tests print for comparison has a point.
  std::setlocale(LC_NUMERIC, "C");
  QLocale::setDefault(QLocale::c());
  QApplication::setStyle(QStyleFactory::create("Fusion"));
  QApplication::setFont(QFont("DejaVu Sans", 9));
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
