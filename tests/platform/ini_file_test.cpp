#include "platform/settings/ini_file.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace velk {
namespace {

const std::string kFirst = "; VELK settings. Edit only while VELK is not running; leave the last line.\n";
const std::string kLast = "; End of settings.\n";
// CRC-32 of "A\0k\0001\0" and "B\0k\0002\0", from another program.
const std::string kCheckOfA = "5FBC0FDA", kCheckOfB = "F2052EB7";

std::string EndLine(const std::string& checks) {
  return "; End of settings. Checks, to be taken out after an edit by hand: " + checks + "\n";
}

std::string ValueOf(const IniFile& file, const std::string& section, const std::string& key) {
  const std::string* value = file.Find(section, key);
  return value ? *value : "(none)";
}

std::string LineOf(const std::string& key, const std::string& value) {
  IniFile file;
  file.Set("S", key, value);
  const std::string text = file.Text();
  const std::size_t start = text.find("[S]\n") + 4;
  return text.substr(start, text.find('\n', start) - start);
}

TEST(IniFile, FindsAValueBySectionAndKey) {
  const IniFile file("[General]\nTheTimeOut=5\n[Protocol]\nTheTimeOut=6\n");
  EXPECT_EQ(ValueOf(file, "General", "TheTimeOut"), "5");
  EXPECT_EQ(ValueOf(file, "Protocol", "TheTimeOut"), "6");
  EXPECT_EQ(file.Find("General", "BaudRate"), nullptr);
  EXPECT_EQ(file.Find("Playback", "TheTimeOut"), nullptr);
}

TEST(IniFile, ComparesNamesExactly) {
  const IniFile file("[General]\nTheTimeOut=5\n");
  EXPECT_EQ(file.Find("general", "TheTimeOut"), nullptr);
  EXPECT_EQ(file.Find("General", "thetimeout"), nullptr);
}

TEST(IniFile, TakesOffBlanksAroundNamesAndValues) {
  const IniFile file(" [ General ] \n\tname =  Pump \t rate  \n");
  EXPECT_EQ(ValueOf(file, "General", "name"), "Pump \t rate");
}

TEST(IniFile, KeepsEverythingBehindTheFirstEqualsSign) {
  const IniFile file("[P]\nformat=#0.0000\ncommand=a=b;c\nempty=\n");
  EXPECT_EQ(ValueOf(file, "P", "format"), "#0.0000");
  EXPECT_EQ(ValueOf(file, "P", "command"), "a=b;c");
  EXPECT_EQ(ValueOf(file, "P", "empty"), "");
  EXPECT_TRUE(file.BadLines().empty());
}

TEST(IniFile, ReadsEscapesOnlyInsideQuotes) {
  const IniFile file("[P]\nbare=C:\\new\nquoted=\" \\\\ \\\" \\r\\n\\t\\x00\\xfF\"\n");
  EXPECT_EQ(ValueOf(file, "P", "bare"), "C:\\new");
  EXPECT_EQ(ValueOf(file, "P", "quoted"), std::string(" \\ \" \r\n\t\0\xFF", 10));
}

TEST(IniFile, WritesPlainValuesBareAndOthersInQuotes) {
  EXPECT_EQ(LineOf("BaudRate", "9600"), "BaudRate=9600");
  EXPECT_EQ(LineOf("Delimiter", " "), "Delimiter=\" \"");
  EXPECT_EQ(LineOf("Terminator", "\r"), "Terminator=\"\\r\"");
  EXPECT_EQ(LineOf("name", "\"x"), "name=\"\\\"x\"");
  EXPECT_EQ(LineOf("name", "a \"b\" c\\d"), "name=a \"b\" c\\d");
  EXPECT_EQ(LineOf("units",
                   "\xC2\xB0"
                   "C"),
            "units=\xC2\xB0"
            "C");
  EXPECT_EQ(LineOf("units",
                   "\xB0"
                   "C"),
            "units=\"\\xB0C\"");
  EXPECT_EQ(LineOf("name", ""), "name=");
  EXPECT_EQ(LineOf("a=b", "1"), "\"a=b\"=1");
  EXPECT_EQ(LineOf("#1", "1"), "\"#1\"=1");
  EXPECT_EQ(LineOf("", "1"), "\"\"=1");
}

TEST(IniFile, KeepsEveryByteInSectionsKeysAndValues) {
  for (int byte = 0; byte < 256; ++byte) {
    const std::string one(1, static_cast<char>(byte));
    for (const std::string& text : {one, one + "a", "a" + one, "a" + one + "b", one + one}) {
      IniFile file;
      file.Set(text, text, text);
      file.Set("next", "k", "v");
      const IniFile again(file.Text());
      EXPECT_EQ(ValueOf(again, text, text), text) << byte;
      EXPECT_EQ(ValueOf(again, "next", "k"), "v") << byte;
      EXPECT_TRUE(again.BadLines().empty()) << byte;
      EXPECT_FALSE(again.IsCutOff()) << byte;
    }
  }
}

TEST(IniFile, TellsWhetherAValueHasChanged) {
  IniFile file;
  EXPECT_TRUE(file.Set("S", "k", "1"));
  EXPECT_FALSE(file.Set("S", "k", "1"));
  EXPECT_TRUE(file.Set("S", "k", "2"));
  EXPECT_EQ(ValueOf(file, "S", "k"), "2");
}

TEST(IniFile, KeepsWhatNobodyTouchedByteForByte) {
  const std::string unknown =
      "# a note\n[OPCdata]\r\n  Server = Some.Server.1 \t\n;note\n\nitem=  \"quo\\x74ed\"  \n[ImportLive]\nx=\n";
  IniFile file(unknown + "[General]\nTheTimeOut=5\n; above\n");
  file.Set("General", "TheTimeOut", "7");
  file.Set("General", "intFontSize", "10");
  EXPECT_EQ(file.Text(), kFirst + unknown + "[General]\nTheTimeOut=7\nintFontSize=10\n; above\n" +
                             EndLine("35926470 79491EBD 83464057"));
}

TEST(IniFile, PutsABlankLineAheadOfANewSection) {
  IniFile file;
  file.Set("A", "k", "1");
  file.Set("B", "k", "2");
  EXPECT_EQ(file.Text(), kFirst + "\n[A]\nk=1\n\n[B]\nk=2\n" + EndLine(kCheckOfA + ' ' + kCheckOfB));
}

TEST(IniFile, LetsTheLastOfEqualKeysCount) {
  IniFile file("[A]\nk=1\n[B]\nk=x\n[A]\nk=2\n");
  EXPECT_EQ(ValueOf(file, "A", "k"), "2");
  file.Set("A", "k", "3");
  EXPECT_EQ(ValueOf(IniFile(file.Text()), "A", "k"), "3");
  EXPECT_EQ(ValueOf(file, "B", "k"), "x");
}

TEST(IniFile, TakesASectionOverFromAnotherFile) {
  IniFile file("[A]\na=1\nx=1\n[B]\nb=1\n[C]\nc=1\n");
  const IniFile other("[A]\n; why\na=2\n[B]\nb=2\n");
  file.TakeOver(other, "A");
  file.TakeOver(other, "C");
  EXPECT_EQ(*file.Find("A", "a"), "2");
  EXPECT_EQ(file.Find("A", "x"), nullptr);
  EXPECT_NE(file.Text().find("[A]\n; why\n"), std::string::npos);
  EXPECT_EQ(*file.Find("B", "b"), "1");
  EXPECT_EQ(file.Find("C", "c"), nullptr) << "the other has no such section";
}

TEST(IniFile, DeletesASectionAndLeavesTheOthers) {
  IniFile file("[A]\nk=1\n[B]\nk=2\n[C]\nk=3\n");
  EXPECT_TRUE(file.Delete("A"));
  EXPECT_FALSE(file.Delete("A"));
  EXPECT_EQ(file.Find("A", "k"), nullptr);
  EXPECT_EQ(ValueOf(file, "B", "k"), "2");
  EXPECT_EQ(ValueOf(file, "C", "k"), "3");
  file.Set("A", "k", "4");
  EXPECT_EQ(ValueOf(file, "A", "k"), "4");
  EXPECT_EQ(ValueOf(file, "C", "k"), "3");
}

TEST(IniFile, IsEmptyOnlyWithoutSectionsAndComments) {
  EXPECT_TRUE(IniFile().IsEmpty());
  EXPECT_TRUE(IniFile(IniFile().Text()).IsEmpty());
  EXPECT_FALSE(IniFile("; mine\n").IsEmpty());
  IniFile file("[A]\nk=1\n");
  EXPECT_FALSE(file.IsEmpty());
  file.Delete("A");
  EXPECT_TRUE(file.IsEmpty());
}

struct BadLine {
  const char* what;
  std::string line;
};

TEST(IniFile, LeavesOutALineThatItCannotReadAndUsesTheOthers) {
  const std::vector<BadLine> lines = {
      {"no equals sign", "TheTimeOut"},
      {"no key", "=5"},
      {"no end of quotes", "k=\"abc"},
      {"text behind quotes", "k=\"abc\"d"},
      {"unknown escape", "k=\"\\q\""},
      {"half an escape", "k=\"\\x4\""},
      {"no hex digits", "k=\"\\xzz\""},
      {"a control character", "k=a\x01"},
      {"a carriage return", "k=a\rb"},
      {"a zero byte", std::string("k=a\0b", 5)},
      {"no UTF-8", "k=\xC3"},
      {"an overlong character", "k=\xC0\xAF"},
      {"a surrogate", "k=\xED\xA0\x80"},
      {"beyond Unicode", "k=\xF4\x90\x80\x80"},
      {"an overlong character", "k=\xE0\x80\xAF"},
      {"an overlong character", "k=\xF0\x80\x80\xAF"},
      {"a lone tail", "k=\x80"},
      {"a quoted key without end", "\"k=1"},
  };
  for (const BadLine& bad : lines) {
    const IniFile file("[A]\nbefore=1\n" + bad.line + "\nafter=2\n");
    EXPECT_EQ(file.BadLines(), std::vector<int>{3}) << bad.what;
    EXPECT_EQ(ValueOf(file, "A", "before"), "1") << bad.what;
    EXPECT_EQ(ValueOf(file, "A", "after"), "2") << bad.what;
    EXPECT_EQ(file.Find("A", "k"), nullptr) << bad.what;
    EXPECT_TRUE(IniFile(file.Text()).BadLines().empty()) << bad.what;
  }
}

TEST(IniFile, ReadsEveryLengthOfCharacter) {
  const std::string text =
      "\x7E\xC2\x80\xDF\xBF\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF";
  const IniFile file("[A]\nk=" + text + "\n");
  EXPECT_TRUE(file.BadLines().empty());
  EXPECT_EQ(ValueOf(file, "A", "k"), text);
}

TEST(IniFile, GivesKeysUnderAnUnreadableHeaderToNoSection) {
  for (const std::string header : {"[Parameter2", "[Parameter2] x", "[\"Parameter2]", "[Para\xFFmeter2]", "["}) {
    const IniFile file("[Parameter1]\nmin=1\n" + header + "\nmin=2\n\nmax=3\n[Parameter3]\nmin=4\n");
    EXPECT_EQ(ValueOf(file, "Parameter1", "min"), "1") << header;
    EXPECT_EQ(file.Find("Parameter1", "max"), nullptr) << header;
    EXPECT_EQ(ValueOf(file, "Parameter3", "min"), "4") << header;
    EXPECT_EQ(file.BadLines(), (std::vector<int>{3, 4, 6})) << header;
  }
}

TEST(IniFile, GivesKeysAheadOfTheFirstHeaderToNoSection) {
  const IniFile file("k=1\n[A]\nk=2\n");
  EXPECT_EQ(file.BadLines(), std::vector<int>{1});
  EXPECT_EQ(file.Find("", "k"), nullptr);
}

TEST(IniFile, DoesNotTrustALastLineWithoutAnEndWhereTheEndOfTheFileIsMissing) {
  const IniFile file(kFirst + "[A]\nmin=1\nmax=10");  // was 1000 before the file was cut off
  EXPECT_EQ(file.Find("A", "max"), nullptr);
  EXPECT_EQ(ValueOf(file, "A", "min"), "1");
  EXPECT_EQ(file.BadLines(), std::vector<int>{4});
  EXPECT_FALSE(file.IsLastLineOpen());
}

TEST(IniFile, UsesALastLineThatAnEditorLeftWithoutAnEndAndTellsIt) {
  const std::string section = "[A]\nmin=1\n";
  const std::string closing = kLast.substr(0, kLast.size() - 1);
  for (const std::string& text : {section + "max=10", kFirst + section + kLast + "max=10"}) {
    const IniFile file(text);
    EXPECT_EQ(ValueOf(file, "A", "max"), "10") << text;
    EXPECT_EQ(ValueOf(file, "A", "min"), "1") << text;
    EXPECT_TRUE(file.IsLastLineOpen()) << text;
    EXPECT_TRUE(file.BadLines().empty()) << text;
    EXPECT_FALSE(file.IsCutOff()) << text;
  }
  const IniFile withoutChecks(kFirst + section + closing);
  EXPECT_EQ(ValueOf(withoutChecks, "A", "min"), "1");
  EXPECT_TRUE(withoutChecks.IsLastLineOpen());
  EXPECT_TRUE(withoutChecks.BadLines().empty());
  EXPECT_FALSE(IniFile(kFirst + section + kLast).IsLastLineOpen());
}

TEST(IniFile, TellsALastLineWithoutAnEndThatItCannotReadAsItTellsAnyOther) {
  const IniFile file("[A]\nmin=1\nnonsense");
  EXPECT_EQ(file.BadLines(), std::vector<int>{3});
  EXPECT_FALSE(file.IsLastLineOpen());
}

TEST(IniFile, TellsAFileThatWasCutOffBetweenLines) {
  IniFile file;
  file.Set("A", "min", "1");
  file.Set("A", "max", "1000");
  const std::string text = file.Text();
  EXPECT_FALSE(IniFile(text).IsCutOff());
  EXPECT_FALSE(IniFile(text.substr(0, text.size() - 1)).IsCutOff());
  EXPECT_TRUE(IniFile(text).BadLines().empty());
  for (std::size_t length = 1; length < text.size() - 1; ++length) {
    const IniFile cut(text.substr(0, length));
    const bool isTold = cut.IsCutOff() || !cut.BadLines().empty() || !cut.ChangedSections().empty();
    EXPECT_TRUE(isTold || cut.IsLastLineOpen()) << length;
    for (const auto& [key, value] : {std::pair("min", "1"), std::pair("max", "1000")}) {
      const std::string* found = cut.Find("A", key);
      EXPECT_TRUE(!found || *found == value) << length;
    }
  }
}

TEST(IniFile, ReadsAFileMadeByHandWithoutTheClosingLine) {
  const IniFile file("\xEF\xBB\xBF[A]\r\nk=1\r\n");
  EXPECT_EQ(ValueOf(file, "A", "k"), "1");
  EXPECT_TRUE(file.BadLines().empty());
  EXPECT_FALSE(file.IsCutOff());
}

TEST(IniFile, KeepsTheClosingLineLastWhenSectionsWereAddedBehindIt) {
  const IniFile file(kFirst + "[A]\nk=1\n" + kLast + "[B]\nk=2\n");
  EXPECT_FALSE(file.IsCutOff());
  EXPECT_EQ(file.Text(), kFirst + "[A]\nk=1\n[B]\nk=2\n" + EndLine(kCheckOfA + ' ' + kCheckOfB));
}

// --- Changes by others ---

const std::string kOneKeyEach = kFirst + "[A]\nk=1\n[B]\nk=2\n";
const std::string kTheirChecks = EndLine(kCheckOfA + ' ' + kCheckOfB);

TEST(IniFile, TellsWhichSectionsAreNotAsTheyWereWritten) {
  EXPECT_TRUE(IniFile(kOneKeyEach + kTheirChecks).ChangedSections().empty());
  const IniFile value(kFirst + "[A]\nk=1\n[B]\nk=3\n" + kTheirChecks);
  EXPECT_EQ(value.ChangedSections(), std::vector<std::string>{"B"});
  EXPECT_EQ(ValueOf(value, "B", "k"), "3") << "it may have been changed on purpose";
  const IniFile key(kFirst + "[A]\nl=1\n[B]\nk=2\n" + kTheirChecks);
  EXPECT_EQ(key.ChangedSections(), std::vector<std::string>{"A"});
  const IniFile name(kFirst + "[A]\nk=1\n[C]\nk=2\n" + kTheirChecks);
  EXPECT_EQ(name.ChangedSections(), std::vector<std::string>{"C"});
  const IniFile added(kFirst + "[A]\nk=1\n[B]\nk=2\n[D]\nk=2\n" + kTheirChecks);
  EXPECT_EQ(added.ChangedSections(), std::vector<std::string>{"D"});
  EXPECT_EQ(added.MissingSections(), 0);
}

TEST(IniFile, TellsHowManySectionsAreMissing) {
  const IniFile comment(kFirst + "[A]\nk=1\n;B]\nk=2\n" + kTheirChecks);
  EXPECT_EQ(comment.ChangedSections(), std::vector<std::string>{"A"}) << "it got the keys of the other one";
  EXPECT_EQ(comment.MissingSections(), 1);
  const IniFile gone(kFirst + "[B]\nk=2\n" + kTheirChecks);
  EXPECT_TRUE(gone.ChangedSections().empty());
  EXPECT_EQ(gone.MissingSections(), 1);
}

TEST(IniFile, TakesNoOffenceAtWhatChangesNoValue) {
  for (const std::string& text :
       {std::string("[B]\r\nk=2\r\n[A]\r\nk=1\r\n"), std::string("[A]\n k = \"1\"\n; why\n\n[B]\nk=2\n")}) {
    const IniFile file(kFirst + text + kTheirChecks);
    EXPECT_TRUE(file.ChangedSections().empty()) << text;
    EXPECT_EQ(file.MissingSections(), 0) << text;
  }
}

TEST(IniFile, ChecksNothingWhereTheChecksWereTakenOut) {
  const IniFile file(kFirst + "[A]\nk=9\n[C]\nk=2\n" + kLast);
  EXPECT_TRUE(file.ChangedSections().empty());
  EXPECT_EQ(file.MissingSections(), 0);
  EXPECT_FALSE(file.IsCutOff());
}

TEST(IniFile, TrustsNoSectionWhereWhatStandsBehindTheEndIsNoCheck) {
  for (const char* text : {"Check", "checks, to be taken out after an edit by hand: 5FBC0FDA F2052EB7", "x"}) {
    const IniFile file(kOneKeyEach + "; End of settings. " + text + "\n");
    EXPECT_EQ(file.ChangedSections(), (std::vector<std::string>{"A", "B"})) << text;
  }
}

TEST(IniFile, DoesNotTrustASectionWhoseCheckCanNotBeRead) {
  for (const char* check : {"", "0", "zzzzzzzz", "0123456789", "-1234567"}) {
    const IniFile file(kOneKeyEach + EndLine(kCheckOfA + ' ' + check));
    EXPECT_EQ(file.ChangedSections(), std::vector<std::string>{"B"}) << check;
    EXPECT_EQ(file.MissingSections(), 0) << check;
  }
}

}  // namespace
}  // namespace velk
