#pragma once

#include <functional>
#include <string>

#include "command_line.h"
#include "hang_up.h"
#include "line.h"
#include "samples.h"

namespace sim {

/// What instruments that send by themselves have in common. Times are seconds, counts are frames; a count of 0 means
/// never. "every n" means the n-th frame, the 2n-th and so on.
struct StreamOptions : CommonOptions {
  int channels = 8;
  double interval = 1;
  int baud = 9600;
  std::string clock;
  long frames = 0;  ///< ends after this many
  bool flood = false;
  long cutEvery = 0;         ///< the end of the frame is not sent
  long wrongCountEvery = 0;  ///< one value more than asked for
  long noiseEvery = 0;       ///< a byte is changed, put in or lost
  long silenceAfter = 0;     ///< behind so many frames nothing is sent ...
  double silence = 5;        ///< ... for so long
  double dribble = 0;        ///< rest ahead of each byte
  HangUp hangUp;
  bool step = false;  ///< a frame for each SIGUSR1

  void AddTo(CommandLine& commandLine);
};

/// The help text of these options.
#define SIM_STREAM_HELP                                                                                     \
  "  --channels N           values in a frame (default 8)\n"                                                \
  "  --interval S           seconds between frames (default 1)\n"                                           \
  "  --baud N               pace of the line, 10 bits a byte (default 9600; 0 without pace)\n"              \
  "  --link PATH            symbolic link that leads to the device\n"                                       \
  "  --journal FILE         writes what was sent: time, \"sound\", \"damaged\" or \"cut\", text\n"          \
  "  --clock hh:mm:ss       start of the instrument's clock (default the wall clock)\n"                     \
  "  --frames N             ends after N frames\n"                                                          \
  "  --seed N               seed of values and noise (default 1)\n"                                         \
  "  --flood                frame after frame, as fast as the reader takes them\n"                          \
  "  --cut-every N          sends only the front of every N-th frame\n"                                     \
  "  --wrong-count-every N  puts a value too many into every N-th frame\n"                                  \
  "  --noise-every N        changes, loses or adds a byte in every N-th frame\n"                            \
  "  --silence-after N      sends nothing for --silence S seconds (default 5) behind N frames\n"            \
  "  --dribble S            rests S seconds ahead of each byte\n" SIM_HANG_UP_HELP                          \
  "  --step                 sends a frame for each SIGUSR1, --interval only moves the clock\n"              \
  "\nThe first line printed is the path of the device. While nobody has the device open nothing is sent.\n" \
  "Ends on SIGTERM and SIGINT, and with the program that started it.\n"

/// Sends frames until the end that was asked for. `build` makes a frame of the samples with so many values.
int RunStream(const StreamOptions& options, const std::function<std::string(Samples&, int channels)>& build);

/// Rests until somebody has the device open. False if the program is to end.
bool WaitForReader(const Line& line);

/// Sends bytes, with a rest ahead of each where there is one. False as Line::Send.
bool SendSlowly(Line& line, const std::string& bytes, double dribble);

/// Whether something that happens every `every` times happens now.
inline bool IsDue(long count, long every) {
  return every > 0 && count % every == 0;
}

/// Changes, loses or adds a byte.
void AddNoise(std::string& frame, Samples& samples);

}  // namespace sim
