#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "platform/files/input_file.h"

namespace velk {

/// The lines of a file one after the other. A line ends with LF, CR LF or CR; the last one may have no end. One of more
/// than kMostLine bytes is given in pieces: a file that is no text can't fill the memory.
class LineReader {
 public:
  static constexpr std::size_t kMostLine = 1 << 20;

  /// Begins at a place of the file, which outlives it: the front, or where a line begins.
  explicit LineReader(const InputFile& file, std::int64_t from = 0);

  /// Goes to the next line; false behind the last one. Raises DeviceIOError.
  bool Next();
  /// The present line without its end, until the next move.
  std::string_view Line() const { return line_; }
  /// Where the present line begins, and where the next one does.
  std::int64_t Start() const { return start_; }
  std::int64_t End() const { return base_ + static_cast<std::int64_t>(begin_); }

 private:
  void Fill();
  void Take(std::size_t end, std::size_t ending);

  const InputFile& file_;
  std::vector<char> buffer_;
  std::int64_t base_;       ///< place of the buffer's first byte in the file
  std::int64_t start_;      ///< of the present line
  std::size_t begin_ = 0;   ///< of what was not given yet, in the buffer
  std::size_t filled_ = 0;  ///< bytes in the buffer
  std::size_t feed_ = 0;    ///< the first LF from begin_ on, or filled_
  bool searched_ = false;   ///< feed_ is known
  bool atEnd_ = false;      ///< the file has no more
  std::string_view line_;
};

}  // namespace velk
