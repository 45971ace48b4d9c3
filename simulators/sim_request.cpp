// velk_sim_request: an instrument that sends a value only when it is asked, behind a pseudo-terminal. It knows a
// command string for each of its parameters and answers with the parameter's present value.

#include <optional>

#include "journal.h"
#include "stream.h"

namespace {

constexpr const char* kHelp =
    "velk_sim_request: a pseudo-terminal that answers the command strings of its parameters.\n\n"
    "  --command TEXT         command of the next parameter, with \\r and \\n; may stand several times\n"
    "                         (default R1\\r R2\\r ... R8\\r)\n"
    "  --end TEXT             behind each answer (default \\r\\n)\n"
    "  --delay S              rests S seconds ahead of each answer\n"
    "  --dribble S            rests S seconds ahead of each byte of an answer\n"
    "  --silent-every N       does not answer every N-th command\n"
    "  --garbage-every N      answers every N-th command with noise\n"
    "  --cut-every N          leaves the end of every N-th answer out\n"
    "  --wrong-count-every N  puts two values, with a blank between, into every N-th answer\n"
    "  --babble               sends without an end once it is asked\n"
    "  --interval S           seconds that the measured values move with each answer (default 1)\n"
    "  --baud N               pace of the line, 10 bits a byte (default 9600; 0 without pace)\n"
    "  --link PATH            symbolic link that leads to the device\n"
    "  --journal FILE         writes what was sent: time, \"sound\", \"damaged\", \"cut\" or \"silent\", text\n"
    "  --answers N            ends after N commands\n"
    "  --seed N               seed of values and noise (default 1)\n"
    "\nThe first line printed is the path of the device. Ends on SIGTERM and SIGINT, and with the program that started "
    "it.\n";

struct Options : sim::CommonOptions {
  std::vector<std::string> commands;
  std::string end = "\\r\\n";
  double delay = 0, dribble = 0, interval = 1;
  long silentEvery = 0, garbageEvery = 0, cutEvery = 0, wrongCountEvery = 0, answers = 0;
  bool babble = false;
  int baud = 9600;
};

Options ReadOptions(int argc, char** argv) {
  Options options;
  sim::CommandLine commandLine("velk_sim_request", kHelp);
  options.AddCommon(commandLine);
  commandLine.Take("--command", [&](std::string_view text) {
    options.commands.push_back(sim::Unescape(text));
    return !text.empty();
  });
  commandLine.Text("--end", options.end);
  commandLine.Number("--delay", options.delay);
  commandLine.Number("--dribble", options.dribble);
  commandLine.Number("--interval", options.interval);
  commandLine.Number("--silent-every", options.silentEvery);
  commandLine.Number("--garbage-every", options.garbageEvery);
  commandLine.Number("--cut-every", options.cutEvery);
  commandLine.Number("--wrong-count-every", options.wrongCountEvery);
  commandLine.Number("--answers", options.answers);
  commandLine.Number("--baud", options.baud);
  commandLine.Flag("--babble", options.babble);
  commandLine.Read(argc, argv);
  if (options.commands.empty())
    for (int i = 1; i <= 8; ++i) options.commands.push_back("R" + std::to_string(i) + "\r");
  options.end = sim::Unescape(options.end);
  return options;
}

class Instrument {
 public:
  explicit Instrument(const Options& options)
      : options_(options),
        samples_({}, static_cast<std::uint64_t>(options.seed)),
        journal_(options.journal),
        line_(options.link, options.baud) {
    sim::PlugIn(line_);
  }

  void Run() {
    while (!sim::Ending() && (options_.answers == 0 || count_ < options_.answers)) {
      received_ += line_.Receive();
      if (const std::optional<int> channel = NextCommand())
        Answer(*channel);
      else
        sim::RestUntil(sim::Seconds() + 0.002);
    }
  }

 private:
  /// The parameter whose command has come, and takes the command off; unknown bytes ahead of it are dropped.
  std::optional<int> NextCommand() {
    std::size_t first = std::string::npos;
    std::optional<int> found;
    for (std::size_t i = 0; i < options_.commands.size(); ++i) {
      const std::size_t at = received_.find(options_.commands[i]);
      if (at >= first) continue;
      first = at;
      found = static_cast<int>(i) + 1;
    }
    if (found) received_.erase(0, first + options_.commands[static_cast<std::size_t>(*found - 1)].size());
    return found;
  }

  void Answer(int channel) {
    ++count_;
    std::string answer = samples_.Value(channel) + options_.end;
    samples_.Advance(options_.interval);
    const char* kind = Damage(answer);
    if (answer.empty()) return journal_.Write(kind, answer);
    if (!sim::RestUntil(sim::Seconds() + options_.delay)) return;
    const bool whole = sim::SendSlowly(line_, answer, options_.dribble);
    journal_.Write(whole ? kind : "cut", answer);
    while (options_.babble && line_.Transmit("7")) {
    }
  }

  const char* Damage(std::string& answer) {
    if (sim::IsDue(count_, options_.silentEvery)) {
      answer.clear();
      return "silent";
    }
    if (sim::IsDue(count_, options_.garbageEvery)) {
      for (std::size_t i = 0; i + options_.end.size() < answer.size(); ++i)
        answer[i] = static_cast<char>(128 + samples_.Random() * 128);
      return "damaged";
    }
    if (sim::IsDue(count_, options_.wrongCountEvery)) {
      answer = answer.substr(0, answer.size() - options_.end.size()) + " " + answer;
      return "damaged";
    }
    if (options_.babble || sim::IsDue(count_, options_.cutEvery)) {
      answer.resize(answer.size() - options_.end.size());
      return "damaged";
    }
    return "sound";
  }

  const Options& options_;
  sim::Samples samples_;
  sim::Journal journal_;
  sim::Line line_;
  std::string received_;
  long count_ = 0;
};

}  // namespace

int main(int argc, char** argv) {
  const Options options = ReadOptions(argc, argv);
  sim::CatchSignals();
  Instrument(options).Run();
  return 0;
}
