#pragma once

#include <utility>

namespace velk {

/// Runs something when the scope that it stands in is left, whatever the way: by its end, a return or an error. The
/// work itself must not throw.
///
///   const OnLeaving done([&] { busy = false; });
template <class F>
class OnLeaving {
 public:
  explicit OnLeaving(F work) : work_(std::move(work)) {}
  ~OnLeaving() { work_(); }
  OnLeaving(const OnLeaving&) = delete;
  OnLeaving& operator=(const OnLeaving&) = delete;

 private:
  F work_;
};

}  // namespace velk
