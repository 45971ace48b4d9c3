#include "core/panel/data_words.h"

#include <algorithm>
#include <cmath>

#include "base/dates.h"
#include "base/numbers.h"
#include "base/text.h"
#include "core/texts.h"
#include "model/status.h"
#include "model/texts.h"

namespace velk {

namespace {

constexpr double kMillisecondsPerDay = 86'400'000;
/// Below so many a minute (an hour) the rate is told by the hour (the minute).
constexpr double kLeastShown = 0.1;
constexpr std::size_t kLongestName = 28;

void Add(OperatorText& text, const OperatorText& part) {
  if (!text.IsEmpty()) text += " \u00b7 ";
  text += part;
}

OperatorText RateText(double perSecond) {
  if (perSecond >= kLeastShown) return Format(perSecond, "0.0") + text::SamplesPerSecond;
  if (perSecond * 60 >= kLeastShown) return Format(perSecond * 60, "0.0") + text::SamplesPerMinute;
  return Format(perSecond * 3600, "0.0") + text::SamplesPerHour;
}

OperatorText Count(long long count, const MessageText& what) {
  return Format(static_cast<double>(count), "#,##0") + what;
}

OperatorText Since(const MessageText& what, double time) {
  return what + FormatDate(time, "hh:mm:ss");
}

/// How the values come, or why they don't.
void TellValues(DataWords& words, const Session& session, std::int64_t ticks, std::optional<double> perSecond) {
  const DataState& data = session.Data;
  words.stale = HasStaleValues(session, ticks);
  words.warns = words.stale && data.pausedSince == 0;
  if (data.pausedSince != 0) {
    Add(words.text, Since(text::PausedSince, data.pausedSince));
  } else if (IsSilent(session, ticks)) {
    Add(words.text, text::NoDataFor + DurationText(static_cast<double>(ticks - data.lastLine) / 1000));
  } else if (data.heldSince != 0) {
    words.warns = true;
    Add(words.text, Since(text::ValuesHeldSince, data.heldSince));
  } else if (data.samples == 0) {
    words.warns = data.rejected > data.firstLines;
    Add(words.text, words.warns ? text::EveryLineRejected : text::WaitsForData);
  } else if (words.stale) {
    Add(words.text, text::EveryLineRejected);
  } else if (perSecond) {
    Add(words.text, RateText(*perSecond));
  }
}

/// What is recorded, and that no row has come for too long.
OperatorText RowsText(DataWords& words, const Session& session, std::int64_t ticks) {
  const DataState& data = session.Data;
  if (!session.RecordToDB) return text::NotRecording;
  OperatorText shown = Count(data.rows, data.rows == 1 ? text::OneRow : text::Rows);
  const std::int64_t withoutRow = ticks - data.lastRow;
  if (data.pausedSince != 0 || withoutRow < SilenceMs(session)) return shown;
  words.warns = true;
  const bool dataCome = ticks - data.lastLine < SilenceMs(session);
  if (dataCome && data.samples > 0) Add(shown, text::NoRowFor + DurationText(static_cast<double>(withoutRow) / 1000));
  return shown;
}

/// Why lines were rejected, what the source goes without, and what fails with each sample; empty where all is well.
OperatorText ReasonsText(DataWords& words, const DataState& data) {
  OperatorText shown;
  const long long rejected = data.rejected - data.firstLines;
  if (rejected > 0) Add(shown, Count(rejected, text::Rejected) + data.lastReason);
  for (const OperatorText* const fault : {&data.sourceFault, &data.failure}) {
    if (fault->IsEmpty()) continue;
    words.warns = true;
    Add(shown, *fault);
  }
  return shown;
}

}  // namespace

bool IsSilent(const Session& session, std::int64_t ticks) {
  return ticks - session.Data.lastLine >= SilenceMs(session);
}

bool HasStaleValues(const Session& session, std::int64_t ticks) {
  const DataState& data = session.Data;
  if (data.pausedSince != 0 || StatusIs(session, text::StatusReady)) return true;
  if (!StatusIs(session, text::StatusAcquiringData)) return false;
  return IsSilent(session, ticks) || (data.samples > 0 && ticks - data.lastSample >= SilenceMs(session));
}

DataWords WordsOfData(const Session& session, std::int64_t ticks, std::optional<double> perSecond) {
  DataWords words;
  if (session.Data.asksForReport) return {text::WaitsForAnswer, true, session.Data.pausedSince != 0};
  if (!StatusIs(session, text::StatusAcquiringData) && !StatusIs(session, text::StatusAcquiringPaused)) return words;
  TellValues(words, session, ticks, perSecond);
  const OperatorText rows = RowsText(words, session, ticks);
  const OperatorText reasons = ReasonsText(words, session.Data);
  // What is wrong stands where a narrow panel still shows it.
  if (words.warns && !reasons.IsEmpty()) Add(words.text, reasons);
  Add(words.text, rows);
  if (!words.warns && !reasons.IsEmpty()) Add(words.text, reasons);
  return words;
}

std::int64_t SilenceMs(const Session& session) {
  const double told = session.TheTimeOut * session.SamplingRate * kMillisecondsPerDay;
  return told > 1000 ? static_cast<std::int64_t>(std::min(told, 1e15)) : 1000;
}

OperatorText DurationText(double seconds) {
  struct Unit {
    double seconds;
    MessageText name;
  };
  // A unit serves from two of it on: "90 s" tells more than "1 min".
  constexpr Unit kUnits[] = {{86400, text::Days}, {3600, text::Hours}, {60, text::Minutes}};
  for (const Unit& unit : kUnits)
    if (seconds >= 2 * unit.seconds) return Format(std::floor(seconds / unit.seconds), "#,##0") + unit.name;
  return Format(std::floor(std::max(seconds, 0.0)), "0") + text::Seconds;
}

OperatorText SizeText(double bytes) {
  if (bytes >= 1e9) return Format(bytes / 1e9, "#,##0.0") + text::GigaBytes;
  if (bytes >= 1e6) return Format(bytes / 1e6, "0.0") + text::MegaBytes;
  return Format(std::ceil(bytes / 1000), "0") + text::KiloBytes;
}

double BytesPerRow(int channels) {
  return 40.0 + 9.5 * channels;
}

OperatorText RecordingText(const Session& session, const std::string& path, double now) {
  std::string name = path.substr(path.rfind('/') + 1);
  if (CharacterCount(name) > kLongestName)
    name = Left(name, kLongestName / 2) + "\u2026" + Right(name, kLongestName / 2 - 1);
  OperatorText shown = text::RecordingSign + " " + name + "  ";
  if (session.Data.pausedSince != 0) return shown + text::RecordingPaused;
  const double seconds = std::max(0.0, (now - session.Data.recordingSince) * 86400);
  // A clock that is read as days is off by some microseconds.
  const auto whole = static_cast<long long>(seconds + 1e-3);
  return shown + std::to_string(whole / 3600) + ":" + Format(static_cast<double>(whole / 60 % 60), "00") + ":" +
         Format(static_cast<double>(whole % 60), "00");
}

OperatorText RecordingToolTip(const Session& session, const LogFileRoom& room, std::optional<double> rowsPerSecond) {
  OperatorText shown = text::RowsGoTo + room.path + "\n" + text::FileSize + SizeText(room.bytes);
  if (!room.free) return shown;
  shown += "\n" + (text::FreeSpace + SizeText(*room.free));
  if (!rowsPerSecond || *rowsPerSecond <= 0) return shown;
  const double seconds = *room.free / (BytesPerRow(session.TotalParameters) * *rowsPerSecond);
  return shown + text::FreeSpaceLasts + DurationText(seconds);
}

}  // namespace velk
