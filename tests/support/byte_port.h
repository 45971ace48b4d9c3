#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "platform/ports/serial.h"

namespace velk::test {

/// A serial port whose bytes a test lays out. `Feed` puts bytes on the line; `onDry` is called when a read finds none,
/// and may feed more or end the wait.
class BytePort : public SerialPort {
 public:
  explicit BytePort(std::string_view bytes = {}) : bytes_(bytes) {}

  void Open(const SerialSettings&) override { open = true; }
  void Close() override { open = false; }
  bool IsOpen() const override { return open; }
  std::size_t BytesWaiting() const override { return bytes_.size() - at_; }
  std::string Read(std::size_t most) override {
    if (BytesWaiting() == 0 && onDry) onDry();
    const std::size_t count = std::min(most, BytesWaiting());
    at_ += count;
    return bytes_.substr(at_ - count, count);
  }
  std::string Peek() const override { return Rest(); }
  void Write(std::string_view bytes) override {
    if (!open) throw RuntimeError(ErrorNumber::PortNotOpen);
    written.emplace_back(bytes);
    if (onWrite) onWrite();
  }
  void ClearInput() override { at_ = bytes_.size(); }

  void Feed(std::string_view bytes) { bytes_ += bytes; }
  /// Starts again with these bytes waiting.
  void Restart(std::string_view bytes) {
    bytes_ = bytes;
    at_ = 0;
  }
  /// What has not been read yet.
  std::string Rest() const { return bytes_.substr(at_); }

  bool open = true;
  std::vector<std::string> written;
  std::function<void()> onDry;
  std::function<void()> onWrite;

 private:
  std::string bytes_;
  std::size_t at_ = 0;
};

}  // namespace velk::test
