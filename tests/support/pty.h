#pragma once

#include <fcntl.h>
#include <poll.h>
#include <stdlib.h>
#include <unistd.h>

#include <string>
#include <string_view>

namespace velk::test {

/// The device's side of a pseudo-terminal; the program under test opens Device() as its serial port.
class Pty {
 public:
  Pty() {
    master_ = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    grantpt(master_);
    unlockpt(master_);
    device_ = ptsname(master_);
  }
  ~Pty() { HangUp(); }
  Pty(const Pty&) = delete;
  Pty& operator=(const Pty&) = delete;

  const std::string& Device() const { return device_; }

  /// Bytes that the terminal took; fewer than given when its buffer is full.
  std::size_t Send(std::string_view bytes) {
    const ssize_t sent = write(master_, bytes.data(), bytes.size());
    return sent > 0 ? static_cast<std::size_t>(sent) : 0;
  }

  /// What the program has written so far.
  std::string Received() {
    std::string text(4096, '\0');
    const ssize_t count = read(master_, text.data(), text.size());
    text.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
    return text;
  }

  void HangUp() {
    if (master_ >= 0) close(master_);
    master_ = -1;
  }

 private:
  int master_ = -1;
  std::string device_;
};

}  // namespace velk::test
