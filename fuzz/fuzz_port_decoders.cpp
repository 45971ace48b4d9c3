// Any stream of bytes in the plain port, in pieces: every decoder that reads by itself ends, gives no more than it was
// sent, and leaves the port usable. When the bytes run out the port asks for the stop.

#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include "instruments/data_taker.h"
#include "instruments/intermittent.h"
#include "instruments/line_length.h"
#include "instruments/national_oil_well.h"
#include "instruments/requested_data.h"
#include "instruments/stewart_stevenson.h"
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

  Rig() {
    session.SampleTime = 46095.5;
    session.NumberOfParameters = 2;
    for (Parameter& parameter : session.Parameters) parameter.CommandString = "R\r";
    port.onDry = [this] {
      if (stream.empty()) {
        session.StopRequested = true;
        return;
      }
      port.Feed(stream.substr(0, piece));
      stream.remove_prefix(std::min(piece, stream.size()));
    };
  }

  void Begin(std::uint8_t draw, std::string_view bytes) {
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

/// Reads with one of the decoders; gives the bytes of the line.
std::size_t Read(Rig& rig, std::uint8_t decoder) {
  PortReader reader(rig.port, rig.clock, rig.session);
  switch (decoder % 7) {
    case 0:
      return ReadNationalOilWell(reader, rig.session).size();
    case 1:
      return DataTaker_a(reader, rig.session).size();
    case 2:
      return DataTaker_b(reader, rig.session).size();
    case 3:
      return Stewart_stevenson(reader).size();
    case 4:
      return Requested_data(rig.port, rig.clock, rig.session).line.size();
    case 5: {
      const LineLength length = LearnLineLength(reader, rig.session, TimeLimit(rig.clock, rig.session));
      Require(length != LineLength::Learned || rig.session.FormattedLineLength > 0);
      return 0;
    }
    default: {
      IntermittentLines lines;
      lines.Reset(rig.session.Terminator);
      std::size_t bytes = 0;
      while (!rig.session.StopRequested)
        if (lines.Receive(rig.port))
          for (int i = 1; i <= lines.BufferedLineCount; ++i) {
            Require(lines.BufferedLines[i].ends_with(rig.session.Terminator));
            bytes += lines.BufferedLines[i].size();
          }
      return bytes;
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  static Rig rig;
  const std::string bytes(data + 2, data + size);
  rig.Begin(data[0], bytes);
  const std::size_t given = Read(rig, data[1]);
  // A block's numbers may grow in their text; everything else gives at most what came, a mark and the sample time.
  Require(data[1] % 7 == 2 || given <= bytes.size() + 16);
  return 0;
}
