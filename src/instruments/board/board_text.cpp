#include "instruments/board/board_text.h"

#include <cmath>
#include <vector>

#include "base/numbers.h"

namespace velk {

namespace {

constexpr std::size_t kTokensOfChannel = 5;

/// The tokens of a line, divided by blanks.
std::vector<std::string> TokensOf(std::string_view line) {
  constexpr std::string_view kept = " -.SN0123456789";
  std::vector<std::string> tokens;
  bool isWithin = false;
  for (char character : line) {
    if (character == '\t') character = ' ';
    if (kept.find(character) == std::string_view::npos) continue;
    if (character == ' ') {
      isWithin = false;
      continue;
    }
    if (!isWithin) tokens.emplace_back();
    isWithin = true;
    tokens.back() += character;
  }
  return tokens;
}

/// More digits than any number has are none.
double NumberIn(const std::string& token) {
  const double number = Val(token);
  return std::isfinite(number) ? number : 0;
}

void ReadAlarm(const std::string& token, double& level, bool& isSet) {
  isSet = token != "NS";
  level = isSet ? NumberIn(token) : 0;
}

}  // namespace

std::optional<ChannelLine> ParseChannelLine(std::string_view line, int channels) {
  const std::vector<std::string> tokens = TokensOf(line);
  const double number = tokens.empty() ? 0 : Val(tokens[0]);
  if (!(number >= 1 && number <= channels) || std::floor(number) < number) return std::nullopt;
  ChannelLine read;
  read.number = static_cast<int>(number);
  if (tokens.size() > 1) read.channel.offset = NumberIn(tokens[1]);
  if (tokens.size() > 2) read.channel.gain = NumberIn(tokens[2]);
  if (tokens.size() > 3) ReadAlarm(tokens[3], read.channel.upperAlarm, read.channel.upperAlarmSet);
  if (tokens.size() > 4) ReadAlarm(tokens[4], read.channel.lowerAlarm, read.channel.lowerAlarmSet);
  read.hasMore = tokens.size() > kTokensOfChannel + 1;
  return read;
}

std::optional<double> CalibrationReading(std::string_view answer) {
  const std::size_t sign = answer.find('=');
  if (sign == std::string_view::npos) return std::nullopt;
  const std::string_view behind = answer.substr(sign + 1);
  const std::size_t end = behind.find('\r');
  const double reading = Val(end == std::string_view::npos ? answer : behind.substr(0, end));
  return std::isfinite(reading) ? std::optional(reading) : std::nullopt;
}

std::string BoardCommand(char letter, int channel) {
  return std::string(1, letter) + ' ' + std::to_string(channel);
}

std::string BoardCommand(char letter, int channel, double value) {
  return BoardCommand(letter, channel) + ' ' + NumberText(value);
}

}  // namespace velk
