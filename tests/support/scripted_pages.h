#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/pages/page_fetch.h"

namespace velk::test {

/// A networked unit whose page a test writes; it comes with the next events.
class ScriptedPages : public PageFetch {
 public:
  explicit ScriptedPages(Clock& clock) : clock_(clock) {}

  void Begin(const std::string& address, Done done) override {
    asked.push_back(address);
    done_ = std::move(done);
    if (meanwhile) clock_.Post(std::exchange(meanwhile, nullptr));
    clock_.Post([this, alive = std::weak_ptr<char>(alive_), fetch = ++fetch_, address] {
      if (!alive.expired() && fetch == fetch_) Answer(address);
    });
  }
  bool IsUnderWay() const override { return done_ != nullptr; }
  void Cancel() override {
    ++cancelled;
    ++fetch_;
    done_ = nullptr;
  }

  std::optional<std::string> page;  ///< where there is none the fetch ends without a word
  std::optional<PageFault> fault;
  std::vector<std::string> asked;
  std::function<void()> meanwhile;  ///< runs once while a page is being fetched
  int cancelled = 0;

 private:
  void Answer(const std::string& address) {
    const Done done = std::exchange(done_, nullptr);
    if (fault)
      done({{}, PageError(*fault, address)});
    else if (page)
      done({*page, {}});
  }

  Clock& clock_;
  Done done_;
  int fetch_ = 0;
  std::shared_ptr<char> alive_ = std::make_shared<char>();
};

}  // namespace velk::test
