#include "i18n/language_files.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "i18n/messages.h"
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

  std::string Load(const std::string& language) {
    return LoadLanguage(folder.Path().string(), language, translator, languages);
  }

  void ExpectEnglish() const {
    EXPECT_TRUE(languages.IsEmpty());
    EXPECT_EQ(translator.Translate(MessageId::StatusReady), "Ready");
  }

  test::TemporaryFolder folder;
  clstranslation translator;
  clsLanguages languages;
};

TEST_F(LanguageFiles, BringRussian) {
  EXPECT_EQ(Load("Russian"), "Russian");
  EXPECT_EQ(translator.Translate(MessageId::StatusReady), "Готов");
  EXPECT_EQ(languages.Caption("MainForm_mnuFile"), "&Файл");
}

TEST_F(LanguageFiles, HoldEveryMessageOfTheProgram) {
  ASSERT_EQ(Load("Russian"), "Russian");
  for (const MessageRow& row : Messages()) {
    // An English text that no file can hold shows whether the number is found.
    EXPECT_NE(translator.Translate("\x01", static_cast<int>(row.id)), "\x01") << row.constant;
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
  EXPECT_EQ(translator.Translate(MessageId::StatusReady), "Ready");
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
    const bool russian = translator.Translate(MessageId::StatusReady) == whole.Translate(MessageId::StatusReady);
    taken += russian ? 1 : 0;
    for (const MessageRow& row : Messages())
      EXPECT_EQ(translator.Translate(row.id), russian ? whole.Translate(row.id) : std::string(row.english)) << size;
  }
  EXPECT_GT(taken, 0);
}

TEST_F(LanguageFiles, MayBeReadOnly) {
  for (const char* file : {kCaptionsFile, kMessagesFile})
    fs::permissions(folder.Path() / file, fs::perms::owner_read, fs::perm_options::replace);
  fs::permissions(folder.Path(), fs::perms::owner_read | fs::perms::owner_exec, fs::perm_options::replace);
  EXPECT_EQ(Load("Russian"), "Russian");
}

}  // namespace
}  // namespace velk
