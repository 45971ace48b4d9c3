#include "instruments/decoders/intermittent.h"

#include <optional>

#include "base/numbers.h"
#include "base/single.h"
#include "instruments/reading/date_field.h"
#include "instruments/reading/get_field.h"
#include "instruments/reading/time_check.h"

namespace velk {

void IntermittentLines::Reset(std::string_view terminator) {
  BufferedLineCount = 0;
  BufferedLines.resize(1);
  framing_.Reset(terminator);
  endsLines_ = terminator.size() == 1;
}

bool IntermittentLines::Receive(SerialPort& port) {
  BufferedLineCount = 0;
  BufferedLines.resize(1);
  const std::string bytes = port.Read(kMostAtOnce);
  if (!endsLines_) return false;
  framing_.Append(bytes);
  while (framing_.HasLine()) {
    BufferedLines.push_back(framing_.TakeLine());
    ++BufferedLineCount;
  }
  return BufferedLineCount > 0;
}

void IntermittentLines::Hold(SerialPort& port) {
  if (endsLines_ && framing_.Size() < kMostHeld) framing_.Append(port.Read(kMostAtOnce));
}

BufferedSample ReadBufferedLine(Session& session, std::string_view line) {
  if (line.find(session.Terminator) == std::string_view::npos) return {LineFault::CheckFailed};
  if (CountDelimiters(line, session.Delimiter) < session.NumberOfParameters) return {LineFault::FieldMissing};
  std::size_t position = 0;
  const std::optional<double> when = ReadDateField(GetField(line, session.Delimiter, position));
  if (!when) return {LineFault::NoDate};
  Session::PerParameter<float> values{};
  for (int i = 1; i <= session.NumberOfParameters; ++i) {
    const double field = Val(GetField(line, session.Delimiter, position));
    const Parameter& configured = session.Parameters[i];
    const double gain = static_cast<double>(ThroughText(configured.Gain));
    const double value = field * gain + static_cast<double>(ThroughText(configured.Offset));
    if (!FitsSingle(field) || !FitsSingle(value)) return {LineFault::BeyondRange};
    values[i] = static_cast<float>(value);
  }
  for (int i = 1; i <= session.NumberOfParameters; ++i) session.CurrentValue[i] = values[i];
  return {LineFault::None, *when};
}

}  // namespace velk
