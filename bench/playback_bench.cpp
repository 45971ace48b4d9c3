// What playback is worth to the operator: how long a large log takes from the choice to its first row, how many rows a
// second are really played at speed 1000, with 64 channels in 8 windows of 900x240, and how long an event waits
// meanwhile. The log is made once, in the present folder or VELK_BENCH_FOLDER.
//
//   bench/playback_bench [--rows 2600000]

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTemporaryDir>
#include <QTimer>
#include <algorithm>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "demo/unattended.h"
#include "log/log_writer.h"
#include "model/status.h"
#include "model/texts.h"
#include "platform/database/command.h"
#include "platform/loop/system_clock.h"
#include "platform/settings/settings.h"
#include "shell/application.h"

namespace velk {

namespace {

constexpr int kChannels = 64;
constexpr int kGraphs = 8;
constexpr int kSpeed = 1000;

long rowsOfTheLog = 2'600'000;

/// Boxes are put away, and the one file is chosen.
class OneFile : public demo::UnattendedDialogs {
 public:
  using UnattendedDialogs::UnattendedDialogs;
  std::string file;

 protected:
  std::optional<std::string> ShowOpenFile(const ShownFileQuestion&) override { return file; }
};

/// The whole program without a unit.
class Program {
 public:
  Program() {
    settings_.Save("VELK2", "Playback", "PlaybackSpeed", std::to_string(kSpeed));
    settings_.Save("VELK2", "Protocol", "SerialData", "KESTA version 5");
    application_ = std::make_unique<Application>(Services{
        {clock_, gate_, dialogs_, settings_, translation_.Translator}, translation_, MakeSerialPort, &questions_});
    application_->MDIForm_Load();
  }

  void Choose(const std::string& file) {
    dialogs_.file = file;
    Window().MenuItem("mnuFilePlayback")->trigger();
  }
  void ResizeGraphs() {
    for (QMdiSubWindow* graph : Window().GraphArea().subWindowList()) graph->resize(900, 240);
  }
  void Press(const char* button) { Window().Button(button)->trigger(); }
  bool IsReady() { return StatusIs(State(), text::StatusReady); }
  MainForm& Window() { return application_->Window(); }
  Session& State() { return application_->State(); }

 private:
  QTemporaryDir folder_;
  Translation translation_;
  Gate gate_;
  SystemClock clock_{gate_};
  OneFile dialogs_{gate_, translation_.Translator};
  SettingsStore settings_{folder_.path().toStdString()};
  demo::UnattendedQuestions questions_;
  std::unique_ptr<Application> application_;
};

/// A log of 64 channels, a row a second.
class Log {
 public:
  explicit Log(const QString& folder) : path_((folder + QStringLiteral("/bench.mdb")).toStdString()) {
    Session session;
    session.NumberOfParameters = kChannels;
    for (int i = 1; i <= kChannels; ++i) {
      Parameter& channel = session.CurrentParameters[i];
      channel.name = "Channel " + std::to_string(i);
      channel.max = 400;
      channel.color = (i * 37 % 200) << 8 | (i * 91 % 255);
      channel.FormIndex = static_cast<std::int16_t>((i - 1) % kGraphs + 1);
    }
    Gate gate;
    SystemClock clock(gate);
    const Language english;
    demo::UnattendedDialogs dialogs(gate, english);
    SettingsStore settings((folder + QStringLiteral("/settings")).toStdString());
    const Platform platform{clock, gate, dialogs, settings, english};
    LogWriter(session, platform).CreateLogFile(path_);
    Fill();
  }
  const std::string& Path() const { return path_; }

 private:
  void Fill() const {
    const auto connection = Connection::Open(path_, OpenMode::ReadWrite);
    connection->Execute("PRAGMA journal_mode=MEMORY; PRAGMA synchronous=OFF");
    Transaction transaction(*connection);
    std::string marks;
    for (int i = 0; i < kChannels + 2; ++i) marks += ",?";
    Command insert(*connection, "INSERT INTO logData VALUES (NULL" + marks + ")");
    for (long row = 0; row < rowsOfTheLog; ++row) {
      insert.Bind(1, 46095.0 + static_cast<double>(row / 86400)).Bind(2, static_cast<double>(row % 86400) / 86400);
      for (int i = 0; i < kChannels; ++i) insert.Bind(i + 3, static_cast<double>((row * (i + 1)) % 1000) * 0.37 + i);
      insert.Execute();
    }
    transaction.Commit();
  }

  std::string path_;
};

const Log& TheLog() {
  const char* place = std::getenv("VELK_BENCH_FOLDER");
  static const QTemporaryDir folder(QString::fromLocal8Bit(place ? place : ".") +
                                    QStringLiteral("/playback_bench-XXXXXX"));
  static const Log log(folder.path());
  return log;
}

/// From the choice of the file, and Start right behind it, to the first row on the charts.
void ChoiceToFirstRow(benchmark::State& state) {
  const std::string path = TheLog().Path();
  Program program;
  for (auto _ : state) {
    program.State().PlaybackRow = 0;
    QElapsedTimer time;
    time.start();
    program.Choose(path);
    const double chosen = static_cast<double>(time.nsecsElapsed()) / 1e6;
    program.Press("Pause");
    state.counters["windows_ms"] = chosen;
    while (program.State().PlaybackRow == 0) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    state.SetIterationTime(static_cast<double>(time.nsecsElapsed()) / 1e9);
    program.Press("Stop");
    while (!program.IsReady()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }
}
BENCHMARK(ChoiceToFirstRow)->UseManualTime()->Iterations(10)->Unit(benchmark::kMillisecond);

/// Ten seconds at speed 1000. `worst_ms` is the longest that an event of a timer of 5 ms came late: what the window
/// would have waited for its answer.
void PlayAtSpeed1000(benchmark::State& state) {
  constexpr int kSeconds = 10;
  constexpr int kLookMs = 5;
  Program program;
  program.Choose(TheLog().Path());
  program.ResizeGraphs();
  for (auto _ : state) {
    program.Press("Pause");
    QElapsedTimer time;
    std::vector<double> late;
    QTimer look;
    look.setTimerType(Qt::PreciseTimer);
    double before = 0;
    QObject::connect(&look, &QTimer::timeout, &look, [&] {
      const double now = static_cast<double>(time.nsecsElapsed()) / 1e6;
      late.push_back(now - before - kLookMs);
      before = now;
    });
    const std::int64_t first = program.State().PlaybackRow;
    time.start();
    look.start(kLookMs);
    while (time.elapsed() < kSeconds * 1000) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    const double seconds = static_cast<double>(time.nsecsElapsed()) / 1e9;
    state.SetIterationTime(seconds);
    state.counters["rows_a_second"] = static_cast<double>(program.State().PlaybackRow - first) / seconds;
    state.counters["worst_ms"] = *std::max_element(late.begin(), late.end());
    program.Press("Pause");
  }
  program.Press("Stop");
}
BENCHMARK(PlayAtSpeed1000)->UseManualTime()->Iterations(1)->Unit(benchmark::kSecond);

}  // namespace

}  // namespace velk

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication qt(argc, argv);
  benchmark::Initialize(&argc, argv);
  for (int i = 1; i + 1 < argc; ++i)
    if (std::string(argv[i]) == "--rows") velk::rowsOfTheLog = std::max(std::atol(argv[i + 1]), 2L);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
