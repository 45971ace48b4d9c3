#include "instruments/detection/port_search.h"

#include <algorithm>

#include "base/scope.h"
#include "instruments/decoders/requested_data.h"
#include "instruments/reading/time_check.h"
#include "instruments/setup/hardware_choices.h"
#include "instruments/table/protocols.h"
#include "instruments/texts.h"
#include "model/help_topics.h"
#include "platform/loop/clock.h"
#include "platform/ports/port_devices.h"

namespace velk {

namespace {

constexpr std::int64_t kRoundMs = 5000;
constexpr int kOkRounds = 70000;
constexpr int kRoundsToDrain = 500;
constexpr int kLookMs = 100;
constexpr int kPhases = 3;
constexpr std::size_t kLongestHeard = 64 * 1024;
constexpr std::size_t kYieldEvery = 256;  ///< characters
constexpr double kLongestInterval = 1.0 / 86400;
constexpr std::int16_t kNoHandshake = 0;
constexpr std::int16_t kHardwareHandshake = 2;

/// A channel of the unit that answers on request.
struct AskedChannel {
  const char* name;
  const char* units;
  const char* command;
  const char* reset;
};

constexpr AskedChannel kVersion1[] = {{"Depth", "m", "N3TE*", "N3VE*"},
                                      {"Speed", "m/min", "N3TH*", ""},
                                      {"Weight", "lbs", "N5TA*", ""},
                                      {"Pump Pressure", "psi", "N1TA*", ""},
                                      {"Well Head Pressure", "psi", "N2TA*", ""},
                                      {"Flow Rate", "ltrs/min", "N4TH*", ""},
                                      {"Flow Total", "ltrs", "N4TE*", "N4VE*"}};
constexpr std::int16_t kVersion1Channels = std::size(kVersion1);

bool EndsLine(std::string_view line) {
  return line.ends_with("\r\n") || line.ends_with("\n\r");
}

}  // namespace

PortSearch::PortSearch(Session& session, const Platform& platform, SerialPort& port, std::unique_ptr<ProgressBox> box,
                       const std::string& devices)
    : session_(session),
      platform_(platform),
      port_(port),
      box_(platform.dialogs, std::move(box)),
      watch_(platform.clock.MakeTimer()) {
  for (int number = 1; number <= kPortsOffered; ++number) {
    const std::string device = PortDevice(platform_.settings, number, devices);
    if (PortIsThere(device, devices)) ports_.push_back({number, device});
  }
  watch_->SetInterval(kLookMs);
  watch_->SetHandler([this] { session_.StopRequested = session_.StopRequested || IsCancelled(); });
  box_.Appear();
}

PortSearch::~PortSearch() {
  port_.Close();
}

void PortSearch::Prepare() {
  session_.Parameters = {};
  // As a channel that was never set up: no sample can be judged by a scale without a span.
  for (std::size_t i = 1; i < session_.Parameters.size(); ++i) session_.Parameters[i].max = 100;
  session_.NumberOfParameters = 0;
  session_.SensitivityCriterion = 20;
  session_.TheTimeOut = 15;
  session_.SerialData = protocol::Formatted;
  session_.BaudRate = 19200;
  session_.Parity = "N";
  session_.DataBits = 8;
  session_.StopBits = "1";
  session_.Delimiter = " ";
  session_.Terminator = "\r";
  session_.Handshake = kNoHandshake;
  session_.PortNumber = static_cast<std::int16_t>(ports_.empty() ? 1 : ports_.front().number);
}

bool PortSearch::Find() {
  Prepare();
  return ListenOnEach(text::DetectListening, kNoHandshake, &PortSearch::TakeStreaming) ||
         ListenOnEach(text::DetectListeningHandshake, kHardwareHandshake, &PortSearch::TakeWithHandshake) || AskEach();
}

// --- Ports ---

void PortSearch::ForEachPort(const MessageText& doing, const std::function<bool()>& isFound) {
  for (Port& port : ports_) {
    if (IsCancelled()) return;
    session_.PortNumber = static_cast<std::int16_t>(port.number);
    box_.Show(doing + OperatorText(std::to_string(port.number)),
              static_cast<double>(opened_++) / static_cast<double>(kPhases * ports_.size()));
    if (!Open(port)) continue;
    found_ = isFound();
    port_.Close();
    if (found_) return;
    platform_.clock.Yield();
  }
}

bool PortSearch::Open(Port& port) {
  try {
    port_.Open({.device = port.device,
                .baudRate = session_.BaudRate,
                .parity = session_.Parity,
                .dataBits = session_.DataBits,
                .stopBits = session_.StopBits,
                .handshake = static_cast<Handshake>(session_.Handshake)});
    port.fault = {};
    return true;
  } catch (const PortError& error) {
    port.fault = Link::PortErrorText(error);
    return false;
  }
}

OperatorText PortSearch::PortsNotOpened() const {
  OperatorText text;
  for (const Port& port : ports_)
    if (!port.fault.IsEmpty()) text += "\n" + (text::ComPort + std::to_string(port.number)) + ": " + port.fault;
  return text.IsEmpty() ? text : text::PortsNotOpened + text;
}

/// The box may stand for long, and the instrument goes on sending.
void PortSearch::Tell(const MessageText& found) {
  port_.Close();
  OperatorText text = found;
  if (const OperatorText ports = PortsNotOpened(); !ports.IsEmpty()) text += "\n\n" + ports;
  platform_.dialogs.Message({.text = text,
                             .title = text::DetectTitle,
                             .buttons = Buttons::Ok,
                             .icon = BoxIcon::Information,
                             .helpTopic = topic::UnitTable});
}

// --- Units that send by themselves ---

std::string PortSearch::ReadLine(std::int64_t begun) {
  std::string line;
  while (!EndsLine(line) && !IsCancelled() && port_.IsOpen() && platform_.clock.Ticks() - begun < kRoundMs) {
    const std::string character = port_.Read(1);
    line += character;
    if (line.size() > kLongestHeard) line.erase(0, kLongestHeard / 2);
    if (character.empty())
      platform_.clock.WaitRound();
    else if (line.size() % kYieldEvery == 0)
      platform_.clock.Yield();
  }
  return line;
}

/// The second line of a round: the first one may have been under way.
PortSearch::HeardLine PortSearch::HearLine() {
  const std::int64_t begun = platform_.clock.Ticks();
  ReadLine(begun);
  HeardLine line{.text = ReadLine(begun)};
  line.endsInCrLf = line.text.ends_with("\r\n");
  line.endsInLfCr = line.text.ends_with("\n\r");
  if (const std::size_t end = line.text.find(session_.Terminator); end != std::string::npos && line.text.size() > 1)
    line.text.resize(end);
  line.delimiters = CountDelimiters(line.text, session_.Delimiter);
  return line;
}

bool PortSearch::MayBeCount(std::int32_t delimiters) const {
  return delimiters > 0 && delimiters + session_.NumberOfFormulae <= kMaxParameters;
}

bool PortSearch::ListenOnEach(const MessageText& doing, std::int16_t handshake,
                              bool (PortSearch::*take)(const HeardLine&)) {
  session_.Handshake = handshake;
  session_.BaudRate = 19200;
  ForEachPort(doing, [&] {
    const HeardLine line = HearLine();
    session_.NumberOfParameters = static_cast<std::int16_t>(MayBeCount(line.delimiters) ? line.delimiters : 0);
    return session_.NumberOfParameters > 0 && !IsCancelled() && (this->*take)(line);
  });
  if (!found_) session_.Handshake = kNoHandshake;
  return found_;
}

bool PortSearch::TakeStreaming(const HeardLine& line) {
  if (line.endsInLfCr) {
    Tell(text::FoundNationalOilWell);
    return true;
  }
  if (!line.endsInCrLf) return false;
  const bool isOwnUnit = AnswersToTrad();
  // Whoever was pulled out has told nothing.
  if (!port_.IsOpen()) return false;
  session_.Terminator = "\r\n";
  if (IsCancelled()) return true;
  if (isOwnUnit) session_.SerialData = protocol::Kesta4;
  Tell(isOwnUnit ? text::FoundKesta4 : text::FoundNationalOilWell);
  return true;
}

/// Whether it goes to command mode; it is sent to run behind that.
bool PortSearch::AnswersToTrad() {
  box_.Show(text::DetectCommanding + OperatorText(std::to_string(session_.PortNumber)), -1);
  if (!port_.IsOpen()) return false;
  port_.ClearInput();
  port_.Write("Trad\r");
  std::string heard;
  bool isThere = false;
  for (int round = 0; round < kOkRounds && !isThere && port_.IsOpen() && !IsCancelled(); ++round) {
    heard += port_.Read(port_.BytesWaiting());
    isThere = heard.find("OK") != std::string::npos;
    if (heard.size() > kLongestHeard) heard.erase(0, heard.size() - 1);
    if (!isThere) platform_.clock.WaitRound();
  }
  if (port_.IsOpen()) port_.Write("r \r");
  Drain();
  return isThere;
}

void PortSearch::Drain() {
  for (int round = 0; round < kRoundsToDrain && port_.BytesToSend() > 0; ++round) platform_.clock.WaitRound();
}

bool PortSearch::TakeWithHandshake(const HeardLine& line) {
  if (!line.endsInCrLf) return false;
  session_.SerialData = protocol::Kesta3;
  Tell(text::FoundKesta3);
  return true;
}

// --- Units that are asked ---

bool PortSearch::AskEach() {
  if (IsCancelled()) return false;
  session_.SerialData = protocol::SentWhenRequested;
  session_.Delimiter = ",";
  session_.BaudRate = 9600;
  for (int i = 0; i < kVersion1Channels; ++i)
    session_.Parameters[static_cast<std::size_t>(i) + 1].CommandString = kVersion1[i].command;
  // However slow the sampling: a silent port is left behind 15 seconds.
  const double interval = std::exchange(session_.SamplingRate, std::min(session_.SamplingRate, kLongestInterval));
  watch_->SetEnabled(true);
  const OnLeaving asked([&] {
    session_.SamplingRate = interval;
    watch_->SetEnabled(false);
  });
  ForEachPort(text::DetectAsking, [&] {
    session_.NumberOfParameters = kVersion1Channels;
    const RequestedLine answered = Requested_data(port_, platform_.clock, session_);
    if (!IsCancelled()) session_.StopRequested = false;
    return TakeAnswers(CountDelimiters(answered.line, session_.Delimiter));
  });
  return found_;
}

bool PortSearch::TakeAnswers(std::int32_t delimiters) {
  if (delimiters != kVersion1Channels || !MayBeCount(delimiters)) return false;
  FillUnnamedParameters(session_.Parameters, kVersion1Channels, platform_.language);
  for (int i = 0; i < kVersion1Channels; ++i) {
    Parameter& parameter = session_.Parameters[static_cast<std::size_t>(i) + 1];
    parameter.name = kVersion1[i].name;
    parameter.units = kVersion1[i].units;
    parameter.CommandString = kVersion1[i].command;
    parameter.ResetCommand = kVersion1[i].reset;
  }
  Tell(text::FoundVersion1);
  return true;
}

}  // namespace velk
