#include <gtest/gtest.h>
#include <QApplication>
#include <QFont>
#include <QLocale>
#include <QStyleFactory>
#include <clocale>

/// Every test program runs offscreen with one style, font, scale and locale, so that pictures are the same bytes
/// everywhere. VELK_PICTURES_SCALE is another scale, for the pictures of VELK_PICTURES and for what copies dots;
/// VELK_ON_A_DISPLAY has what tells how a display takes copies run on one.
int main(int argc, char** argv) {
  const bool isOnADisplay = qEnvironmentVariableIsSet("VELK_ON_A_DISPLAY");
  if (!isOnADisplay) qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("QT_SCALE_FACTOR", qEnvironmentVariableIsSet("VELK_PICTURES_SCALE") ? qgetenv("VELK_PICTURES_SCALE") : "1");
  const QApplication application(argc, argv);
  // The toolkit takes over the desktop's decimal comma; what tests print for comparison has a point.
  std::setlocale(LC_NUMERIC, "C");
  QLocale::setDefault(QLocale::c());
  QApplication::setStyle(QStyleFactory::create("Fusion"));
  QApplication::setFont(QFont("DejaVu Sans", 9));
  testing::InitGoogleTest(&argc, argv);
  const bool passed = RUN_ALL_TESTS() == 0;
  if (!isOnADisplay) return passed ? 0 : 1;
  const bool isTold =
      QApplication::platformName() == "xcb" && testing::UnitTest::GetInstance()->test_to_run_count() > 0;
  return passed && isTold ? 0 : 1;
}
