#include "instruments/unit/unit_settings.h"

#include "base/dates.h"
#include "base/number_entry.h"
#include "base/numbers.h"
#include "base/text.h"
#include "instruments/texts.h"
#include "platform/loop/clock.h"

namespace velk {

namespace {

std::string AlarmText(bool isSet, double level) {
  return isSet ? NumberText(level) : std::string();
}

double NumberOf(const std::string& cell) {
  return Val(WithDecimalPoint(Trim(cell)));
}

bool HasAlarm(const std::string& cell) {
  return !Trim(cell).empty();
}

}  // namespace

UnitRows EmptyUnitTable(const Session& session) {
  UnitRows table(static_cast<std::size_t>(session.NumberOfChannels));
  for (std::size_t row = 0; row < table.size(); ++row) {
    table[row][unit_column::Channel] = std::to_string(row + 1);
    if (row < session.OrbenSettings.size())
      table[row][unit_column::NumberFormat] = session.OrbenSettings[row][unit_column::NumberFormat];
  }
  return table;
}

void UnitSettings::MatchParameters() {
  const UnitTalk talk(unit_, cancelled_);
  CAdc12nCom& board = talk.Board();
  const CAdc12nCom::Status status(board);
  if (board.Reply().empty()) board.SendTrad();
  board.ForgetChannels();
  if (board.GetChannelsData()) throw BoardError(8, "MatchParameters", text::UnableToGetChannels);
  UnitRows table = EmptyUnitTable(unit_.session);
  for (std::size_t row = 0; row < table.size(); ++row) {
    const int channel = static_cast<int>(row) + 1;
    double level = 0;
    table[row][unit_column::Offset] = NumberText(board.GetOffset(channel));
    table[row][unit_column::Gain] = NumberText(board.GetGain(channel));
    const bool hasUpper = board.GetUpperAlarm(channel, level);
    table[row][unit_column::UpperAlarm] = AlarmText(hasUpper, level);
    const bool hasLower = board.GetLowerAlarm(channel, level);
    table[row][unit_column::LowerAlarm] = AlarmText(hasLower, level);
  }
  unit_.session.OrbenSettings = std::move(table);
}

void UnitSettings::Send(const UnitRows& table) {
  const UnitTalk talk(unit_, cancelled_);
  CAdc12nCom& board = talk.Board();
  const CAdc12nCom::Status status(board);
  for (std::size_t row = 0; row < table.size(); ++row) {
    const int channel = static_cast<int>(row) + 1;
    const std::string& upper = table[row][unit_column::UpperAlarm];
    const std::string& lower = table[row][unit_column::LowerAlarm];
    board.SetOffset(channel, NumberOf(table[row][unit_column::Offset]));
    board.SetGain(channel, NumberOf(table[row][unit_column::Gain]));
    board.SetUpperAlarm(channel, HasAlarm(upper), NumberOf(upper));
    board.SetLowerAlarm(channel, HasAlarm(lower), NumberOf(lower));
  }
  SaveOrForget(board);
}

void UnitSettings::ResetToSystemDefault() {
  const UnitTalk talk(unit_, cancelled_);
  const CAdc12nCom::Status status(talk.Board());
  talk.Board().ForgetChannels();
  talk.Board().ResetToSystemDefault();
}

void UnitSettings::SetClock() {
  const UnitTalk talk(unit_, cancelled_);
  const CAdc12nCom::Status status(talk.Board());
  talk.Board().SetDateToNow();
}

void UnitSettings::SendCommand(const std::string& command) {
  const UnitTalk talk(unit_, cancelled_);
  CAdc12nCom& board = talk.Board();
  const CAdc12nCom::Status status(board);
  board.ForgetChannels();
  board.SendTrad();
  board.executCommand(Trim(command));
  board.SendRun();
}

std::string UnitSettings::ClockText() const {
  const std::string& time = unit_.link.LastFrameTime();
  return time.empty() ? "–" : FormatDate(unit_.platform.clock.Now(), "dd-mmm-yyyy") + "  " + time;
}

}  // namespace velk
