#pragma once

namespace velk {

/// Sets a flag for a scope.
class Under {
 public:
  explicit Under(bool& flag) : flag_(flag) { flag_ = true; }
  ~Under() { flag_ = false; }
  Under(const Under&) = delete;
  Under& operator=(const Under&) = delete;

 private:
  bool& flag_;
};

}  // namespace velk
