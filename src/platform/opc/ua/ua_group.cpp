#include "platform/opc/ua/ua_group.h"

#include <open62541/client_subscriptions.h>

#include <utility>

#include "platform/opc/ua/ua_values.h"

namespace velk::ua {

namespace {

using NodeId = Owned<UA_NodeId>;

void Ignore(OpcStatus) {
}

/// An answer of the library's own functions for subscriptions, as Connection::Call hands it on.
template <class Response>
std::unique_ptr<PendingCall> Pending(std::function<void(OpcStatus, Response*)> done) {
  auto pending = std::make_unique<PendingCall>();
  pending->done = [done = std::move(done)](OpcStatus status, void* response) {
    done(status, IsGood(status) ? static_cast<Response*>(response) : nullptr);
  };
  return pending;
}

/// The pointer that a callback of an item is handed: its handle, since the item may go first.
void* ContextOf(std::int32_t serverHandle) {
  return reinterpret_cast<void*>(static_cast<std::intptr_t>(serverHandle));  // NOLINT
}

std::int32_t HandleOf(void* context) {
  return static_cast<std::int32_t>(reinterpret_cast<std::intptr_t>(context));  // NOLINT
}

}  // namespace

Group::Group(ConnectionPointer connection, const OpcSubscriptionWish& wish)
    : connection_(std::move(connection)), wish_(wish) {
  connection_->Add(*this);
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
  UA_CreateSubscriptionRequest request = UA_CreateSubscriptionRequest_default();
  request.requestedPublishingInterval = wish_.updateRate;
  request.publishingEnabled = wish_.isActive;
  auto pending = Pending<UA_CreateSubscriptionResponse>(
      [weak = weak_from_this()](OpcStatus status, UA_CreateSubscriptionResponse* response) {
        const std::shared_ptr<Group> alive = weak.lock();
        if (!alive) return;
        if (response != nullptr) {
          alive->subscription_ = response->subscriptionId;
          for (const auto& [handle, item] : alive->items_) alive->WatchAgain(handle);
        }
        alive->TellMade(status);
      });
  const UA_StatusCode sent = UA_Client_Subscriptions_create_async(connection_->Client(), request, this, nullptr,
                                                                  nullptr, TakeAnswer, pending.get(), nullptr);
  if (sent != UA_STATUSCODE_GOOD) return TellMade(sent);
  pending.release();  // NOLINT(bugprone-unused-return-value): TakeAnswer has it
  connection_->Hurry();
}

void Group::OnLost() {
  subscription_ = 0;
  for (auto& [handle, item] : items_) item.monitored = 0;
}

void Group::SetUpdateRate(int milliseconds, const OpcDone& done) {
  if (milliseconds < 0) return done(kOpcOutOfRange);
  if (subscription_ == 0) return done(kOpcNotConnected);
  UA_ModifySubscriptionRequest request;
  UA_ModifySubscriptionRequest_init(&request);
  const UA_CreateSubscriptionRequest usual = UA_CreateSubscriptionRequest_default();
  request.subscriptionId = subscription_;
  request.requestedPublishingInterval = milliseconds;
  request.requestedLifetimeCount = usual.requestedLifetimeCount;
  request.requestedMaxKeepAliveCount = usual.requestedMaxKeepAliveCount;
  auto pending =
      Pending<UA_ModifySubscriptionResponse>([weak = weak_from_this(), milliseconds, done](OpcStatus status, auto*) {
        const std::shared_ptr<Group> alive = weak.lock();
        if (!alive) return;
        if (IsGood(status)) alive->wish_.updateRate = milliseconds;
        done(status);
      });
  const UA_StatusCode sent =
      UA_Client_Subscriptions_modify_async(connection_->Client(), request, TakeAnswer, pending.get(), nullptr);
  if (sent != UA_STATUSCODE_GOOD) return done(sent);
  pending.release();  // NOLINT(bugprone-unused-return-value): TakeAnswer has it
  connection_->Hurry();
}

/// Items with a range are watched anew, since a deadband is theirs and not the subscription's.
void Group::SetDeadBand(float percent, const OpcDone& done) {
  if (!(percent >= 0 && percent <= 100)) return done(kOpcOutOfRange);
  if (subscription_ == 0) return done(kOpcNotConnected);
  wish_.deadBand = percent;
  std::vector<UA_UInt32> old;
  for (auto& [handle, item] : items_) {
    if (!item.answer.hasRange || item.monitored == 0) continue;
    old.push_back(std::exchange(item.monitored, 0));
    Watch(handle, Ignore);
  }
  if (!old.empty()) {
    UA_DeleteMonitoredItemsRequest request;
    UA_DeleteMonitoredItemsRequest_init(&request);
    request.subscriptionId = subscription_;
    request.monitoredItemIds = old.data();
    request.monitoredItemIdsSize = old.size();
    auto pending = Pending<UA_DeleteMonitoredItemsResponse>([](OpcStatus, auto*) {});
    if (UA_Client_MonitoredItems_delete_async(connection_->Client(), request, TakeAnswer, pending.get(), nullptr) ==
        UA_STATUSCODE_GOOD)
      pending.release();  // NOLINT(bugprone-unused-return-value): TakeAnswer has it
  }
  done(kOpcGood);
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

void Group::Describe(const ConnectionPointer& connection, const OpcItemWish& wish,
                     std::function<void(const OpcItemAnswer&, const std::string& node, const std::string& type)> done) {
  const std::weak_ptr<Connection> weak = connection;
  ResolveItem(connection, wish.id, [weak, wish, done = std::move(done)](OpcStatus found, const std::string& node) {
    const ConnectionPointer alive = weak.lock();
    if (!IsGood(found) || !alive) return done({.status = found}, {}, {});
    ReadTraits(alive, {node}, [weak, wish, node, done](OpcStatus status, const std::vector<Traits>& all) {
      if (IsGood(status)) status = all.at(0).status;
      if (!IsGood(status)) return done({.status = status}, {}, {});
      const Traits& traits = all.at(0);
      if (!traits.hasType || !CanConvert(traits.type, wish.type)) return done({.status = kOpcTypeMismatch}, {}, {});
      const ConnectionPointer still = weak.lock();
      if (!still) return;
      ReadHasRange(still, node, [node, traits, done](bool hasRange) {
        OpcItemAnswer answer;
        answer.canonicalType = traits.type;
        answer.isReadable = traits.isReadable;
        answer.isWritable = traits.isWritable;
        answer.hasRange = hasRange;
        done(answer, node, traits.dataType);
      });
    });
  });
}

void Group::AddItem(const std::shared_ptr<ItemOwner>& owner, const OpcItemWish& wish, OpcSubscription::Added done) {
  if (subscription_ == 0) return done({.status = kOpcNotConnected});
  Describe(connection_, wish,
           [weak = weak_from_this(), owner = std::weak_ptr(owner), wish, done = std::move(done)](
               OpcItemAnswer answer, const std::string& node, const std::string& type) {
             const std::shared_ptr<Group> alive = weak.lock();
             if (!alive || owner.expired()) return;
             if (!IsGood(answer.status)) return done(answer);
             answer.serverHandle = ++alive->lastHandle_;
             alive->items_[answer.serverHandle] = {owner, wish, answer, node, type};
             alive->Watch(answer.serverHandle, [weak, answer, done](OpcStatus status) mutable {
               const std::shared_ptr<Group> still = weak.lock();
               if (!IsGood(status) && still) still->items_.erase(answer.serverHandle);
               answer.status = status;
               done(answer);
             });
           });
}

void Group::Watch(std::int32_t serverHandle, const OpcDone& done) {
  const Item& item = items_.at(serverHandle);
  NodeId node(UA_TYPES[UA_TYPES_NODEID]);
  UA_NodeId_parse(&*node, ViewOf(item.node));
  UA_MonitoredItemCreateRequest what = UA_MonitoredItemCreateRequest_default(*node);
  what.requestedParameters.samplingInterval = wish_.updateRate;
  what.monitoringMode = item.wish.isActive ? UA_MONITORINGMODE_REPORTING : UA_MONITORINGMODE_DISABLED;
  UA_DataChangeFilter filter;
  UA_DataChangeFilter_init(&filter);
  filter.trigger = UA_DATACHANGETRIGGER_STATUSVALUE;
  filter.deadbandType = UA_DEADBANDTYPE_PERCENT;
  filter.deadbandValue = wish_.deadBand;
  if (wish_.deadBand > 0 && item.answer.hasRange)
    UA_ExtensionObject_setValueNoDelete(&what.requestedParameters.filter, &filter,
                                        &UA_TYPES[UA_TYPES_DATACHANGEFILTER]);
  UA_CreateMonitoredItemsRequest request;
  UA_CreateMonitoredItemsRequest_init(&request);
  request.subscriptionId = subscription_;
  request.timestampsToReturn = UA_TIMESTAMPSTORETURN_BOTH;
  request.itemsToCreate = &what;
  request.itemsToCreateSize = 1;
  auto pending = Pending<UA_CreateMonitoredItemsResponse>(
      [weak = weak_from_this(), serverHandle, done](OpcStatus status, UA_CreateMonitoredItemsResponse* response) {
        const std::shared_ptr<Group> alive = weak.lock();
        if (!alive) return;
        if (response != nullptr && response->resultsSize == 1) status = response->results[0].statusCode;
        const auto found = alive->items_.find(serverHandle);
        if (found != alive->items_.end() && response != nullptr && IsGood(status))
          found->second.monitored = response->results[0].monitoredItemId;
        done(status);
      });
  void* context = ContextOf(serverHandle);
  UA_Client_DataChangeNotificationCallback callback = TakeNotification;
  const UA_StatusCode sent = UA_Client_MonitoredItems_createDataChanges_async(
      connection_->Client(), request, &context, &callback, nullptr, TakeAnswer, pending.get(), nullptr);
  if (sent != UA_STATUSCODE_GOOD) return done(sent);
  pending.release();  // NOLINT(bugprone-unused-return-value): TakeAnswer has it
  connection_->Hurry();
}

/// A server that is back may have no such node any more: its item is told to be bad, without a value.
void Group::WatchAgain(std::int32_t serverHandle) {
  Watch(serverHandle, [weak = weak_from_this(), serverHandle](OpcStatus status) {
    const std::shared_ptr<Group> alive = weak.lock();
    if (!alive || IsGood(status)) return;
    const auto found = alive->items_.find(serverHandle);
    if (found == alive->items_.end()) return;
    if (const std::shared_ptr<ItemOwner> owner = found->second.owner.lock())
      alive->Tell(owner, {.clientHandle = found->second.wish.clientHandle, .value = {}, .timeStamp = 0});
  });
}

void Group::RemoveItem(std::int32_t serverHandle, const OpcDone& done) {
  const auto found = items_.find(serverHandle);
  if (found == items_.end()) return done(kOpcUnknownItem);
  UA_UInt32 monitored = found->second.monitored;
  // Where the server has none of it, none is left.
  if (monitored == 0 || !connection_->IsLive()) {
    items_.erase(found);
    return done(kOpcGood);
  }
  UA_DeleteMonitoredItemsRequest request;
  UA_DeleteMonitoredItemsRequest_init(&request);
  request.subscriptionId = subscription_;
  request.monitoredItemIds = &monitored;
  request.monitoredItemIdsSize = 1;
  auto pending = Pending<UA_DeleteMonitoredItemsResponse>(
      [weak = weak_from_this(), serverHandle, done](OpcStatus status, UA_DeleteMonitoredItemsResponse* response) {
        const std::shared_ptr<Group> alive = weak.lock();
        if (!alive) return;
        if (response != nullptr && response->resultsSize == 1) status = response->results[0];
        if (IsGood(status)) alive->items_.erase(serverHandle);
        done(status);
      });
  const UA_StatusCode sent =
      UA_Client_MonitoredItems_delete_async(connection_->Client(), request, TakeAnswer, pending.get(), nullptr);
  if (sent != UA_STATUSCODE_GOOD) return done(sent);
  pending.release();  // NOLINT(bugprone-unused-return-value): TakeAnswer has it
  connection_->Hurry();
}

void Group::SetItemActive(std::int32_t serverHandle, bool active, OpcDone done) {
  const auto found = items_.find(serverHandle);
  if (found == items_.end()) return done(kOpcUnknownItem);
  if (found->second.monitored == 0) return done(kOpcNotConnected);
  UA_SetMonitoringModeRequest request;
  UA_SetMonitoringModeRequest_init(&request);
  request.subscriptionId = subscription_;
  request.monitoringMode = active ? UA_MONITORINGMODE_REPORTING : UA_MONITORINGMODE_DISABLED;
  request.monitoredItemIds = &found->second.monitored;
  request.monitoredItemIdsSize = 1;
  connection_->Call<UA_SetMonitoringModeResponse>(
      &request, UA_TYPES_SETMONITORINGMODEREQUEST, UA_TYPES_SETMONITORINGMODERESPONSE,
      [weak = weak_from_this(), serverHandle, active, done = std::move(done)](OpcStatus status, auto* response) {
        const std::shared_ptr<Group> alive = weak.lock();
        if (!alive) return;
        if (response != nullptr && response->resultsSize == 1) status = response->results[0];
        const auto item = alive->items_.find(serverHandle);
        if (IsGood(status) && item != alive->items_.end()) item->second.wish.isActive = active;
        done(status);
      });
}

OpcStatus Group::WriteItem(std::int32_t serverHandle, const OpcValue& value, OpcDone done) {
  const auto found = items_.find(serverHandle);
  if (found == items_.end()) return kOpcUnknownItem;
  const Item& item = found->second;
  if (!connection_->IsLive()) return kOpcNotConnected;
  NodeId node(UA_TYPES[UA_TYPES_NODEID]);
  NodeId type(UA_TYPES[UA_TYPES_NODEID]);
  UA_NodeId_parse(&*node, ViewOf(item.node));
  UA_NodeId_parse(&*type, ViewOf(item.dataType));
  Owned<UA_Variant> variant(UA_TYPES[UA_TYPES_VARIANT]);
  if (value.isArray != item.answer.canonicalType.isArray || !ToVariant(value, *type, *variant)) return kOpcTypeMismatch;
  UA_WriteValue what;
  UA_WriteValue_init(&what);
  what.nodeId = *node;
  what.attributeId = UA_ATTRIBUTEID_VALUE;
  what.value.hasValue = true;
  what.value.value = *variant;
  UA_WriteRequest request;
  UA_WriteRequest_init(&request);
  request.nodesToWrite = &what;
  request.nodesToWriteSize = 1;
  connection_->Call<UA_WriteResponse>(&request, UA_TYPES_WRITEREQUEST, UA_TYPES_WRITERESPONSE,
                                      [done = std::move(done)](OpcStatus status, UA_WriteResponse* response) {
                                        if (response != nullptr && response->resultsSize == 1)
                                          status = response->results[0];
                                        done(status);
                                      });
  return kOpcGood;
}

/// The group may have gone, and its room may be another's, while the server still sends.
void Group::TakeNotification(UA_Client* client, UA_UInt32 subscription, void* group, UA_UInt32 monitored, void* context,
                             UA_DataValue* value) {
  auto* const connection = static_cast<Connection*>(UA_Client_getContext(client));
  auto* const self = static_cast<Group*>(group);
  if (!connection->Has(self) || self->subscription_ != subscription) return;
  const auto found = self->items_.find(HandleOf(context));
  if (found != self->items_.end() && found->second.monitored == monitored) self->TakeValue(found->second, *value);
}

void Group::TakeValue(const Item& item, const UA_DataValue& value) {
  const std::shared_ptr<ItemOwner> owner = item.owner.lock();
  if (!owner) return;
  connection_->NoteUpdate();
  OpcChange change;
  change.clientHandle = item.wish.clientHandle;
  change.quality = QualityOf(value.hasStatus ? value.status : UA_STATUSCODE_GOOD);
  change.timeStamp = DaysOf(value.hasSourceTimestamp ? value.sourceTimestamp : value.serverTimestamp);
  std::optional<OpcValue> taken = value.hasValue ? ValueOf(value.value) : OpcValue();
  if (taken) taken = Converted(*taken, taken->elements.empty() && !taken->isArray ? OpcDataType{} : item.wish.type);
  if (taken) {
    change.value = std::move(*taken);
  } else {
    // There is a value, and none of the type that was asked for.
    change.quality = kOpcQualityBad;
  }
  Tell(owner, std::move(change));
}

void Group::Tell(const std::shared_ptr<ItemOwner>& owner, OpcChange change) {
  owner->waiting.push_back(std::move(change));
  if (owner->waiting.size() > 1) return;
  connection_->Time().Post([weak = std::weak_ptr(owner)] {
    const std::shared_ptr<ItemOwner> alive = weak.lock();
    if (!alive) return;
    const std::vector<OpcChange> changes = std::exchange(alive->waiting, {});
    if (alive->handler) alive->handler(changes);
  });
}

}  // namespace velk::ua
