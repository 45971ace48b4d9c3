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
    const auto ends = [&](std::string& text) {
      KeepShort(text);
      return text.ends_with('\n');
    };
    const Reading reading = reader.ReadUntil(answer, ends, [&] { return limit.IsExceeded(); });
    if (reading == Reading::GivenUp) session.StopRequested = true;
    if (reading != Reading::Whole) return {{}, reading == Reading::GivenUp};
    TakeOffLineEnds(answer);
    line.append(session.Delimiter).append(answer);
  }
  clock.Yield();
  if (session.StopRequested) return {};
  return {line + session.Terminator};
}

namespace {

std::string ReadRequested(PortReader& reader, const Decoding& with) {
  const RequestedLine requested = Requested_data(reader.Port(), with.clock, with.session);
  if (requested.timedOut)
    with.dialogs.Message({text::TimeOutCheckSettings, text::TimeOutTitle, Buttons::Ok, BoxIcon::Critical});
  return requested.line;
}

}  // namespace

const Decoder decoder::Requested_data{.procedure = "Requested_data", .read = ReadRequested};

}  // namespace velk
