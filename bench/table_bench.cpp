// How long the operator waits for the table of parameters: from the command until it stands painted, and from its Close
// until the charts are painted again, with 64 channels of a connected unit on 8 graphs. "first" is the first time that
// the program shows it; only the first of these is the first one of the process too.
//
//   bench/table_bench         offscreen; QT_QPA_PLATFORM=xcb xvfb-run bench/table_bench on a real display

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QDialog>
#include <QTableView>
#include <QTemporaryDir>
#include <QTimer>
#include <algorithm>
#include <chrono>

#include "bench/flood_unit.h"
#include "demo/unattended.h"
#include "model/status.h"
#include "model/texts.h"
#include "platform/loop/system_clock.h"
#include "platform/settings/settings.h"
#include "settings/windows/parameters_table.h"
#include "shell/application.h"

namespace velk {

namespace {

using Time = std::chrono::steady_clock;

constexpr int kChannels = 64;
constexpr int kGraphs = 8;
constexpr int kRounds = 25;

double MillisecondsSince(Time::time_point begin) {
  return std::chrono::duration<double, std::milli>(Time::now() - begin).count();
}

/// The program, connected to a unit.
class Program {
 public:
  Program() {
    const auto save = [this](const std::string& section, const char* key, const std::string& value) {
      settings_.Save("VELK2", section, key, value);
    };
    for (int i = 1; i <= kChannels; ++i)
      save("Parameter" + std::to_string(i), "FormIndex", std::to_string(i % kGraphs + 1));
    save("Parameters", "NumberOfParameters", std::to_string(kChannels));
    save("Protocol", "SerialData", "KESTA version 5");
    save("Protocol", "PortDevice1", unit_.Device());
    application_ = std::make_unique<Application>(Services{
        {clock_, gate_, dialogs_, settings_, translation_.Translator}, translation_, MakeSerialPort, &questions_});
    application_->MDIForm_Load();
    application_->Window().Button("Acquire")->trigger();
  }

  bool IsConnected() { return StatusIs(application_->State(), text::StatusReadyToAcquire); }
  void OpenTable() { application_->Window().MenuItem("mnuEditTable")->trigger(); }
  int Graphs() { return application_->State().GraphCount; }

 private:
  bench::FloodUnit unit_{kChannels};
  QTemporaryDir folder_{QStringLiteral("velk-bench-XXXXXX")};
  Translation translation_;
  Gate gate_;
  SystemClock clock_{gate_};
  demo::UnattendedDialogs dialogs_{gate_, translation_.Translator};
  SettingsStore settings_{folder_.path().toStdString()};
  demo::UnattendedQuestions questions_;
  std::unique_ptr<Application> application_;
};

/// What is done in the table ahead of its Close.
enum class Edit {
  None,
  Name,   ///< the windows stay
  Graph,  ///< a curve moves to another graph: all windows are made anew
};

/// Waits for the table to stand painted, edits in it and closes it.
class Operator : public QObject {
 public:
  explicit Operator(Edit edit) : edit_(edit) { qApp->installEventFilter(this); }

  void Begin() {
    begun_ = Time::now();
    isPainted_ = false;
  }
  double OpenedIn() const { return openedIn_; }
  double ClosedIn() const { return MillisecondsSince(closing_); }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::Paint || isPainted_) return false;
    auto* const table = dynamic_cast<ParametersTable*>(QApplication::activeModalWidget());
    auto* const grid = table != nullptr ? table->findChild<QTableView*>("Grid1") : nullptr;
    if (grid == nullptr || watched != grid->viewport()) return false;
    isPainted_ = true;
    QMetaObject::invokeMethod(
        this, [this, table, grid] { Work(*table, *grid); }, Qt::QueuedConnection);
    return false;
  }

 private:
  void Work(ParametersTable& table, QTableView& grid) {
    openedIn_ = MillisecondsSince(begun_);
    ++round_;
    const TableColumn column = edit_ == Edit::Graph ? TableColumn::Graph : TableColumn::Name;
    const QModelIndex cell = grid.model()->index(0, table.Answer().PlaceOf(column));
    const QString text = edit_ == Edit::Graph ? QString::number(round_ % kGraphs + 1) : QString("P%1").arg(round_);
    if (edit_ != Edit::None) grid.model()->setData(cell, text);
    closing_ = Time::now();
    table.close();
  }

  const Edit edit_;
  int round_ = 0;
  bool isPainted_ = true;
  Time::time_point begun_, closing_;
  double openedIn_ = 0;
};

void Table(benchmark::State& state, Edit edit) {
  Program program;
  if (!program.IsConnected() || program.Graphs() != kGraphs) return state.SkipWithError("the unit is not connected");
  QApplication::processEvents();
  Operator hand(edit);
  std::vector<double> opened, closed;
  for (auto round : state) {
    hand.Begin();
    program.OpenTable();
    QApplication::processEvents();
    closed.push_back(hand.ClosedIn());
    opened.push_back(hand.OpenedIn());
  }
  state.counters["open_first_ms"] = opened.front();
  state.counters["close_first_ms"] = closed.front();
  for (auto* times : {&opened, &closed}) std::sort(times->begin(), times->end());
  state.counters["open_ms"] = opened[opened.size() / 2];
  state.counters["close_ms"] = closed[closed.size() / 2];
  state.counters["open_worst_ms"] = opened.back();
  state.counters["close_worst_ms"] = closed.back();
}

BENCHMARK_CAPTURE(Table, Untouched, Edit::None)->Iterations(kRounds)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Table, Name, Edit::Name)->Iterations(kRounds)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Table, Graph, Edit::Graph)->Iterations(kRounds)->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace velk
