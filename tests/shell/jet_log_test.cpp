// A log that another program has made in the Jet format, through the whole program.

#include <gtest/gtest.h>

#include <QLabel>
#include <QListWidget>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "exchange/old_jet_log.h"
#include "i18n/translation.h"
#include "model/status.h"
#include "model/texts.h"
#include "shell/shell_rig.h"

namespace velk {
namespace {

namespace fs = std::filesystem;

class JetLogInTheProgram : public testing::Test {
 protected:
  JetLogInTheProgram() {
    setenv("XDG_CACHE_HOME", rig.folder.File("cache").c_str(), 1);
    fs::create_directory(programs);
    rig.programFolder = programs.string();
    UseReader(VELK_JET_READER);
  }
  ~JetLogInTheProgram() override {
    unsetenv("XDG_CACHE_HOME");
    fs::current_path(before);
  }

  void UseReader(const char* program) const {
    fs::remove(programs / "velk_jet_reader");
    fs::create_symlink(program, programs / "velk_jet_reader");
  }
  /// A log of 1,000 rows of 18 channels.
  void Unpack() const {
    const std::string from = std::string(VELK_SOURCE_DIR) + "/tests/data/jet/log_1000.mdb.gz";
    const std::string plain = rig.folder.File("plain");
    ASSERT_EQ(std::system(("gunzip -c '" + from + "' > '" + plain + "'").c_str()), 0);
    fs::rename(plain, log);
  }
  void Play() {
    rig.dialogs.ExpectOpenFile(log);
    rig.Choose("mnuFilePlayback");
  }
  static std::string LinesOf(const std::string& path, std::size_t count) {
    std::ifstream file(path);
    std::string text, line;
    for (std::size_t i = 0; i < count && std::getline(file, line); ++i) text += line + '\n';
    return text;
  }

  /// The program works in its own folder, which goes with the test.
  const fs::path before = fs::current_path();
  test::ShellRig rig;
  const fs::path programs = rig.folder.Path() / "programs";
  const std::string log = rig.folder.File("Скважина 7 'old'.mdb");
};

TEST_F(JetLogInTheProgram, PlaysBackAndIsViewedAndExported) {
  Unpack();
  rig.Start();
  Play();
  ASSERT_TRUE(StatusIs(rig.State(), text::StatusReadyToPlayback));
  EXPECT_EQ(rig.State().NumberOfParameters, 18);
  EXPECT_EQ(rig.State().CurrentParameters[4].name, "Давление в затрубье");
  EXPECT_EQ(rig.State().LogFileInUse, log) << "its own name, not that of a copy";

  rig.windows.Then("frmSummaryReport", [this](QDialog& viewer) {
    EXPECT_EQ(test::FindControl<QLabel>(viewer, "lblFile")->text().toStdString(), log);
    EXPECT_TRUE(test::FindControl<QLabel>(viewer, "lblNote")->text().contains("it can be read, not changed"));
    viewer.close();
  });
  rig.Choose("mnuViewSummaryReport");

  const std::string out = rig.folder.File("out.csv");
  rig.windows.Then("frmExport", [&](QDialog& window) {
    EXPECT_EQ(test::FindControl<QListWidget>(window, "List1")->count(), 21);
    for (int i = 0; i < 4; ++i) test::Click(window, "Command1");
    rig.dialogs.ExpectSaveFile(out);
    test::Click(window, "Command6");
    test::Click(window, "cmdOK");
  });
  rig.Choose("mnuFileExportMDBtoCSV");
  const std::string lines = LinesOf(out, 3);
  EXPECT_TRUE(lines.starts_with("ID,Date,Time,")) << lines;
  EXPECT_NE(lines.find("\n1,28-Feb-2024,22:00:00,"), std::string::npos) << lines;
  EXPECT_NE(lines.find("\n2,28-Feb-2024,22:00:01,0.1\r"), std::string::npos) << lines;
}

TEST_F(JetLogInTheProgram, OpensAsTheSourceOfAnExportWithoutBeingPlayed) {
  Unpack();
  rig.Start();
  rig.windows.Then("frmExport", [&](QDialog& window) {
    rig.dialogs.ExpectOpenFile(log);
    test::Click(window, "Command5");
    EXPECT_EQ(test::FindControl<QListWidget>(window, "List1")->count(), 21);
    window.reject();
  });
  rig.Choose("mnuFileExportMDBtoCSV");
}

TEST_F(JetLogInTheProgram, IsToldOnceWhereItsReaderDies) {
  Unpack();
  UseReader("/bin/false");
  rig.Start();
  rig.dialogs.ExpectOpenFile(log);
  rig.dialogs.Expect("The file is damaged, or no database that can be read: " + log, Answer::Cancel);
  rig.Choose("mnuFilePlayback");
  EXPECT_TRUE(StatusIs(rig.State(), text::StatusReady));
}

/// The same program in a language.
class OldJetLogInTheProgram : public JetLogInTheProgram, public testing::WithParamInterface<const char*> {
 protected:
  OldJetLogInTheProgram() {
    for (const char* file : {kCaptionsFile, kMessagesFile})
      fs::create_symlink(fs::path(VELK_TRANSLATIONS_DIR) / file, programs / file);
    std::ofstream(log, std::ios::binary) << test::OldJetLogBytes();
    rig.settings->Save("VELK2", "General", "Current_language", GetParam());
    rig.settings->Flush();
  }
};

TEST_P(OldJetLogInTheProgram, HasItsTextsByTheCodePageOfTheLanguage) {
  rig.Start();
  Play();
  const bool isRussian = std::string(GetParam()) == "Russian";
  EXPECT_EQ(rig.State().CurrentParameters[1].name, isRussian ? "Глубина" : "Ãëóáèíà");
}

INSTANTIATE_TEST_SUITE_P(Languages, OldJetLogInTheProgram, testing::Values("English", "Russian"));

}  // namespace
}  // namespace velk
