// A unit that floods: lines come over a pseudo-terminal, through the real port, line driver, gate and road of a sample,
// into the real main window, 64 channels on 8 graphs, every sample drawn. First a hundred times as many lines as the
// sampling rate asks for, a second's worth at once; then as many as the system takes.
//
// Counted are the lines on each stretch (sent, read by the driver, rows of the log with the numbers in them), how long
// the window kept an event waiting, and the memory. A line that is lost between two stretches fails the benchmark.
//
//   bench/flood_bench         the folder of the log is the present one, or VELK_BENCH_FOLDER
//   bench/flood_bench --drag SECONDS
//                             a hundred lines a second are recorded behind an hour of rows, while the bars of the 8
//                             graphs are dragged in turn without a pause; fails where a row was more than 50 ms behind
//                             its line, is missing, or memory has grown

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <QApplication>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTimer>
#include <cstdlib>
#include <fstream>

#include "base/dates.h"
#include "bench/flood_unit.h"
#include "demo/unattended.h"
#include "log/log_writer.h"
#include "platform/database/command.h"
#include "platform/database/connection.h"
#include "platform/loop/system_clock.h"
#include "platform/settings/settings.h"
#include "shell/application.h"

namespace velk {

namespace {

using bench::FloodUnit;
using Pace = FloodUnit::Pace;
using Time = std::chrono::steady_clock;

constexpr int kChannels = 64;
constexpr int kGraphs = 8;
constexpr int kFloodMs = 10'000;
constexpr int kHeartbeatMs = 10;
constexpr int kLongestWaitMs = 60'000;
constexpr int kHour = 3600;  ///< rows
constexpr int kMouseMs = 8;  ///< between two moves that a mouse tells

double Milliseconds(Time::duration time) {
  return std::chrono::duration<double, std::milli>(time).count();
}

double ResidentMegabytes() {
  std::ifstream memory("/proc/self/statm");
  double size = 0, resident = 0;
  memory >> size >> resident;
  return resident * static_cast<double>(sysconf(_SC_PAGESIZE)) / (1 << 20);
}

void RunEvents(int milliseconds) {
  QEventLoop loop;
  QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
  loop.exec();
}

/// Runs events until the condition holds; false when it never does.
template <class Condition>
bool RunEventsUntil(Condition condition) {
  for (const auto begin = Time::now(); !condition(); RunEvents(20))
    if (Milliseconds(Time::now() - begin) > kLongestWaitMs) return false;
  return true;
}

/// A device's port that counts the lines that are read from it.
class CountingPort : public SerialPort {
 public:
  explicit CountingPort(long long& lines) : lines_(lines) {
    port_->onBytes = [this] {
      if (onBytes) onBytes();
    };
    port_->onHangUp = [this] {
      if (onHangUp) onHangUp();
    };
  }
  void Open(const SerialSettings& settings) override { port_->Open(settings); }
  void Close() override { port_->Close(); }
  bool IsOpen() const override { return port_->IsOpen(); }
  std::size_t BytesWaiting() const override { return port_->BytesWaiting(); }
  std::string Read(std::size_t most) override {
    std::string bytes = port_->Read(most);
    lines_ += std::count(bytes.begin(), bytes.end(), '\n');
    return bytes;
  }
  std::string Peek() const override { return port_->Peek(); }
  void Write(std::string_view bytes) override { port_->Write(bytes); }
  void ClearInput() override { port_->ClearInput(); }

 private:
  std::unique_ptr<SerialPort> port_ = MakeSerialPort();
  long long& lines_;
};

/// How long the window's event loop keeps somebody waiting: the longest time between two beats of a timer, and between
/// the posting of an event by another thread and its arrival.
class Watch {
 public:
  Watch() {
    QObject::connect(&beat_, &QTimer::timeout, [this] { Beat(); });
    beat_.setTimerType(Qt::PreciseTimer);
    beat_.start(kHeartbeatMs);
    poster_ = std::thread([this] { PostEvents(); });
  }
  ~Watch() {
    ending_ = true;
    poster_.join();
  }
  Watch(const Watch&) = delete;
  Watch& operator=(const Watch&) = delete;

  double LargestGap() const { return Milliseconds(largestGap_); }
  double LongestWait() const { return Milliseconds(longestWait_); }

 private:
  void Beat() {
    const Time::time_point now = Time::now();
    largestGap_ = std::max(largestGap_, now - std::exchange(last_, now));
  }
  void PostEvents() {
    while (!ending_) {
      QMetaObject::invokeMethod(
          &beat_, [this, posted = Time::now()] { longestWait_ = std::max(longestWait_, Time::now() - posted); },
          Qt::QueuedConnection);
      std::this_thread::sleep_for(std::chrono::milliseconds(kHeartbeatMs));
    }
  }

  QTimer beat_;
  Time::time_point last_ = Time::now();
  Time::duration largestGap_{}, longestWait_{};
  std::atomic<bool> ending_ = false;
  std::thread poster_;
};

enum class Work { Record, Draw, Pause };

/// A job with its unit, from Connect to Stop.
class Job {
 public:
  explicit Job(const std::string& log) : log_(log) {
    SaveSettings();
    application_ = std::make_unique<Application>(Services{{clock_, gate_, dialogs_, settings_, translation_.Translator},
                                                          translation_,
                                                          [this] { return std::make_unique<CountingPort>(read_); },
                                                          &questions_});
    application_->MDIForm_Load();
    MainForm& window = application_->Window();
    window.Button("Acquire")->trigger();
    for (QMdiSubWindow* graph : window.GraphArea().subWindowList()) graph->resize(900, 240);
    if (!log.empty()) {
      application_->State().CurrentFile = log;
      application_->State().RecordToDB = true;
    }
    window.Button("Pause")->trigger();
  }

  /// The first lines have made their way, and none is under way.
  bool Settle() {
    if (!RunEventsUntil([this] { return Number() > 0; })) return false;
    unit_.SetPace(Pace::Silent);
    RunEvents(200);
    return Drained();
  }
  bool Drained() {
    return RunEventsUntil([this] { return (paused_ ? read_ - readAtPause_ + Number() : Number()) == unit_.Sent(); });
  }
  void Pause() {
    application_->Window().Button("Pause")->trigger();
    paused_ = true;
    readAtPause_ = read_;
  }

  // --- An hour of the job behind it ---

  /// As above, into a log that holds an hour of rows already: the bars go back through it.
  struct AnHourOn {};
  Job(const std::string& log, AnHourOn) : Job(std::string()) {
    log_ = log;
    Session& session = application_->State();
    LogWriter(session, {clock_, gate_, dialogs_, settings_, translation_.Translator}).CreateLogFile(log);
    FillHour();
    Press("Stop");
    Press("Acquire");
    for (QMdiSubWindow* graph : Window().GraphArea().subWindowList()) graph->resize(900, 240);
    session.CurrentFile = log;
    session.RecordToDB = true;
    Press("Pause");
    session.StartTime -= 1.0 / 24;
  }
  MainForm& Window() { return application_->Window(); }
  std::vector<QScrollBar*> Bars() {
    std::vector<QScrollBar*> bars;
    for (QMdiSubWindow* graph : Window().GraphArea().subWindowList())
      bars.push_back(graph->findChild<QScrollBar*>(QStringLiteral("VScroll1")));
    return bars;
  }
  Time::time_point SentAt(long long number) const { return unit_.SentAt(number); }
  /// The rows of the log.
  long long Held() const {
    const auto connection = Connection::Open(log_, OpenMode::ReadOnly);
    Command rows(*connection, "SELECT count(*) FROM logData");
    rows.Next();
    return rows.Integer(0);
  }

  /// The number of the line that made the last sample.
  long long Number() const { return static_cast<long long>(application_->State().CurrentValue[1]); }
  long long Sent() const { return unit_.Sent(); }
  long long Read() const { return read_; }
  long long Rows() const { return application_->RowsRecorded(); }
  int Boxes() const { return dialogs_.boxes; }
  void SetPace(Pace pace) { unit_.SetPace(pace); }

  void End() { Press("Stop"); }
  /// Ends the job; gives the numbers in the log that are missing between its first and its last row, or come twice.
  long long Stop() {
    application_->Window().Button("Stop")->trigger();
    if (log_.empty()) return 0;
    const auto connection = Connection::Open(log_, OpenMode::ReadOnly);
    Command rows(*connection, "SELECT * FROM logData ORDER BY ID");
    long long wrong = 0, expected = 0;
    for (; rows.Next(); ++expected) {
      const auto number = static_cast<long long>(std::get<double>(rows.Field(3)));
      if (expected == 0) expected = number;
      wrong += std::abs(number - std::exchange(expected, number));
    }
    return wrong;
  }

 private:
  void Press(const char* button) { Window().Button(button)->trigger(); }
  void FillHour() {
    const auto connection = Connection::Open(log_, OpenMode::ReadWrite);
    Transaction transaction(*connection);
    std::string marks;
    for (int i = 0; i < kChannels + 2; ++i) marks += ",?";
    Command insert(*connection, "INSERT INTO logData VALUES (NULL" + marks + ")");
    const double first = clock_.Now() - 1.0 / 24;
    for (int row = 0; row < kHour; ++row) {
      const double time = first + row / 86400.0;
      insert.Bind(1, DatePart(time)).Bind(2, TimePart(time));
      for (int i = 0; i < kChannels; ++i) insert.Bind(i + 3, static_cast<double>(row * (i + 3) % 1000) / 10);
      insert.Execute();
    }
    transaction.Commit();
  }
  void SaveSettings() {
    const auto save = [this](const std::string& section, const char* key, const std::string& value) {
      settings_.Save("VELK2", section, key, value);
    };
    for (int i = 1; i <= kChannels; ++i)
      save("Parameter" + std::to_string(i), "FormIndex", std::to_string(i % kGraphs + 1));
    save("Parameter1", "max", "16777216");
    save("Parameters", "NumberOfParameters", std::to_string(kChannels));
    save("Protocol", "SerialData", "KESTA version 5");
    save("Protocol", "PortDevice1", unit_.Device());
    save("General", "SensitivityCriterion", "0");
  }

  FloodUnit unit_{kChannels};
  std::string log_;
  QTemporaryDir folder_;
  Translation translation_;
  Gate gate_;
  SystemClock clock_{gate_};
  demo::UnattendedDialogs dialogs_{gate_, translation_.Translator};
  SettingsStore settings_{folder_.path().toStdString()};
  demo::UnattendedQuestions questions_;
  long long read_ = 0;
  bool paused_ = false;
  long long readAtPause_ = 0;  ///< from here on lines are read and go no further
  std::unique_ptr<Application> application_;
};

void Flood(benchmark::State& state, Pace pace, Work work) {
  const bool recorded = work == Work::Record;
  const char* place = std::getenv("VELK_BENCH_FOLDER");
  const QTemporaryDir folder(QString::fromLocal8Bit(place ? place : ".") + QStringLiteral("/flood_bench-XXXXXX"));
  Job job(recorded ? folder.filePath(QStringLiteral("bench.mdb")).toStdString() : "");
  if (!job.Settle()) return state.SkipWithError("the unit's first lines did not arrive");
  if (work == Work::Pause) job.Pause();
  const long long sent = job.Sent(), read = job.Read(), rows = job.Rows();
  for (auto step : state) {
    const Watch watch;
    job.SetPace(pace);
    RunEvents(kFloodMs / 10);
    state.counters["MB_at_10%"] = ResidentMegabytes();
    RunEvents(kFloodMs - kFloodMs / 10);
    state.counters["MB_at_end"] = ResidentMegabytes();
    job.SetPace(Pace::Silent);
    if (!job.Drained()) return state.SkipWithError("the last lines did not arrive");
    state.counters["largest_gap_ms"] = watch.LargestGap();
    state.counters["longest_wait_ms"] = watch.LongestWait();
  }
  state.counters["sent"] = static_cast<double>(job.Sent() - sent);
  state.counters["read"] = static_cast<double>(job.Read() - read);
  if (recorded) state.counters["rows"] = static_cast<double>(job.Rows() - rows);
  if (job.Read() - read != job.Sent() - sent) state.SkipWithError("the driver did not read every line");
  if (recorded && job.Rows() - rows != job.Sent() - sent) state.SkipWithError("not every line became a row");
  if (job.Boxes() > 0) state.SkipWithError("a box came up");
  if (job.Stop() > 0) state.SkipWithError("rows are missing, twice there or out of order");
}

void FloodAHundredfoldRecorded(benchmark::State& state) {
  Flood(state, Pace::Burst, Work::Record);
}
BENCHMARK(FloodAHundredfoldRecorded)->Iterations(1)->UseRealTime()->Unit(benchmark::kSecond);

void FloodAtFullSpeedRecorded(benchmark::State& state) {
  Flood(state, Pace::Full, Work::Record);
}
BENCHMARK(FloodAtFullSpeedRecorded)->Iterations(1)->UseRealTime()->Unit(benchmark::kSecond);

void FloodAtFullSpeed(benchmark::State& state) {
  Flood(state, Pace::Full, Work::Draw);
}
BENCHMARK(FloodAtFullSpeed)->Iterations(1)->UseRealTime()->Unit(benchmark::kSecond);

void FloodAtFullSpeedPaused(benchmark::State& state) {
  Flood(state, Pace::Full, Work::Pause);
}
BENCHMARK(FloodAtFullSpeedPaused)->Iterations(1)->UseRealTime()->Unit(benchmark::kSecond);

/// Drags the bars of all graphs, a second each, and looks between the moves for the rows that have come.
class Dragging {
 public:
  Dragging(Job& job, int seconds) : job_(job), bars_(job.Bars()), rows_(job.Rows()), number_(job.Number()) {
    QTimer step;
    step.setTimerType(Qt::PreciseTimer);
    QObject::connect(&step, &QTimer::timeout, [this] { Step(); });
    job_.SetPace(Pace::Even);
    step.start(kMouseMs);
    RunEvents(seconds * 500);
    const double early = ResidentMegabytes();  // caches have filled by then
    RunEvents(seconds * 500);
    grown_ = ResidentMegabytes() - early;
    job_.SetPace(Pace::Silent);
  }

  double Latest() const { return latest_; }
  double Grown() const { return grown_; }
  long Moves() const { return moves_; }

 private:
  void Step() {
    NoteRows();
    QScrollBar& bar = *bars_[present_];
    if (Milliseconds(Time::now() - begun_) > 1000) {
      bar.setSliderDown(false);
      bar.setValue(bar.maximum());
      present_ = (present_ + 1) % bars_.size();
      begun_ = Time::now();
      return;
    }
    bar.setSliderDown(true);
    bar.setSliderPosition(static_cast<int>(++moves_ * 7 % std::max(bar.maximum(), 1)));
    NoteRows();
  }

  void NoteRows() {
    for (const auto now = Time::now(); rows_ < job_.Rows(); ++rows_)
      latest_ = std::max(latest_, Milliseconds(now - job_.SentAt(++number_)));
  }

  Job& job_;
  const std::vector<QScrollBar*> bars_;
  long long rows_, number_;
  std::size_t present_ = 0;
  Time::time_point begun_ = Time::now();
  long moves_ = 0;
  double latest_ = 0;  ///< ms
  double grown_ = 0;   ///< MB
};

int Drag(int seconds) {
  const char* place = std::getenv("VELK_BENCH_FOLDER");
  const QTemporaryDir folder(QString::fromLocal8Bit(place ? place : ".") + QStringLiteral("/flood_bench-XXXXXX"));
  Job job(folder.filePath(QStringLiteral("dragged.mdb")).toStdString(), Job::AnHourOn());
  if (!job.Settle()) return 1;
  const long long sent = job.Sent(), rows = job.Rows();
  const Watch watch;
  const Dragging drag(job, seconds);
  const bool drained = job.Drained();
  const long long came = job.Rows() - rows, due = job.Sent() - sent;
  std::printf("%lld lines, %lld rows, %ld moves of a bar, latest row %.1f ms behind its line, %.1f MB grown\n", due,
              came, drag.Moves(), drag.Latest(), drag.Grown());
  std::printf("largest gap between two beats of a timer %.1f ms, longest wait of an event %.1f ms\n",
              watch.LargestGap(), watch.LongestWait());
  job.End();
  const bool whole = drained && came == due && job.Held() == kHour + job.Rows() && job.Boxes() == 0;
  return whole && drag.Latest() <= 50 && drag.Grown() <= 1 ? 0 : 1;
}

}  // namespace

}  // namespace velk

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication qt(argc, argv);
  if (argc == 3 && std::string(argv[1]) == "--drag") return velk::Drag(std::atoi(argv[2]));
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
