#include "shell/frm_about.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QLineEdit>

#include "support/window_driving.h"
#include "support/window_texts.h"

namespace velk {
namespace {

using namespace test;

TEST(FrmAboutTexts, AreThereInRussian) {
  EXPECT_EQ(TextsWithoutRussian(frmAbout(Session(), "/settings", nullptr), {"lblVersion", "txtSettings", "txtLogs"}),
            kNone);
  Session session;
  session.Languages = RussianCaptions();
  session.Translator = RussianMessages();
  const frmAbout russian(session, "/settings", nullptr);
  EXPECT_EQ(TextsLeftInEnglish(russian), kNone);
  EXPECT_EQ(KeysMarkedTwice(russian), kNone);
}

TEST(FrmAboutTexts, FitWhereTextIsLarge) {
  const LargeText large(1.5);
  Session session;
  session.Languages = RussianCaptions();
  session.Translator = RussianMessages();
  frmAbout window(session, "/home/operator/.config/VELK", nullptr);
  window.show();
  EXPECT_EQ(TextsCutOff(window), kNone);
}

TEST(FrmAbout, ShowsLongPathsFromTheirBeginningAndLetsThemBeCopied) {
  Session session;
  session.DefaultDirectory = std::string(300, 'x');
  const frmAbout window(session, "/settings", nullptr);
  const auto* logs = FindControl<QLineEdit>(window, "txtLogs");
  EXPECT_EQ(logs->cursorPosition(), 0);
  EXPECT_TRUE(logs->isReadOnly());
  EXPECT_EQ(logs->text().size(), 300);
}

}  // namespace
}  // namespace velk
