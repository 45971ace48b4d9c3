#pragma once

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>

#include "base/language.h"
#include "log/log_writer.h"
#include "model/session.h"
#include "platform/database/command.h"
#include "platform/dialogs/dialogs.h"
#include "platform/loop/gate.h"
#include "platform/loop/system_clock.h"
#include "platform/platform.h"
#include "platform/settings/settings.h"

namespace velk::bench {

inline constexpr int kChannels = 64;

class NoDialogs : public Dialogs {
 public:
  using Dialogs::Dialogs;

 protected:
  Answer ShowMessage(const ShownMessage& box) override { throw std::logic_error(box.text); }
  std::optional<std::string> ShowInput(const std::string&, const std::string&, const std::string&) override {
    return std::nullopt;
  }
  std::optional<std::string> ShowOpenFile(const ShownFileQuestion&) override { return std::nullopt; }
  std::optional<std::string> ShowSaveFile(const ShownFileQuestion&) override { return std::nullopt; }
};

class Folder {
 public:
  Folder() {
    const char* place = std::getenv("VELK_BENCH_FOLDER");
    // Absolute: the program that is measured works in the folder that it stands in.
    std::string name = (std::filesystem::absolute(place == nullptr ? "." : place) / "log_bench-XXXXXX").string();
    path_ = mkdtemp(name.data());
  }
  ~Folder() { std::filesystem::remove_all(path_); }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;
  std::string File(const std::string& name) const { return (path_ / name).string(); }

 private:
  std::filesystem::path path_;
};

/// A session of 64 channels with what writes its log.
struct Recording {
  explicit Recording(const Folder& folder) : settings(folder.File("settings")) {
    session.NumberOfParameters = kChannels;
    for (int i = 1; i <= kChannels; ++i)
      session.CurrentParameters[static_cast<std::size_t>(i)].name = "Channel " + std::to_string(i);
  }

  Gate gate;
  SystemClock clock{gate};
  Language english;
  NoDialogs dialogs{gate, english};
  SettingsStore settings;
  Platform platform{clock, gate, dialogs, settings, english};
  Session session;
  LogWriter log{session, platform};
};

inline long RowsToRead() {
  const char* rows = std::getenv("VELK_BENCH_ROWS");
  return rows == nullptr ? 2'600'000 : std::max(1000L, std::atol(rows));
}

/// A log of one row a second from 14 March 2026, 00:00:00, on.
inline void FillLog(const std::string& file) {
  const auto connection = Connection::Open(file, OpenMode::ReadWrite);
  connection->Execute("PRAGMA journal_mode=MEMORY; PRAGMA synchronous=OFF");
  Transaction transaction(*connection);
  std::string marks;
  for (int i = 0; i < kChannels + 2; ++i) marks += ",?";
  Command insert(*connection, "INSERT INTO logData VALUES (NULL" + marks + ")");
  for (long row = 0; row < RowsToRead(); ++row) {
    insert.Bind(1, 46095.0 + static_cast<double>(row / 86400)).Bind(2, static_cast<double>(row % 86400) / 86400);
    for (int i = 0; i < kChannels; ++i) insert.Bind(i + 3, static_cast<double>(row % 1000) * 0.37 + i);
    insert.Execute();
  }
  transaction.Commit();
}

/// Where the long log stands: VELK_BENCH_LOG, or a file of this run alone.
inline std::string LongLogIn(const Folder& folder) {
  const char* kept = std::getenv("VELK_BENCH_LOG");
  return kept == nullptr ? folder.File("log.mdb") : kept;
}

inline void MakeLongLog(LogWriter& log, const std::string& file) {
  if (std::filesystem::exists(file)) return;
  log.CreateLogFile(file);
  FillLog(file);
}

}  // namespace velk::bench
