#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "exchange/csv_shape.h"
#include "exchange/text_encoding.h"
#include "platform/files/input_file.h"

namespace velk {

/// A text file of any length as numbered lines. Where they begin is noted a piece at a time, one place for many lines;
/// lines are read when they are looked at.
class CsvFile {
 public:
  /// Opens a file and analyses its first line. `step` is told how many bytes of a file that has to be copied first are
  /// done; it may throw. Raises what keeps the file from being read.
  CsvFile(const std::string& path, CodePage page, const std::function<void(double done, double of)>& step = {});

  const std::string& Path() const { return file_.Path(); }
  const CsvShape& Shape() const { return shape_; }
  const InputFile& Bytes() const { return file_; }
  CodePage Page() const { return page_; }
  /// Where the lines begin, behind the mark of the text.
  std::int64_t TextStart() const { return start_; }

  /// Notes the lines of so many more bytes; false once all are.
  bool Index(std::int64_t bytes);
  bool IsIndexed() const { return indexed_ >= file_.Size(); }
  double IndexedBytes() const { return static_cast<double>(indexed_); }
  /// Lines that are known, as far as the last one that isn't blank.
  std::int64_t Lines() const { return lines_; }

  /// A line that is known, counted from 0, as UTF-8.
  const std::string& Line(std::int64_t line);

 private:
  /// Lines that were read together: those from one noted place to the next.
  struct Block {
    std::int64_t number = -1;
    std::vector<std::string> lines;
  };
  const Block& BlockOf(std::int64_t number);

  InputFile file_;
  CodePage page_;
  std::int64_t start_ = 0;
  CsvShape shape_;
  std::int64_t indexed_ = 0;  ///< bytes
  std::int64_t found_ = 0;    ///< lines, blank ones at the end too
  std::int64_t lines_ = 0;
  std::vector<std::int64_t> places_;  ///< of the first line of each block
  std::array<Block, 8> blocks_;       ///< by the number modulo their count
};

}  // namespace velk
