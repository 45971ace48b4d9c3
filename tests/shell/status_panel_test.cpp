#include "shell/status_panel.h"

#include <gtest/gtest.h>

namespace velk {
namespace {

TEST(StatusPanelTest, HasTheRoomOfItsTextWhateverHasChanged) {
  StatusPanel panel(new PanelLabel(nullptr));
  const auto show = [&](const char* text) {
    panel.ShowText(QString::fromUtf8(text));
    EXPECT_EQ(panel.Label().text(), text);
    EXPECT_EQ(panel.sizeHint(), panel.Label().sizeHint()) << text;
    EXPECT_EQ(panel.minimumSizeHint(), panel.Label().minimumSizeHint()) << text;
  };
  for (const char* text : {"1.0 samples/s", "9.9 samples/s", "10.1 samples/s", "10:11:12", "", "1", "paused"})
    show(text);
  show("111 rows");
  panel.Label().setStyleSheet(QStringLiteral("QLabel { font-weight: bold; padding: 0 6px; }"));
  show("222 rows");
  panel.Label().setStyleSheet({});
  show("333 rows");
}

}  // namespace
}  // namespace velk
