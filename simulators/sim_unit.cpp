// velk_sim_unit: a KESTA or LUMO unit in run mode, behind a pseudo-terminal.
//
//   velk_sim_unit --unit kesta4 --link /tmp/velk_unit --journal sent.txt
//
// prints the path of the device and sends a frame a second until it is ended. `velk_sim_unit --help` lists what can be
// asked of it: damaged frames, a changed length, a pause, a hang-up and return, a flood. What it sent stands in the
// journal, so that a test can compare it with what was read.

#include <algorithm>

#include "frame.h"
#include "hang_up.h"
#include "journal.h"
#include "line.h"
#include "options.h"

namespace {

/// What is due behind this many frames. False if the program is to end.
bool Interrupt(const sim::Options& options, sim::FrameBuilder& frames, sim::Line& line, sim::Journal& journal,
               long sent) {
  if (sent == options.pauseAfter && !sim::RestUntil(sim::Seconds() + options.pause)) return false;
  if (sent != options.hangUp.after) return true;
  const std::string next = options.hangUp.withinFrame ? frames.Next(options.interval, false) : std::string();
  return sim::HangUpAndReturn(options.hangUp, next, line, journal);
}

}  // namespace

int main(int argc, char** argv) {
  sim::Options options = sim::ReadOptions(argc, argv);
  sim::CatchSignals();
  if (options.flood) options.baud = 0;
  sim::FrameBuilder frames(options);
  sim::Journal journal(options.journal);
  sim::Line line(options.link, options.baud);
  sim::PlugIn(line);

  double due = sim::Seconds();
  double last = due;
  for (long sent = 0; !sim::Ending() && (options.frames == 0 || sent < options.frames);) {
    // With nobody on the line the count of frames waits, so that what a test asks for happens before its eyes.
    if (!line.HasReader()) {
      sim::RestUntil(sim::Seconds() + 0.01);
      due = sim::Seconds();
      continue;
    }
    if (!options.flood && !sim::RestUntil(due)) break;
    // The unit's clock runs on while nothing is sent.
    const double now = sim::Seconds();
    const double passed = now - last > options.interval * 1.5 ? now - last : options.interval;
    last = now;
    std::string frame = frames.Next(passed, options.lengthChangeAfter > 0 && sent >= options.lengthChangeAfter);
    const bool damaged = frames.Damage(frame, options.damage);
    const bool whole = line.Send(frame);
    journal.Write(!whole ? "cut" : damaged ? "damaged" : "sound", frame);
    ++sent;
    if (!Interrupt(options, frames, line, journal, sent)) break;
    due = std::max(due + options.interval, sim::Seconds() - options.interval);
  }
  line.Drain();
  return 0;
}
