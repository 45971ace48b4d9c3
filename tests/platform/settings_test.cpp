#include "platform/settings/settings.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QDir>
#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "base/errors.h"
#include "platform/settings/ini_file.h"
#include "support/in_english.h"
#include "support/memory_folder.h"
#include "support/raises.h"

namespace velk {
namespace {

namespace fs = std::filesystem;
using test::InEnglish;
using test::MemoryFolder;
using test::Raised;

std::string RealFile() {
  IniFile file;
  file.Set("General", "Current_language", "English");
  file.Set("General", "SamplingRate", "1.15740740740741E-05");
  file.Set("Protocol", "Terminator", "\r");
  file.Set("Protocol", "Delimiter", " ");
  file.Set("Parameter1", "units",
           "\xC2\xB0"
           "C");
  file.Set("Parameter1", "max", "1000");
  return file.Text();
}

TEST(SettingsStore, WithoutAFolderIsADefectAndNoFileInTheRoot) {
  EXPECT_THROW(SettingsStore(""), std::logic_error);
}

TEST(SettingsStore, GivesThePresetFromAnEmptyStoreAndWritesNothing) {
  const MemoryFolder folder;
  SettingsStore store(folder.Path("missing/deeper"));
  EXPECT_EQ(store.Get("VELK2", "General", "TheTimeOut", "5"), "5");
  EXPECT_EQ(store.Find("VELK2", "General", "TheTimeOut"), std::nullopt);
  store.Flush();
  EXPECT_TRUE(store.TakeProblems().empty());
  EXPECT_FALSE(folder.Has("missing"));
}

TEST(SettingsStore, MakesItsFolderWithTheFirstWrite) {
  const MemoryFolder folder;
  SettingsStore store(folder.Path("missing/deeper"));
  store.Save("VELK2", "General", "TheTimeOut", "7");
  EXPECT_FALSE(folder.Has("missing"));
  store.Flush();
  EXPECT_TRUE(folder.Has("missing/deeper/VELK2.ini"));
}

TEST(SettingsStore, KeepsEachApplicationInAFileOfItsOwn) {
  const MemoryFolder folder;
  {
    SettingsStore store(folder.Path());
    store.Save("VELK2", "General", "k", "live");
    store.Save("VELKTemplates", "General", "k", "list");
    store.Flush();
  }
  SettingsStore store(folder.Path());
  EXPECT_EQ(store.Get("VELK2", "General", "k", ""), "live");
  EXPECT_EQ(store.Get("VELKTemplates", "General", "k", ""), "list");
  EXPECT_EQ(folder.Count(), 2U);
}

TEST(SettingsStore, EncodesWhatAFileNameCanNotHold) {
  const MemoryFolder folder;
  const std::vector<std::string> names = {"VELKa/b",
                                          "VELK../../x",
                                          ".",
                                          "..",
                                          "",
                                          "a%2Fb",
                                          "a\nb",
                                          "VELK\xD0\xA0\xD0\xB0\xD0\xB1\xD0\xBE\xD1\x82\xD0\xB0",
                                          std::string("a\0b", 3)};
  {
    SettingsStore store(folder.Path("store"));
    for (const std::string& name : names) store.Save(name, "General", "k", "of " + name);
    store.Flush();
  }
  EXPECT_EQ(folder.Count(), 1U);
  EXPECT_TRUE(folder.Has("store/VELKa%2Fb.ini"));
  EXPECT_TRUE(folder.Has("store/VELK\xD0\xA0\xD0\xB0\xD0\xB1\xD0\xBE\xD1\x82\xD0\xB0.ini"));
  SettingsStore store(folder.Path("store"));
  for (const std::string& name : names) EXPECT_EQ(store.Get(name, "General", "k", ""), "of " + name);
}

TEST(SettingsStore, KeepsSectionsThatNobodyAskedForByteForByte) {
  const MemoryFolder folder;
  const std::string unknown = "[OPCdata]\nServer = Some.Server.1\n;a note\n\n[ImportLive]\nColumns=\"a\\tb\"\n";
  folder.Write("VELK2.ini", unknown);
  SettingsStore store(folder.Path());
  store.Save("VELK2", "General", "TheTimeOut", "7");
  store.Flush();
  EXPECT_NE(folder.Read("VELK2.ini").find(unknown), std::string::npos);
  EXPECT_TRUE(store.TakeProblems().empty());
  EXPECT_EQ(folder.Count(), 1U);
}

TEST(SettingsStore, WritesOnlyWhenSomethingHasChanged) {
  const MemoryFolder folder;
  const std::string byHand = "[General]\n  TheTimeOut = 5\n";
  folder.Write("VELK2.ini", byHand);
  SettingsStore store(folder.Path());
  store.Save("VELK2", "General", "TheTimeOut", "5");
  store.Delete("VELK2", "Playback");
  store.Delete("VELKnone");
  store.Flush();
  EXPECT_EQ(folder.Read("VELK2.ini"), byHand);
  store.Save("VELK2", "General", "TheTimeOut", "6");
  store.Flush();
  EXPECT_NE(folder.Read("VELK2.ini"), byHand);
  folder.Remove("VELK2.ini");
  store.Flush();
  EXPECT_FALSE(folder.Has("VELK2.ini"));
}

TEST(SettingsStore, DeletesSectionsAndApplications) {
  const MemoryFolder folder;
  SettingsStore store(folder.Path());
  store.Save("VELK2", "General", "k", "1");
  store.Save("VELK2", "Playback", "k", "2");
  store.Save("VELKx", "General", "k", "3");
  store.Flush();
  store.Delete("VELK2", "General");
  store.Delete("VELKx");
  EXPECT_EQ(store.Get("VELK2", "General", "k", "none"), "none");
  EXPECT_EQ(store.Get("VELKx", "General", "k", "none"), "none");
  EXPECT_TRUE(folder.Has("VELKx.ini"));
  store.Flush();
  EXPECT_FALSE(folder.Has("VELKx.ini"));
  SettingsStore again(folder.Path());
  EXPECT_EQ(again.Get("VELK2", "General", "k", "none"), "none");
  EXPECT_EQ(again.Get("VELK2", "Playback", "k", "none"), "2");
}

TEST(SettingsStore, CanFillAnApplicationAgainAfterDeletingIt) {
  const MemoryFolder folder;
  SettingsStore store(folder.Path());
  store.Save("VELKx", "General", "k", "1");
  store.Flush();
  store.Delete("VELKx");
  store.Save("VELKx", "General", "other", "2");
  store.Flush();
  SettingsStore again(folder.Path());
  EXPECT_EQ(again.Get("VELKx", "General", "k", "none"), "none");
  EXPECT_EQ(again.Get("VELKx", "General", "other", "none"), "2");
}

TEST(SettingsStore, TellsAnUnreadableLineAndUsesTheOthers) {
  const MemoryFolder folder;
  folder.Write("VELK2.ini", "[General]\nTheTimeOut=7\nnonsense\n[Broken\na=1\nb=2\n[Protocol]\nBaudRate=19200\n");
  SettingsStore store(folder.Path());
  EXPECT_EQ(store.Get("VELK2", "General", "TheTimeOut", "5"), "7");
  EXPECT_EQ(store.Get("VELK2", "Protocol", "BaudRate", "9600"), "19200");
  const std::vector<std::string> problems = InEnglish(store.TakeProblems());
  ASSERT_EQ(problems.size(), 1U);
  EXPECT_EQ(problems[0], folder.Path("VELK2.ini") + ": lines 3 to 6 can't be read");
  EXPECT_TRUE(store.TakeProblems().empty());
}

TEST(SettingsStore, UsesAFileThatWasEditedByHandAndHasNoEndInItsLastLineAndSaysSo) {
  const MemoryFolder folder;
  const std::string byHand = "[General]\nTheTimeOut=7\n[Protocol]\nBaudRate=19200";
  folder.Write("VELK2.ini", byHand);
  SettingsStore store(folder.Path());
  EXPECT_EQ(store.Get("VELK2", "Protocol", "BaudRate", "9600"), "19200");
  const std::vector<std::string> told = {folder.Path("VELK2.ini") + ": the last line has no end; the values are used"};
  EXPECT_EQ(InEnglish(store.TakeProblems()), told);
  store.RequireWhole("VELK2");
  EXPECT_EQ(InEnglish(store.TakeProblems()), told) << "also where all of it is required, as of a template";
  store.Save("VELK2", "General", "TheTimeOut", "8");
  store.Flush();
  EXPECT_EQ(folder.Read("VELK2.ini.damaged"), byHand);
  SettingsStore again(folder.Path());
  EXPECT_EQ(again.Get("VELK2", "Protocol", "BaudRate", "9600"), "19200");
  EXPECT_TRUE(again.TakeProblems().empty());
}

TEST(SettingsStore, CopiesADamagedFileAsideBeforeWritingOverIt) {
  const MemoryFolder folder;
  const std::string damaged = std::string("[General]\nTheTimeOut=7\n\0\xFF", 24) + "\n";
  folder.Write("VELK2.ini", damaged);
  SettingsStore store(folder.Path());
  EXPECT_EQ(store.Get("VELK2", "General", "TheTimeOut", "5"), "7");
  store.Flush();
  EXPECT_EQ(folder.Count(), 1U) << "nothing was saved, so nothing is put aside";
  store.Save("VELK2", "General", "intFontSize", "12");
  store.Flush();
  EXPECT_EQ(folder.Read("VELK2.ini.damaged"), damaged);
  EXPECT_TRUE(IniFile(folder.Read("VELK2.ini")).BadLines().empty());
  store.Save("VELK2", "General", "intFontSize", "13");
  store.Flush();
  EXPECT_EQ(folder.Count(), 2U) << "it is put aside once";
}

TEST(SettingsStore, NeverWritesOverAnEarlierCopy) {
  const MemoryFolder folder;
  folder.Write("VELK2.ini.damaged", "first");
  folder.Write("VELK2.ini.damaged-2", "second");
  folder.Write("VELK2.ini", "third\n");
  SettingsStore store(folder.Path());
  store.Save("VELK2", "General", "k", "1");
  store.Flush();
  EXPECT_EQ(folder.Read("VELK2.ini.damaged"), "first");
  EXPECT_EQ(folder.Read("VELK2.ini.damaged-2"), "second");
  EXPECT_EQ(folder.Read("VELK2.ini.damaged-3"), "third\n");
}

TEST(SettingsStore, DoesNotWriteOverADamagedFileThatItCannotPutAside) {
  const MemoryFolder folder;
  const std::string longName(246, 'x');  // ".ini" fits into a file name of 255 bytes, ".ini.damaged" does not
  folder.Write(longName + ".ini", "nonsense\n");
  SettingsStore store(folder.Path());
  store.Save(longName, "General", "k", "1");
  EXPECT_THROW(store.Flush(), RuntimeError);
  EXPECT_EQ(folder.Read(longName + ".ini"), "nonsense\n");
  EXPECT_EQ(folder.Count(), 1U);
}

/// What stands at the file's place and can't be read as one.
struct Obstacle {
  const char* what;
  void (*make)(const std::string& path);
};

const std::vector<Obstacle> kObstacles = {
    {"a directory", [](const std::string& path) { fs::create_directory(path); }},
    {"a link to itself", [](const std::string& path) { fs::create_symlink(path, path); }},
    {"a pipe", [](const std::string& path) { ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0); }},
    {"a file beyond any sense",
     [](const std::string& path) {
       std::ofstream(path) << "x";
       fs::resize_file(path, std::uintmax_t{1} << 30);
     }},
};

TEST(SettingsStore, PutsAsideWhatIsNoReadableFileAndStartsWithPresets) {
  for (const Obstacle& obstacle : kObstacles) {
    const MemoryFolder folder;
    obstacle.make(folder.Path("VELK2.ini"));
    SettingsStore store(folder.Path());
    EXPECT_EQ(store.Get("VELK2", "General", "TheTimeOut", "5"), "5") << obstacle.what;
    const std::vector<std::string> problems = InEnglish(store.TakeProblems());
    ASSERT_EQ(problems.size(), 1U) << obstacle.what;
    EXPECT_TRUE(problems[0].starts_with(folder.Path("VELK2.ini") + ": ")) << problems[0];
    store.Save("VELK2", "General", "TheTimeOut", "6");
    store.Flush();
    EXPECT_TRUE(fs::is_regular_file(folder.Path("VELK2.ini"))) << obstacle.what;
    std::error_code none;
    EXPECT_NE(fs::symlink_status(folder.Path("VELK2.ini.damaged"), none).type(), fs::file_type::not_found)
        << obstacle.what;
    EXPECT_EQ(SettingsStore(folder.Path()).Get("VELK2", "General", "TheTimeOut", "5"), "6") << obstacle.what;
  }
}

TEST(SettingsStore, TellsAnEmptyFile) {
  const MemoryFolder folder;
  folder.Write("VELK2.ini", "");
  SettingsStore store(folder.Path());
  EXPECT_EQ(store.Get("VELK2", "General", "TheTimeOut", "5"), "5");
  EXPECT_EQ(InEnglish(store.TakeProblems()),
            std::vector<std::string>{folder.Path("VELK2.ini") + ": the file is empty"});
}

TEST(SettingsStore, ShortensALongListOfLines) {
  const MemoryFolder folder;
  std::string text;
  for (int i = 0; i < 100; ++i) text += "nonsense\n;\n";
  folder.Write("VELK2.ini", text);
  SettingsStore store(folder.Path());
  store.Find("VELK2", "General", "k");
  EXPECT_EQ(
      InEnglish(store.TakeProblems()),
      std::vector<std::string>{folder.Path("VELK2.ini") + ": lines 1, 3, 5, 7, 9, 11, 13, 15, 17, 19, ... can't be "
                                                          "read"});
}

TEST(SettingsStore, RaisesAnErrorThatNamesThePathAndKeepsTheChanges) {
  const MemoryFolder folder;
  folder.Write("file", "not a folder");
  SettingsStore store(folder.Path("file/store"));
  store.Save("VELK2", "General", "k", "1");
  try {
    store.Flush();
    FAIL() << "nothing can be written there";
  } catch (const RuntimeError& error) {
    EXPECT_NE(std::string(error.what()).find(folder.Path("file/store")), std::string::npos) << error.what();
  }
  folder.Remove("file");
  store.Flush();
  EXPECT_EQ(SettingsStore(folder.Path("file/store")).Get("VELK2", "General", "k", ""), "1");
}

TEST(SettingsStore, WritesTheOtherFilesWhenOneFails) {
  const MemoryFolder folder;
  SettingsStore store(folder.Path());
  const std::string tooLong(300, 'a');
  store.Save(tooLong, "General", "k", "1");
  store.Save("b", "General", "k", "2");
  EXPECT_THROW(store.Flush(), RuntimeError);
  EXPECT_EQ(SettingsStore(folder.Path()).Get("b", "General", "k", ""), "2");
}

TEST(SettingsStore, SurvivesAFileCutOffAtEveryByte) {
  const std::string whole = RealFile();
  const MemoryFolder folder;
  // The line feed of the closing line is no loss.
  for (std::size_t length = 0; length + 1 < whole.size(); ++length) {
    folder.Write("VELK2.ini", whole.substr(0, length));
    SettingsStore store(folder.Path());
    const std::string max = store.Get("VELK2", "Parameter1", "max", "100");
    EXPECT_TRUE(max == "1000" || max == "100") << length << ": " << max;
    EXPECT_EQ(store.TakeProblems().size(), 1U) << length;
    store.Save("VELK2", "General", "added", "1");
    store.Flush();
    EXPECT_EQ(folder.Read("VELK2.ini.damaged"), whole.substr(0, length));
    folder.Remove("VELK2.ini.damaged");
  }
}

TEST(SettingsStore, SurvivesEveryFlippedByte) {
  const std::string whole = RealFile();
  const MemoryFolder folder;
  for (std::size_t at = 0; at < whole.size(); ++at) {
    for (const char flip : {'\xFF', '\x01', '\x20', '\x80'}) {
      std::string flipped = whole;
      flipped[at] = static_cast<char>(flipped[at] ^ flip);
      folder.Write("VELK2.ini", flipped);
      SettingsStore store(folder.Path());
      store.Save("VELK2", "General", "added", "1");
      const bool told = !store.TakeProblems().empty();
      store.Flush();
      EXPECT_EQ(folder.Has("VELK2.ini.damaged"), told) << at;
      if (told) {
        EXPECT_EQ(folder.Read("VELK2.ini.damaged"), flipped) << at;
      }
      const IniFile written(folder.Read("VELK2.ini"));
      EXPECT_TRUE(written.BadLines().empty() && !written.IsCutOff()) << at;
      folder.Remove("VELK2.ini.damaged");
    }
  }
}

TEST(SettingsStore, LetsNoChangedByteSlipThrough) {
  const std::string whole = RealFile();
  const IniFile written(whole);
  const MemoryFolder folder;
  for (std::size_t at = 0; at < whole.size(); ++at) {
    for (int flip = 1; flip < 256; ++flip) {
      std::string flipped = whole;
      flipped[at] = static_cast<char>(flipped[at] ^ flip);
      const IniFile read(flipped);
      if (!read.BadLines().empty() || read.IsCutOff() || !read.ChangedSections().empty()) continue;
      for (const auto& [section, key] : {std::pair("General", "Current_language"),
                                         {"General", "SamplingRate"},
                                         {"Protocol", "Terminator"},
                                         {"Protocol", "Delimiter"},
                                         {"Parameter1", "units"},
                                         {"Parameter1", "max"}}) {
        const std::string* value = read.Find(section, key);
        ASSERT_TRUE(value && *value == *written.Find(section, key)) << at << " ^ " << flip << ": " << key;
      }
    }
  }
}

TEST(SettingsStore, TellsTheSectionsThatSomebodyElseChanged) {
  const MemoryFolder folder;
  std::string changed = RealFile();
  changed.replace(changed.find("max=1000"), 8, "max=9000");
  folder.Write("VELK2.ini", changed);
  SettingsStore store(folder.Path());
  EXPECT_EQ(store.Get("VELK2", "Parameter1", "max", "100"), "9000");
  EXPECT_TRUE(store.IsDamaged("VELK2"));
  EXPECT_EQ(InEnglish(store.TakeProblems()),
            std::vector<std::string>{folder.Path("VELK2.ini") + ": [Parameter1] is not as it was written"});
  store.Save("VELK2", "Parameter1", "max", "9000");
  store.Flush();
  EXPECT_FALSE(store.IsDamaged("VELK2"));
  EXPECT_EQ(folder.Read("VELK2.ini.damaged"), changed);
  SettingsStore again(folder.Path());
  EXPECT_EQ(again.Get("VELK2", "Parameter1", "max", "100"), "9000");
  EXPECT_TRUE(again.TakeProblems().empty()) << "it is told once";
}

TEST(SettingsStore, TellsAllThatIsWrongWithAFile) {
  const MemoryFolder folder;
  std::string text = RealFile();
  text.replace(text.find("[Parameter1]"), 1, ";");
  text.replace(text.find("SamplingRate="), 13, "SamplingRate\x01");
  folder.Write("VELK2.ini", text);
  SettingsStore store(folder.Path());
  EXPECT_TRUE(store.IsDamaged("VELK2"));
  EXPECT_EQ(
      InEnglish(store.TakeProblems()),
      std::vector<std::string>{folder.Path("VELK2.ini") + ": line 5 can't be read, [General], [Protocol] are not as "
                                                          "they were written, sections missing: 1"});
}

TEST(SettingsStore, PutsAFileAsideUnderANameThatItGives) {
  const MemoryFolder folder;
  const std::string bytes = "[General]\nTheTimeOut=x\n";
  folder.Write("VELK2.ini", bytes);
  SettingsStore store(folder.Path());
  store.Save("VELK2", "General", "TheTimeOut", "5");
  EXPECT_EQ(store.PutAside("VELK2"), folder.Path("VELK2.ini.damaged"));
  EXPECT_EQ(store.PutAside("VELK2"), folder.Path("VELK2.ini.damaged")) << "once";
  EXPECT_EQ(folder.Read("VELK2.ini.damaged"), bytes) << "as it was read";
  EXPECT_EQ(folder.Read("VELK2.ini"), bytes);
  SettingsStore second(folder.Path());
  EXPECT_EQ(second.PutAside("VELK2"), folder.Path("VELK2.ini.damaged")) << "which holds the same";
  folder.Write("VELK2.ini", "other");
  EXPECT_EQ(SettingsStore(folder.Path()).PutAside("VELK2"), folder.Path("VELK2.ini.damaged-2"));
  EXPECT_EQ(store.PutAside("VELKnone"), "");
  EXPECT_EQ(folder.Count(), 3U);
}

TEST(SettingsStore, WritesNothingOverAFileToBeKeptThatCanNotBePutAside) {
  const MemoryFolder folder;
  const std::string longName(246, 'x');  // ".ini" fits into a file name of 255 bytes, ".ini.damaged" does not
  folder.Write(longName + ".ini", "[s]\nk=x\n");
  SettingsStore store(folder.Path());
  EXPECT_THROW(store.PutAside(longName), RuntimeError);
  store.Save(longName, "s", "k", "1");
  EXPECT_THROW(store.Flush(), RuntimeError);
  EXPECT_EQ(folder.Read(longName + ".ini"), "[s]\nk=x\n");
}

TEST(SettingsStore, RemovesWhatAKilledProgramLeftHalfWayLongAgo) {
  const MemoryFolder folder;
  const auto age = [&](const std::string& name, std::chrono::minutes minutes) {
    fs::last_write_time(folder.Path(name), fs::file_time_type::clock::now() - minutes);
  };
  for (const char* name : {"VELK2.ini.aBcDeF", "VELK2.ini.GhIjKl", "VELK2.ini.damaged", "VELKx.ini.aBcDeF", "abcdef"}) {
    folder.Write(name, "x");
    age(name, std::chrono::minutes(61));
  }
  age("VELK2.ini.GhIjKl", std::chrono::minutes(59));
  SettingsStore store(folder.Path());
  store.Save("VELK2", "General", "k", "1");
  store.Flush();
  EXPECT_FALSE(folder.Has("VELK2.ini.aBcDeF"));
  EXPECT_TRUE(folder.Has("VELK2.ini.GhIjKl")) << "another program may be writing it";
  EXPECT_TRUE(folder.Has("VELK2.ini.damaged"));
  EXPECT_TRUE(folder.Has("VELKx.ini.aBcDeF"));
  EXPECT_TRUE(folder.Has("abcdef"));
}

TEST(SettingsStore, LeavesNoOtherFileBehind) {
  const MemoryFolder folder;
  SettingsStore store(folder.Path());
  for (int i = 0; i < 20; ++i) {
    store.Save("VELK2", "General", "k", std::to_string(i));
    store.Flush();
  }
  EXPECT_EQ(folder.Count(), 1U);
}

TEST(SettingsStore, NeverShowsAnotherProgramHalfAFile) {
  const MemoryFolder folder;
  const std::string path = folder.Path();
  constexpr int kRounds = 100;
  const auto write = [&](const std::string& text) {
    SettingsStore store(path);
    for (int i = 0; i < kRounds; ++i) {
      for (int key = 0; key < 200; ++key) store.Save("VELK2", "S", std::to_string(key), text + std::to_string(i));
      store.Flush();
    }
  };
  write("start");
  std::atomic<int> writing = 2;
  std::vector<std::jthread> writers;
  for (const char* text : {"one", "two"}) {
    writers.emplace_back([&, text] {
      write(text);
      --writing;
    });
  }
  while (writing > 0) {
    SettingsStore reader(path);
    const std::string first = reader.Get("VELK2", "S", "0", "none");
    for (int key = 1; key < 200; ++key) {
      ASSERT_EQ(reader.Get("VELK2", "S", std::to_string(key), "none"), first);
    }
    ASSERT_TRUE(reader.TakeProblems().empty());
  }
}

TEST(SettingsStore, TellsWhichApplicationsAFileNameCanHold) {
  const MemoryFolder folder;
  SettingsStore store(folder.Path());
  // A file name has at most 255 bytes; 16 of them are for the endings of new and of damaged files, 4 for ".ini".
  for (const std::string& fits : {std::string(235, 'x'), std::string(78, '/')}) {
    EXPECT_TRUE(SettingsStore::CanHold(fits));
    store.Save(fits, "s", "k", "v");
  }
  for (const std::string& tooLong : {std::string(236, 'x'), std::string(79, '/')}) {
    EXPECT_FALSE(SettingsStore::CanHold(tooLong));
    EXPECT_EQ(store.Get(tooLong, "s", "k", "none"), "none");
    store.Delete(tooLong);
  }
  store.Flush();
  EXPECT_EQ(folder.Count(), 2U);
}

TEST(SettingsStore, ReadsAFileAgainWhereItIsRequired) {
  const MemoryFolder folder;
  SettingsStore store(folder.Path());
  EXPECT_EQ(store.Get("a", "s", "k", "none"), "none");
  EXPECT_EQ(Raised([&] { store.RequireWhole("a"); }), ErrorNumber::FileNotFound);
  folder.Write("a.ini", "[s]\nk=1\n");
  EXPECT_EQ(store.Get("a", "s", "k", "none"), "none");
  store.RequireWhole("a");
  EXPECT_EQ(store.Get("a", "s", "k", "none"), "1");
}

TEST(SettingsStore, KeepsChangesThatWaitWhereAFileIsRequired) {
  const MemoryFolder folder;
  folder.Write("a.ini", "[s]\nk=1\n");
  SettingsStore store(folder.Path());
  store.Save("a", "s", "k", "2");
  store.RequireWhole("a");
  EXPECT_EQ(store.Get("a", "s", "k", "none"), "2");
  store.Delete("a");
  EXPECT_EQ(Raised([&] { store.RequireWhole("a"); }), ErrorNumber::FileNotFound);
}

TEST(SettingsStore, RaisesTheDamageOfARequiredFileEachTime) {
  const MemoryFolder folder;
  folder.Write("a.ini", "[s]\nnonsense\n");
  SettingsStore store(folder.Path());
  for (int attempt = 0; attempt < 2; ++attempt) {
    EXPECT_EQ(Raised([&] { store.RequireWhole("a"); }), ErrorNumber::DeviceIOError);
  }
  EXPECT_TRUE(store.TakeProblems().empty()) << "who required it was told";
}

TEST(SettingsStore, StandsInTheUsersConfigurationFolder) {
  const QByteArray before = qgetenv("XDG_CONFIG_HOME");
  const bool wasSet = qEnvironmentVariableIsSet("XDG_CONFIG_HOME");
  qputenv("XDG_CONFIG_HOME", "/somewhere/config");
  EXPECT_EQ(SettingsStore::DefaultDirectory(), "/somewhere/config/VELK");
  qunsetenv("XDG_CONFIG_HOME");
  EXPECT_EQ(SettingsStore::DefaultDirectory(), QDir::homePath().toStdString() + "/.config/VELK");
  if (wasSet) qputenv("XDG_CONFIG_HOME", before);
}

TEST(SettingsStore, StandsInTheFolderOfItsOwnVariable) {
  const QByteArray before = qgetenv("VELK_SETTINGS");
  qputenv("VELK_SETTINGS", "/somewhere/else");
  EXPECT_EQ(SettingsStore::DefaultDirectory(), "/somewhere/else");
  qputenv("VELK_SETTINGS", "");
  EXPECT_TRUE(SettingsStore::DefaultDirectory().ends_with("/VELK"));
  if (before.isNull())
    qunsetenv("VELK_SETTINGS");
  else
    qputenv("VELK_SETTINGS", before);
}

TEST(SettingsStore, ForgetsWhatWaitsForTheDiskAndReadsTheFileAgain) {
  const MemoryFolder folder;
  SettingsStore store(folder.Path());
  store.Save("A", "S", "k", "1");
  store.Flush();
  store.Save("A", "S", "k", "2");
  store.Save("B", "S", "k", "2");
  store.Forget("A");
  store.Forget("B");
  store.Forget("never asked for");
  EXPECT_EQ(store.Get("A", "S", "k", ""), "1");
  store.Flush();
  SettingsStore again(folder.Path());
  EXPECT_EQ(again.Get("A", "S", "k", ""), "1");
  EXPECT_EQ(again.Find("B", "S", "k"), std::nullopt);
}

}  // namespace
}  // namespace velk
