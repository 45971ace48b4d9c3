// The commands of the board beside its table of channels.

#include "base/dates.h"
#include "base/numbers.h"
#include "instruments/board/board.h"
#include "instruments/texts.h"
#include "platform/dialogs/long_task.h"
#include "platform/loop/clock.h"

namespace velk {

namespace {

constexpr int kReadingRounds = 10000;
constexpr std::size_t kReadingLength = 11;

}  // namespace

void CAdc12nCom::ResetCounter(int channel, double value) {
  EndOpenCalibration();
  if (channel <= session_.LastAnalogChannel || channel > session_.LastHardwareChannel)
    Raise(13, text::SourceResetCounter, text::NoSuchCounter + std::to_string(channel) + text::NoSuchCounterAfter);
  if (value < 0)
    Raise(11, text::SourceResetCounter,
          text::UnableToResetCounter + NumberText(value) + text::UnableToResetCounterAfter);
  EnsureTradMode(text::SourceResetCounter);
  executCommand(BoardCommand('i', channel, value));
  SendRun();
}

void CAdc12nCom::ResetToSystemDefault() {
  EndOpenCalibration();
  EnsureTradMode(text::SourceResetToSystemDefault);
  executCommand("s ");
  SendRun();
}

void CAdc12nCom::StartCalibrateChannel(int channel) {
  EndOpenCalibration();
  if (channel < 1 || channel > session_.LastHardwareChannel)
    Raise(15, text::SourceStartCalibrate, text::InvalidCalibrationChannel);
  EnsureTradMode(text::SourceStartCalibrate);
  executCommand(BoardCommand('c', channel));
  calibrating_ = true;
}

void CAdc12nCom::StartCalibrateDirect(int channel) {
  comPort_->ClearInput();
  SendDirect(BoardCommand('c', channel));
  calibrating_ = true;
}

double CAdc12nCom::EndCalibrateChannel() {
  if (!calibrating_) Raise(15, text::SourceEndCalibrate, text::NoCalibrationBegun);
  const std::string answer = AskReading();
  const auto reading = answer.size() < kReadingLength ? std::nullopt : CalibrationReading(answer);
  if (!reading) Raise(16, text::SourceEndCalibrate, text::UnableToCalibrate);
  return *reading;
}

/// Ends the calibration; shorter than a whole answer where that didn't come in time.
std::string CAdc12nCom::AskReading() {
  std::string answer;
  const auto finish = [&] {
    Send("f");
    comPort_->ClearInput();
    calibrating_ = false;
  };
  try {
    Send("k");
    Await(kReadingRounds, [&] {
      answer += ReadWaiting();
      return answer.size() >= kReadingLength;
    });
  } catch (const TaskCancelled&) {
    finish();
    throw;
  }
  finish();
  return answer;
}

void CAdc12nCom::SetDate(double dateTime) {
  EnsureTradMode(text::SourceSetDate);
  SendDate(dateTime);
}

void CAdc12nCom::SetDateToNow() {
  EnsureTradMode(text::SourceSetDate);
  SendDate(platform_.clock.Now());
}

void CAdc12nCom::SendDate(double dateTime) {
  const DateParts now = Split(dateTime);
  std::string command = "C";
  for (const int part : {now.weekday, now.day, now.month, now.year, now.hour, now.minute, now.second})
    command += ' ' + std::to_string(part);
  executCommand(command);
  SendRun();
}

}  // namespace velk
