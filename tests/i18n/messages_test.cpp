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

#include "support/program_texts.h"

namespace velk {
namespace {

/// The numbers below 2000 are those of message databases that are in use; which text has which number is fixed.
const std::map<int, std::string> kKnownNumbers = {
    {3, "SetupComPort"},
    {4, "invalid MSComm is supplied."},
    {6, "Invalid Boud rate is supplied. Only 2400, 4800, 9600, 19200 and 38400 are supported."},
    {7, "Invalid hand shaking is supplied."},
    {9, "SendTrad"},
    {10, "Please call 'SetupComPort' before you call this method."},
    {11, "Please call 'SetupComPort' before you call this method."},
    {14, "SendRun"},
    {15, "Please call 'SetupComPort' before you call this method."},
    {16, "Please call 'SetupComPort' before you call this method."},
    {18, "GetChannelsData"},
    {19, "Please call 'SetupComPort' before you call this method."},
    {20, "Please call 'SetupComPort' before you call this method."},
    {26, "Unable to get channels data"},
    {38, "unable to establish communication with the hardware."},
    {45, "Unable to get the channels data"},
    {46, "Invalid channel number should be 1 .. "},
    {47, "executCommand"},
    {48, "You can not run command while the hardware running. Please execute SendTrad befor."},
    {49, "Unable to execute ["},
    {51, "ResetConter"},
    {52, "Unable to reset the counter to "},
    {53, ". Only values must be 0 to 4096 only."},
    {54, "Invalid channel number : "},
    {55, ". Only channels 9 to 13 can be set."},
    {56, "ResetToSystemDefault"},
    {57, "StartCalibrateChannel"},
    {58, "Invalid channel number. Channel number must be 1 to 13 only."},
    {60, "EndCalibrateChannel"},
    {61, "First you must call 'StartCalibrateChannel' befor calling 'EndCalibrateChannel'"},
    {64, "unable to calibrate the channel."},
    {70, "Division by zero"},
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
    {612, "feet"},
    {613, "degrees"},
    {614, "m"},
    {412, "Automatic hardware detection in progress"},
    {413, "National Oil Well hardware detected"},
    {414, "KESTA version 4 hardware detected"},
    {424, "Orben's hardware version 1 detected"},
};

constexpr int kFirstOwnNumber = 2000;

struct DataRow {
  std::string folder;
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

using TableRow = std::vector<std::string>;

/// The lines of a table, split into fields; the first is the heading.
std::vector<TableRow> ReadTable(const std::filesystem::path& path) {
  std::ifstream file(path);
  EXPECT_TRUE(file.is_open()) << path;
  std::vector<TableRow> rows;
  for (std::string line; std::getline(file, line);) rows.push_back(SplitAtTabs(line));
  return rows;
}

/// The rows of all tables of a folder of data/, by the folder of src that each belongs to.
std::multimap<std::string, TableRow> ReadTables(const std::string& folder, const TableRow& heading) {
  std::multimap<std::string, TableRow> found;
  for (const auto& table : std::filesystem::directory_iterator(std::filesystem::path(VELK_DATA_DIR) / folder)) {
    const auto rows = ReadTable(table.path());
    EXPECT_EQ(rows.empty() ? TableRow() : rows.front(), heading) << table.path();
    for (std::size_t i = 1; i < rows.size(); ++i) {
      EXPECT_EQ(rows[i].size(), heading.size()) << table.path() << " line " << i + 1;
      if (rows[i].size() == heading.size()) found.emplace(table.path().stem(), rows[i]);
    }
  }
  return found;
}

/// The rows of data/messages by number.
std::map<int, DataRow> MessageData() {
  std::map<int, DataRow> found;
  for (const auto& [folder, fields] : ReadTables("messages", {"Id", "English", "Russian"})) {
    const DataRow row{folder, fields[0], fields[1], fields[2]};
    EXPECT_TRUE(found.emplace(std::stoi(fields[0]), row).second) << "the number " << fields[0] << " stands twice";
  }
  return found;
}

std::multimap<std::string, TableRow> CaptionRows() {
  return ReadTables("captions", {"FormName", "ControllName", "English", "Transelate", "Russian"});
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
  static const std::set<std::string_view> procedures = {
      "SetupComPort",         "SendTrad",      "SendRun",
      "GetChannelsData",      "executCommand", "ResetConter",
      "ResetToSystemDefault", "SetDate",       "StartCalibrateChannel",
      "EndCalibrateChannel"};
  return english == "VELK" || procedures.contains(english);
}

TEST(Messages, NumbersAreUnique) {
  std::set<int> numbers;
  for (const test::ProgramText& row : test::ProgramTexts()) {
    EXPECT_TRUE(numbers.insert(row.number).second) << row.constant;
  }
}

TEST(Messages, ConstantsAreUnique) {
  // All stand in one namespace.
  std::set<std::string> constants;
  for (const test::ProgramText& row : test::ProgramTexts())
    EXPECT_TRUE(constants.insert(row.constant).second) << row.constant;
}

TEST(Messages, NumbersBelow2000AreThoseOfTheDatabasesInUse) {
  for (const test::ProgramText& row : test::ProgramTexts()) {
    const int number = row.number;
    if (number >= kFirstOwnNumber) continue;
    const auto known = kKnownNumbers.find(number);
    ASSERT_NE(known, kKnownNumbers.end()) << row.constant << ": ours start at 2000";
    EXPECT_EQ(row.english, known->second);
  }
}

TEST(Messages, NoTextIsEmpty) {
  ASSERT_GT(test::ProgramTexts().size(), 150U);
  for (const test::ProgramText& row : test::ProgramTexts()) EXPECT_FALSE(row.english.empty()) << row.constant;
}

TEST(MessageData, HoldsEveryMessageWithTheSameEnglish) {
  const auto data = MessageData();
  for (const test::ProgramText& row : test::ProgramTexts()) {
    const auto found = data.find(row.number);
    if (found == data.end()) {
      ADD_FAILURE() << "data/messages lacks " << row.number << " " << row.constant;
      continue;
    }
    EXPECT_EQ(found->second.folder, row.folder) << row.constant;
    EXPECT_EQ(found->second.english, row.english) << row.constant;
  }
}

TEST(MessageData, HoldsNothingThatTheProgramDoesNotSay) {
  std::set<int> numbers;
  for (const test::ProgramText& row : test::ProgramTexts()) numbers.insert(row.number);
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
  for (const auto& [folder, row] : CaptionRows()) ExpectKept(row[0] + "_" + row[1], row[2], row[4]);
}

TEST(CaptionData, EveryRowNamesAFormAndAControlAndHasBothLanguages) {
  const auto rows = CaptionRows();
  ASSERT_GT(rows.size(), 100U);
  std::set<TableRow> keys;
  for (const auto& [folder, row] : rows) {
    for (const std::string& field : row) EXPECT_FALSE(field.empty()) << folder << " " << row[1];
    EXPECT_TRUE(HasCyrillic(row[4])) << folder << " " << row[1];
    EXPECT_TRUE(keys.insert({row[0], row[1]}).second) << "twice: " << row[0] << " " << row[1];
  }
}

}  // namespace
}  // namespace velk
