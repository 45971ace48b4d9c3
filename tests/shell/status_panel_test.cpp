#include "shell/status_panel.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QHBoxLayout>
#include <QStatusBar>
#include <utility>

#include "support/own_face.h"

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

TEST(StatusPanelTest, HasTheRoomOfItsTextInAFaceWhoseDigitsAreKerned) {
  test::OwnFace face("Closed");
  face.Kern('1', '1', 0.2);
  face.Kern('7', '.', 0.2);
  StatusPanel panel(new PanelLabel(nullptr));
  panel.Label().setFont(face.Install(9));
  for (const char* text : {"11:11:11", "12:34:56", "21:11:11", "job 7.mdb", "job 8.mdb"}) {
    panel.ShowText(text);
    EXPECT_EQ(panel.sizeHint(), panel.Label().sizeHint()) << text;
  }
}

/// Counts what is posted to have a widget laid out anew.
class LayoutRequests : public QObject {
 public:
  explicit LayoutRequests(QWidget& widget) { widget.installEventFilter(this); }
  int Take() {
    QApplication::processEvents();
    return std::exchange(count_, 0);
  }

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::LayoutRequest) ++count_;
    return false;
  }

 private:
  int count_ = 0;
};

TEST(StatusPanelTest, AsksForNoLayoutWhileItsTextNeedsTheSameRoom) {
  QWidget window;
  auto* const panel = new StatusPanel(new PanelLabel(nullptr));
  (new QHBoxLayout(&window))->addWidget(panel);
  panel->ShowText("1,000 rows");
  window.resize(600, 40);
  window.show();
  LayoutRequests ofPanel(*panel), ofWindow(window);
  ofPanel.Take(), ofWindow.Take();
  for (int rows = 1001; rows < 1100; ++rows) panel->ShowText(QString("1,%1 rows").arg(rows % 1000, 3, 10, QChar('0')));
  EXPECT_EQ(ofPanel.Take(), 0);
  EXPECT_EQ(ofWindow.Take(), 0);
  EXPECT_EQ(panel->Label().text(), "1,099 rows");
  EXPECT_EQ(panel->Label().geometry(), panel->rect());

  panel->ShowText("1,099 rows and 1 that is missing");
  EXPECT_GT(ofWindow.Take(), 0) << "it needs more";
  window.resize(900, 60);
  EXPECT_EQ(ofPanel.Take(), 0);
  EXPECT_GT(panel->width(), 600);
  EXPECT_EQ(panel->Label().geometry(), panel->rect());
}

TEST(StatusPanelTest, GivesItsLabelAllItsRoomWhateverHasChanged) {
  QStatusBar bar;
  auto* const panel = new StatusPanel(new PanelLabel(nullptr));
  panel->Label().setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
  panel->show();  // ahead of the bar: a window of its own by then
  bar.addWidget(panel, 1);
  bar.addWidget(new QWidget, 100);  // takes all that is left
  bar.resize(900, 30);
  bar.show();
  const auto settle = [&](const char* what) {
    QApplication::processEvents();
    EXPECT_EQ(panel->Label().geometry(), panel->rect()) << what;
    EXPECT_GE(panel->width(), panel->Label().sizeHint().width()) << what;
  };
  settle("no text yet");
  panel->ShowText("Ready");
  settle("a text");
  panel->ShowText("14-Mar-2026 and more");
  settle("a longer one");
  panel->Label().setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  panel->ShowText("14-Mar-2026, and yet more than that");
  settle("a label that grows for no layout");
  QFont large = bar.font();
  large.setPointSize(2 * large.pointSize());
  bar.setFont(large);
  settle("larger letters");
}

}  // namespace
}  // namespace velk
