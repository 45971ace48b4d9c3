#include "instruments/calibration/read_reference.h"

#include "base/numbers.h"
#include "base/scope.h"
#include "instruments/decoders/national_oil_well.h"
#include "instruments/decoders/requested_data.h"
#include "instruments/link/link_lease.h"
#include "instruments/reading/get_field.h"
#include "instruments/reading/line_length.h"
#include "instruments/table/protocols.h"
#include "instruments/texts.h"

namespace velk {

namespace {

/// Reads frames of one instrument. An empty frame ends the reading.
class FrameReader {
 public:
  FrameReader(Session& session, const Platform& platform, const Link& link)
      : session_(session), platform_(platform), link_(link), reader_(*link.MSComm1, platform.clock, session) {}

  std::string Next() { return ProtocolOf(session_).hasCommands ? AskedFrame() : SentLine(); }

 private:
  std::string AskedFrame() {
    const RequestedLine answered = Requested_data(reader_.Port(), platform_.clock, session_);
    if (answered.timedOut) Tell(RequestTimeOutText(link_.PortInUse(), session_, answered));
    return answered.line;
  }

  /// The next line that passes the check of its protocol: the first one may have been under way.
  std::string SentLine() {
    const TimeLimit limit(platform_.clock, session_);
    if (session_.FormattedLineLength == 0 && !LearnLength(limit)) return {};
    Heard heard;
    const std::int64_t heardBefore = reader_.BytesRead();
    for (;; heard.rejected = true) {
      std::string line;
      const auto ends = [&](const std::string& text) {
        return !session_.Terminator.empty() && text.ends_with(session_.Terminator);
      };
      const Reading reading = reader_.ReadUntil(line, ends, [&] { return limit.IsExceeded(); });
      heard.bytes = reader_.BytesRead() - heardBefore;
      if (reading == Reading::GivenUp) TellTimeOut(heard);
      if (reading != Reading::Whole) return {};
      NationalOilWell(line = CleanUp(std::move(line)), session_);
      if (!line.starts_with(session_.Terminator)) return line;
    }
  }

  bool LearnLength(const TimeLimit& limit) {
    const LineLength learned = LearnLineLength(reader_, session_, limit);
    const bool lineEnd = learned == LineLength::TimedOutCheckSettings;
    if (lineEnd || learned == LineLength::TimedOutCheckHardware) TellTimeOut({reader_.BytesRead(), lineEnd});
    return learned == LineLength::Learned;
  }

  void TellTimeOut(const Heard& heard) {
    Tell(TimeOutText(text::TimeOutCheckSettings, link_.PortInUse(), session_, heard));
  }

  void Tell(const OperatorText& shown) {
    session_.StopRequested = true;
    platform_.dialogs.Message({shown, text::TimeOutTitle, Buttons::Ok, BoxIcon::Critical});
  }

  Session& session_;
  const Platform& platform_;
  const Link& link_;
  PortReader reader_;
};

/// The value of a parameter in a frame, behind its time.
double ValueIn(const std::string& frame, const Session& session, int parameter) {
  std::size_t position = 0;
  GetField(frame, session.Delimiter, position);
  for (int i = 1; i < parameter && position != 0; ++i) GetField(frame, session.Delimiter, position);
  return position == 0 ? 0 : Val(GetField(frame, session.Delimiter, position));
}

}  // namespace

bool CanReadReferences(const Session& session) {
  const Protocol& row = ProtocolOf(session);
  return row.learnsLineLength || row.hasCommands;
}

std::optional<double> ReadReference(Session& session, const Platform& platform, Link& link, MainTimers& timers,
                                    int parameter, const std::function<void(double)>& show) {
  const LinkLease lease(link, timers);
  session.StopRequested = false;
  const OnLeaving done([&] {
    link.ClosePlainPort();
    session.StopRequested = false;
  });
  if (!link.OpenPlainPort(static_cast<Handshake>(session.Handshake))) return std::nullopt;
  std::optional<double> last;
  RunProcedure({platform.dialogs, "Timer1_Timer"}, [&](const Statements&) {
    FrameReader frames(session, platform, link);
    for (int round = 0; round < kReferenceReadings && !session.StopRequested; ++round) {
      const std::string frame = frames.Next();
      if (frame.empty()) return;
      last = ValueIn(frame, session, parameter);
      show(*last);
      platform.clock.Yield();
    }
  });
  return last;
}

}  // namespace velk
