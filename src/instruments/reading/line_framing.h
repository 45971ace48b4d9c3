#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace velk {

/// Cuts the bytes of a serial port into lines at their terminator. All bytes are kept as they came, zero, control and
/// 8-bit ones too. The lines are the same however the bytes are split among calls of Append.
class LineFraming {
 public:
  /// Bytes of a line ahead of its terminator. A longer one is dropped up to and with its terminator, so that a line
  /// that never ends holds no memory.
  static constexpr std::size_t kLongestLine = 64 * 1024;

  /// Starts anew with this terminator; an empty one counts as CR.
  void Reset(std::string_view terminator);

  void Append(std::string_view bytes);

  bool HasLine() const { return end_ != std::string::npos; }
  /// The oldest line, terminator included. Only while HasLine().
  std::string TakeLine();

  /// Drops the bytes behind the last whole line: what was cut off will not be continued.
  void DropUnfinished();

  /// Bytes held.
  std::size_t Size() const { return bytes_.size() - start_; }

 private:
  void FindEnd();
  void SkipTo(std::size_t position);

  std::string bytes_;
  std::string terminator_ = "\r";
  std::size_t start_ = 0;                ///< of the oldest line
  std::size_t searched_ = 0;             ///< no terminator begins ahead of here
  std::size_t end_ = std::string::npos;  ///< behind the terminator of the oldest line
  bool dropping_ = false;                ///< inside a line that is too long
};

}  // namespace velk
