#pragma once

#include <algorithm>
#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "platform/opc/opc_transport.h"

namespace velk::test {

/// Servers of a test's own, in memory. Each call is answered at once, unless `isSilent`; `failures` are handed out one
/// a call.
class FakeOpc : public OpcTransport {
 public:
  struct Item {
    OpcItemWish wish;
    std::int32_t serverHandle = 0;
  };

  /// What a subscription is at the server.
  struct Group {
    OpcSubscriptionWish wish;
    OpcSubscription::Changes handler;
    std::vector<Item> items;
  };

  void FindServers(const std::string& host, Servers done) override {
    hosts.push_back(host);
    Answer([this, done = std::move(done)](OpcStatus status) { done(status, servers); });
  }

  void Connect(const OpcPlace& place, Connected done) override;

  /// A value of an item comes, to each group that has it.
  void Report(const std::string& id, const OpcValue& value, std::int32_t quality = kOpcQualityGood, double time = 1) {
    for (Group* const group : groups) {
      for (const Item& item : std::vector(group->items)) {
        if (item.wish.id != id) continue;
        const OpcChange change{item.wish.clientHandle, value, quality, time};
        group->handler(std::span(&change, 1));
      }
    }
  }

  /// Gives the answers that were held back.
  void AnswerLate() {
    isSilent = false;
    // What is asked behind an answer waits for the next time.
    for (std::deque<OpcDone> held = std::exchange(held_, {}); !held.empty(); held.pop_front()) held.front()(kOpcGood);
  }

  std::size_t Held() const { return held_.size(); }

  std::vector<OpcServerEntry> servers;
  OpcServerStatus serverStatus;
  std::map<std::string, std::vector<OpcNode>> folders;  ///< by their identifiers; "" is the root
  std::map<std::string, OpcItemAnswer> known;           ///< items that can be added
  std::deque<OpcStatus> failures;                       ///< of the next calls; kOpcGood lets one pass
  bool isSilent = false;
  bool holdsAdditions = false;  ///< the answers to Add come by AnswerLate
  std::size_t pageSize = 2;
  std::optional<OpcValue> firstValue;  ///< comes right behind the answer to Add

  std::vector<std::string> hosts;
  std::vector<OpcPlace> places;
  std::vector<std::string> ended;  ///< "group A" and "session", in the order in which they went
  std::vector<Group*> groups;
  std::vector<std::pair<std::int32_t, OpcValue>> writes;
  OpcSessionEvents events;
  int browses = 0;

 private:
  class Subscription;
  class Session;

  void Answer(OpcDone answer, bool isHeld = false) {
    if (isSilent || isHeld) {
      held_.push_back(std::move(answer));
      return;
    }
    OpcStatus status = kOpcGood;
    if (!failures.empty()) {
      status = failures.front();
      failures.pop_front();
    }
    answer(status);
  }

  std::deque<OpcDone> held_;
  std::int32_t lastServerHandle_ = 1000;
};

class FakeOpc::Subscription : public OpcSubscription {
 public:
  Subscription(FakeOpc& opc, const OpcSubscriptionWish& wish) : opc_(opc) {
    group_.wish = wish;
    if (wish.name.empty()) group_.wish.name = "Named by the server";
    opc_.groups.push_back(&group_);
  }
  ~Subscription() override {
    std::erase(opc_.groups, &group_);
    opc_.ended.push_back("group " + group_.wish.name);
  }

  const std::string& Name() const override { return group_.wish.name; }
  void SetHandler(Changes handler) override { group_.handler = std::move(handler); }
  void SetUpdateRate(int milliseconds, OpcDone done) override { Set(group_.wish.updateRate, milliseconds, done); }
  void SetDeadBand(float percent, OpcDone done) override { Set(group_.wish.deadBand, percent, done); }
  void SetActive(bool active, OpcDone done) override { Set(group_.wish.isActive, active, done); }

  void Add(const OpcItemWish& item, Added done) override {
    const auto add = [this, item, done = std::move(done)](OpcStatus status) {
      const auto found = opc_.known.find(item.id);
      if (IsGood(status) && found == opc_.known.end()) status = kOpcUnknownId;
      if (!IsGood(status)) return done({.status = status});
      OpcItemAnswer answer = found->second;
      answer.serverHandle = ++opc_.lastServerHandle_;
      group_.items.push_back({item, answer.serverHandle});
      done(answer);
      if (opc_.firstValue) opc_.Report(item.id, *opc_.firstValue);
    };
    opc_.Answer(add, opc_.holdsAdditions);
  }

  void Remove(std::int32_t serverHandle, OpcDone done) override {
    opc_.Answer([this, serverHandle, done = std::move(done)](OpcStatus status) {
      if (IsGood(status))
        std::erase_if(group_.items, [&](const Item& item) { return item.serverHandle == serverHandle; });
      done(status);
    });
  }

  void SetItemActive(std::int32_t serverHandle, bool active, OpcDone done) override {
    opc_.Answer([this, serverHandle, active, done = std::move(done)](OpcStatus status) {
      for (Item& item : group_.items) {
        if (IsGood(status) && item.serverHandle == serverHandle) item.wish.isActive = active;
      }
      done(status);
    });
  }

  void Write(std::int32_t serverHandle, const OpcValue& value, OpcDone done) override {
    opc_.writes.emplace_back(serverHandle, value);
    opc_.Answer(std::move(done));
  }

 private:
  template <class Value>
  void Set(Value& kept, Value value, OpcDone& done) {
    opc_.Answer([&kept, value, done = std::move(done)](OpcStatus status) {
      if (IsGood(status)) kept = value;
      done(status);
    });
  }

  FakeOpc& opc_;
  Group group_;
};

class FakeOpc::Session : public OpcSession {
 public:
  explicit Session(FakeOpc& opc) : opc_(opc) {}
  ~Session() override { opc_.ended.emplace_back("session"); }

  void SetEvents(OpcSessionEvents told) override { opc_.events = std::move(told); }
  bool IsLive() const override { return true; }
  void ReadStatus(Status done) override {
    opc_.Answer([this, done = std::move(done)](OpcStatus status) { done(status, opc_.serverStatus); });
  }

  void Browse(const std::string& nodeId, Pages page) override {
    ++opc_.browses;
    opc_.Answer([this, nodeId, page = std::move(page)](OpcStatus status) {
      if (!IsGood(status)) return page({.status = status});
      const std::vector<OpcNode>& all = opc_.folders[nodeId];
      for (std::size_t first = 0;; first += opc_.pageSize) {
        const std::size_t end = std::min(first + opc_.pageSize, all.size());
        OpcPage part;
        part.nodes.assign(all.begin() + static_cast<std::ptrdiff_t>(first),
                          all.begin() + static_cast<std::ptrdiff_t>(end));
        part.isLast = end == all.size();
        page(part);
        if (part.isLast) return;
      }
    });
  }

  void Validate(const OpcItemWish& item, Validated done) override {
    opc_.Answer([this, item, done = std::move(done)](OpcStatus status) {
      const auto found = opc_.known.find(item.id);
      OpcItemAnswer answer = found == opc_.known.end() ? OpcItemAnswer{.status = kOpcUnknownId} : found->second;
      if (!IsGood(status)) answer.status = status;
      done(answer);
    });
  }

  std::unique_ptr<OpcSubscription> Subscribe(const OpcSubscriptionWish& wish, OpcDone done) override {
    auto subscription = std::make_unique<Subscription>(opc_, wish);
    opc_.Answer(std::move(done));
    return subscription;
  }

 private:
  FakeOpc& opc_;
};

inline void FakeOpc::Connect(const OpcPlace& place, Connected done) {
  places.push_back(place);
  Answer([this, done = std::move(done)](OpcStatus status) {
    done(status, IsGood(status) ? std::make_unique<Session>(*this) : nullptr);
  });
}

}  // namespace velk::test
