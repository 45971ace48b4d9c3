// The start-up on settings files that were cut off or had a byte changed, at every position of a real file.

#include <gtest/gtest.h>

#include <QAction>
#include <algorithm>
#include <string>
#include <vector>

#include "platform/settings/ini_file.h"
#include "settings/settings_io.h"
#include "shell/application.h"
#include "support/fake_clock.h"
#include "support/fake_serial_port.h"
#include "support/in_english.h"
#include "support/memory_folder.h"
#include "support/scripted_job_questions.h"
#include "support/settings_rows.h"

namespace velk {
namespace {

using test::InEnglish;
using test::SettingsRow;

/// Yes and OK to whatever is asked, and the boxes for looking at afterwards.
class AgreeableDialogs : public Dialogs {
 public:
  using Dialogs::Dialogs;
  std::vector<ShownMessage> shown;

 protected:
  Answer ShowMessage(const ShownMessage& box) override {
    shown.push_back(box);
    return box.buttons == Buttons::YesNo ? Answer::Yes : box.buttons == Buttons::Ok ? Answer::Ok : Answer::Cancel;
  }
  std::optional<std::string> ShowInput(const std::string&, const std::string&, const std::string&) override {
    return std::nullopt;
  }
  std::optional<std::string> ShowOpenFile(const ShownFileQuestion&) override { return std::nullopt; }
  std::optional<std::string> ShowSaveFile(const ShownFileQuestion&) override { return std::nullopt; }
};

/// One run of the program on a settings folder, from its start to its exit.
class OneRun {
 public:
  explicit OneRun(const std::string& folder) : settings_(folder) { application_.MDIForm_Load(); }

  const Session& State() { return application_.State(); }
  void Exit() { application_.Window().MenuItem("mnuFileExit")->trigger(); }
  bool HasEnded() { return !application_.Window().isVisible(); }

  /// The text of the start-up's box; empty where there was none.
  std::string StartUpError() const {
    std::string text;
    for (const ShownMessage& box : dialogs_.shown) {
      if (box.title == "Start Up Error") text += box.text;
    }
    return text;
  }

 private:
  Gate gate_;
  test::FakeClock clock_{gate_};
  Translation translation_;
  AgreeableDialogs dialogs_{gate_, translation_.Translator};
  SettingsStore settings_;
  test::ScriptedJobQuestions questions_;
  test::FakeDevice plainPort_, linePort_;
  Application application_{Services{{clock_, gate_, dialogs_, settings_, translation_.Translator},
                                    translation_,
                                    [this]() -> std::unique_ptr<SerialPort> {
                                      return std::make_unique<test::FakeSerialPort>(plainPort_.port ? linePort_
                                                                                                    : plainPort_);
                                    },
                                    &questions_}};
};

/// Of everything that is stored, with one channel of each kind.
std::vector<SettingsRow> Rows() {
  return test::SettingsRows({1}, {1});
}

class DamagedSettings : public testing::Test {
 protected:
  /// What a program that was set up left at its end, less what is like the rest of it: other parameters and ports.
  void SetUp() override {
    {
      Session session;
      SettingsStore store(folder_.Path());
      store.Save("VELK2", "Formulae", "NumberOfFormulae", "1");
      for (const SettingsRow& row : Rows()) store.Save("VELK2", row.section, row.key, row.other);
      store.Save("VELK2", "Protocol", "SerialData", "KESTA version 3");
      store.Save("VELK2", "General", "Current_language", "English");
      ASSERT_TRUE(LoadSettings(session, store, test::English()).empty());
      SaveSettings(session, store);
    }
    const IniFile all(folder_.Read("VELK2.ini"));
    IniFile file;
    file.Set("Parameters", "NumberOfParameters", "3");
    file.Set("Formulae", "NumberOfFormulae", "1");
    for (const SettingsRow& row : Rows()) {
      const bool more = row.section.starts_with("Playback") || row.section == "PrintGraph" ||
                        (row.kind == test::Kind::Boolean && row.section == "Protocol" && row.key != "Port1");
      if (!more) file.Set(row.section, row.key, *all.Find(row.section, row.key));
    }
    whole_ = file.Text();
    folder_.Write("VELK2.ini", whole_);
    OneRun run(folder_.Path());
    ASSERT_EQ(run.StartUpError(), "");
    for (const SettingsRow& row : Rows()) good_.push_back(row.field(run.State()));
  }

  bool HoldsGoodValues(const Session& session) const {
    std::size_t at = 0;
    const std::vector<SettingsRow> rows = Rows();
    return std::all_of(rows.begin(), rows.end(),
                       [&](const SettingsRow& row) { return row.field(session) == good_[at++]; });
  }

  /// Starts the program on the damaged bytes. `told`: in any case.
  void StartOn(const std::string& bytes, bool told) {
    folder_.Write("VELK2.ini", bytes);
    {
      OneRun run(folder_.Path());
      EXPECT_EQ(run.State().CurrentStatus.english, "Ready");
      const std::string error = run.StartUpError();
      if (told || !error.empty()) {
        EXPECT_NE(error.find("\n\nLine = 5"), std::string::npos) << error;
        EXPECT_NE(error.find("kept as " + folder_.Path("VELK2.ini.damaged") + "\n"), std::string::npos) << error;
        EXPECT_EQ(folder_.Read("VELK2.ini.damaged"), bytes) << "before anything is written over it";
      } else {
        EXPECT_TRUE(HoldsGoodValues(run.State())) << "lost without a word";
        EXPECT_FALSE(folder_.Has("VELK2.ini.damaged"));
      }
      // Every third time, since saving and loading all parameters takes most of the time.
      if (++starts_ % 3 != 0) {
        folder_.Remove("VELK2.ini.damaged");
        return;
      }
      run.Exit();
      EXPECT_TRUE(run.HasEnded());
    }
    Session next;
    SettingsStore store(folder_.Path());
    EXPECT_EQ(InEnglish(LoadSettings(next, store, test::English())), std::vector<std::string>{}) << "at the next start";
    folder_.Remove("VELK2.ini.damaged");
    EXPECT_EQ(folder_.Count(), 2U) << "the settings and the list of templates";
  }

  test::MemoryFolder folder_;
  std::string whole_;
  std::vector<std::string> good_;
  int starts_ = 0;
};

TEST_F(DamagedSettings, CutOffAtAnyByteAreToldAndKeptAndLeaveTheNextStartClean) {
  // The line feed of the closing line is no loss.
  for (std::size_t length = 0; length + 1 < whole_.size() && !HasFailure(); ++length) {
    SCOPED_TRACE(length);
    StartOn(whole_.substr(0, length), true);
  }
}

TEST_F(DamagedSettings, WithAnyByteChangedAreToldAndKeptOrHaveLostNothing) {
  // A neighbour of the same kind, another case, the highest bit, all bits: by turns, so that each meets every kind of
  // line.
  constexpr unsigned char kFlips[] = {0x01, 0x20, 0x80, 0xFF};
  for (std::size_t at = 0; at < whole_.size() && !HasFailure(); ++at) {
    SCOPED_TRACE(at);
    std::string bytes = whole_;
    bytes[at] = static_cast<char>(static_cast<unsigned char>(bytes[at]) ^ kFlips[at % 4]);
    SCOPED_TRACE(bytes.substr(at < 20 ? 0 : at - 20, 40));
    StartOn(bytes, false);
  }
}

}  // namespace
}  // namespace velk
