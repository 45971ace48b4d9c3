#pragma once

#include <cstdint>
#include <string>

#include "opc/opc_calls.h"

namespace velk {

/// An item of a group with its last update.
class OPCItemClass {
 public:
  /// The subscription outlives the item.
  OPCItemClass(OpcCalls& calls, OpcSubscription& group) : calls_(calls), group_(group) {}

  /// What was asked for, what the server answered, and the host of the server.
  void SetOPCItem(const OpcItemWish& wish, const OpcItemAnswer& answer, const std::string& node);
  /// Keeps what a data change brought.
  void UpdateOPCItemData(const OpcValue& value, std::int32_t quality, double timeStamp);

  const std::string& GetItemID() const { return ItemID_; }
  /// The client handle.
  std::int32_t GetItemIndex() const { return ItemIndex_; }
  const std::string& GetItemNode() const { return ItemNode_; }
  /// Without elements until the first data change.
  const OpcValue& GetItemValue() const { return ItemValue_; }
  std::int32_t GetItemQuality() const { return ItemQuality_; }
  void SetItemQuality(std::int32_t quality) { ItemQuality_ = quality; }
  /// 0 until the first data change.
  double GetItemTimeStamp() const { return ItemTimeStamp_; }
  /// As it was asked for.
  OpcDataType GetItemDataType() const { return requestedType_; }
  /// As the server keeps it.
  OpcDataType GetItemCanonicalType() const { return answer_.canonicalType; }
  std::int32_t GetItemServerHandle() const { return answer_.serverHandle; }
  /// Without an engineering range a deadband has nothing to be a share of.
  bool HasRange() const { return answer_.hasRange; }

  bool GetItemActiveState() const { return isActive_; }
  /// False, behind a box, where the server refuses.
  bool SetItemActiveState(bool active);

 private:
  OpcCalls& calls_;
  OpcSubscription& group_;
  std::string ItemID_;
  std::string ItemNode_;
  std::int32_t ItemIndex_ = 0;
  OpcValue ItemValue_;
  std::int32_t ItemQuality_ = kOpcQualityBad;
  double ItemTimeStamp_ = 0;
  OpcDataType requestedType_;
  OpcItemAnswer answer_;
  bool isActive_ = true;
};

}  // namespace velk
