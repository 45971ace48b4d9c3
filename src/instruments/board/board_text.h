#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace velk {

/// What a board holds of one channel.
struct BoardChannel {
  double offset = 0;
  double gain = 0;
  double upperAlarm = 0;
  double lowerAlarm = 0;
  bool upperAlarmSet = false;  ///< in force
  bool lowerAlarmSet = false;
};

/// A line of the table that a board prints.
struct ChannelLine {
  int number = 0;
  BoardChannel channel;
  bool hasMore = false;  ///< two tokens more than a channel has: the board echoes commands
};

/// Reads number, offset, gain, upper and lower alarm, "NS" for one that is not set; a token that isn't there, or is
/// beyond the 64-bit range, reads 0; an alarm that isn't there is not set. Characters that no such line has are dropped
/// first. Nothing where the number isn't a whole one from 1 to `channels`.
std::optional<ChannelLine> ParseChannelLine(std::string_view line, int channels);

/// The reading in the answer to "k": behind the first "=" and ahead of a CR; without a CR the number at the front of
/// the whole answer. Nothing for an answer without "=", and for a number beyond the 64-bit range.
std::optional<double> CalibrationReading(std::string_view answer);

/// "o 3 0.5": a command with what it takes.
std::string BoardCommand(char letter, int channel);
std::string BoardCommand(char letter, int channel, double value);

}  // namespace velk
