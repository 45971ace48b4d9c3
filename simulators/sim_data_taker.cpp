// velk_sim_data_taker: a Data Taker, behind a pseudo-terminal. In form a it sends a line a sample; in form b a block of
// lines: a heading, the time, a line a channel, and a blank line at the end.

#include "stream.h"

namespace {

constexpr const char* kHelp =
    "velk_sim_data_taker: a pseudo-terminal that sends the lines (a) or the blocks (b) of a Data Taker.\n\n"
    "  --form a|b             lines or blocks (default a)\n"
    "  --end crlf|lfcr        end of a line of form a (default crlf)\n"
    "  --delimiter TEXT       between the fields (default a blank; \\t is the tab)\n"
    "  --no-blank-line        a block of form b does not end\n" SIM_STREAM_HELP;

// What a block has ahead of its time: a heading of 17 characters and 5 that lead the time.
constexpr const char* kHeading = "Program 001  run\n";
constexpr const char* kTimeLead = "Time ";

std::string Line(sim::Samples& samples, int channels, const std::string& delimiter, const std::string& end) {
  std::string line = samples.Time();
  for (const std::string& value : samples.Values(channels)) line += delimiter + value;
  return line + end;
}

std::string Block(sim::Samples& samples, int channels, const std::string& delimiter, bool ends) {
  std::string block = kHeading + std::string(kTimeLead) + samples.Time() + "\r\n";
  int channel = 0;
  for (const std::string& value : samples.Values(channels))
    block += std::to_string(++channel) + delimiter + value + "\r\n";
  return ends ? block + "\r\n" : block;
}

}  // namespace

int main(int argc, char** argv) {
  sim::StreamOptions options;
  std::string delimiter = " ", end = "\r\n";
  bool blocks = false, endless = false;
  sim::CommandLine commandLine("velk_sim_data_taker", kHelp);
  options.AddTo(commandLine);
  commandLine.Text("--delimiter", delimiter);
  commandLine.Take("--form", [&](std::string_view form) {
    blocks = form == "b";
    return form == "a" || form == "b";
  });
  commandLine.Take("--end", [&](std::string_view name) {
    end = name == "crlf" ? "\r\n" : "\n\r";
    return name == "crlf" || name == "lfcr";
  });
  commandLine.Flag("--no-blank-line", endless);
  commandLine.Read(argc, argv);
  delimiter = sim::Unescape(delimiter);

  return sim::RunStream(options, [&](sim::Samples& samples, int channels) {
    return blocks ? Block(samples, channels, delimiter, !endless) : Line(samples, channels, delimiter, end);
  });
}
