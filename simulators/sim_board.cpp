// velk_sim_board: a KESTA or LUMO unit with its board, behind a pseudo-terminal. In run mode it streams frames; "Trad"
// brings it to command mode, in which it keeps a table of channels that commands change, and "r" back. Readings follow
// gain and offset of that table.

#include <array>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <set>
#include <utility>

#include "journal.h"
#include "stream.h"

namespace {

constexpr const char* kHelp =
    "velk_sim_board: a KESTA or LUMO unit with its board, behind a pseudo-terminal. It sends and hears only while the\n"
    "line stands at its baud rate; KESTA version 3 only with hardware handshake.\n\n"
    "  --unit NAME            \"KESTA version 3\", \"4\" (default), \"5\", \"LUMO version A\" or \"B\"\n"
    "  --interval S           seconds between frames (default 1)\n"
    "  --echo                 repeats commands\n"
    "  --reading V            the next answer to k; may stand several times, the last one stays (default 1 per k)\n"
    "  --link PATH            symbolic link that leads to the device\n"
    "  --journal FILE         writes frames, what was heard, and each change of the mode\n"
    "  --table-file FILE      keeps the table of channels here, anew with each change\n"
    "  --seed N               seed of the values (default 1)\n"
    "\nFaults:\n"
    "  --silent               neither sends nor answers\n"
    "  --late-ok S            \"OK\" comes S seconds late\n"
    "  --ok-after-run         stands between modes at first: \"Trad\" is answered only behind an \"r\"\n"
    "  --keeps-running        takes no \"Trad\" and streams on\n"
    "  --no-answer-to X       the command X (p, k, r, o, ...) is heard and nothing else; may stand several times\n"
    "  --no-echo-for X        the echo of the command X doesn't come; may stand several times\n"
    "  --babble-after X       sends on and on behind the command X, until it is sent to run\n"
    "  --unplug-at X          the cable is pulled out when the command X (or Trad) comes first; the mode stays;\n"
    "                         \"table\": behind the table, wherever that is cut\n"
    "  --return-after S       and is back S seconds later (default: it stays away)\n"
    "  --cut-table N          the table ends behind N bytes\n"
    "  --no-end               the table has no last line behind its channels\n"
    "  --piece N              the table comes in pieces of N bytes ...\n"
    "  --piece-rest S         ... with a rest of S seconds between them\n"
    "  --odd-characters       its lines have letters and signs between the numbers\n"
    "\nThe first line printed is the path of the device. Ends on SIGTERM and SIGINT, and with the program that "
    "started\n"
    "it.\n";

constexpr int kBaud = 19200;
constexpr double kRest = 0.002;
constexpr double kSecondsADay = 86400;

struct BoardOptions : sim::CommonOptions {
  std::string unit = "KESTA version 4";
  double interval = 1;
  bool echo = false;
  std::vector<double> readings;
  std::string tableFile;
  bool silent = false, okAfterRun = false, keepsRunning = false, noEnd = false, odd = false;
  double lateOk = 0, returnAfter = -1, pieceRest = 0;
  std::set<std::string> noAnswerTo, noEchoFor;
  std::string babbleAfter, unplugAt;
  long cutTable = -1, piece = 0;
};

BoardOptions ReadOptions(int argc, char** argv) {
  BoardOptions options;
  sim::CommandLine line("velk_sim_board", kHelp);
  options.AddCommon(line);
  line.Text("--unit", options.unit);
  line.Number("--interval", options.interval);
  line.Flag("--echo", options.echo);
  line.Take("--reading", [&](std::string_view text) {
    options.readings.push_back(std::strtod(std::string(text).c_str(), nullptr));
    return !text.empty();
  });
  line.Text("--table-file", options.tableFile);
  line.Flag("--silent", options.silent);
  line.Flag("--ok-after-run", options.okAfterRun);
  line.Flag("--keeps-running", options.keepsRunning);
  line.Flag("--no-end", options.noEnd);
  line.Flag("--odd-characters", options.odd);
  line.Number("--late-ok", options.lateOk);
  line.Number("--return-after", options.returnAfter);
  line.Number("--piece-rest", options.pieceRest);
  const auto gather = [&line](std::string_view name, std::set<std::string>& into) {
    line.Take(name, [&into](std::string_view text) { return into.emplace(text).second; });
  };
  gather("--no-answer-to", options.noAnswerTo);
  gather("--no-echo-for", options.noEchoFor);
  line.Text("--babble-after", options.babbleAfter);
  line.Text("--unplug-at", options.unplugAt);
  line.Number("--cut-table", options.cutTable);
  line.Number("--piece", options.piece);
  line.Read(argc, argv);
  return options;
}

int ChannelsOf(const std::string& unit) {
  if (unit == "KESTA version 5") return 22;
  if (unit == "LUMO version A") return 4;
  return unit == "LUMO version B" ? 10 : 18;
}

std::string Print(const char* picture, double value) {
  std::array<char, 64> text{};
  return {text.data(), static_cast<std::size_t>(std::snprintf(text.data(), text.size(), picture, value))};
}

struct Channel {
  double offset = 0;
  double gain = 1;
  std::optional<double> upper, lower;
  std::string format = "0.000";
  double preset = 0;  ///< of a counter
};

class Unit {
 public:
  explicit Unit(const BoardOptions& options)
      : options_(options),
        channels_(static_cast<std::size_t>(ChannelsOf(options.unit)) + 1),
        samples_({}, static_cast<std::uint64_t>(options.seed)),
        journal_(options.journal),
        line_(options.link, kBaud),
        runs_(!options.okAfterRun) {
    sim::PlugIn(line_);
    journal_.Write("mode", runs_ ? "run" : "between");
    KeepTable();
  }

  void Run() {
    double due = sim::Seconds();
    bool wasHeard = false;
    while (!sim::Ending()) {
      const bool isHeard = line_.HasReader() && IsAtItsRate() && !options_.silent;
      // What a reader sent before it left still arrives: it may be gone by now, or put the line's own rate back.
      const std::string bytes = line_.Receive();
      const bool arrives = isHeard || wasHeard || !line_.HasReader();
      if (!options_.silent && arrives) received_ += bytes;
      wasHeard = isHeard;
      while (std::optional<std::string> command = NextCommand()) Obey(*command);
      if (isHeard && runs_ && sim::Seconds() >= due) {
        SendFrame();
        due = std::max(due + options_.interval, sim::Seconds());
      }
      if (isHeard && babbles_) line_.Transmit("7777777777777777");
      sim::RestUntil(sim::Seconds() + kRest);
    }
  }

 private:
  bool IsAtItsRate() const { return line_.StandsAt(kBaud, options_.unit == "KESTA version 3"); }

  /// The next whole command, without its CR; k and f have none.
  std::optional<std::string> NextCommand() {
    if (received_.empty()) return std::nullopt;
    if (calibrated_ != 0 && (received_[0] == 'k' || received_[0] == 'f')) {
      const std::string letter = received_.substr(0, 1);
      received_.erase(0, 1);
      return letter;
    }
    const std::size_t end = received_.find('\r');
    if (end == std::string::npos) return std::nullopt;
    std::string command = received_.substr(0, end);
    received_.erase(0, end + 1);
    return command;
  }

  void Obey(const std::string& command) {
    journal_.Write("heard", command);
    const std::string letter = command.substr(0, command == "Trad" ? 4 : 1);
    if (!letter.empty() && letter == options_.unplugAt && !std::exchange(wasPulled_, true)) return PullOut();
    if (command == "Trad") return ToCommandMode();
    if (letter == "r") return ToRunMode();
    if (runs_ || isBetween_) return;
    if (options_.noAnswerTo.count(letter) != 0) return;
    if (options_.echo && letter != "k" && letter != "f" && options_.noEchoFor.count(letter) == 0)
      line_.Transmit(command + "\r\n");
    Change(letter, command);
    if (!letter.empty() && letter == options_.babbleAfter) babbles_ = true;
  }

  void ToCommandMode() {
    if (options_.keepsRunning || isBetween_) return;
    if (!sim::RestUntil(sim::Seconds() + options_.lateOk)) return;
    runs_ = false;
    journal_.Write("mode", "command");
    line_.Transmit("OK\r\n");
  }

  void ToRunMode() {
    if (options_.noAnswerTo.count("r") != 0) return;
    isBetween_ = babbles_ = false;
    calibrated_ = 0;
    if (!runs_) journal_.Write("mode", "run");
    runs_ = true;
  }

  void PullOut() {
    line_.Unplug();
    journal_.Write("gone", {});
    received_.clear();
    if (options_.returnAfter < 0) {
      while (sim::RestUntil(sim::Seconds() + 1)) {
      }
      return;
    }
    sim::RestUntil(sim::Seconds() + options_.returnAfter);
    sim::PlugIn(line_);
  }

  void Change(const std::string& letter, const std::string& command) {
    if (letter == "p") return PrintTable();
    if (letter == "k") return AnswerReading();
    if (letter == "f") return void(calibrated_ = 0);
    if (letter == "s") {
      for (Channel& channel : channels_) channel = {};
      return KeepTable();
    }
    if (letter == "C") return SetClock(command);
    char* rest = nullptr;
    const long number = std::strtol(command.c_str() + std::min<std::size_t>(1, command.size()), &rest, 10);
    if (number < 1 || number >= static_cast<long>(channels_.size())) return;
    if (letter == "c") return void(calibrated_ = number);
    Channel& channel = channels_[static_cast<std::size_t>(number)];
    const double value = std::strtod(rest, nullptr);
    if (letter == "o") channel.offset = value;
    if (letter == "g") channel.gain = value;
    if (letter == "u") channel.upper = value;
    if (letter == "l") channel.lower = value;
    if (letter == "U") channel.upper.reset();
    if (letter == "L") channel.lower.reset();
    if (letter == "i") channel.preset = value;
    if (letter == "n") channel.format = rest + (*rest == ' ' ? 1 : 0);
    KeepTable();
  }

  void SetClock(const std::string& command) {
    int weekday = 0, day = 0, month = 0, year = 0, hour = 0, minute = 0, second = 0;
    if (std::sscanf(command.c_str(), "C %d %d %d %d %d %d %d", &weekday, &day, &month, &year, &hour, &minute,
                    &second) != 7)
      return;
    clock_ = hour * 3600 + minute * 60 + second - sim::Seconds();
    journal_.Write("clock", command.substr(2));
  }

  void AnswerReading() {
    double reading = 1;
    if (!options_.readings.empty()) {
      reading = options_.readings[std::min(nextReading_, options_.readings.size() - 1)];
      ++nextReading_;
    }
    line_.Transmit("=" + Print("%9.3f", reading) + "\r");
  }

  std::string TableLine(std::size_t number) const {
    const Channel& channel = channels_[number];
    const auto level = [](const std::optional<double>& alarm) { return alarm ? Print("%.15g", *alarm) : "NS"; };
    std::string line = std::to_string(number) + "\t" + Print("%.15g", channel.offset) + "\t" +
                       Print("%.15g", channel.gain) + "\t" + level(channel.upper) + "\t" + level(channel.lower);
    if (options_.odd) line = "#" + line + "x!";
    return line + (options_.echo ? " 0 0" : "") + "\r\n";
  }

  void PrintTable() {
    std::string table = "Channels of the board\r\nNo  Offset  Gain  U-alarm  L-alarm\r\n";
    for (std::size_t number = 1; number < channels_.size(); ++number) table += TableLine(number);
    if (!options_.noEnd) table += "OK\r\n";
    if (options_.cutTable >= 0) table.resize(std::min(table.size(), static_cast<std::size_t>(options_.cutTable)));
    const std::size_t piece = options_.piece > 0 ? static_cast<std::size_t>(options_.piece) : table.size() + 1;
    for (std::size_t at = 0; at < table.size(); at += piece) {
      line_.Transmit(table.substr(at, piece));
      if (!sim::RestUntil(sim::Seconds() + options_.pieceRest)) return;
    }
    if (options_.unplugAt == "table" && !std::exchange(wasPulled_, true)) PullOut();
  }

  void SendFrame() {
    samples_.Advance(options_.interval);
    std::string frame = samples_.Time();
    if (clock_) {
      const long second = static_cast<long>(*clock_ + sim::Seconds()) % static_cast<long>(kSecondsADay);
      std::array<char, 16> text{};
      std::snprintf(text.data(), text.size(), "%02ld:%02ld:%02ld", second / 3600, second / 60 % 60, second % 60);
      frame = text.data();
    }
    for (std::size_t number = 1; number < channels_.size(); ++number) {
      const double raw = std::strtod(samples_.Value(static_cast<int>(number)).c_str(), nullptr);
      frame += " " + Print("%010.3f", raw * channels_[number].gain + channels_[number].offset);
    }
    frame += "\r\n";
    journal_.Write(line_.Transmit(frame) ? "sound" : "cut", frame);
  }

  void KeepTable() const {
    if (options_.tableFile.empty()) return;
    std::FILE* const file = std::fopen((options_.tableFile + ".new").c_str(), "w");
    if (file == nullptr) return;
    for (std::size_t number = 1; number < channels_.size(); ++number)
      std::fprintf(file, "%s %s %g\n", TableLine(number).c_str(), channels_[number].format.c_str(),
                   channels_[number].preset);
    std::fclose(file);
    std::rename((options_.tableFile + ".new").c_str(), options_.tableFile.c_str());
  }

  const BoardOptions& options_;
  std::vector<Channel> channels_;
  sim::Samples samples_;
  sim::Journal journal_;
  sim::Line line_;
  std::string received_;
  bool runs_;
  bool isBetween_ = !runs_;
  bool babbles_ = false;
  bool wasPulled_ = false;
  long calibrated_ = 0;  ///< the channel under calibration
  std::size_t nextReading_ = 0;
  std::optional<double> clock_;  ///< seconds of the day, less Seconds()
};

}  // namespace

int main(int argc, char** argv) {
  const BoardOptions options = ReadOptions(argc, argv);
  sim::CatchSignals();
  Unit(options).Run();
  return 0;
}
