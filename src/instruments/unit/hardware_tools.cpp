#include "instruments/unit/hardware_tools.h"

#include "base/errors.h"
#include "base/numbers.h"
#include "instruments/calibration/calibration.h"
#include "instruments/texts.h"
#include "instruments/unit/unit_questions.h"
#include "platform/dialogs/procedure.h"

namespace velk {

namespace {

constexpr UnitCommand kCommands[] = {
    {text::UnitCalibrate, 'c', false},        {text::UnitSetGain, 'g', true},
    {text::UnitSetOffset, 'o', true},         {text::UnitSetLowerAlarm, 'l', true},
    {text::UnitSetUpperAlarm, 'u', true},     {text::UnitRemoveLowerAlarm, 'L', false},
    {text::UnitRemoveUpperAlarm, 'U', false}, {text::UnitSetNumberFormat, 'n', false},
    {text::UnitResetCounters, 'i', true},
};

constexpr double kMostDecimals = 15;

/// "0." and as many zeros as the operator wants decimals; empty where he leaves the question.
std::string AskFormat(Dialogs& dialogs) {
  for (;;) {
    const auto decimals = AskUnitNumber(dialogs, text::EnterDecimalPlaces, text::UnitToolsTitle);
    if (!decimals) return {};
    const auto count = static_cast<std::size_t>(*decimals >= 0 && *decimals <= kMostDecimals ? *decimals : 0);
    if (!(static_cast<double>(count) < *decimals) && !(static_cast<double>(count) > *decimals))
      return "0." + std::string(count, '0');
    dialogs.Message({text::DecimalsOutOfRange, text::UnitToolsTitle, Buttons::Ok, BoxIcon::Exclamation});
  }
}

}  // namespace

std::span<const UnitCommand> UnitCommands() {
  return kCommands;
}

bool HardwareTools::Enter() {
  return RunProcedure({unit_.platform.dialogs, "Form_Load"}, [&](const Statements& run) {
    run([&] {
      talk_.reset();
      talk_.emplace(unit_, cancelled_);
      try {
        const CAdc12nCom::Status status(talk_->Board());
        if (talk_->Board().SendTrad()) throw BoardError(6, text::SourceSendTrad, text::UnableToCommunicate);
      } catch (...) {
        talk_.reset();
        throw;
      }
    });
  });
}

std::optional<std::string> HardwareTools::Send(const UnitCommand& command, int channel, const std::string& preset) {
  std::optional<std::string> sent;
  RunProcedure({unit_.platform.dialogs, "Command2_Click"}, [&](const Statements& run) {
    cancelled_ = false;
    run([&] {
      if (command.letter == 'c')
        Calibrate(channel);
      else
        sent = SendPlain(command, channel, preset);
    });
  });
  return sent;
}

/// The value that was sent.
std::string HardwareTools::SendPlain(const UnitCommand& command, int channel, const std::string& preset) {
  Dialogs& dialogs = unit_.platform.dialogs;
  std::string value;
  if (command.letter == 'n') {
    value = AskFormat(dialogs);
    if (value.empty()) return {};
  } else if (command.hasValue) {
    const auto number = AskUnitNumber(dialogs, text::EnterNewValue, text::UnitToolsTitle, preset);
    if (!number || !MaySend(dialogs, *number)) return {};
    value = NumberText(*number);
  }
  talk_->Board().SendDirect(BoardCommand(command.letter, channel) + (value.empty() ? "" : " " + value));
  dialogs.Message({text::CommandSent, text::UnitToolsTitle, Buttons::Ok, BoxIcon::Information});
  return value;
}

double HardwareTools::TellReading() {
  const double reading = talk_->Board().EndCalibrateChannel();
  unit_.platform.dialogs.Message(
      {text::ReadingIs + NumberText(reading), text::UnitToolsTitle, Buttons::Ok, BoxIcon::Information});
  return reading;
}

void HardwareTools::Calibrate(int channel) {
  Dialogs& dialogs = unit_.platform.dialogs;
  const bool isCounter = channel > unit_.session.LastAnalogChannel;
  const auto found = isCounter ? CalibrateCounter(channel) : CalibrateAnalog(channel);
  if (!found) return;
  if (std::abs(found->gain) <= 0) {
    dialogs.Message({text::GainIsZero, text::UnitToolsTitle, Buttons::Ok, BoxIcon::Exclamation});
    return;
  }
  if (!MaySend(dialogs, found->gain) || !MaySend(dialogs, found->offset)) return;
  talk_->Board().SendDirect(BoardCommand('g', channel, found->gain));
  talk_->Board().SendDirect(BoardCommand('o', channel, found->offset));
}

std::optional<HardwareTools::Found> HardwareTools::CalibrateCounter(int channel) {
  Dialogs& dialogs = unit_.platform.dialogs;
  const auto reference =
      AskUnitNumber(dialogs, text::EnterReference, text::CalibrateCounterTitle + std::to_string(channel));
  if (!reference) return std::nullopt;
  talk_->Board().StartCalibrateDirect(channel);
  dialogs.Message({text::ClickWhenFinished, text::UnitToolsTitle, Buttons::Ok, BoxIcon::Information});
  return Found{Divide(*reference, TellReading()), 0};
}

std::optional<HardwareTools::Found> HardwareTools::CalibrateAnalog(int channel) {
  Dialogs& dialogs = unit_.platform.dialogs;
  CalibrationPoints points;
  for (std::size_t i = 0; i < points.size(); ++i) {
    const MessageText& prompt = i == 0 ? text::EnterFirstReference : text::EnterSecondReference;
    const auto reference = AskUnitNumber(dialogs, prompt, text::CalibrateChannelTitle + std::to_string(channel));
    if (!reference) return std::nullopt;
    talk_->Board().StartCalibrateDirect(channel);
    points[i] = {*reference, TellReading()};
  }
  const auto scale = ScaleOf(points);
  return scale ? Found{scale->gain, scale->offset} : Found{};
}

}  // namespace velk
