#include "i18n/translation.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "base/message_text.h"
#include "model/texts.h"
#include "support/program_texts.h"
#include "support/translation_file.h"

namespace velk {
namespace {

namespace fs = std::filesystem;

/// A folder with the two files as the build makes them.
class LanguageFiles : public testing::Test {
 protected:
  LanguageFiles() {
    for (const char* file : {kCaptionsFile, kMessagesFile})
      fs::copy_file(fs::path(VELK_TRANSLATIONS_DIR) / file, folder.Path() / file);
  }

  std::string Load(const std::string& language) { return translation.Load(folder.Path().string(), language); }

  void ExpectEnglish() const {
    EXPECT_TRUE(languages.IsEmpty());
    EXPECT_EQ(translator.In(text::StatusReady), "Ready");
  }

  test::TemporaryFolder folder;
  Translation translation;
  const clstranslation& translator = translation.Translator;
  const clsLanguages& languages = translation.Languages;
};

TEST_F(LanguageFiles, BringRussian) {
  EXPECT_EQ(Load("Russian"), "Russian");
  EXPECT_EQ(translator.In(text::StatusReady), "Готов");
  EXPECT_EQ(languages.Caption("MainForm_mnuFile"), "&Файл");
}

TEST_F(LanguageFiles, HoldEveryMessageOfTheProgram) {
  ASSERT_EQ(Load("Russian"), "Russian");
  for (const test::ProgramText& row : test::ProgramTexts()) {
    // An English text that no file can hold shows whether the number is found.
    EXPECT_NE(translator.Translate("\x01", row.number), "\x01") << row.constant;
  }
}

TEST_F(LanguageFiles, AreNotReadForEnglish) {
  EXPECT_EQ(Load("English"), "English");
  ExpectEnglish();
}

TEST_F(LanguageFiles, BothHaveToBeThere) {
  fs::remove(folder.Path() / kMessagesFile);
  EXPECT_EQ(Load("Russian"), "English");
  ExpectEnglish();
}

TEST_F(LanguageFiles, MissingCaptionsMeanEnglishMessagesToo) {
  fs::remove(folder.Path() / kCaptionsFile);
  EXPECT_EQ(Load("Russian"), "English");
  ExpectEnglish();
}

TEST_F(LanguageFiles, LanguageThatTheCaptionsLackMeansEnglish) {
  EXPECT_EQ(Load("Kazakh"), "English");
  ExpectEnglish();
}

TEST_F(LanguageFiles, MessagesWithoutTheLanguageStayEnglishBesideTranslatedCaptions) {
  fs::remove(folder.Path() / kMessagesFile);
  test::MakeDatabase(folder, kMessagesFile, "CREATE TABLE Messages(Id,txtMessage,translatable)");
  EXPECT_EQ(Load("Russian"), "Russian");
  EXPECT_EQ(translator.In(text::StatusReady), "Ready");
  EXPECT_EQ(languages.Caption("MainForm_mnuFile"), "&Файл");
}

TEST_F(LanguageFiles, LanguageOfBeforeIsGoneAfterAnotherLoad) {
  ASSERT_EQ(Load("Russian"), "Russian");
  EXPECT_EQ(Load("English"), "English");
  ExpectEnglish();
}

TEST_F(LanguageFiles, FileThatIsCutAnywhereIsTakenWholeOrNotAtAll) {
  ASSERT_EQ(Load("Russian"), "Russian");
  const clstranslation whole = translator;
  const fs::path messages = folder.Path() / kMessagesFile;
  int taken = 0;
  for (auto size = fs::file_size(messages); size > 101; size -= 101) {
    fs::resize_file(messages, size);
    EXPECT_EQ(Load("Russian"), "Russian") << size;
    const bool russian = translator.In(text::StatusReady) == whole.In(text::StatusReady);
    taken += russian ? 1 : 0;
    for (const test::ProgramText& row : test::ProgramTexts())
      EXPECT_EQ(translator.Translate(row.english, row.number),
                russian ? whole.Translate(row.english, row.number) : row.english)
          << size;
  }
  EXPECT_GT(taken, 0);
}

TEST_F(LanguageFiles, CaptionsThatAreCutAnywhereMeanEnglishAsAWhole) {
  ASSERT_EQ(Load("Russian"), "Russian");
  const fs::path captions = folder.Path() / kCaptionsFile;
  int taken = 0;
  for (auto size = fs::file_size(captions); size > 101; size -= 101) {
    fs::resize_file(captions, size);
    if (Load("Russian") == "Russian") {
      ++taken;
      EXPECT_EQ(languages.Caption("MainForm_mnuFile"), "&Файл") << size;
      EXPECT_EQ(languages.Caption("frmAbout_cmdClose"), "&Закрыть") << size;
    } else {
      ExpectEnglish();
    }
  }
  EXPECT_GT(taken, 0);
}

TEST_F(LanguageFiles, AnyChangedByteEndsInEnglishOrInTexts) {
  for (const char* name : {kCaptionsFile, kMessagesFile}) {
    const fs::path path = folder.Path() / name;
    std::ifstream file(path, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    for (std::size_t at = 0; at < bytes.size(); at += 61) {
      std::string changed = bytes;
      changed[at] = static_cast<char>(changed[at] ^ 0xFF);
      std::ofstream(path, std::ios::binary) << changed;
      const std::string inEffect = Load("Russian");
      EXPECT_EQ(languages.IsEmpty(), inEffect == "English") << name << " " << at;
      EXPECT_FALSE(translator.In(text::StatusReady).empty()) << name << " " << at;
    }
    std::ofstream(path, std::ios::binary) << bytes;
  }
  EXPECT_EQ(Load("Russian"), "Russian");
}

TEST_F(LanguageFiles, FolderInTheirPlaceMeansEnglish) {
  for (const char* file : {kMessagesFile, kCaptionsFile}) {
    fs::remove(folder.Path() / file);
    fs::create_directory(folder.Path() / file);
    Load("Russian");
    EXPECT_EQ(translator.In(text::StatusReady), "Ready") << file;
  }
  EXPECT_EQ(Load("Russian"), "English");
  ExpectEnglish();
}

TEST_F(LanguageFiles, OfTheUserTakeThePlaceOfOurs) {
  fs::remove(folder.Path() / kCaptionsFile);
  fs::remove(folder.Path() / kMessagesFile);
  test::MakeDatabase(folder, kCaptionsFile,
                     "CREATE TABLE Languages(FormName,ControllName,English,Transelate,Kazakh,Russian);"
                     "INSERT INTO Languages VALUES('MainForm','mnuFile','&File',1,'&Файлдар','&Дело')");
  test::MakeDatabase(folder, kMessagesFile,
                     "CREATE TABLE Messages(Russian,Id,Kazakh,txtMessage,translatable,remark);"
                     "INSERT INTO Messages VALUES('К работе готов',2000,'Дайын','Ready',1,'x')");
  EXPECT_EQ(Load("Kazakh"), "Kazakh");
  EXPECT_EQ(languages.Caption("MainForm_mnuFile"), "&Файлдар");
  EXPECT_EQ(translator.In(text::StatusReady), "Дайын");
  EXPECT_EQ(Load("Russian"), "Russian");
  EXPECT_EQ(languages.Caption("MainForm_mnuFile"), "&Дело");
  EXPECT_EQ(languages.Caption("MainForm_mnuView"), std::nullopt) << "a row that is missing stays English";
  EXPECT_EQ(translator.In(text::StatusReady), "К работе готов");
  EXPECT_EQ(translator.In(text::StatusAcquiringData), "Acquiring Data");
}

TEST_F(LanguageFiles, AreFoundWhateverTheCaseOfTheirNames) {
  // Files of users come from systems that take both for the same name.
  fs::rename(folder.Path() / kCaptionsFile, folder.Path() / "Velk translation data.MDB");
  fs::rename(folder.Path() / kMessagesFile, folder.Path() / "VelkMessages.mdb");
  EXPECT_EQ(Load("Russian"), "Russian");
  EXPECT_EQ(translator.In(text::StatusReady), "Готов");
  test::MakeDatabase(folder, kMessagesFile,
                     "CREATE TABLE Messages(Id,txtMessage,translatable,Russian);"
                     "INSERT INTO Messages VALUES(2000,'Ready',1,'Точное имя')");
  EXPECT_EQ(Load("Russian"), "Russian");
  EXPECT_EQ(translator.In(text::StatusReady), "Точное имя") << "the exact name goes first";
}

TEST_F(LanguageFiles, MayBeReadOnly) {
  for (const char* file : {kCaptionsFile, kMessagesFile})
    fs::permissions(folder.Path() / file, fs::perms::owner_read, fs::perm_options::replace);
  fs::permissions(folder.Path(), fs::perms::owner_read | fs::perms::owner_exec, fs::perm_options::replace);
  EXPECT_EQ(Load("Russian"), "Russian");
}

}  // namespace
}  // namespace velk
