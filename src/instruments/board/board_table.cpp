// Reads the table of channels from the board.

#include "base/text.h"
#include "instruments/board/board.h"
#include "instruments/table/protocols.h"
#include "instruments/texts.h"

namespace velk {

namespace {

constexpr int kLineRounds = 70000;
constexpr std::size_t kLongestLine = 64 * 1024;  ///< a unit that sends on and on takes no more memory

bool IsEcho(std::string_view line) {
  return line.substr(0, 2).find('p') != std::string_view::npos;
}

}  // namespace

/// What the board prints, as far as it has come and is not worked on yet.
struct CAdc12nCom::TableText {
  std::string lineEnd;
  std::string buffer;
  std::vector<std::string> channelLines;  ///< from 1 on
  bool isComplete = true;

  std::size_t LineLength() const { return buffer.find(lineEnd); }
  /// The line at the front, with one character behind the first one of its end.
  std::string TakeLine() {
    const std::size_t length = LineLength();
    std::string line = buffer.substr(0, length);
    buffer.erase(0, length + 2);
    return line;
  }
};

bool CAdc12nCom::AwaitLine(TableText& table) {
  return Await(kLineRounds, [&] {
    if (table.LineLength() != std::string::npos) return true;
    table.buffer += ReadWaiting();
    if (table.LineLength() != std::string::npos) return true;
    if (table.buffer.size() > kLongestLine) table.buffer.erase(0, table.buffer.size() - 1);
    return false;
  });
}

/// False where a line of them doesn't come.
bool CAdc12nCom::DropHeadings(TableText& table) {
  const auto& unit = ProtocolOf(session_).unit;
  const TableHead head = unit ? unit->tableHead : TableHead::TwoLines;
  if (!AwaitLine(table)) return false;
  // Its LF stays, and the next line begins with it.
  if (head == TableHead::EchoAndTwoLines && IsEcho(table.buffer.substr(0, table.LineLength())))
    table.buffer.erase(0, table.LineLength() + 1);
  for (int line = 0; line < 2; ++line) {
    if (!AwaitLine(table)) return false;
    table.TakeLine();
  }
  return true;
}

void CAdc12nCom::RaiseNoTable(const MessageText& text) {
  SendRun();
  Raise(12, text::SourceGetChannelsData, text);
}

void CAdc12nCom::ReadLines(TableText& table, Status& status) {
  const int channels = session_.NumberOfChannels;
  table.channelLines.assign(static_cast<std::size_t>(channels) + 2, {});
  int i = 1;
  for (; i <= channels + 1; ++i) {
    if (i >= 2) status.Doing(text::ReadingChannel + std::to_string(i - 1));
    if (!AwaitLine(table)) break;
    const std::string line = table.TakeLine();
    table.channelLines[static_cast<std::size_t>(i)] = Trim(line);
    if (i == 1 && IsEcho(line)) i = 0;
    status.Done(static_cast<double>(i) / (channels + 1));
  }
  table.isComplete = i > channels;
}

void CAdc12nCom::TakeLines(const TableText& table, Status& status) {
  const int channels = session_.NumberOfChannels;
  commandsEchoed_ = false;
  std::vector<BoardChannel> read(static_cast<std::size_t>(channels) + 1);
  for (std::size_t i = 1; i < table.channelLines.size(); ++i) {
    status.Doing(text::ExtractingChannel + std::to_string(i - 1));
    const auto line = ParseChannelLine(table.channelLines[i], channels);
    if (!line) continue;
    read[static_cast<std::size_t>(line->number)] = line->channel;
    if (line->hasMore) commandsEchoed_ = true;
  }
  present_ = baseline_ = std::move(read);
}

bool CAdc12nCom::GetChannelsData() {
  RequirePort(text::SourceGetChannelsData, text::TableWithoutPort, text::TableNotConfigured);
  EndOpenCalibration();
  TableText table{.lineEnd = session_.IsOwnUnit ? "\r\n" : "\r", .buffer = {}, .channelLines = {}};
  {
    Status status(*this);
    status.Doing(text::ConnectingToUnit);
    status.Done(0);
    status.Appear();
    if (!ReachTradMode()) {
      SendRun();
      return true;
    }
    status.Doing(text::UnitReached);
    status.Doing(text::RequestingChannels);
    Send("p\r");
    if (!DropHeadings(table)) RaiseNoTable(text::NoTableAtRequest);
    ReadLines(table, status);
    if (!table.isComplete) RaiseNoTable(text::NoTableInTime);
    TakeLines(table, status);
  }
  dataChanged_ = false;
  channelsLoaded_ = true;
  SendRun();
  return false;
}

}  // namespace velk
