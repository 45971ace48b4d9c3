#include <gtest/gtest.h>

#include <QMdiSubWindow>
#include <QScrollArea>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "graphs/graph_form_fixture.h"
#include "model/graph_map.h"
#include "support/on_the_display.h"

namespace velk {
namespace {

constexpr int kGraphs = 3, kCurves = 9;
constexpr double kSecond = 1.0 / 86400;

/// Three windows of graphs to which things happen in any order, with something that may lie in front of them.
class BusyDesk {
 public:
  explicit BusyDesk(unsigned seed) : random_(seed) {
    for (int i = 1; i <= kCurves; ++i) {
      desk_.session.CurrentParameters[i].FormIndex = static_cast<std::int16_t>(1 + (i - 1) % kGraphs);
      desk_.session.CurrentParameters[i].loweralarm = i % 2 == 1 ? "20" : "";
    }
    BuildGraphMap(desk_.session, kCurves);
    desk_.area.resize(1000, 700);
    desk_.Create();
    cover_.setAutoFillBackground(true);
    cover_.setPalette(Qt::yellow);
    cover_.hide();
  }

  QMdiArea& Area() { return desk_.area; }

  /// Some of what an operator and a job may do between two samples; gives what it was.
  std::string Happen() {
    std::string done;
    for (int steps = 1 + Any(8); steps > 0; --steps) {
      const auto& [name, act] = happenings_[static_cast<std::size_t>(Any(static_cast<int>(happenings_.size())))];
      const QList<QMdiSubWindow*> windows = desk_.area.subWindowList();
      act(*windows[Any(static_cast<int>(windows.size()))]);
      done += std::string(name) + ' ';
      if (Any(3) == 0) QCoreApplication::processEvents();
    }
    return done;
  }

  void Sample() {
    const double time = desk_.session.Times.GraphPageTime + second_ * kSecond;
    for (int i = 1; i <= kCurves; ++i) {
      if (Any(3) == 0) continue;
      const float value = static_cast<float>(Any(10) == 0 ? Any(200'000) - 100'000 : Any(100'000)) / 1000;
      GraphFormNew& form = desk_.Form(1 + (i - 1) % kGraphs);
      form.PlotValue(time, time + kSecond, value, static_cast<float>(Any(100)), 0, 100, 0x0000FF, false);
      form.WriteValuesToLabels(i, value);
      if (Any(20) == 0) form.ShowAlarm(i, Any(2) == 0 ? AlarmSide::Low : AlarmSide::None);
    }
    second_ = (second_ + 1) % 230;
    desk_.Refresh();
  }

 private:
  struct Happening {
    const char* name;
    std::function<void(QMdiSubWindow& window)> act;
  };

  int Any(int count) { return std::uniform_int_distribution<>(0, count - 1)(random_); }
  static void Maximize(QMdiSubWindow& window) { window.isMaximized() ? window.showNormal() : window.showMaximized(); }
  static void Shade(QMdiSubWindow& window) { window.isShaded() ? window.showNormal() : window.showShaded(); }
  void Scroll(QMdiSubWindow& window) {
    QScrollBar& bar = *window.findChild<QScrollArea*>("LabelArea")->verticalScrollBar();
    bar.setValue(Any(bar.maximum() + 1));
  }
  void Cover() {
    cover_.setGeometry(Any(900), Any(600), 20 + Any(200), 20 + Any(200));
    cover_.setVisible(Any(2) == 0);
  }
  void TurnNight() {
    desk_.session.NightColours = Any(4) == 0;
    desk_.windows.FollowLooks();
  }
  void Stale() {
    for (int graph = 1; graph <= kGraphs; ++graph) desk_.Form(graph).ShowValuesStale(Any(3) == 0);
    desk_.Refresh();
  }

  test::GraphDesk desk_{kCurves};
  QWidget cover_{&desk_.area};
  std::mt19937 random_;
  int second_ = 0;
  const std::vector<Happening> happenings_{
      {"move", [this](QMdiSubWindow& window) { window.move(Any(700) - 100, Any(500) - 50); }},
      {"resize", [this](QMdiSubWindow& window) { window.resize(300 + Any(700), 100 + Any(500)); }},
      {"raise", [this](QMdiSubWindow& window) { desk_.area.setActiveSubWindow(&window); }},
      {"scroll", [this](QMdiSubWindow& window) { Scroll(window); }},
      {"tile", [this](QMdiSubWindow&) { desk_.area.tileSubWindows(); }},
      {"cascade", [this](QMdiSubWindow&) { desk_.area.cascadeSubWindows(); }},
      {"maximize", Maximize},
      {"shade", Shade},
      {"cover", [this](QMdiSubWindow&) { Cover(); }},
      {"night", [this](QMdiSubWindow&) { TurnNight(); }},
      {"stale", [this](QMdiSubWindow&) { Stale(); }},
      {"header", [this](QMdiSubWindow&) { desk_.Form(1 + Any(kGraphs)).RefreshForm(); }},
      {"sample", [this](QMdiSubWindow&) { Sample(); }},
      {"sample", [this](QMdiSubWindow&) { Sample(); }},
      {"sample", [this](QMdiSubWindow&) { Sample(); }},
  };
};

/// Strips are copied past the toolkit, and it has the display move dots by itself: neither may leave old digits.
TEST(OnTheDisplay, WindowsOfGraphsShowWhatAPainterWouldPaintWhateverHappens) {
  BusyDesk desk(qEnvironmentVariableIntValue("VELK_SEED"));
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&desk.Area()));
  const int rounds = qEnvironmentVariableIsSet("VELK_ROUNDS") ? qEnvironmentVariableIntValue("VELK_ROUNDS") : 200;
  for (int round = 0; round < rounds; ++round) {
    const std::string happened = desk.Happen();
    desk.Sample();
    desk.Sample();
    ASSERT_TRUE(test::ComesToShow(desk.Area())) << "round " << round << ": " << happened;
  }
}

}  // namespace
}  // namespace velk
