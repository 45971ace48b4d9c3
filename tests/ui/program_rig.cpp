#include "ui/program_rig.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTimer>
#include <chrono>
#include <utility>

#include "platform/database/command.h"

namespace velk::test {

namespace {

constexpr int kLookMs = 10;
constexpr int kLooksAStep = 15;  ///< three ticks of the program
constexpr int kQuietMs = 400;    ///< without a row for so long: what was sent has been worked off

struct Scale {
  double gain, offset;
};

Scale ScaleOf(std::size_t channel) {
  if (channel == 1) return {2.5, -10};
  if (channel == 2) return {0.1, 0.3};
  return {1, 0};
}

}  // namespace

double Logged(double sent, std::size_t channel) {
  const Scale scale = ScaleOf(channel);
  // Gain and offset count as 32-bit numbers, and so does the result.
  const double gain = static_cast<double>(static_cast<float>(scale.gain));
  const double offset = static_cast<double>(static_cast<float>(scale.offset));
  return static_cast<double>(static_cast<float>(sent * gain + offset));
}

ProgramRig::ProgramRig() = default;
ProgramRig::~ProgramRig() = default;

std::string ProgramRig::StartSimulator(const std::string& name, std::vector<std::string> arguments) {
  arguments.insert(arguments.end(), {"--journal", folder.File("sent")});
  simulator = std::make_unique<ChildProgram>(VELK_SIMULATORS + ("/velk_sim_" + name), std::move(arguments));
  return simulator->NextLine();
}

void ProgramRig::Set(const std::string& section, const std::string& key, const std::string& value) {
  settings.Save("VELK2", section, key, value);
}

void ProgramRig::SetChannels(int count) {
  Set("General", "SensitivityCriterion", "0");
  Set("Parameters", "NumberOfParameters", std::to_string(count));
  for (int i = 1; i <= count; ++i) {
    const std::string section = "Parameter" + std::to_string(i);
    const Scale scale = ScaleOf(static_cast<std::size_t>(i));
    Set(section, "name", "Channel " + std::to_string(i));
    Set(section, "FormIndex", "1");
    Set(section, "max", "1000");
    Set(section, "Gain", std::to_string(scale.gain));
    Set(section, "Offset", std::to_string(scale.offset));
    Set(section, "CommandString", "R" + std::to_string(i) + "\r");
  }
}

void ProgramRig::StartProgram() {
  settings.Flush();
  Services services{{clock, gate, dialogs, settings, translation.Translator}, translation, MakeSerialPort, &questions};
  services.devices = devices;
  application = std::make_unique<Application>(services);
  application->MDIForm_Load();
}

void ProgramRig::Connect() {
  Press("Acquire");
  dialogs.ExpectSaveFile(LogPath());
  Press("Record");
}

void ProgramRig::StartJob() {
  startedAt_ = Seconds();
  Press("Pause");
  runningAt_ = Seconds();
}

void ProgramRig::StopJob() {
  Press("Stop");
}

void ProgramRig::Exit() {
  dialogs.Expect("Are you sure you want to exit", Answer::Yes);
  application->Window().MenuItem("mnuFileExit")->trigger();
  application.reset();
}

bool ProgramRig::RunUntil(const std::function<bool()>& holds, int milliseconds, const std::function<void()>& then) {
  bool held = false, over = false;
  QElapsedTimer running;
  running.start();
  QTimer look;
  QObject::connect(&look, &QTimer::timeout, &look, [&] {
    if (!over && holds()) held = over = true;
    if (running.elapsed() > milliseconds) over = true;
    if (!over) return;
    look.stop();
    if (then) then();
  });
  look.start(kLookMs);
  while (look.isActive()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  return held;
}

void ProgramRig::RunFor(int milliseconds) {
  RunUntil([] { return false; }, milliseconds);
}

std::function<bool()> ProgramRig::AllIsLogged(std::size_t frames) {
  return [this, frames, rows = -1LL, quiet = QElapsedTimer()]() mutable {
    if (std::exchange(rows, Rows()) != rows || Journal().size() < frames) quiet.start();
    return quiet.hasExpired(kQuietMs);
  };
}

std::function<bool()> ProgramRig::AllIsLoggedStepByStep(std::size_t frames) {
  return [this, frames, asked = std::size_t{0}, looks = 0, isOver = AllIsLogged(frames)]() mutable {
    // Counted in rounds of the program's own event loop: on a busy machine they take longer, as its ticks do.
    if (Journal().size() < asked) looks = 0;
    if (asked < frames && ++looks > kLooksAStep) {
      simulator->Signal(SIGUSR1);
      ++asked;
      looks = 0;
    }
    return isOver();
  };
}

double ProgramRig::Seconds() {
  return std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count();
}

std::vector<LogRow> ProgramRig::LogRows() const {
  const auto connection = Connection::Open(LogPath(), OpenMode::ReadOnly);
  Command command(*connection, "SELECT * FROM logData ORDER BY ID");
  const auto number = [&](int column) {
    const FieldValue field = command.Field(column);
    if (const auto* whole = std::get_if<std::int64_t>(&field)) return static_cast<double>(*whole);
    return std::get<double>(field);
  };
  std::vector<LogRow> rows;
  while (command.Next()) {
    LogRow row{number(1) + number(2), {}};
    for (int column = 3; column < command.ColumnCount(); ++column) row.values.push_back(number(column));
    rows.push_back(row);
  }
  return rows;
}

}  // namespace velk::test
