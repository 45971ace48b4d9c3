#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/page_fetch.h"

namespace velk::test {

/// A networked unit whose page a test writes.
class ScriptedPages : public PageFetch {
 public:
  std::optional<std::string> Fetch(const std::string& address) override {
    asked.push_back(address);
    if (fault) throw PageError(*fault, address);
    return page;
  }
  void Cancel() override { ++cancelled; }

  std::optional<std::string> page;
  std::optional<PageFault> fault;
  std::vector<std::string> asked;
  int cancelled = 0;
};

}  // namespace velk::test
