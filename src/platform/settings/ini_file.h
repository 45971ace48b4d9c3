#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace velk {

/// The text of a settings file taken apart into sections and keys, and put together again. Lines that are not
/// changed, and comments, come back byte for byte.
///
///   ; VELK settings            a line that begins with ";" or "#" is a comment
///   [Parameter1]               a section; its name in quotes where it holds "]" or blanks at an end
///   format=#0.0000             everything behind the first "=", blanks at both ends aside
///   Terminator="\r"            in quotes: \\ \" \r \n \t and \xHH for any byte
///
/// Bare text is valid UTF-8 without control characters. Where a key stands twice in a section, the last one counts.
///
/// The closing comment has a check number for each section, by which a section that somebody else changed is found: a
/// damaged byte often leaves a text that can be read well. Comments, blanks and the order of sections don't count. Who
/// edits a file by hand takes the numbers out.
class IniFile {
 public:
  IniFile() = default;
  /// Never fails: what can't be read is left out and told by BadLines and IsCutOff. Keys under a header that can't be
  /// read are left out too, since nobody knows whose they are.
  explicit IniFile(std::string_view bytes);

  /// The whole file. Ends with a line that tells a whole file from one that was cut off.
  std::string Text() const;

  /// The value of a key, or null.
  const std::string* Find(std::string_view section, std::string_view key) const;
  /// Gives whether that changed anything.
  bool Set(std::string_view section, std::string_view key, std::string_view value);
  /// Takes away a section with its comments; gives whether it was there.
  bool Delete(std::string_view section);
  /// Makes a section what it is in `other`, with its comments; there is none where that has none.
  void TakeOver(const IniFile& other, std::string_view section);
  /// No section and no line is left.
  bool IsEmpty() const;

  /// The last line has no end, as editors leave it, and was used. Where it may be half a value, since the end of the
  /// file is missing too, it is a bad line.
  bool IsLastLineOpen() const { return lastLineOpen_; }
  /// Numbers of the lines that could not be read, counted from 1.
  const std::vector<int>& BadLines() const { return badLines_; }
  /// The file was written by this program and its end is missing.
  bool IsCutOff() const { return cutOff_; }
  /// Sections that are not as they were written; nothing where the file has no checks.
  const std::vector<std::string>& ChangedSections() const { return changedSections_; }
  /// How many sections are there no more, at least.
  int MissingSections() const { return missingSections_; }

 private:
  struct Line {
    std::string raw;  ///< as it stands in the file, without the line feed
    bool hasKey = false;
    std::string key;
    std::string value;
  };
  struct Section {
    std::string header;
    std::vector<Line> lines;
  };
  struct Reading;

  void ReadLine(std::string_view raw, Reading& reading);
  void ReadOpenLine(std::string_view line, Reading& reading);
  /// Gives whether the line is the closing one.
  static bool ReadEndLine(std::string_view line, Reading& reading);
  void CompareChecks(const Reading& reading);
  /// Name and check of each section, in their order.
  std::vector<std::pair<std::string_view, std::string>> ChecksOfSections() const;
  const Section* FindSection(std::string_view name) const;
  /// Gives the index of the section, which may have been there.
  std::size_t AddSection(std::string_view name, std::string header);

  std::vector<Line> preamble_;  ///< comments ahead of the first section
  std::vector<Section> sections_;
  std::map<std::string, std::size_t, std::less<>> indexOf_;
  std::vector<int> badLines_;
  bool lastLineOpen_ = false;
  bool cutOff_ = false;
  std::vector<std::string> changedSections_;
  int missingSections_ = 0;
};

}  // namespace velk
