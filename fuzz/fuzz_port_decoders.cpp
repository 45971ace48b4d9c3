// Any stream of bytes in the plain port, in pieces: every decoder that reads by itself ends, and gives what a plain
// look at the whole stream gives or accepts only what has the time and the fields of a sound line. When the bytes run
// out the port asks for the stop.

#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include "instruments/decoders/data_taker.h"
#include "instruments/decoders/intermittent.h"
#include "instruments/decoders/national_oil_well.h"
#include "instruments/decoders/requested_data.h"
#include "instruments/decoders/stewart_stevenson.h"
#include "instruments/reading/line_length.h"
#include "instruments/reading/time_check.h"
#include "tests/support/byte_port.h"
#include "tests/support/quick_clock.h"

using namespace velk;

namespace {

void Require(bool holds) {
  if (!holds) std::abort();
}

struct Rig {
  Session session;
  test::QuickClock clock;
  test::BytePort port;
  std::string_view stream;
  std::size_t piece = 1;
  bool silent = false;  ///< no stop: the wait has to end by itself

  Rig() {
    session.SampleTime = 46095.5;
    session.TheTimeOut = 5;
    session.SamplingRate = 0.06 / 86400;  // 300 ms in all
    session.NumberOfParameters = 2;
    for (Parameter& parameter : session.Parameters) parameter.CommandString = "R\r";
    port.onDry = [this] {
      if (stream.empty()) {
        session.StopRequested = session.StopRequested || !silent;
        return;
      }
      port.Feed(stream.substr(0, piece));
      stream.remove_prefix(std::min(piece, stream.size()));
    };
  }

  void Begin(std::uint8_t draw, std::string_view bytes, bool waitEnds) {
    silent = waitEnds && (draw & 224) == 224;  // seldom: such a wait takes thousands of rounds
    static const char* const kTerminators[] = {"\r", "\n", "\r\n", "\n\r"};
    session.Terminator = kTerminators[draw & 3];
    session.Delimiter = draw & 4 ? "," : " ";
    session.StopRequested = false;
    session.FormattedLineLength = 14;
    piece = draw & 8 ? 1 : 7;
    stream = bytes;
    port.written.clear();
    port.Restart(draw & 16 ? std::string_view{} : bytes.substr(0, 3));
    if (!(draw & 16)) stream.remove_prefix(std::min<std::size_t>(3, stream.size()));
  }
};

bool HasSoundFields(const std::string& line, const Session& session, int more) {
  return CountDelimiters(line, session.Delimiter) == session.NumberOfParameters + more && HasTime(line);
}

/// A frame as the instrument's description has it: `waited` bytes are there, one at least, the rest comes one by one.
std::string FrameOf(std::string_view all, std::size_t waited) {
  const auto placeOfCr = [](std::string_view text, std::size_t from) {
    const std::size_t found = from - 1 < text.size() ? text.find('\r', from - 1) : std::string_view::npos;
    return found == std::string_view::npos ? 0 : found + 1;
  };
  if (all.empty()) return {};
  std::size_t read = std::max<std::size_t>(waited, 1);
  const std::size_t p = placeOfCr(all.substr(0, read), 1);
  std::size_t q = placeOfCr(all.substr(0, read), p + 1);
  while (q <= p) {
    if (read == all.size()) return {};
    q = placeOfCr(all.substr(0, ++read), p + 2);
  }
  return std::string(all.substr(p, q - p));
}

/// A line that was rejected is what is left of it with the terminator in front.
void CheckAccepted(const std::string& line, const Session& session, int more) {
  if (line.find(session.Terminator) != 0) Require(line.empty() || HasSoundFields(line, session, more));
}

void CheckLength(Rig& rig, PortReader& reader, std::string_view all) {
  const LineLength outcome = LearnLineLength(reader, rig.session, TimeLimit(rig.clock, rig.session));
  const std::string& terminator = rig.session.Terminator;
  const std::size_t first = all.find(terminator, terminator.size() - 1);
  const std::size_t second = first == std::string_view::npos ? first : all.find(terminator, first + terminator.size());
  const bool learned = second != std::string_view::npos;
  Require((outcome == LineLength::Learned) == learned);
  if (learned) Require(rig.session.FormattedLineLength == static_cast<int>(second - first));
  if (learned || !rig.silent) return;
  const bool lineEnded = first != std::string_view::npos;
  Require(outcome == (lineEnded ? LineLength::TimedOutCheckSettings : LineLength::TimedOutCheckHardware));
}

void CheckBuffered(Rig& rig, std::string_view all) {
  IntermittentLines lines;
  lines.Reset(rig.session.Terminator);
  std::string together;
  int calls = 0;
  while (!rig.session.StopRequested) {
    if (++calls % 3 == 0) lines.Hold(rig.port);
    if (!lines.Receive(rig.port)) continue;
    for (int i = 1; i <= lines.BufferedLineCount; ++i) {
      const std::string& line = lines.BufferedLines[static_cast<std::size_t>(i)];
      Require(line.find(rig.session.Terminator) == line.size() - 1);
      ReadBufferedLine(rig.session, line);
      together += line;
    }
  }
  const std::size_t end =
      rig.session.Terminator.size() == 1 ? all.rfind(rig.session.Terminator) : std::string_view::npos;
  Require(together == (end == std::string_view::npos ? "" : all.substr(0, end + 1)));
}

void Check(Rig& rig, int decoder, std::string_view all, std::size_t waited) {
  PortReader reader(rig.port, rig.clock, rig.session);
  switch (decoder) {
    case 0: {
      std::string line = ReadNationalOilWell(reader, rig.session);
      Require(line.size() <= all.size() && line.find('\0') == std::string::npos);
      NationalOilWell(line, rig.session);
      CheckAccepted(line, rig.session, 0);
      return;
    }
    case 1: {
      const std::string line = DataTaker_a(reader, rig.session);
      Require(line.size() <= all.size() + rig.session.Terminator.size());
      if (!rig.silent || line != all) CheckAccepted(line, rig.session, 0);  // out of rounds it gives all as it is
      return;
    }
    case 2: {
      const std::string line = DataTaker_b(reader, rig.session);
      Require(line.empty() || line.starts_with(rig.session.Terminator) || line.ends_with(rig.session.Terminator));
      CheckAccepted(line, rig.session, 1);
      return;
    }
    case 3:
      return Require(Stewart_stevenson(reader) == FrameOf(all, waited));
    case 4: {
      const RequestedLine requested = Requested_data(rig.port, rig.clock, rig.session);
      Require(requested.line.size() <= all.size() + 16);
      Require(!requested.timedOut || (rig.silent && rig.session.StopRequested && requested.line.empty()));
      const bool whole = requested.line.starts_with("46095.5" + rig.session.Delimiter) &&
                         requested.line.ends_with(rig.session.Terminator);
      Require(requested.line.empty() || whole);
      return;
    }
    case 5:
      return CheckLength(rig, reader, all);
    default:
      return CheckBuffered(rig, all);
  }
}

}  // namespace

/// The first byte draws the settings and how the rest is cut into pieces, the second chooses the decoder.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  static Rig rig;
  const std::string bytes(data + 2, data + size);
  const int decoder = data[1] % 7;
  rig.Begin(data[0], bytes, decoder == 1 || decoder == 4 || decoder == 5);
  Check(rig, decoder, bytes, rig.port.BytesWaiting());
  return 0;
}
