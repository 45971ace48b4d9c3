#include "opc/opc_item_class.h"

#include <utility>

namespace velk {

void OPCItemClass::SetOPCItem(const OpcItemWish& wish, const OpcItemAnswer& answer, const std::string& node) {
  ItemID_ = wish.id;
  ItemNode_ = node;
  ItemIndex_ = wish.clientHandle;
  requestedType_ = wish.type;
  isActive_ = wish.isActive;
  answer_ = answer;
}

void OPCItemClass::UpdateOPCItemData(const OpcValue& value, std::int32_t quality, double timeStamp) {
  ItemValue_ = value;
  ItemQuality_ = quality;
  ItemTimeStamp_ = timeStamp;
}

bool OPCItemClass::SetItemActiveState(bool active) {
  const OpcStatus status =
      calls_.Wait([&](OpcDone done) { group_.SetItemActive(answer_.serverHandle, active, std::move(done)); });
  if (!calls_.Succeeded("SetItemActiveState", status)) return false;
  isActive_ = active;
  return true;
}

}  // namespace velk
