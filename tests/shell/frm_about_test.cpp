#include "shell/frm_about.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QLineEdit>

#include "support/host.h"
#include "support/window_driving.h"

namespace velk {
namespace {

using namespace test;

TEST(FrmAbout, ShowsLongPathsFromTheirBeginningAndLetsThemBeCopied) {
  Session session;
  session.DefaultDirectory = std::string(300, 'x');
  Host host;
  const frmAbout window(host, session, "/settings");
  const auto* logs = FindControl<QLineEdit>(window, "txtLogs");
  EXPECT_EQ(logs->cursorPosition(), 0);
  EXPECT_TRUE(logs->isReadOnly());
  EXPECT_EQ(logs->text().size(), 300);
}

}  // namespace
}  // namespace velk
