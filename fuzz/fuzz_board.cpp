// Any bytes for the table of channels that a board prints, in pieces; for the answer to a calibration; and for a
// template of the table. Reading ends, the unit is sent to run behind it, and what was read is what a plain look at the
// lines gives.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>

#include "instruments/board/board.h"
#include "instruments/table/protocols.h"
#include "instruments/unit/unit_table.h"
#include "platform/settings/settings.h"
#include "tests/support/byte_port.h"
#include "tests/support/memory_folder.h"
#include "tests/support/quick_clock.h"

using namespace velk;

namespace {

void Require(bool holds) {
  if (!holds) std::abort();
}

/// The seconds of a wait are over in a few rounds.
class LeapingClock : public test::QuickClock {
 public:
  std::int64_t Ticks() const override { return ticks_; }
  void WaitRound() override { ticks_ += 1000; }

 private:
  std::int64_t ticks_ = 0;
};

class NoDialogs : public Dialogs {
 public:
  using Dialogs::Dialogs;

 protected:
  Answer ShowMessage(const ShownMessage&) override { return Answer::Ok; }
  std::optional<std::string> ShowInput(const std::string&, const std::string&, const std::string&) override {
    return {};
  }
  std::optional<std::string> ShowOpenFile(const ShownFileQuestion&) override { return {}; }
  std::optional<std::string> ShowSaveFile(const ShownFileQuestion&) override { return {}; }
};

struct Rig {
  test::MemoryFolder folder;
  Session session;
  Gate gate;
  LeapingClock clock;
  const Language language;
  NoDialogs dialogs{gate, language};
  SettingsStore settings{folder.Path()};
  Platform platform{clock, gate, dialogs, settings, language};
  test::BytePort port;
  CAdc12nCom board{session, platform, [](int) { return std::string("/dev/fuzzed"); }};
  std::string_view stream;
  std::size_t piece = 1;
  bool talks = false;  ///< the stream is on its way

  Rig() {
    port.onWrite = [this] { Answer(); };
    port.onDry = [this] { Feed(); };
  }

  void Answer() {
    const std::string& sent = port.written.back();
    talks = sent == "p\r" || sent == "k";
    if (sent == "Trad\r") port.Feed("OK\r\n");
    if (sent == "r\r") port.Feed(std::string(140, 'x'));
  }
  /// Where the bytes run out the cable is pulled.
  void Feed() {
    if (!talks) return;
    if (stream.empty()) return port.Close();
    port.Feed(stream.substr(0, piece));
    stream.remove_prefix(std::min(piece, stream.size()));
  }
  void Begin(std::uint8_t draw, std::string_view bytes) {
    static constexpr std::string_view units[] = {protocol::Kesta3, protocol::Kesta4, protocol::Kesta5, protocol::LumoA,
                                                 protocol::LumoB};
    session.SerialData = units[draw % std::size(units)];
    SetProtocolConstants(session);
    piece = draw & 64 ? 1 : draw & 32 ? 7 : 1000;
    talks = false;
    port.Restart({});
    port.written.clear();
    board.SetupComPort(&port, 1, 19200, 0);
    board.ForgetChannels();
    stream = bytes;
  }
  bool Ran() const { return !port.written.empty() && port.written.back() == "r\r"; }
};

/// The lines without the characters that no line of a table has, which are dropped wherever they stand.
std::string WithoutOddCharacters(std::string_view bytes) {
  std::string kept;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (bytes.substr(i, 2) == "\r\n") kept += ';';
    if (std::string_view(" \t-.SN0123456789").find(bytes[i]) != std::string_view::npos) kept += bytes[i];
  }
  return kept;
}

/// A channel that no line names has nothing.
void CheckChannels(Rig& rig, std::string_view all) {
  for (int channel = 1; channel <= rig.session.NumberOfChannels; ++channel) {
    const double gain = rig.board.GetGain(channel);
    double level = 0;
    Require(std::isfinite(gain) && std::isfinite(rig.board.GetOffset(channel)));
    if (!rig.board.GetUpperAlarm(channel, level)) Require(std::fpclassify(level) == FP_ZERO);
    const bool isNamed = all.find(std::to_string(channel)) != std::string_view::npos;
    if (!isNamed) Require(std::fpclassify(gain) == FP_ZERO);
  }
}

void CheckTable(Rig& rig, std::string_view bytes) {
  try {
    Require(!rig.board.GetChannelsData());
    Require(rig.board.ChannelsLoaded() && !rig.board.InTradMode() && rig.Ran());
    const auto lines = std::count(bytes.begin(), bytes.end(), '\r');
    Require(lines >= rig.session.NumberOfChannels);
    CheckChannels(rig, WithoutOddCharacters(bytes));
  } catch (const BoardError& error) {
    Require(error.Code() == 0x80040000U + 12);
    Require(rig.Ran());
  } catch (const RuntimeError& error) {
    Require(error.Number() == ErrorNumber::DeviceUnavailable && !rig.port.IsOpen() && rig.board.OwesRun());
  }
}

void CheckReading(Rig& rig, std::string_view bytes) {
  try {
    rig.board.StartCalibrateChannel(1);
    Require(!std::isnan(rig.board.EndCalibrateChannel()));
    Require(bytes.find('=') != std::string_view::npos && bytes.size() >= 11);
  } catch (const BoardError& error) {
    // The table that was read before may have told that commands are echoed, which this unit doesn't do.
    Require(error.Code() == 0x80040000U + (rig.board.CommandsEchoed() ? 10 : 16));
  } catch (const RuntimeError& error) {
    Require(error.Number() == ErrorNumber::DeviceUnavailable);
  }
  Require(!rig.board.Calibrating());
}

/// What is taken for a template is written as one again, and read as the same table.
void CheckTemplate(const std::string& text) {
  const auto read = ReadUnitTemplate(text, "LUMO version A", 4);
  const auto* const table = std::get_if<UnitRows>(&read);
  if (table == nullptr) return;
  Require(!FirstUnitFault(*table));
  Require(std::get<UnitRows>(ReadUnitTemplate(UnitTemplateText("LUMO version A", *table), "LUMO version A", 4)) ==
          *table);
}

void CheckLine(std::string_view line) {
  const auto read = ParseChannelLine(line, 18);
  if (read) Require(read->number >= 1 && read->number <= 18 && !std::isnan(read->channel.gain));
}

}  // namespace

/// The first byte draws the unit and how the rest is cut into pieces, the second what is read.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  static Rig rig;
  const std::string bytes(data + 2, data + size);
  switch (data[1] % 4) {
    case 0:
      rig.Begin(data[0], bytes);
      CheckTable(rig, bytes);
      break;
    case 1:
      rig.Begin(data[0], bytes);
      CheckReading(rig, bytes);
      break;
    case 2:
      CheckTemplate(bytes);
      break;
    default:
      CheckLine(bytes);
  }
  return 0;
}
