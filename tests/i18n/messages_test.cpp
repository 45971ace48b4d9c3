#include "base/message_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace velk {
namespace {

/// The numbers below 2000 are those of message databases that are in use; which text has which number is fixed.
const std::map<int, std::string> kKnownNumbers = {
    {3, "SetupComPort"},
    {4, "invalid MSComm is supplied."},
    {6, "Invalid Boud rate is supplied. Only 2400, 4800, 9600, 19200 and 38400 are supported."},
    {7, "Invalid hand shaking is supplied."},
    {74, "Time Out Error, check hardware settings"},
    {75, "Time Out Error"},
    {140, "Units"},
    {212, "Formula Error, Parameter {"},
    {213, "} does not exist"},
    {214, "Additional Parameter "},
    {225, "Error in formula, number of left brackets does not match number of right brackets"},
    {226, "Formula Calculator"},
    {227, "Error in formula, right bracket(s) proceeding left bracket(s)"},
    {230, "Error in formula, string "},
    {231, " is not valid string"},
    {252, "Acquiring Data"},
};

constexpr int kFirstOwnNumber = 2000;

struct DataRow {
  std::string id;
  std::string english;
  std::string russian;
};

std::vector<std::string> SplitAtTabs(const std::string& line) {
  std::vector<std::string> fields;
  std::size_t start = 0;
  for (std::size_t tab = line.find('\t'); tab != std::string::npos; tab = line.find('\t', start)) {
    fields.push_back(line.substr(start, tab - start));
    start = tab + 1;
  }
  fields.push_back(line.substr(start));
  return fields;
}

/// The lines of a file of data/, split into fields; the first is the heading.
std::vector<std::vector<std::string>> ReadTable(const std::string& name) {
  std::ifstream file(std::filesystem::path(VELK_DATA_DIR) / name);
  EXPECT_TRUE(file.is_open()) << name;
  std::vector<std::vector<std::string>> rows;
  for (std::string line; std::getline(file, line);) rows.push_back(SplitAtTabs(line));
  return rows;
}

/// The rows of data/messages.tsv by number.
std::map<int, DataRow> MessageData() {
  std::map<int, DataRow> found;
  const auto rows = ReadTable("messages.tsv");
  for (std::size_t i = 1; i < rows.size(); ++i) {
    const auto& fields = rows[i];
    EXPECT_EQ(fields.size(), 3U) << "line " << i + 1;
    if (fields.size() != 3) continue;
    const bool fresh = found.emplace(std::stoi(fields[0]), DataRow{fields[0], fields[1], fields[2]}).second;
    EXPECT_TRUE(fresh) << "the number " << fields[0] << " stands twice";
  }
  return found;
}

/// Whether a text holds a letter of the Cyrillic block U+0400 to U+04FF, which UTF-8 begins with D0 to D3.
bool HasCyrillic(const std::string& text) {
  return text.find_first_of("\xD0\xD1\xD2\xD3") != std::string::npos;
}

/// Whether a text holds a letter at all; separators such as ")" need no translation.
bool HasLetter(std::string_view text) {
  return std::any_of(text.begin(), text.end(), [](unsigned char c) { return std::isalpha(c) != 0; });
}

/// Texts that are names or codes and stay as they are in every language.
bool StaysAsItIs(std::string_view english) {
  return english == "VELK" || english == "SetupComPort";
}

TEST(Messages, NumbersAreUnique) {
  std::set<int> numbers;
  for (const MessageRow& row : Messages()) {
    EXPECT_TRUE(numbers.insert(static_cast<int>(row.id)).second) << row.constant;
  }
}

TEST(Messages, ConstantsAreUnique) {
  std::set<std::string_view> constants;
  for (const MessageRow& row : Messages()) EXPECT_TRUE(constants.insert(row.constant).second) << row.constant;
}

TEST(Messages, NumbersBelow2000AreThoseOfTheDatabasesInUse) {
  for (const MessageRow& row : Messages()) {
    const int number = static_cast<int>(row.id);
    if (number >= kFirstOwnNumber) continue;
    const auto known = kKnownNumbers.find(number);
    ASSERT_NE(known, kKnownNumbers.end()) << row.constant << ": ours start at 2000";
    EXPECT_EQ(row.english, known->second);
  }
}

TEST(Messages, NoTextIsEmpty) {
  ASSERT_FALSE(Messages().empty());
  for (const MessageRow& row : Messages()) EXPECT_FALSE(row.english.empty()) << row.constant;
}

TEST(Messages, EveryConstantGivesItsOwnText) {
  for (const MessageRow& row : Messages()) EXPECT_EQ(EnglishText(row.id), row.english) << row.constant;
}

TEST(MessageData, HoldsEveryMessageWithTheSameEnglish) {
  const auto data = MessageData();
  for (const MessageRow& row : Messages()) {
    const auto found = data.find(static_cast<int>(row.id));
    if (found == data.end()) {
      ADD_FAILURE() << "data/messages.tsv lacks " << static_cast<int>(row.id) << " " << row.constant;
      continue;
    }
    EXPECT_EQ(found->second.english, row.english) << row.constant;
  }
}

TEST(MessageData, HoldsNothingThatTheProgramDoesNotSay) {
  std::set<int> numbers;
  for (const MessageRow& row : Messages()) numbers.insert(static_cast<int>(row.id));
  for (const auto& [number, row] : MessageData()) EXPECT_TRUE(numbers.contains(number)) << number << " " << row.english;
}

TEST(MessageData, EveryTextIsThereInRussian) {
  for (const auto& [number, row] : MessageData()) {
    EXPECT_FALSE(row.russian.empty()) << number;
    if (HasLetter(row.english) && !StaysAsItIs(row.english)) {
      EXPECT_TRUE(HasCyrillic(row.russian)) << number << " " << row.russian;
    }
  }
}

TEST(MessageData, NoTwoStatusesAreCalledAlike) {
  // The program compares these words to know where it stands.
  const std::set<std::string> ids = {"252", "2000", "2001", "2002", "2003", "2004", "2005", "2006", "2007"};
  std::set<std::string> english, russian;
  for (const auto& [number, row] : MessageData()) {
    if (ids.count(row.id) == 0) continue;
    EXPECT_TRUE(english.insert(row.english).second) << number;
    EXPECT_TRUE(russian.insert(row.russian).second) << number;
  }
  EXPECT_EQ(english.size(), ids.size());
}

TEST(MessageData, BlanksAtTheEndsAreKept) {
  // Texts such as "Current File: " are put together with values, so a lost blank would show.
  for (const auto& [number, row] : MessageData()) {
    ASSERT_FALSE(row.english.empty() || row.russian.empty()) << number;
    EXPECT_EQ(row.english.front() == ' ', row.russian.front() == ' ') << number;
    EXPECT_EQ(row.english.back() == ' ', row.russian.back() == ' ') << number;
  }
}

// --- What Russian keeps of the English text ---

/// "&" marks a letter; "&&" is one that is shown, and a blank can't be pressed.
int MarkedLetters(const std::string& text) {
  int marked = 0;
  for (std::size_t i = text.find('&'); i != std::string::npos && i + 1 < text.size(); i = text.find('&', i + 2))
    if (text[i + 1] != '&' && text[i + 1] != ' ') ++marked;
  return marked;
}

/// What values stand in, what file patterns are made of, and the dots of an entry that asks further.
std::vector<int> Kept(const std::string& text) {
  std::vector<int> counts;
  for (const char* part : {"%1", "%2", "{", "}", "[", "]", "|", "*.", "..."}) {
    int count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
    counts.push_back(count);
  }
  return counts;
}

void ExpectKept(const std::string& key, const std::string& english, const std::string& russian) {
  EXPECT_EQ(MarkedLetters(english), MarkedLetters(russian)) << key << ": " << english << " / " << russian;
  EXPECT_LE(MarkedLetters(english), 1) << key << ": " << english;
  EXPECT_EQ(Kept(english), Kept(russian)) << key << ": " << english << " / " << russian;
}

TEST(MessageData, KeepsMarkedLettersAndWhatValuesStandIn) {
  for (const auto& [number, row] : MessageData()) ExpectKept(row.id, row.english, row.russian);
}

TEST(CaptionData, KeepsMarkedLettersAndDots) {
  const auto rows = ReadTable("languages.tsv");
  for (std::size_t i = 1; i < rows.size(); ++i) ExpectKept(rows[i][0] + "_" + rows[i][1], rows[i][2], rows[i][4]);
}

TEST(CaptionData, EveryRowNamesAFormAndAControlAndHasBothLanguages) {
  const auto rows = ReadTable("languages.tsv");
  ASSERT_GT(rows.size(), 1U);
  EXPECT_EQ(rows[0], (std::vector<std::string>{"FormName", "ControllName", "English", "Transelate", "Russian"}));
  std::set<std::vector<std::string>> keys;
  for (std::size_t i = 1; i < rows.size(); ++i) {
    ASSERT_EQ(rows[i].size(), 5U) << "line " << i + 1;
    for (const std::string& field : rows[i]) EXPECT_FALSE(field.empty()) << "line " << i + 1;
    EXPECT_TRUE(HasCyrillic(rows[i][4])) << "line " << i + 1;
    EXPECT_TRUE(keys.insert({rows[i][0], rows[i][1]}).second) << "twice: " << rows[i][1];
  }
}

}  // namespace
}  // namespace velk
