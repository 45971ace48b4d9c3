#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "base/errors.h"
#include "i18n/translation.h"
#include "platform/database/connection.h"
#include "platform/database/recordset.h"
#include "platform/dialogs/procedure.h"
#include "platform/files/file_errors.h"
#include "platform/pages/page_fetch.h"
#include "platform/ports/serial.h"
#include "platform/settings/settings.h"
#include "support/scripted_dialogs.h"
#include "support/temporary_folder.h"
#include "support/translation_file.h"

namespace velk {
namespace {

namespace fs = std::filesystem;

/// The words of a text that no other alphabet than the English one can hold.
bool HasLatin(const std::string& text) {
  return std::any_of(text.begin(), text.end(), [](unsigned char c) { return std::isalpha(c) != 0; });
}

std::string Without(std::string text, const std::string& part) {
  const std::size_t at = text.find(part);
  EXPECT_NE(at, std::string::npos) << text << " lacks " << part;
  return at == std::string::npos ? text : text.erase(at, part.size());
}

/// A settings file that can't be read as a whole, and what an operator is told behind its path.
struct Damage {
  std::string bytes;
  const char* english;
  const char* russian;
};

/// A session in Russian and one in English, with the texts as the build makes them.
class ErrorsInRussian : public testing::Test {
 protected:
  ErrorsInRussian() {
    EXPECT_TRUE(translator_.Load((fs::path(VELK_TRANSLATIONS_DIR) / kMessagesFile).string(), "Russian"));
  }

  /// What the box of a failed procedure says.
  static std::string Told(test::ScriptedDialogs& dialogs, const std::function<void()>& statement) {
    dialogs.Expect(" - mnuX_Click", Answer::Cancel);
    RunProcedure({dialogs, "mnuX_Click"}, [&](const Statements& run) { run(statement); });
    if (dialogs.shown.empty()) return {};
    return Without(dialogs.shown.back().text, " - mnuX_Click");
  }

  /// In Russian with `kept` in it, and no English besides.
  void ExpectRussian(const std::function<void()>& statement, const std::string& kept) {
    const std::string text = Without(Told(russian_, statement), kept);
    EXPECT_FALSE(HasLatin(text)) << text;
    EXPECT_TRUE(HasLatin(Told(english_, statement)));
  }

  void ExpectTold(const std::string& path, const Damage& damage) {
    std::ofstream(path) << damage.bytes;
    SettingsStore store(folder_.Path().string());
    store.Find("VELK2", "A", "x");
    const std::vector<OperatorText> problems = store.TakeProblems();
    ASSERT_EQ(problems.size(), 1U) << damage.english;
    EXPECT_EQ(test::English().In(problems[0]), path + ": " + damage.english);
    EXPECT_EQ(translator_.In(problems[0]), path + ": " + damage.russian);
  }

  Gate gate_;
  clstranslation translator_;
  test::ScriptedDialogs russian_{gate_, translator_};
  test::ScriptedDialogs english_{gate_};
  test::TemporaryFolder folder_;
};

TEST_F(ErrorsInRussian, EveryNumberHasARussianText) {
  ASSERT_EQ(ErrorTable().size(), 22U);
  for (const ErrorRow& row : ErrorTable()) {
    const std::string text = Told(russian_, [&] { throw RuntimeError(row.number); });
    EXPECT_FALSE(text.empty());
    EXPECT_FALSE(HasLatin(text)) << static_cast<int>(row.number) << " " << text;
  }
  EXPECT_EQ(Told(russian_, [] { throw RuntimeError(ErrorNumber::DivisionByZero); }), "Деление на ноль");
  EXPECT_EQ(Told(russian_, [] { throw RuntimeError(static_cast<ErrorNumber>(4711)); }), "Ошибка 4711");
}

TEST_F(ErrorsInRussian, TextsAndNumbersOfTheTableAreUnique) {
  for (const ErrorRow& row : ErrorTable()) {
    const auto same = [&](const ErrorRow& other) { return other.number == row.number || other.text == row.text; };
    EXPECT_EQ(std::count_if(ErrorTable().begin(), ErrorTable().end(), same), 1) << static_cast<int>(row.number);
  }
}

TEST_F(ErrorsInRussian, FileErrorsKeepThePath) {
  const std::string lost = folder_.File("lost.mdb");
  ExpectRussian([&] { Connection::Open(lost, OpenMode::ReadOnly); }, lost);
  ExpectRussian([&] { Connection::Open("/no/such/folder/a.mdb", OpenMode::CreateNew); }, "/no/such/folder/a.mdb");
  const std::string there = folder_.Touch("there.mdb");
  ExpectRussian([&] { Connection::Open(there, OpenMode::CreateNew); }, there);
}

TEST_F(ErrorsInRussian, DatabaseErrorsLeadTheEnginesOwnWords) {
  const std::string path = test::MakeDatabase(folder_, "log.mdb", "CREATE TABLE T(a)");
  const auto connection = Connection::Open(path, OpenMode::ReadWrite);
  EXPECT_EQ(Told(russian_, [&] { connection->Execute("SELECT b FROM T"); }),
            "Ошибка базы данных: " + path + " (no such column: b)");
  EXPECT_EQ(Told(english_, [&] { connection->Execute("SELECT b FROM T"); }),
            "Database error: " + path + " (no such column: b)");
  ExpectRussian([&] { Recordset(connection, "logData"); }, path + " (logData)");
}

TEST_F(ErrorsInRussian, PortAndPageErrorsKeepDeviceAndAddress) {
  for (const ErrorNumber number : {ErrorNumber::DeviceUnavailable, ErrorNumber::PermissionDenied,
                                   ErrorNumber::FileAlreadyOpen, ErrorNumber::PortInvalid}) {
    ExpectRussian([&] { throw PortError(number, "/dev/ttyUSB0"); }, "/dev/ttyUSB0");
  }
  ExpectRussian([] { throw PageError(PageFault::NoConnection, "10.0.0.5/pens.htm"); }, "10.0.0.5/pens.htm");
}

TEST_F(ErrorsInRussian, WordsOfTheSystemStandBehindTheRussianText) {
  const std::string directory = folder_.Touch("file") + "/store";
  SettingsStore store(directory);
  store.Save("VELK2", "General", "TheTimeOut", "5");
  const std::string english = Told(english_, [&] { store.Flush(); });
  const std::string words = Without(english, directory + ": ");
  EXPECT_EQ(Told(russian_, [&] { store.Flush(); }), directory + ": Путь не найден (" + words + ")");
}

TEST_F(ErrorsInRussian, ADefectIsToldAsOne) {
  const auto defect = [] { throw std::out_of_range("vector::at"); };
  EXPECT_EQ(Told(english_, defect), "vector::at");
  EXPECT_EQ(Told(russian_, defect), "Внутренняя ошибка (vector::at)");
}

TEST_F(ErrorsInRussian, TheNameOfAChannelStaysAheadOfItsError) {
  const OperatorText text = "Момент: " + ErrorText(ErrorNumber::DivisionByZero);
  EXPECT_EQ(translator_.In(text), "Момент: Деление на ноль");
  EXPECT_EQ(test::English().In(text), "Момент: Division by zero");
}

TEST_F(ErrorsInRussian, EachDamageOfASettingsFileIsTold) {
  const std::string path = folder_.File("VELK2.ini");
  const Damage damages[] = {
      {"", "the file is empty", "файл пуст"},
      {"[A]\nx\n", "line 2 can't be read", "строка 2 не читается"},
      {"x\n[A]\nx\nx\nx\n", "lines 1, 3 to 5 can't be read", "строки 1, 3 по 5 не читаются"},
  };
  for (const Damage& damage : damages) ExpectTold(path, damage);
}

TEST_F(ErrorsInRussian, WhatHappenedToASettingsFileSinceItWasWrittenIsTold) {
  const std::string path = folder_.File("VELK2.ini");
  SettingsStore written(folder_.Path().string());
  for (const char* section : {"A", "B", "C"}) written.Save("VELK2", section, "x", "1");
  written.Flush();
  std::ifstream file(path);
  const std::string whole{std::istreambuf_iterator<char>(file), {}};
  const std::string b = "[B]\nx=1\n";
  ASSERT_NE(whole.find(b), std::string::npos) << whole;

  std::string oneChanged = whole, twoChanged = whole, oneLost = whole;
  oneChanged.replace(whole.find(b), b.size(), "[B]\nx=2\n");
  twoChanged.replace(whole.find("[A]\nx=1"), 7, "[A]\nx=2");
  twoChanged.replace(whole.find(b), b.size(), "[B]\nx=2\n");
  oneLost.erase(whole.find(b), b.size());
  const Damage damages[] = {
      {whole.substr(0, whole.find("; End")), "the end of the file is missing", "не хватает конца файла"},
      {oneChanged, "[B] is not as it was written", "[B] изменён после записи"},
      {twoChanged, "[A], [B] are not as they were written", "[A], [B] изменены после записи"},
      {oneLost, "sections missing: 1", "недостаёт разделов: 1"},
  };
  for (const Damage& damage : damages) ExpectTold(path, damage);
}

TEST_F(ErrorsInRussian, WhatStandsInPlaceOfASettingsFileIsTold) {
  fs::create_directory(folder_.File("Folder.ini"));
  fs::create_symlink("/dev/null", folder_.File("Device.ini"));
  std::ofstream(folder_.File("Large.ini")) << 'x';
  fs::resize_file(folder_.File("Large.ini"), std::uintmax_t{1} << 30);
  SettingsStore store(folder_.Path().string());
  for (const char* application : {"Folder", "Device", "Large"}) store.Find(application, "A", "x");
  std::vector<std::string> english, russian;
  for (const OperatorText& problem : store.TakeProblems()) {
    english.push_back(test::English().In(problem));
    russian.push_back(translator_.In(problem));
  }
  EXPECT_EQ(english, (std::vector<std::string>{folder_.File("Folder.ini") + ": this is a directory",
                                               folder_.File("Device.ini") + ": this is no file",
                                               folder_.File("Large.ini") + ": this is too large"}));
  EXPECT_EQ(russian, (std::vector<std::string>{folder_.File("Folder.ini") + ": это папка",
                                               folder_.File("Device.ini") + ": это не файл",
                                               folder_.File("Large.ini") + ": слишком большой размер"}));
}

}  // namespace
}  // namespace velk
