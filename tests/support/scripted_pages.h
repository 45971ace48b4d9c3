#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/pages/page_fetch.h"

namespace velk::test {

/// A networked unit whose page a test writes.
class ScriptedPages : public PageFetch {
 public:
  std::optional<std::string> Fetch(const std::string& address) override {
    if (busy_) return std::nullopt;
    asked.push_back(address);
    cancelledNow_ = false;
    if (meanwhile) {
      const int mine = ++fetch_;
      busy_ = true;
      std::exchange(meanwhile, nullptr)();
      if (mine != fetch_) return std::nullopt;
      busy_ = false;
      if (cancelledNow_) return std::nullopt;
    }
    if (fault) throw PageError(*fault, address);
    return page;
  }
  void Cancel() override {
    ++cancelled;
    cancelledNow_ = true;
  }

  void GiveUp() override {
    ++fetch_;
    busy_ = false;
  }

  std::optional<std::string> page;
  std::optional<PageFault> fault;
  std::vector<std::string> asked;
  std::function<void()> meanwhile;  ///< runs once while a page is being fetched
  int cancelled = 0;

 private:
  int fetch_ = 0;
  bool busy_ = false;
  bool cancelledNow_ = false;
};

}  // namespace velk::test
