// What the channels have, and are to have.

#include "instruments/board/board.h"
#include "instruments/texts.h"

namespace velk {

namespace {

constexpr std::uint32_t kCommandRefused = 0x80040000U + 10;

/// Stores a value; whether it was another one.
template <class Value>
bool Change(Value& stored, Value value) {
  const bool differs = stored < value || value < stored;
  stored = value;
  return differs;
}

bool Change(bool& stored, bool value) {
  const bool differs = stored != value;
  stored = value;
  return differs;
}

bool Differs(double a, double b) {
  return a < b || b < a;
}

}  // namespace

/// Of channel 0 there is nothing; it may be asked for all the same.
BoardChannel& CAdc12nCom::Checked(const char* procedure, int channel) {
  const bool isOfUnit = present_.size() == static_cast<std::size_t>(session_.NumberOfChannels) + 1;
  if ((!channelsLoaded_ || !isOfUnit) && GetChannelsData()) Raise(8, procedure, text::UnableToGetChannels);
  if (channel < 0 || channel > session_.NumberOfChannels)
    Raise(9, procedure,
          text::InvalidChannelNumber + std::to_string(session_.NumberOfChannels) + text::InvalidChannelNumberAfter);
  EndOpenCalibration();
  present_[0] = {};
  return present_[static_cast<std::size_t>(channel)];
}

double CAdc12nCom::GetGain(int channel) {
  return Checked("GetGain", channel).gain;
}

double CAdc12nCom::GetOffset(int channel) {
  return Checked("GetOffset", channel).offset;
}

bool CAdc12nCom::GetUpperAlarm(int channel, double& value) {
  const BoardChannel& present = Checked("GetUpperAlarm", channel);
  value = present.upperAlarm;
  return present.upperAlarmSet;
}

bool CAdc12nCom::GetLowerAlarm(int channel, double& value) {
  const BoardChannel& present = Checked("GetLowerAlarm", channel);
  value = present.lowerAlarm;
  return present.lowerAlarmSet;
}

void CAdc12nCom::SetGain(int channel, double value) {
  if (Change(Checked("SetGain", channel).gain, value)) dataChanged_ = true;
}

void CAdc12nCom::SetOffset(int channel, double value) {
  if (Change(Checked("SetOffset", channel).offset, value)) dataChanged_ = true;
}

void CAdc12nCom::SetUpperAlarm(int channel, bool isSet, double value) {
  BoardChannel& present = Checked("SetUpperAlarm", channel);
  const bool otherLevel = Change(present.upperAlarm, value);
  if (Change(present.upperAlarmSet, isSet) || otherLevel) dataChanged_ = true;
}

void CAdc12nCom::SetLowerAlarm(int channel, bool isSet, double value) {
  BoardChannel& present = Checked("SetLowerAlarm", channel);
  const bool otherLevel = Change(present.lowerAlarm, value);
  if (Change(present.lowerAlarmSet, isSet) || otherLevel) dataChanged_ = true;
}

void CAdc12nCom::SendDifferences(int channel) {
  const BoardChannel& to = present_[static_cast<std::size_t>(channel)];
  const BoardChannel& from = baseline_[static_cast<std::size_t>(channel)];
  if (Differs(to.offset, from.offset)) executCommand(BoardCommand('o', channel, to.offset));
  if (Differs(to.gain, from.gain)) executCommand(BoardCommand('g', channel, to.gain));
  if (Differs(to.upperAlarm, from.upperAlarm) || to.upperAlarmSet != from.upperAlarmSet)
    executCommand(to.upperAlarmSet ? BoardCommand('u', channel, to.upperAlarm) : BoardCommand('U', channel));
  if (Differs(to.lowerAlarm, from.lowerAlarm) || to.lowerAlarmSet != from.lowerAlarmSet)
    executCommand(to.lowerAlarmSet ? BoardCommand('l', channel, to.lowerAlarm) : BoardCommand('L', channel));
}

int CAdc12nCom::SaveDataToBoard() {
  constexpr int kRefused = -4;
  EnsureTradMode(text::SourceSendTrad);
  try {
    for (int channel = 1; channel < static_cast<int>(present_.size()); ++channel) SendDifferences(channel);
  } catch (const BoardError& error) {
    if (error.Code() != kCommandRefused) throw;
    refused_.emplace(error);
    SendRun();
    return kRefused;
  }
  SendRun();
  baseline_ = present_;
  dataChanged_ = false;
  return 0;
}

}  // namespace velk
