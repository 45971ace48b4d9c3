// The items of a group: how they are watched, and how their values come.

#include <open62541/client_subscriptions.h>

#include <utility>

#include "platform/opc/ua/ua_group.h"
#include "platform/opc/ua/ua_values.h"

namespace velk::ua {

namespace {

using NodeId = Owned<UA_NodeId>;

/// The pointer that a callback of an item is handed: its handle, since the item may go first.
void* ContextOf(std::int32_t serverHandle) {
  return reinterpret_cast<void*>(static_cast<std::intptr_t>(serverHandle));  // NOLINT
}

std::int32_t HandleOf(void* context) {
  return static_cast<std::int32_t>(reinterpret_cast<std::intptr_t>(context));  // NOLINT
}

/// Whether a server that refuses an item refuses its deadband only.
bool IsDeadBandRefused(OpcStatus status) {
  return status == UA_STATUSCODE_BADMONITOREDITEMFILTERINVALID ||
         status == UA_STATUSCODE_BADMONITOREDITEMFILTERUNSUPPORTED || status == UA_STATUSCODE_BADFILTERNOTALLOWED ||
         status == UA_STATUSCODE_BADDEADBANDFILTERINVALID;
}

}  // namespace

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
      ReadHasRange(still, node, [node, traits, done](OpcStatus told, bool hasRange) {
        OpcItemAnswer answer;
        answer.status = told;
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
               // What the server said of the deadband stands there.
               if (IsGood(status) && still) answer = still->items_.at(answer.serverHandle).answer;
               if (!IsGood(status) && still) still->items_.erase(answer.serverHandle);
               answer.status = status;
               done(answer);
             });
           });
}

void Group::Watch(std::int32_t serverHandle, const OpcDone& done) {
  // The server may have gone since the item was described.
  if (subscription_ == 0 || !connection_->IsLive()) return done(kOpcNotConnected);
  Item& item = items_.at(serverHandle);
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
        const bool isAnswered = response != nullptr && response->resultsSize == 1;
        if (isAnswered) status = response->results[0].statusCode;
        alive->TakeWatched(serverHandle, isAnswered || !IsGood(status) ? status : kOpcBadId,
                           isAnswered ? response->results[0].monitoredItemId : 0, done);
      });
  void* context = ContextOf(serverHandle);
  UA_Client_DataChangeNotificationCallback callback = TakeNotification;
  const UA_StatusCode sent = UA_Client_MonitoredItems_createDataChanges_async(
      connection_->Client(), request, &context, &callback, nullptr, TakeAnswer, pending.get(), nullptr);
  if (sent != UA_STATUSCODE_GOOD) return done(sent);
  pending.release();  // NOLINT(bugprone-unused-return-value): TakeAnswer has it
  item.isAsked = true;
  connection_->Hurry();
}

/// Many servers know no deadband in percent: their items are watched without one.
void Group::TakeWatched(std::int32_t serverHandle, OpcStatus status, UA_UInt32 monitored, const OpcDone& done) {
  const auto found = items_.find(serverHandle);
  if (found == items_.end()) {
    // It was removed meanwhile.
    if (IsGood(status)) Unwatch({monitored});
    return done(kOpcUnknownItem);
  }
  Item& item = found->second;
  item.isAsked = false;
  if (IsDeadBandRefused(status) && wish_.deadBand > 0 && item.answer.hasRange) {
    item.answer.hasRange = false;
    return Watch(serverHandle, done);
  }
  if (IsGood(status)) item.monitored = monitored;
  done(status);
}

/// A server that is back may have no such node any more, another one where the path leads, or another type in it.
void Group::WatchAgain(std::int32_t serverHandle) {
  Item& item = items_.at(serverHandle);
  item.isAsked = true;
  Describe(connection_, item.wish,
           [weak = weak_from_this(), serverHandle, subscription = subscription_](
               OpcItemAnswer answer, const std::string& node, const std::string& type) {
             const std::shared_ptr<Group> alive = weak.lock();
             if (!alive || alive->subscription_ != subscription) return;
             const auto found = alive->items_.find(serverHandle);
             if (found == alive->items_.end()) return;
             if (!IsGood(answer.status)) return alive->NoteMissing(serverHandle);
             answer.serverHandle = serverHandle;
             found->second.answer = answer;
             found->second.node = node;
             found->second.dataType = type;
             alive->Watch(serverHandle, [weak, serverHandle](OpcStatus status) {
               const std::shared_ptr<Group> still = weak.lock();
               if (still && !IsGood(status)) still->NoteMissing(serverHandle);
             });
           });
}

/// The server has no such item at the moment: it is told to be bad, without a value, and asked for again.
void Group::NoteMissing(std::int32_t serverHandle) {
  const auto found = items_.find(serverHandle);
  if (found == items_.end()) return;
  found->second.isAsked = false;
  if (const std::shared_ptr<ItemOwner> owner = found->second.owner.lock())
    Tell(owner, {.clientHandle = found->second.wish.clientHandle, .value = {}, .timeStamp = 0});
  TryLater();
}

/// Ends items at the server; nobody waits for it.
void Group::Unwatch(std::vector<UA_UInt32> monitored) {
  if (subscription_ == 0 || !connection_->IsLive()) return;
  UA_DeleteMonitoredItemsRequest request;
  UA_DeleteMonitoredItemsRequest_init(&request);
  request.subscriptionId = subscription_;
  request.monitoredItemIds = monitored.data();
  request.monitoredItemIdsSize = monitored.size();
  auto pending = Pending<UA_DeleteMonitoredItemsResponse>([](OpcStatus, auto*) {});
  if (UA_Client_MonitoredItems_delete_async(connection_->Client(), request, TakeAnswer, pending.get(), nullptr) ==
      UA_STATUSCODE_GOOD)
    pending.release();  // NOLINT(bugprone-unused-return-value): TakeAnswer has it
}

void Group::RemoveItem(std::int32_t serverHandle, const OpcDone& done) {
  const auto found = items_.find(serverHandle);
  if (found == items_.end()) return done(kOpcUnknownItem);
  UA_UInt32 monitored = found->second.monitored;
  // Where the server has none of it, none is left; one that is on its way is ended when it comes.
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
  if (found == self->items_.end() || found->second.monitored != monitored) return;
  if (value->hasStatus && value->status == UA_STATUSCODE_BADNODEIDUNKNOWN) {
    self->NoteGone(found->first, found->second);
  } else {
    self->TakeValue(found->second, *value);
  }
}

/// A server ends a subscription that it takes for abandoned. All of the connection is made anew then.
void Group::TakeStatusChange(UA_Client* client, UA_UInt32 /*subscription*/, void* group,
                             UA_StatusChangeNotification* change) {
  auto* const connection = static_cast<Connection*>(UA_Client_getContext(client));
  if (connection->Has(static_cast<Group*>(group)) && !IsGood(change->status)) connection->NoteSilence();
}

/// The node has been taken out of the server. What comes back under its name may be another one.
void Group::NoteGone(std::int32_t serverHandle, Item& item) {
  Unwatch({std::exchange(item.monitored, 0)});
  NoteMissing(serverHandle);
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
