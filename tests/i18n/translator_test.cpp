#include "i18n/translator.h"

#include <gtest/gtest.h>

#include "model/texts.h"
#include "support/translation_file.h"

namespace velk {
namespace {

using test::MakeDatabase;

constexpr const char* kTable = "CREATE TABLE Messages(Id,txtMessage,translatable,Russian);";
const std::string kReady = "INSERT INTO Messages VALUES(2000,'Ready',1,'Готов')";

class Translator : public testing::Test {
 protected:
  bool Load(const std::string& rows, const std::string& language = "Russian") {
    return translator.Load(MakeDatabase(folder, std::to_string(++files_) + ".mdb", kTable + rows), language);
  }

  test::TemporaryFolder folder;
  clstranslation translator;

 private:
  int files_ = 0;
};

TEST_F(Translator, PassesEnglishThroughWithoutADatabase) {
  EXPECT_EQ(translator.Translate("Anything", 252), "Anything");
  EXPECT_EQ(translator.In(text::StatusReady), "Ready");
  EXPECT_EQ(translator.In(text::StatusReady), "Ready");
}

TEST_F(Translator, GivesTheTranslationOfANumber) {
  ASSERT_TRUE(Load(kReady));
  EXPECT_EQ(translator.Translate("Ready", 2000), "Готов");
  EXPECT_EQ(translator.Translate("whatever stands at the call", 2000), "Готов");
  EXPECT_EQ(translator.In(text::StatusReady), "Готов");
  EXPECT_EQ(translator.In(text::StatusReady), "Готов");
}

TEST_F(Translator, NumberThatTheTableDoesNotHoldStaysEnglish) {
  ASSERT_TRUE(Load(kReady));
  EXPECT_EQ(translator.Translate("Acquiring Data", 252), "Acquiring Data");
  EXPECT_EQ(translator.In(text::StatusAcquiringData), "Acquiring Data");
  EXPECT_EQ(translator.Translate("below zero", -1), "below zero");
}

TEST_F(Translator, EmptyTranslationAndNullStayEnglish) {
  ASSERT_TRUE(
      Load("INSERT INTO Messages VALUES(1,'One',1,''),(2,'Two',1,NULL),(NULL,NULL,NULL,NULL),(3,NULL,1,'Три')"));
  EXPECT_EQ(translator.Translate("One", 1), "One");
  EXPECT_EQ(translator.Translate("Two", 2), "Two");
  EXPECT_EQ(translator.Translate("Three", 3), "Три");
}

TEST_F(Translator, MessageIsTranslatedWhateverItsFlagSays) {
  ASSERT_TRUE(Load("INSERT INTO Messages VALUES(1,'One',0,'Один'),(2,'Two',NULL,'Два')"));
  EXPECT_EQ(translator.Translate("One", 1), "Один");
  EXPECT_EQ(translator.Translate("Two", 2), "Два");
}

TEST_F(Translator, SecondRowUnderANumberIsIgnored) {
  ASSERT_TRUE(Load("INSERT INTO Messages VALUES(1,'One',1,'первый'),(1,'One',1,'второй')"));
  EXPECT_EQ(translator.Translate("One", 1), "первый");
}

TEST_F(Translator, NumberMayBeStoredAsText) {
  ASSERT_TRUE(Load("INSERT INTO Messages VALUES('252','Acquiring Data',1,'Идёт регистрация данных')"));
  EXPECT_EQ(translator.In(text::StatusAcquiringData), "Идёт регистрация данных");
}

TEST_F(Translator, MissingFileTableOrColumnEndsInEnglishWithoutAnError) {
  EXPECT_FALSE(translator.Load(folder.File("none.mdb"), "Russian"));
  EXPECT_FALSE(translator.Load(MakeDatabase(folder, "other.mdb", "CREATE TABLE Other(a)"), "Russian"));
  EXPECT_FALSE(Load(kReady, "Kazakh"));
  EXPECT_EQ(translator.Translate("Ready", 2000), "Ready");
}

TEST_F(Translator, FailedLoadLeavesNothingOfTheOneBefore) {
  ASSERT_TRUE(Load(kReady));
  EXPECT_FALSE(translator.Load(folder.File("none.mdb"), "Russian"));
  EXPECT_EQ(translator.Translate("Ready", 2000), "Ready");
}

TEST_F(Translator, CopyKeepsItsTable) {
  ASSERT_TRUE(Load(kReady));
  const clstranslation copy = translator;
  EXPECT_TRUE(Load(""));
  EXPECT_EQ(translator.Translate("Ready", 2000), "Ready");
  EXPECT_EQ(copy.Translate("Ready", 2000), "Готов");
}

}  // namespace
}  // namespace velk
