// velk_sim_formatted: an instrument that sends formatted lines at regular intervals, behind a pseudo-terminal: the
// time, then a delimiter and a value a channel, and one of the four line ends.

#include "stream.h"

namespace {

constexpr const char* kHelp =
    "velk_sim_formatted: a pseudo-terminal that sends formatted lines at regular intervals.\n\n"
    "  --end cr|lf|crlf|lfcr  end of each line (default crlf)\n"
    "  --other-end NAME       another end: of the frames behind the first --other-end-after N (default 0) ...\n"
    "  --other-end-frames N   ... and of so many\n"
    "  --delimiter TEXT       between the fields (default a blank; \\t is the tab)\n"
    "  --width N              characters of a value, filled with zeros in front (default 9; 13 is the PLC's form)\n"
    "  --zeros                puts characters of code 0 ahead of each line, as idle lines do\n" SIM_STREAM_HELP;

bool ReadEnd(std::string_view name, std::string& end) {
  if (name == "cr") end = "\r";
  if (name == "lf") end = "\n";
  if (name == "crlf") end = "\r\n";
  if (name == "lfcr") end = "\n\r";
  return name == "cr" || name == "lf" || name == "crlf" || name == "lfcr";
}

}  // namespace

int main(int argc, char** argv) {
  sim::StreamOptions options;
  std::string end = "\r\n", otherEnd, delimiter = " ";
  long otherEndAfter = 0, otherEndFrames = 0, built = 0;
  int width = 9;
  bool zeros = false;
  sim::CommandLine commandLine("velk_sim_formatted", kHelp);
  options.AddTo(commandLine);
  commandLine.Take("--end", [&](std::string_view name) { return ReadEnd(name, end); });
  commandLine.Take("--other-end", [&](std::string_view name) { return ReadEnd(name, otherEnd); });
  commandLine.Number("--other-end-after", otherEndAfter);
  commandLine.Number("--other-end-frames", otherEndFrames);
  commandLine.Text("--delimiter", delimiter);
  commandLine.Number("--width", width);
  commandLine.Flag("--zeros", zeros);
  commandLine.Read(argc, argv);
  delimiter = sim::Unescape(delimiter);

  return sim::RunStream(options, [&](sim::Samples& samples, int channels) {
    std::string line = zeros ? std::string(2, '\0') : std::string();
    line += samples.Time();
    for (const std::string& value : samples.Values(channels)) {
      const std::size_t room = static_cast<std::size_t>(width) > value.size() ? width - value.size() : 0;
      line += delimiter + std::string(room, '0') + value;
    }
    const bool other = ++built > otherEndAfter && built <= otherEndAfter + otherEndFrames;
    return line + (other ? otherEnd : end);
  });
}
