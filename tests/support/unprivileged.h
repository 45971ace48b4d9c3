#pragma once

#include <unistd.h>

namespace velk::test {

/// Gives up root's right to write everywhere for a scope, where the tests run as root.
class Unprivileged {
 public:
  Unprivileged() : root_(geteuid() == 0) {
    if (root_ && seteuid(kNobody) != 0) root_ = false;
  }
  ~Unprivileged() {
    if (root_ && seteuid(0) != 0) _exit(1);
  }
  Unprivileged(const Unprivileged&) = delete;
  Unprivileged& operator=(const Unprivileged&) = delete;

 private:
  static constexpr uid_t kNobody = 65534;
  bool root_;
};

}  // namespace velk::test
