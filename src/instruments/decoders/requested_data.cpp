#include "instruments/decoders/requested_data.h"

#include "base/numbers.h"
#include "instruments/reading/time_limit.h"
#include "instruments/texts.h"

namespace velk {

namespace {

void TakeOffLineEnds(std::string& answer) {
  const std::size_t last = answer.find_last_not_of("\r\n");
  answer.resize(last == std::string::npos ? 0 : last + 1);
}

/// A number stands at the front of an answer, so one without an end loses nothing by staying this short. Its last
/// character is kept, since that tells the end.
void KeepShort(std::string& answer) {
  if (answer.size() > PortReader::kLongestText) answer.erase(answer.size() - 2, 1);
}

}  // namespace

RequestedLine Requested_data(SerialPort& port, Clock& clock, Session& session) {
  if (!port.IsOpen()) throw RuntimeError(ErrorNumber::PortNotOpen);
  PortReader reader(port, clock, session);
  std::string line = NumberText(session.SampleTime);
  for (int i = 1; i <= session.NumberOfParameters; ++i) {
    const TimeLimit limit(clock, session);
    clock.WaitMilliseconds(kRequestRestMilliseconds);
    if (session.StopRequested || !port.IsOpen()) return {};
    port.ClearInput();
    port.Write(session.Parameters[i].CommandString);
    std::string answer;
    const std::int64_t heardBefore = reader.BytesRead();
    const auto ends = [&](std::string& text) {
      KeepShort(text);
      return text.ends_with('\n');
    };
    const Reading reading = reader.ReadUntil(answer, ends, [&] { return limit.IsExceeded(); });
    if (reading == Reading::GivenUp) session.StopRequested = true;
    if (reading != Reading::Whole)
      return {{}, reading == Reading::GivenUp, i, {.bytes = reader.BytesRead() - heardBefore}};
    TakeOffLineEnds(answer);
    line.append(session.Delimiter).append(answer);
  }
  clock.Yield();
  if (session.StopRequested) return {};
  return {line + session.Terminator};
}

OperatorText RequestTimeOutText(const OperatorText& port, const Session& session, const RequestedLine& requested) {
  const Parameter& asked = session.Parameters[static_cast<std::size_t>(requested.parameter)];
  const MessageText& wanting = asked.CommandString.empty() ? text::NoCommandFor : text::NoAnswerFor;
  return TimeOutText(text::TimeOutCheckSettings, port, session, requested.heard) + "\n" + wanting +
         (asked.name.empty() ? std::to_string(requested.parameter) : asked.name);
}

namespace {

std::string ReadRequested(PortReader& reader, const Decoding& with) {
  const RequestedLine requested = Requested_data(reader.Port(), with.clock, with.session);
  if (requested.timedOut)
    with.dialogs.Message({RequestTimeOutText(with.portInUse, with.session, requested), text::TimeOutTitle, Buttons::Ok,
                          BoxIcon::Critical});
  return requested.line;
}

}  // namespace

const Decoder decoder::Requested_data{.procedure = "Requested_data", .read = ReadRequested};

}  // namespace velk
