// velk_sim_intermittent: an instrument that keeps its samples and sends them in bursts, behind a pseudo-terminal. Each
// line brings its own full date and time, then a delimiter and a value a channel, and a terminator of one character.

#include "stream.h"

namespace {

constexpr const char* kHelp =
    "velk_sim_intermittent: a pseudo-terminal that sends buffered lines in bursts.\n\n"
    "  --burst N              lines sent at once (default 5); --interval is the time between bursts\n"
    "  --apart S              seconds between two samples (default 1)\n"
    "  --delimiter TEXT       between the fields (default a comma; \\t is the tab)\n"
    "  --terminator TEXT      behind each line (default \\r)\n"
    "A frame, where the options below count frames, is a burst.\n" SIM_STREAM_HELP;

}  // namespace

int main(int argc, char** argv) {
  sim::StreamOptions options;
  std::string delimiter = ",", terminator = "\\r";
  int burst = 5;
  double step = 1;
  sim::CommandLine commandLine("velk_sim_intermittent", kHelp);
  options.AddTo(commandLine);
  commandLine.Number("--burst", burst);
  commandLine.Number("--apart", step);
  commandLine.Text("--delimiter", delimiter);
  commandLine.Text("--terminator", terminator);
  commandLine.Read(argc, argv);
  delimiter = sim::Unescape(delimiter);
  terminator = sim::Unescape(terminator);

  return sim::RunStream(options, [&](sim::Samples& samples, int channels) {
    std::string lines;
    for (int i = 0; i < burst; ++i) {
      lines += samples.DateTime();
      for (const std::string& value : samples.Values(channels)) lines += delimiter + value;
      lines += terminator;
      samples.Advance(step);
    }
    return lines;
  });
}
