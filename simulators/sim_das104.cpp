// velk_sim_das104: an S&S DAS 104, behind a pseudo-terminal. Its frames stand between CR characters: a CR ahead of the
// first one, and one behind each.

#include "stream.h"

namespace {

constexpr const char* kHelp =
    "velk_sim_das104: a pseudo-terminal that sends the frames of an S&S DAS 104 between CRs.\n\n"
    "  --delimiter TEXT       between the fields (default a blank; \\t is the tab)\n"
    "  --double               a CR ahead of each frame as well as behind it\n" SIM_STREAM_HELP;

}  // namespace

int main(int argc, char** argv) {
  sim::StreamOptions options;
  std::string delimiter = " ";
  bool doubled = false;
  sim::CommandLine commandLine("velk_sim_das104", kHelp);
  options.AddTo(commandLine);
  commandLine.Text("--delimiter", delimiter);
  commandLine.Flag("--double", doubled);
  commandLine.Read(argc, argv);
  delimiter = sim::Unescape(delimiter);

  bool first = true;
  return sim::RunStream(options, [&](sim::Samples& samples, int channels) {
    std::string frame = first || doubled ? "\r" : "";
    first = false;
    frame += samples.Time();
    for (const std::string& value : samples.Values(channels)) frame += delimiter + value;
    return frame + "\r";
  });
}
