#include "platform/opc/ua/ua_group.h"

#include <open62541/client_subscriptions.h>

#include <algorithm>
#include <utility>

namespace velk::ua {

namespace {

constexpr int kFirstPauseMilliseconds = 1000;  ///< and twice as long each time
constexpr int kLastPauseMilliseconds = 30000;

/// How often a subscription publishes: once a minute at least, and with a sign of life each minute. Items of slower
/// groups are looked at as seldom as was asked for all the same. The library takes ten minutes without an answer for a
/// server that is silent.
struct Publishing {
  double interval;
  UA_UInt32 lifeAfter;  ///< intervals
};

Publishing PublishingOf(int updateRate) {
  constexpr int kMostMilliseconds = 60'000;
  constexpr int kMostIntervals = 10;
  const int interval = std::min(updateRate, kMostMilliseconds);
  return {static_cast<double>(interval),
          static_cast<UA_UInt32>(std::clamp(kMostMilliseconds / std::max(interval, 1), 1, kMostIntervals))};
}

}  // namespace

Group::Group(ConnectionPointer connection, const OpcSubscriptionWish& wish)
    : connection_(std::move(connection)), wish_(wish), retry_(connection_->Time().MakeTimer()) {
  connection_->Add(*this);
  retry_->SetHandler([this] {
    if (retry_->Enabled()) Retry();
  });
}

Group::~Group() {
  connection_->Remove(*this);
  if (subscription_ == 0 || !connection_->IsLive()) return;
  UA_DeleteSubscriptionsRequest request;
  UA_DeleteSubscriptionsRequest_init(&request);
  request.subscriptionIds = &subscription_;
  request.subscriptionIdsSize = 1;
  auto pending = Pending<UA_DeleteSubscriptionsResponse>([](OpcStatus, auto*) {});
  if (UA_Client_Subscriptions_delete_async(connection_->Client(), request, TakeAnswer, pending.get(), nullptr) ==
      UA_STATUSCODE_GOOD)
    pending.release();  // NOLINT(bugprone-unused-return-value): TakeAnswer has it
  connection_->Hurry();
}

void Group::WhenMade(OpcDone done) {
  if (subscription_ != 0) return done(kOpcGood);
  whenMade_.push_back(std::move(done));
}

void Group::TellMade(OpcStatus status) {
  for (const OpcDone& done : std::exchange(whenMade_, {})) done(status);
}

void Group::Make() {
  if (!connection_->IsLive()) return TellMade(kOpcNotConnected);
  if (isBeingMade_) return;
  UA_CreateSubscriptionRequest request = UA_CreateSubscriptionRequest_default();
  const Publishing publishing = PublishingOf(wish_.updateRate);
  request.requestedPublishingInterval = publishing.interval;
  request.requestedMaxKeepAliveCount = publishing.lifeAfter;
  request.publishingEnabled = wish_.isActive;
  auto pending = Pending<UA_CreateSubscriptionResponse>(
      [weak = weak_from_this()](OpcStatus status, UA_CreateSubscriptionResponse* response) {
        if (const std::shared_ptr<Group> alive = weak.lock())
          alive->TakeMade(status, response == nullptr ? 0 : response->subscriptionId);
      });
  const UA_StatusCode sent = UA_Client_Subscriptions_create_async(
      connection_->Client(), request, this, TakeStatusChange, nullptr, TakeAnswer, pending.get(), nullptr);
  if (sent != UA_STATUSCODE_GOOD) return TakeMade(sent, 0);
  pending.release();  // NOLINT(bugprone-unused-return-value): TakeAnswer has it
  isBeingMade_ = true;
  connection_->Hurry();
}

void Group::TakeMade(OpcStatus status, UA_UInt32 subscription) {
  isBeingMade_ = false;
  subscription_ = subscription;
  for (const std::int32_t handle : Handles()) {
    if (subscription != 0) {
      WatchAgain(handle);
    } else {
      NoteMissing(handle);
    }
  }
  if (subscription == 0) TryLater();
  TellMade(status);
}

void Group::TryLater() {
  if (connection_->IsLive() && !retry_->Enabled()) retry_->SetEnabled(true);
}

void Group::Retry() {
  retry_->SetEnabled(false);
  retry_->SetInterval(std::min(2 * retry_->Interval(), kLastPauseMilliseconds));
  if (subscription_ == 0) return Make();
  for (const std::int32_t handle : Handles()) {
    const Item& item = items_.at(handle);
    if (item.monitored == 0 && !item.isAsked) WatchAgain(handle);
  }
}

std::vector<std::int32_t> Group::Handles() const {
  std::vector<std::int32_t> handles;
  handles.reserve(items_.size());
  for (const auto& [handle, item] : items_) handles.push_back(handle);
  return handles;
}

void Group::OnLive() {
  retry_->SetInterval(kFirstPauseMilliseconds);
  Make();
}

void Group::OnLost() {
  retry_->SetEnabled(false);
  isBeingMade_ = false;
  subscription_ = 0;
  for (auto& [handle, item] : items_) {
    item.monitored = 0;
    item.isAsked = false;
  }
}

void Group::SetUpdateRate(int milliseconds, const OpcDone& done) {
  if (milliseconds < 0) return done(kOpcOutOfRange);
  if (subscription_ == 0) return done(kOpcNotConnected);
  UA_ModifySubscriptionRequest request;
  UA_ModifySubscriptionRequest_init(&request);
  const Publishing publishing = PublishingOf(milliseconds);
  request.subscriptionId = subscription_;
  request.requestedPublishingInterval = publishing.interval;
  request.requestedLifetimeCount = UA_CreateSubscriptionRequest_default().requestedLifetimeCount;
  request.requestedMaxKeepAliveCount = publishing.lifeAfter;
  auto pending =
      Pending<UA_ModifySubscriptionResponse>([weak = weak_from_this(), milliseconds, done](OpcStatus status, auto*) {
        const std::shared_ptr<Group> alive = weak.lock();
        if (!alive) return;
        if (!IsGood(status)) return done(status);
        alive->wish_.updateRate = milliseconds;
        alive->WatchAnew(false, done);
      });
  const UA_StatusCode sent =
      UA_Client_Subscriptions_modify_async(connection_->Client(), request, TakeAnswer, pending.get(), nullptr);
  if (sent != UA_STATUSCODE_GOOD) return done(sent);
  pending.release();  // NOLINT(bugprone-unused-return-value): TakeAnswer has it
  connection_->Hurry();
}

void Group::SetDeadBand(float percent, const OpcDone& done) {
  if (!(percent >= 0 && percent <= 100)) return done(kOpcOutOfRange);
  if (subscription_ == 0) return done(kOpcNotConnected);
  wish_.deadBand = percent;
  WatchAnew(true, done);
}

/// How often an item is looked at and its deadband are its own, and not the subscription's.
void Group::WatchAnew(bool rangedOnly, const OpcDone& done) {
  std::vector<UA_UInt32> old;
  std::vector<std::int32_t> handles;
  for (auto& [handle, item] : items_) {
    if (item.monitored == 0 || (rangedOnly && !item.answer.hasRange)) continue;
    old.push_back(std::exchange(item.monitored, 0));
    handles.push_back(handle);
  }
  if (handles.empty()) return done(kOpcGood);
  const auto left = std::make_shared<std::size_t>(handles.size());
  for (const std::int32_t handle : handles) {
    Watch(handle, [weak = weak_from_this(), handle, left, done](OpcStatus status) {
      const std::shared_ptr<Group> alive = weak.lock();
      if (alive && !IsGood(status)) alive->NoteMissing(handle);
      if (--*left == 0) done(kOpcGood);
    });
  }
  Unwatch(std::move(old));
}

void Group::SetActive(bool active, OpcDone done) {
  if (subscription_ == 0) return done(kOpcNotConnected);
  UA_SetPublishingModeRequest request;
  UA_SetPublishingModeRequest_init(&request);
  request.publishingEnabled = active;
  request.subscriptionIds = &subscription_;
  request.subscriptionIdsSize = 1;
  connection_->Call<UA_SetPublishingModeResponse>(
      &request, UA_TYPES_SETPUBLISHINGMODEREQUEST, UA_TYPES_SETPUBLISHINGMODERESPONSE,
      [weak = weak_from_this(), active, done = std::move(done)](OpcStatus status, auto* response) {
        const std::shared_ptr<Group> alive = weak.lock();
        if (!alive) return;
        if (response != nullptr && response->resultsSize == 1) status = response->results[0];
        if (IsGood(status)) alive->wish_.isActive = active;
        done(status);
      });
}

}  // namespace velk::ua
