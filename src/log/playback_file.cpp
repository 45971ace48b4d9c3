#include "log/playback_file.h"

#include "base/dates.h"
#include "base/errors.h"
#include "log/texts.h"

namespace velk {

namespace {

/// Two rows tell how far apart the others are.
constexpr int kRowsAtTheBeginning = 2;

}  // namespace

PlaybackFile OpenForPlayback(const std::string& path, const Language& language) {
  PlaybackFile file{ReadLogParameters(path, language), std::make_unique<LogReader>(path), {}};
  file.reader->Arrange(ColumnsOfChannels(file.parameters, path));
  file.beginning = file.reader->Page({}, kRowsAtTheBeginning);
  for (const LogRow& row : file.beginning) CheckHasTime(row, path);
  return file;
}

LogReader ReaderOfPlayed(const std::string& path, const Language& language) {
  LogReader reader(path);
  reader.Arrange(ColumnsOfChannels(ReadLogParameters(path, language), path));
  return reader;
}

void CheckHasTime(const LogRow& row, const std::string& path) {
  if (IsDateTime(row.time)) return;
  throw RuntimeError(ErrorNumber::TypeMismatch,
                     text::RowWithoutTimeBefore + std::to_string(row.key) + text::RowWithoutTimeAfter + path);
}

}  // namespace velk
