#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "opc/opc_calls.h"
#include "opc/opc_item_class.h"

namespace velk {

/// A group of a server and its items. What fails shows its box, gives false and leaves all as it was.
class OPCGroupClass {
 public:
  using Items = std::vector<std::unique_ptr<OPCItemClass>>;

  /// The session outlives the group.
  OPCGroupClass(OpcCalls& calls, OpcSession& session) : calls_(calls), session_(session) {}
  /// Items go ahead of the subscription, in the order of the collection.
  ~OPCGroupClass();
  OPCGroupClass(const OPCGroupClass&) = delete;
  OPCGroupClass& operator=(const OPCGroupClass&) = delete;

  /// The subscription with what was asked for, the host of its server, key and index.
  void SetOPCGroup(std::unique_ptr<OpcSubscription> group, const OpcSubscriptionWish& wish, const std::string& node,
                   const std::string& key, std::int16_t index);

  const std::string& GetGroupName() const { return group_->Name(); }
  const std::string& GetGroupNode() const { return GroupNode_; }
  const std::string& GetGroupKey() const { return GroupKey_; }
  std::int16_t GetGroupIndex() const { return GroupIndex_; }
  const Items& GetOPCGroupItemsCollection() const { return items_; }

  bool SetGroupActiveState(bool active);
  bool GetGroupActiveState() const { return wish_.isActive; }
  /// Percent, 0 to 100.
  bool SetGroupDeadBand(float percent);
  float GetGroupDeadBand() const { return wish_.deadBand; }
  /// Milliseconds.
  bool SetGroupUpdateRate(std::int32_t milliseconds);
  std::int32_t GetGroupUpdateRate() const { return wish_.updateRate; }

  void SetOPCItemsDefaultDataType(const OpcDataType& type) { defaultType_ = type; }
  OpcDataType GetOPCItemsDefaultDataType() const { return defaultType_; }
  void SetOPCItemsDefaultActive(bool active) { isDefaultActive_ = active; }
  bool GetOPCItemsDefaultActive() const { return isDefaultActive_; }

  /// Adds an item and tells its key ("Item 5") and its client handle.
  bool AddOPCItem(const std::string& itemID, const OpcDataType& type, bool active, std::string& key,
                  std::int32_t& clientHandle);
  /// Adds items as the server keeps them, all of them asked for at once, and tells their client handles: 0 for one that
  /// is refused. False, and the last of them may be missing, where the server is silent or the wait was cancelled.
  bool AddOPCItems(const std::vector<std::string>& itemIDs, std::vector<std::int32_t>& clientHandles);
  bool RemoveOPCItem(std::string_view key);
  /// Whether the item could be added; tells what the server says of it, and keeps none. A refusal is an answer, for
  /// which no box comes.
  bool ValidateOPCItem(const std::string& itemID, const OpcDataType& type, bool active, OpcItemAnswer& answer);
  /// Hands a value over. What is refused at once shows a box; where the server refuses later, the item is bad.
  bool AsyncWriteOPCItem(std::int32_t clientHandle, const OpcValue& value);

  /// The item of a client handle, or null.
  OPCItemClass* FindItem(std::int32_t clientHandle) const;

  /// Values came; those of items that were removed meanwhile are skipped.
  void OPCGroupObj_DataChange(std::span<const OpcChange> changes);
  void OPCGroupObj_AsyncWriteComplete(std::int32_t clientHandle, OpcStatus error);

 private:
  OpcItemWish WishOf(const std::string& itemID, std::int32_t clientHandle) const;
  void Keep(const OpcItemWish& wish, const OpcItemAnswer& answer);
  /// The next client handle.
  std::int32_t NextItemHandle() { return ++lastHandle_; }
  /// False for a handle that no item has.
  bool TakeChange(const OpcChange& change);

  OpcCalls& calls_;
  OpcSession& session_;
  std::unique_ptr<OpcSubscription> group_;
  OpcSubscriptionWish wish_;
  std::string GroupNode_;
  std::string GroupKey_;
  std::int16_t GroupIndex_ = 0;
  OpcDataType defaultType_;
  bool isDefaultActive_ = true;
  std::int32_t lastHandle_ = 0;
  Items items_;  ///< in the order of their client handles
  int adding_ = 0;
  /// A first value can come ahead of the moment that its item is in the collection, and comes once only.
  std::vector<OpcChange> early_;
  /// Writes may be answered when the group has gone.
  std::shared_ptr<char> alive_ = std::make_shared<char>();
};

}  // namespace velk
