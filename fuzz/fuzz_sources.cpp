// Any bytes and pages through the whole road below the windows: buffered lines in pieces, lines of the line driver,
// frames that a tick reads, pages of networked units. No error box but that of a damaged page, nothing is left under
// way, and the values are those of the lines that are accepted.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>

#include "core/acquisition.h"
#include "core/job_start.h"
#include "instruments/table/protocols.h"
#include "model/texts.h"
#include "platform/settings/settings.h"
#include "tests/support/fake_clock.h"
#include "tests/support/fake_graphs.h"
#include "tests/support/fake_opc.h"
#include "tests/support/fake_serial_port.h"
#include "tests/support/recording_view.h"
#include "tests/support/scripted_job_questions.h"
#include "tests/support/scripted_pages.h"
#include "tests/support/temporary_folder.h"

using namespace velk;

namespace {

void Require(bool holds) {
  if (!holds) std::abort();
}

/// Counts the boxes and answers Retry.
class CountedDialogs : public Dialogs {
 public:
  using Dialogs::Dialogs;
  int boxes = 0;
  std::function<void()> onBox;

 protected:
  Answer ShowMessage(const ShownMessage&) override {
    ++boxes;
    if (onBox) onBox();
    return Answer::Retry;
  }
  std::optional<std::string> ShowInput(const std::string&, const std::string&, const std::string&) override {
    return {};
  }
  std::optional<std::string> ShowOpenFile(const ShownFileQuestion&) override { return {}; }
  std::optional<std::string> ShowSaveFile(const ShownFileQuestion&) override { return {}; }
};

constexpr float kUntouched = 77;
constexpr int kParameters = 2;

struct Rig {
  test::TemporaryFolder folder;
  Session session;
  Gate gate;
  test::FakeClock clock{gate};
  const Language language;
  CountedDialogs dialogs{gate, language};
  SettingsStore settings{folder.File("settings")};
  Platform platform{clock, gate, dialogs, settings, language};
  test::RecordingView view;
  MainTimers timers{clock};
  test::FakeGraphs graphs{session};
  test::ScriptedJobQuestions questions;
  test::FakeDevice plainPort, linePort;
  Link link{session, platform, view, timers, [this]() -> std::unique_ptr<SerialPort> {
              return std::make_unique<test::FakeSerialPort>(plainPort.port ? linePort : plainPort);
            }};
  JobFiles jobFiles{session, platform, questions, graphs};
  LogWriter log{session, platform};
  Recorder recorder{session, platform, view, log, jobFiles};
  SampleRoad road{session, platform, view, recorder};
  test::ScriptedPages* pages = new test::ScriptedPages(clock);
  test::FakeOpc opc;
  VELKOPCModule opcItems{opc, clock, settings};
  SampleSources sources{session, platform, timers, link, road, std::unique_ptr<PageFetch>(pages), view, opcItems};

  // The words alone: a change of the status through the main window costs more than all the rest of a run.
  const MessageText ready = text::StatusReady;
  const MessageText acquiring = text::StatusAcquiringData;

  Rig() {
    settings.Save("VELK2", "Protocol", "PortDevice1", "/dev/fuzzed");  // not looked for among the machine's own
    session.NumberOfParameters = kParameters;
    for (int i = 1; i <= kParameters; ++i) {
      session.Parameters[i].Gain = 1;
      session.Parameters[i].max = 100;
      session.CurrentParameters[i].GraphVisible = true;
    }
    session.TotalParameters = kParameters;
  }

  void Begin(std::string_view protocol, std::uint8_t draw) {
    static const char* const kDelimiters[] = {" ", ",", ";", "\t"};
    static const char* const kTerminators[] = {"\r", "\n", "\r\n", "\n\r"};
    session.SerialData = std::string(protocol);
    session.Delimiter = kDelimiters[draw & 3];
    session.Terminator = kTerminators[draw >> 2 & 3];
    session.FormattedLineLength = 0;
    session.StopRequested = false;
    session.CurrentValue.fill(kUntouched);
    session.CurrentStatus = acquiring;
    session.Data = {};
    SetStartTimes(session, clock.Now(), session.SamplingRate);
    session.CurrentFile = "fuzzed.mdb";  // a page that is turned asks for one otherwise
    dialogs.boxes = 0;
    dialogs.onBox = nullptr;
    clock.onYield = nullptr;
    plainPort.openings.clear();
    linePort.openings.clear();
    pages->asked.clear();
  }
};

/// Pieces of a text, of lengths that `cut` draws.
template <class Take>
void InPieces(std::string_view bytes, std::uint32_t cut, Take take) {
  while (!bytes.empty()) {
    cut = cut * 1664525U + 1013904223U;
    const std::string_view piece = bytes.substr(0, 1 + (cut >> 27));
    bytes.remove_prefix(piece.size());
    take(piece);
  }
}

void RunBuffered(Rig& rig, std::string_view bytes, std::uint8_t draw) {
  rig.Begin(protocol::Intermittent, draw);
  Require(rig.sources.Current().Open());
  InPieces(bytes, draw, [&](std::string_view piece) { rig.plainPort.Receive(piece); });

  static Session plain;
  plain.NumberOfParameters = kParameters;
  plain.Delimiter = rig.session.Delimiter;
  plain.Terminator = rig.session.Terminator;
  for (Parameter& parameter : plain.Parameters) parameter.Gain = 1;
  plain.CurrentValue.fill(kUntouched);
  const char end = plain.Terminator.size() == 1 ? plain.Terminator[0] : '\0';
  for (std::size_t at = 0, behind = 0; end != '\0' && (behind = bytes.find(end, at)) != std::string_view::npos;
       at = behind + 1)
    ReadBufferedLine(plain, bytes.substr(at, behind + 1 - at));
  for (int i = 1; i <= kParameters; ++i) Require(rig.session.CurrentValue[i] == plain.CurrentValue[i]);
  Require(rig.dialogs.boxes == 0);
  rig.link.ClosePlainPort();
}

void RunDelivered(Rig& rig, std::string_view protocol, std::string_view bytes, std::uint8_t draw) {
  rig.Begin(protocol, draw);
  const std::string line = std::string(bytes) + rig.session.Terminator;
  rig.session.FormattedLineLength = static_cast<std::int16_t>(line.size());
  for (int i = 0; i < 2; ++i) rig.link.ODataCom1_DataReady(line);  // an own unit's first one is never taken
  Require(rig.dialogs.boxes == 0);
  if (protocol == protocol::NationalOilWellPlc) Require(rig.session.CurrentValue[1] == kUntouched);
}

void RunPolled(Rig& rig, std::string_view protocol, std::string_view bytes, std::uint8_t draw) {
  rig.Begin(protocol, draw);
  Require(rig.sources.Current().Open());
  std::string_view rest = bytes;
  rig.clock.onYield = [&] {
    if (!rig.plainPort.waiting.empty()) return;
    rig.plainPort.Receive(rest.substr(0, 5));
    rest.remove_prefix(std::min<std::size_t>(5, rest.size()));
    if (!rig.plainPort.waiting.empty()) return;
    rig.session.StopRequested = true;  // as Stop does
    rig.session.CurrentStatus = rig.ready;
  };
  rig.timers.Timer1->SetEnabled(true);
  for (int ticks = 0; ticks < 300 && rig.timers.Timer1->Enabled() && !rig.session.StopRequested; ++ticks)
    rig.sources.Current().Timer1_Timer();
  Require(rig.dialogs.boxes == 0);
  rig.timers.Timer1->SetEnabled(false);
  rig.clock.onYield = nullptr;
  rig.link.ClosePlainPort();
  rig.link.CloseODataCom();
}

void RunPage(Rig& rig, std::string_view protocol, std::string_view bytes, std::uint8_t draw) {
  static const std::string kSound =
      "&nbsp;10:20:30<tr><td><td><td><td>1</td><tr><td><td><td><td>2</td></tr>"
      "</td><td><b>1&nbsp;</td></tr></td><td><b>2&nbsp;</td>1Var<td>>1&nbsp2Var<td>>2&nbsp";
  rig.Begin(protocol, draw);
  rig.pages->page = std::string(bytes);
  rig.dialogs.onBox = [&rig] { rig.pages->page = kSound; };
  const bool isTable = protocol == protocol::HoneywellEZtrend && (draw & 64) == 0;
  Timer& timer = isTable ? *rig.timers.Timer4 : *rig.timers.Timer5;
  timer.SetInterval(1);
  timer.SetEnabled(true);
  rig.clock.Advance(2);  // two ticks, each with its page
  timer.SetEnabled(false);
  while (rig.pages->IsUnderWay()) rig.clock.Advance(1);  // what a Retry has asked for
  Require(rig.dialogs.boxes <= 1);
}

}  // namespace

/// The first byte chooses the instrument, the second delimiter, terminator and pieces.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  static Rig rig;
  const std::string bytes(data + 2, data + size);
  static constexpr std::string_view kDelivered[] = {protocol::Kesta3, protocol::Formatted, protocol::AnySerialData,
                                                    protocol::NationalOilWellPlc};
  static constexpr std::string_view kPolled[] = {protocol::Das104, protocol::DataTakerA, protocol::DataTakerB,
                                                 protocol::Formatted};
  static constexpr std::string_view kPages[] = {protocol::HoneywellEZtrend, protocol::LumoThroughHmi};
  const std::uint8_t choice = data[0] % 16;
  if (choice < 6)
    RunBuffered(rig, bytes, data[1]);
  else if (choice < 10)
    RunDelivered(rig, kDelivered[choice - 6], bytes, data[1]);
  else if (choice < 14)
    RunPolled(rig, kPolled[choice - 10], bytes, data[1]);
  else
    RunPage(rig, kPages[choice - 14], bytes, data[1]);
  for (int i = 1; i <= kParameters; ++i) Require(std::isfinite(rig.session.CurrentValue[i]));
  Require(!rig.sources.IsRunning() && !rig.road.IsRunning() && !rig.session.SampleBusy);
  return 0;
}
