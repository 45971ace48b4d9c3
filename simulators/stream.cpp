#include "stream.h"

#include <algorithm>
#include <csignal>

#include "journal.h"

namespace sim {

void StreamOptions::AddTo(CommandLine& commandLine) {
  AddCommon(commandLine);
  commandLine.Number("--channels", channels);
  commandLine.Number("--interval", interval);
  commandLine.Number("--baud", baud);
  commandLine.Text("--clock", clock);
  commandLine.Number("--frames", frames);
  commandLine.Flag("--flood", flood);
  commandLine.Number("--cut-every", cutEvery);
  commandLine.Number("--wrong-count-every", wrongCountEvery);
  commandLine.Number("--noise-every", noiseEvery);
  commandLine.Number("--silence-after", silenceAfter);
  commandLine.Number("--silence", silence);
  commandLine.Number("--dribble", dribble);
  commandLine.Number("--hangup-after", hangUp.after);
  commandLine.Number("--return-after", hangUp.away);
  commandLine.Text("--return-as", hangUp.returnsAs);
  commandLine.Flag("--hangup-within", hangUp.withinFrame);
  commandLine.Flag("--step", step);
}

bool WaitForReader(const Line& line) {
  while (!line.HasReader())
    if (!RestUntil(Seconds() + 0.01)) return false;
  return !Ending();
}

bool SendSlowly(Line& line, const std::string& bytes, double dribble) {
  if (dribble <= 0) return line.Transmit(bytes);
  return std::all_of(bytes.begin(), bytes.end(),
                     [&](char byte) { return RestUntil(Seconds() + dribble) && line.Transmit(std::string(1, byte)); });
}

void AddNoise(std::string& frame, Samples& samples) {
  if (frame.empty()) return;
  const auto at = static_cast<std::size_t>(samples.Random() * static_cast<double>(frame.size()));
  const char noise = static_cast<char>(samples.Random() * 256);
  switch (static_cast<int>(samples.Random() * 3)) {
    case 0:
      frame[at] = frame[at] == noise ? '#' : noise;
      break;
    case 1:
      frame.erase(at, 1);
      break;
    default:
      frame.insert(at, 1, noise);
  }
}

namespace {

constexpr double kRestAtEnd = 0.2;

volatile std::sig_atomic_t stepsAsked = 0;

void CountSteps() {
  struct sigaction action = {};
  action.sa_handler = [](int) { stepsAsked = stepsAsked + 1; };
  sigaction(SIGUSR1, &action, nullptr);
}

bool WaitForStep(long count) {
  while (stepsAsked < count)
    if (!RestUntil(Seconds() + 0.002)) return false;
  return true;
}

/// Damages the frame as asked for; gives whether it did.
bool Damage(std::string& frame, const StreamOptions& options, long count, Samples& samples) {
  if (IsDue(count, options.noiseEvery)) AddNoise(frame, samples);
  if (IsDue(count, options.cutEvery)) frame.resize(frame.size() / 2);
  return IsDue(count, options.noiseEvery) || IsDue(count, options.cutEvery) || IsDue(count, options.wrongCountEvery);
}

}  // namespace

int RunStream(const StreamOptions& options, const std::function<std::string(Samples&, int channels)>& build) {
  CatchSignals();
  CountSteps();
  Samples samples(options.clock, static_cast<std::uint64_t>(options.seed));
  Journal journal(options.journal);
  Line line(options.link, options.flood ? 0 : options.baud);
  PlugIn(line);

  double due = Seconds();
  for (long count = 1; options.frames == 0 || count <= options.frames; ++count) {
    // With nobody on the line the frames wait, so that what a test asks for happens before its eyes.
    if (!line.HasReader()) {
      if (!WaitForReader(line)) break;
      due = Seconds();
    }
    if (options.step ? !WaitForStep(count) : !options.flood && !RestUntil(due)) break;
    if (Ending()) break;
    const bool wrongCount = IsDue(count, options.wrongCountEvery);
    std::string frame = build(samples, options.channels + (wrongCount ? 1 : 0));
    const bool damaged = Damage(frame, options, count, samples);
    line.DropInput();
    const bool whole = SendSlowly(line, frame, options.dribble);
    journal.Write(!whole ? "cut" : damaged ? "damaged" : "sound", frame);
    if (count == options.silenceAfter && !RestUntil(Seconds() + options.silence)) break;
    samples.Advance(options.interval);
    if (count == options.hangUp.after) {
      const std::string next = options.hangUp.withinFrame ? build(samples, options.channels) : std::string();
      if (!HangUpAndReturn(options.hangUp, next, line, journal)) break;
    }
    due = std::max(due + options.interval, Seconds() - options.interval);
  }
  // What the reader has not taken goes with the device.
  RestUntil(Seconds() + kRestAtEnd);
  return 0;
}

}  // namespace sim
