// velk_sim_formatted: an instrument that sends formatted lines at regular intervals, behind a pseudo-terminal: the
// time, then a delimiter and a value a channel, and one of the four line ends.

#include "stream.h"

namespace {

constexpr const char* kHelp =
    "velk_sim_formatted: a pseudo-terminal that sends formatted lines at regular intervals.\n\n"
    "  --end cr|lf|crlf|lfcr  end of each line (default crlf)\n"
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
  std::string end = "\r\n", delimiter = " ";
  int width = 9;
  bool zeros = false;
  sim::CommandLine commandLine("velk_sim_formatted", kHelp);
  options.AddTo(commandLine);
  commandLine.Take("--end", [&](std::string_view name) { return ReadEnd(name, end); });
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
    return line + end;
  });
}
