// Programs that save at the same time into one settings folder: real processes, each with a store of its own.

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <set>
#include <string>

#include "settings/settings_io.h"
#include "settings/templates.h"
#include "support/in_english.h"
#include "support/memory_folder.h"

namespace velk {
namespace {

namespace fs = std::filesystem;
using test::InEnglish;
using test::MemoryFolder;

/// The mark of one save in fields from the first to the last section of the file, and in the list of templates.
void Mark(Session& session, const std::string& mark) {
  session.CurrentFont = session.PlaybackDelimiter = mark;
  session.Parameters[1].name = session.Parameters[64].name = mark;
  session.PlaybackParameters[64].name = mark;
  session.TemplateNames = {"", mark, "Job", mark};
}

/// The one mark in all that is there; anything else fails the test.
std::string MarkOf(const Session& session) {
  EXPECT_EQ(session.PlaybackDelimiter, session.CurrentFont);
  EXPECT_EQ(session.Parameters[1].name, session.CurrentFont);
  EXPECT_EQ(session.Parameters[64].name, session.CurrentFont);
  EXPECT_EQ(session.PlaybackParameters[64].name, session.CurrentFont);
  return session.CurrentFont;
}

/// Saves everything once: the settings, the list, a template that both programs use and one of its own.
void SaveAll(Session& session, SettingsStore& store, const std::string& program, int number) {
  Mark(session, program + ' ' + std::to_string(number));
  SaveTemplate(session, store, "Job");
  SaveTemplate(session, store, program);
  SaveSettings(session, store);
}

/// What a third program finds; the marks of the settings and of the common template.
struct Found {
  std::string settings;
  std::string job;
};

Found ReadAll(const std::string& folder) {
  SettingsStore store(folder);
  Session session;
  EXPECT_EQ(InEnglish(LoadSettings(session, store, test::English())), std::vector<std::string>{});
  Found found{MarkOf(session), {}};
  EXPECT_EQ(session.TemplateNames.size(), 4U);
  EXPECT_EQ(session.TemplateNames.at(1), session.TemplateNames.at(3)) << "the list is of one writer";
  LoadTemplate(session, store, test::English(), "Job");
  found.job = MarkOf(session);
  return found;
}

/// A process that saves: `rounds` times, with a byte on its pipe after each.
class Program {
 public:
  Program(const std::string& folder, const std::string& name, int rounds) {
    int ends[2] = {};
    if (pipe(ends) != 0) return;
    process_ = fork();
    if (process_ == 0) {
      SettingsStore store(folder);
      Session session;
      LoadSettings(session, store, test::English());
      for (int number = 1; number <= rounds; ++number) {
        SaveAll(session, store, name, number);
        if (write(ends[1], "s", 1) != 1) _exit(1);
      }
      _exit(0);
    }
    close(ends[1]);
    saves_ = ends[0];
  }
  ~Program() {
    Kill();
    close(saves_);
  }
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  void WaitForSave() {
    char byte = 0;
    EXPECT_EQ(read(saves_, &byte, 1), 1);
  }
  bool Runs() { return process_ > 0 && waitpid(process_, &status_, WNOHANG) == 0; }
  /// Once it runs no more.
  int ExitCode() const { return WIFEXITED(status_) ? WEXITSTATUS(status_) : -1; }
  void Kill() {
    if (process_ > 0 && kill(process_, SIGKILL) == 0) waitpid(process_, &status_, 0);
    process_ = -1;
  }

 private:
  pid_t process_ = -1;
  int saves_ = -1;
  int status_ = 0;
};

std::set<std::string> FilesIn(const MemoryFolder& folder) {
  std::set<std::string> names;
  for (const auto& entry : fs::directory_iterator(folder.Path())) names.insert(entry.path().filename().string());
  return names;
}

const std::set<std::string> kAllFiles = {"VELK2.ini", "VELKTemplates.ini", "VELKJob.ini", "VELKone.ini", "VELKtwo.ini"};

TEST(TwoPrograms, NeverShowAThirdHalfAFileAndTheLastSaveStands) {
  const MemoryFolder folder;
  constexpr int kRounds = 60;
  {
    SettingsStore store(folder.Path());
    Session session;
    SaveAll(session, store, "two", 0);
    SaveAll(session, store, "one", 0);
  }
  Program one(folder.Path(), "one", kRounds);
  Program two(folder.Path(), "two", kRounds);
  std::set<std::string> seen;
  bool oneRuns = true;
  bool twoRuns = true;
  while (oneRuns || twoRuns) {
    const Found found = ReadAll(folder.Path());
    ASSERT_FALSE(HasFailure()) << found.settings;
    seen.insert(found.settings);
    oneRuns = oneRuns && one.Runs();
    twoRuns = twoRuns && two.Runs();
  }
  EXPECT_EQ(one.ExitCode(), 0);
  EXPECT_EQ(two.ExitCode(), 0);
  EXPECT_GT(seen.size(), 1U) << "it was read while they saved";
  const std::set<std::string> lasts = {"one " + std::to_string(kRounds), "two " + std::to_string(kRounds)};
  const Found last = ReadAll(folder.Path());
  EXPECT_EQ(lasts.count(last.settings), 1U) << last.settings;
  EXPECT_EQ(lasts.count(last.job), 1U) << last.job;
  EXPECT_EQ(FilesIn(folder), kAllFiles) << "no file is lost and none is left over";
}

TEST(TwoPrograms, LeaveWholeFilesWhenOneIsKilledInTheMidst) {
  const MemoryFolder folder;
  SettingsStore store(folder.Path());
  Session session;
  SaveAll(session, store, "one", 0);
  SaveAll(session, store, "two", 0);
  for (int round = 1; round <= 40; ++round) {
    Program killed(folder.Path(), "two", 1'000'000);
    killed.WaitForSave();
    // Some work of this program's own, for another moment each time.
    for (int i = 0; i < round % 4; ++i) ReadAll(folder.Path());
    if (round % 3 == 0) SaveAll(session, store, "one", round);
    killed.Kill();
    ReadAll(folder.Path());
    ASSERT_FALSE(HasFailure()) << round;
    // A kill just between the two steps of replacing a file leaves the new one; a later save clears it away.
    for (const std::string& name : FilesIn(folder)) {
      if (kAllFiles.count(name) == 0) {
        fs::last_write_time(folder.Path(name), fs::file_time_type::clock::now() - std::chrono::hours(2));
      }
    }
    SaveAll(session, store, "two", -round);
    SaveAll(session, store, "one", -round);
    ASSERT_EQ(FilesIn(folder), kAllFiles) << round;
    EXPECT_EQ(ReadAll(folder.Path()).settings, "one " + std::to_string(-round));
  }
}

}  // namespace
}  // namespace velk
