// What items of an OPC server cost, against the simulated plant over loopback. Each line is one stretch of seconds; its
// figures are the counters: percent of one core, and the longest time that the event loop did not come round.

#include <benchmark/benchmark.h>
#include <sys/resource.h>
#include <unistd.h>

#include <QAction>
#include <QApplication>
#include <QTreeWidget>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>

#include "bench/no_dialogs.h"
#include "bench/process_watch.h"
#include "i18n/translation.h"
#include "opc/velk_opc_module.h"
#include "opc/windows/frm_main_opc.h"
#include "platform/loop/gate.h"
#include "platform/loop/system_clock.h"
#include "platform/opc/ua/ua_transport.h"

namespace velk {
namespace {

constexpr const char* kUrl = "opc.tcp://127.0.0.1:48777";
constexpr int kMilliseconds = 10'000;

double CpuMilliseconds() {
  rusage used{};
  getrusage(RUSAGE_SELF, &used);
  const auto of = [](const timeval& time) {
    return static_cast<double>(time.tv_sec) * 1000 + static_cast<double>(time.tv_usec) / 1000;
  };
  return of(used.ru_utime) + of(used.ru_stime);
}

struct Plant {
  explicit Plant(int many)
      : server({VELK_SIM_OPC, "--port", "48777", "--many", std::to_string(many), "--moving", std::to_string(many)},
               {}) {
    Run(1000);
  }

  /// Lets events run; gives the longest time between two looks.
  std::int64_t Run(int milliseconds) {
    std::int64_t longest = 0;
    const std::int64_t end = clock.Ticks() + milliseconds;
    for (std::int64_t now = clock.Ticks(); now < end;) {
      clock.WaitRound();
      longest = std::max(longest, clock.Ticks() - now);
      now = clock.Ticks();
    }
    return longest;
  }

  bench::Child server;
  Gate gate;
  SystemClock clock{gate};
  std::string folder = std::filesystem::temp_directory_path() / ("velk_opc_bench_" + std::to_string(getpid()));
  SettingsStore settings{folder};
  Translation translation;
  bench::NoDialogs dialogs{gate, translation.Translator};
  std::unique_ptr<OpcTransport> transport = MakeUaTransport(clock, nullptr, folder);
};

std::vector<std::string> ManyIds(int count) {
  std::vector<std::string> ids;
  for (int i = 0; i < count; ++i) ids.push_back("ns=1;s=Many.V" + std::to_string(i));
  return ids;
}

/// All of a wait is spent in rounds of a millisecond, which cost by themselves: they are measured first.
double Share(Plant& plant, std::int64_t& longest) {
  const double before = CpuMilliseconds();
  longest = plant.Run(kMilliseconds);
  return 100 * (CpuMilliseconds() - before) / kMilliseconds;
}

/// What so many items of one stored group cost, all of them moving, while `begin` has brought them up.
void MeasureItems(benchmark::State& state, int items, int rate,
                  const std::function<std::shared_ptr<void>(Plant&)>& begin) {
  Plant plant(items);
  std::int64_t longest = 0;
  const double idle = Share(plant, longest);
  SaveOPCConfiguration(plant.settings, {{kUrl, "", {{"Plant", 0, rate, ManyIds(items)}}}});
  const std::shared_ptr<void> users = begin(plant);
  state.counters["core_percent"] = Share(plant, longest) - idle;
  state.counters["longest_block_ms"] = static_cast<double>(longest);
}

void ItemsOfAJob64At100ms(benchmark::State& state) {
  for (auto _ : state) {
    MeasureItems(state, 64, 100, [&](Plant& plant) {
      const auto items = std::make_shared<VELKOPCModule>(*plant.transport, plant.clock, plant.settings);
      items->ConnectOPCItems(64);
      plant.Run(3000);
      if (!items->Line(0, " ", "\r")) state.SkipWithError("not all items have reported");
      return items;
    });
  }
}
BENCHMARK(ItemsOfAJob64At100ms)->Iterations(1)->Unit(benchmark::kMillisecond);

/// The window with all that it stands on.
struct Manager {
  explicit Manager(Plant& plant)
      : calls(*plant.transport, plant.clock, plant.dialogs),
        list(calls, plant.settings),
        host(plant.dialogs, plant.translation),
        window(host, {plant.clock, plant.gate, plant.dialogs, plant.settings, plant.translation.Translator}, calls,
               list) {
    window.show();
  }

  OpcCalls calls;
  OpcManager list;
  WindowHost host;
  frmMainOPC window;
};

void ItemsOfTheManager1000At250ms(benchmark::State& state) {
  for (auto _ : state) {
    MeasureItems(state, 1000, 250, [&](Plant& plant) {
      const auto manager = std::make_shared<Manager>(plant);
      const std::int64_t start = plant.clock.Ticks();
      manager->window.findChild<QAction*>("mnuTreeViewConnect")->trigger();
      state.counters["connect_ms"] = static_cast<double>(plant.clock.Ticks() - start);
      auto* tree = manager->window.findChild<QTreeWidget*>();
      tree->setCurrentItem(tree->topLevelItem(0)->child(0)->child(0));
      plant.Run(2000);
      return manager;
    });
  }
}
BENCHMARK(ItemsOfTheManager1000At250ms)->Iterations(1)->Unit(benchmark::kMillisecond);

void Browse10000Variables(benchmark::State& state) {
  for (auto _ : state) {
    Plant plant(10'000);
    OpcCalls calls(*plant.transport, plant.clock, plant.dialogs);
    OPCServerClass server(calls);
    if (!server.ConnectOPCServer(kUrl, "", 1, "Server 1")) state.SkipWithError("not connected");
    const auto browser = server.GetServerBrowseObject();
    if (!browser->MoveDown("Plant") || !browser->MoveDown("Many")) state.SkipWithError("no folder");
    const std::int64_t start = plant.clock.Ticks();
    std::optional<std::int64_t> first;
    browser->onFirstLeafs = [&](const std::vector<std::string>&) { first = plant.clock.Ticks() - start; };
    std::int64_t longest = 0;
    std::int64_t before = start;
    const auto tick = plant.clock.MakeQuickTimer();
    tick->SetInterval(1);
    tick->SetHandler([&] {
      longest = std::max(longest, plant.clock.Ticks() - before);
      before = plant.clock.Ticks();
    });
    tick->SetEnabled(true);
    if (!browser->ShowLeafs()) state.SkipWithError("no leaves");
    state.counters["found"] = browser->GetItemCount();
    state.counters["first_page_ms"] = static_cast<double>(first.value_or(-1));
    state.counters["all_ms"] = static_cast<double>(plant.clock.Ticks() - start);
    state.counters["longest_block_ms"] = static_cast<double>(longest);
  }
}
BENCHMARK(Browse10000Variables)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace velk

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
