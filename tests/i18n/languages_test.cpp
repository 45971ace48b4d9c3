#include "i18n/languages.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <fstream>

#include "support/translation_file.h"

namespace velk {
namespace {

using test::MakeDatabase;

constexpr const char* kTable = "CREATE TABLE Languages(FormName,ControllName,English,Transelate,Russian);";

class Languages : public testing::Test {
 protected:
  bool Load(const std::string& rows, const std::string& language = "Russian") {
    return languages.Load(MakeDatabase(folder, std::to_string(++files_) + ".mdb", kTable + rows), language);
  }

  test::TemporaryFolder folder;
  clsLanguages languages;

 private:
  int files_ = 0;
};

TEST_F(Languages, FindsARowUnderTheNamesOfFormAndControl) {
  ASSERT_TRUE(Load("INSERT INTO Languages VALUES('frmX','cmdGo','&Go',1,'&Пуск')"));
  EXPECT_EQ(languages.Caption("frmX_cmdGo"), "&Пуск");
  ASSERT_NE(languages.Find("frmX_cmdGo"), nullptr);
  EXPECT_EQ(languages.Find("frmX_cmdGo")->English, "&Go");
  EXPECT_TRUE(languages.Find("frmX_cmdGo")->Transelate);
}

TEST_F(Languages, ControlThatIsNotInTheTableHasNoCaption) {
  ASSERT_TRUE(Load("INSERT INTO Languages VALUES('frmX','cmdGo','&Go',1,'&Пуск')"));
  EXPECT_EQ(languages.Find("frmX_cmdgo"), nullptr);
  EXPECT_EQ(languages.Caption("frmX_cmdStop"), std::nullopt);
}

TEST_F(Languages, EmptyTranslationAndNullKeepTheDesign) {
  ASSERT_TRUE(
      Load("INSERT INTO Languages VALUES('f','a','A',1,''),('f','b','B',1,NULL),('f','c',NULL,1,'Ц'),"
           "('f','d','D',NULL,'Д'),(NULL,NULL,NULL,NULL,NULL)"));
  EXPECT_EQ(languages.Caption("f_a"), std::nullopt);
  EXPECT_EQ(languages.Caption("f_b"), std::nullopt);
  EXPECT_EQ(languages.Caption("f_c"), "Ц");
  EXPECT_EQ(languages.Find("f_c")->English, "");
  EXPECT_EQ(languages.Caption("f_d"), std::nullopt);
  EXPECT_EQ(languages.Caption("_"), std::nullopt);
}

TEST_F(Languages, RowThatIsNotToBeTranslatedIsNotApplied) {
  ASSERT_TRUE(Load("INSERT INTO Languages VALUES('f','a','A',0,'А'),('f','b','B','False','Б'),('f','c','C','No','Ц')"));
  for (const char* key : {"f_a", "f_b", "f_c"}) {
    EXPECT_NE(languages.Find(key), nullptr) << key;
    EXPECT_EQ(languages.Caption(key), std::nullopt) << key;
  }
}

TEST_F(Languages, FlagMayBeWrittenAsOtherToolsWriteIt) {
  ASSERT_TRUE(
      Load("INSERT INTO Languages VALUES('f','a','A',-1,'1'),('f','b','B',1,'2'),('f','c','C','True','3'),"
           "('f','d','D','TRUE','4'),('f','e','E','-1','5'),('f','g','G',1.0,'6'),('f','h','H','yes','7')"));
  for (const char* key : {"f_a", "f_b", "f_c", "f_d", "f_e", "f_g", "f_h"}) EXPECT_TRUE(languages.Caption(key)) << key;
}

TEST_F(Languages, SecondRowUnderAKeyIsIgnored) {
  ASSERT_TRUE(Load("INSERT INTO Languages VALUES('f','a','A',1,'первый'),('f','a','A',1,'второй')"));
  EXPECT_EQ(languages.Caption("f_a"), "первый");
}

TEST_F(Languages, MissingFileTableOrColumnEndsInEnglishWithoutAnError) {
  EXPECT_FALSE(languages.Load(folder.File("none.mdb"), "Russian"));
  EXPECT_FALSE(languages.Load(folder.File("no folder/none.mdb"), "Russian"));
  EXPECT_FALSE(languages.Load(folder.Path().string(), "Russian"));
  EXPECT_FALSE(languages.Load(MakeDatabase(folder, "other.mdb", "CREATE TABLE Other(a)"), "Russian"));
  EXPECT_FALSE(Load("INSERT INTO Languages VALUES('f','a','A',1,'А')", "Kazakh"));
  EXPECT_TRUE(languages.IsEmpty());
}

TEST_F(Languages, FileThatIsNoDatabaseEndsInEnglish) {
  std::ofstream(folder.File("jet.mdb")) << std::string("\0\1\0\0Standard Jet DB\0", 20) << std::string(4096, 'x');
  EXPECT_FALSE(languages.Load(folder.File("jet.mdb"), "Russian"));
  std::ofstream(folder.File("zero.mdb")).flush();
  EXPECT_FALSE(languages.Load(folder.File("zero.mdb"), "Russian"));
  ASSERT_EQ(mkfifo(folder.File("pipe.mdb").c_str(), 0600), 0);
  EXPECT_FALSE(languages.Load(folder.File("pipe.mdb"), "Russian"));
  EXPECT_TRUE(languages.IsEmpty());
}

TEST_F(Languages, NameOfALanguageIsAColumnAndNothingElse) {
  const std::string path = MakeDatabase(folder, "names.mdb",
                                        "CREATE TABLE Languages(FormName,ControllName,English,Transelate,\"Old \"\" "
                                        "Norse\");INSERT INTO Languages VALUES('f','a','A',1,'ᚨ')");
  EXPECT_TRUE(languages.Load(path, "Old \" Norse"));
  EXPECT_EQ(languages.Caption("f_a"), "ᚨ");
  for (const char* language : {"'x'", "x", "\"", "", "1", "English FROM Languages; DROP TABLE Languages; --", "*"})
    EXPECT_FALSE(languages.Load(path, language)) << language;
  EXPECT_TRUE(languages.Load(path, "Old \" Norse"));
}

TEST_F(Languages, FailedLoadLeavesNothingOfTheOneBefore) {
  ASSERT_TRUE(Load("INSERT INTO Languages VALUES('f','a','A',1,'А')"));
  EXPECT_FALSE(languages.Load(folder.File("none.mdb"), "Russian"));
  EXPECT_EQ(languages.Caption("f_a"), std::nullopt);
}

TEST_F(Languages, CopyKeepsItsTable) {
  ASSERT_TRUE(Load("INSERT INTO Languages VALUES('f','a','A',1,'А')"));
  const clsLanguages copy = languages;
  EXPECT_TRUE(Load(""));
  EXPECT_TRUE(languages.IsEmpty());
  EXPECT_EQ(copy.Caption("f_a"), "А");
}

}  // namespace
}  // namespace velk
