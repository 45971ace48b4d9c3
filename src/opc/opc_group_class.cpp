#include "opc/opc_group_class.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "base/scope.h"
#include "opc/opc_keys.h"

namespace velk {

namespace {

/// An item that the server made when nobody waited for it any more is taken away again.
void RemoveLate(OpcSubscription* group, const std::weak_ptr<char>& alive, const OpcItemAnswer& answer) {
  if (!alive.expired() && IsGood(answer.status)) group->Remove(answer.serverHandle, [](OpcStatus) {});
}

/// Items that are asked for at once.
struct AskedItems {
  std::vector<OpcItemWish> wishes;
  std::vector<std::optional<OpcItemAnswer>> answers;
  std::size_t left = 0;
  bool isOver = false;
};

/// Whether the server said it of the item, rather than that it could not be asked.
bool IsVerdict(OpcStatus status) {
  return status != kOpcTimeout && status != kOpcNotConnected && status != kOpcNoServer && status != kOpcShutDown;
}

}  // namespace

OPCGroupClass::~OPCGroupClass() {
  alive_.reset();
  for (auto& item : items_) item.reset();
}

void OPCGroupClass::SetOPCGroup(std::unique_ptr<OpcSubscription> group, const OpcSubscriptionWish& wish,
                                const std::string& node, const std::string& key, std::int16_t index) {
  group_ = std::move(group);
  wish_ = wish;
  GroupNode_ = node;
  GroupKey_ = key;
  GroupIndex_ = index;
  group_->SetHandler([this](std::span<const OpcChange> changes) { OPCGroupObj_DataChange(changes); });
}

bool OPCGroupClass::SetGroupActiveState(bool active) {
  const OpcStatus status = calls_.Wait([&](OpcDone done) { group_->SetActive(active, std::move(done)); });
  if (!calls_.Succeeded("Group Active State", status)) return false;
  wish_.isActive = active;
  return true;
}

bool OPCGroupClass::SetGroupDeadBand(float percent) {
  const OpcStatus status = calls_.Wait([&](OpcDone done) { group_->SetDeadBand(percent, std::move(done)); });
  if (!calls_.Succeeded("Set Group Dead Band", status)) return false;
  wish_.deadBand = percent;
  return true;
}

bool OPCGroupClass::SetGroupUpdateRate(std::int32_t milliseconds) {
  const OpcStatus status = calls_.Wait([&](OpcDone done) { group_->SetUpdateRate(milliseconds, std::move(done)); });
  if (!calls_.Succeeded("Set Group Update Rate", status)) return false;
  wish_.updateRate = milliseconds;
  return true;
}

OpcItemWish OPCGroupClass::WishOf(const std::string& itemID, std::int32_t clientHandle) const {
  return {.id = itemID, .type = defaultType_, .isActive = isDefaultActive_, .clientHandle = clientHandle};
}

bool OPCGroupClass::AddOPCItem(const std::string& itemID, const OpcDataType& type, bool active, std::string& key,
                               std::int32_t& clientHandle) {
  SetOPCItemsDefaultActive(active);
  SetOPCItemsDefaultDataType(type);
  const OpcItemWish wish = WishOf(itemID, NextItemHandle());
  const auto answer = std::make_shared<OpcItemAnswer>();
  ++adding_;
  const OnLeaving added([&] {
    if (--adding_ == 0) early_.clear();
  });
  const OpcStatus status = calls_.Wait(
      [&](OpcDone done) {
        group_->Add(wish, [answer, done = std::move(done)](const OpcItemAnswer& told) {
          *answer = told;
          done(told.status);
        });
      },
      [answer, group = group_.get(), alive = std::weak_ptr(alive_)](OpcStatus) { RemoveLate(group, alive, *answer); });
  if (!calls_.Succeeded("Add Item", status)) return false;
  Keep(wish, *answer);
  clientHandle = wish.clientHandle;
  key = OpcItemKey(clientHandle);
  return true;
}

bool OPCGroupClass::AddOPCItems(const std::vector<std::string>& itemIDs, std::vector<std::int32_t>& clientHandles) {
  SetOPCItemsDefaultActive(true);
  SetOPCItemsDefaultDataType({});
  clientHandles.assign(itemIDs.size(), 0);
  if (itemIDs.empty()) return true;
  const auto asked = std::make_shared<AskedItems>();
  for (const std::string& id : itemIDs) asked->wishes.push_back(WishOf(id, NextItemHandle()));
  asked->answers.resize(itemIDs.size());
  asked->left = itemIDs.size();
  ++adding_;
  const OnLeaving added([&] {
    asked->isOver = true;
    if (--adding_ == 0) early_.clear();
  });
  const OpcStatus status = calls_.Wait([&](const OpcDone& done) {
    for (std::size_t i = 0; i < itemIDs.size(); ++i)
      group_->Add(asked->wishes[i],
                  [asked, i, done, group = group_.get(), alive = std::weak_ptr(alive_)](const OpcItemAnswer& told) {
                    if (asked->isOver) return RemoveLate(group, alive, told);
                    asked->answers[i] = told;
                    if (--asked->left == 0) done(kOpcGood);
                  });
  });
  for (std::size_t i = 0; i < itemIDs.size(); ++i) {
    if (!asked->answers[i] || !IsGood(asked->answers[i]->status)) continue;
    Keep(asked->wishes[i], *asked->answers[i]);
    clientHandles[i] = asked->wishes[i].clientHandle;
  }
  return calls_.Succeeded("Add Item", status);
}

/// In the order of handles, even where a box let another item be added meanwhile.
void OPCGroupClass::Keep(const OpcItemWish& wish, const OpcItemAnswer& answer) {
  auto item = std::make_unique<OPCItemClass>(calls_, *group_);
  item->SetOPCItem(wish, answer, GroupNode_);
  const auto behind = std::find_if(items_.rbegin(), items_.rend(),
                                   [&](const auto& each) { return each->GetItemIndex() < wish.clientHandle; });
  items_.insert(behind.base(), std::move(item));
  for (const OpcChange& change : early_) {
    if (change.clientHandle == wish.clientHandle) TakeChange(change);
  }
}

bool OPCGroupClass::RemoveOPCItem(std::string_view key) {
  const std::optional<std::int32_t> handle = NumberOfOpcKey(key);
  const OPCItemClass* const item = handle ? FindItem(*handle) : nullptr;
  if (item == nullptr) return calls_.Succeeded("Remove Item", kOpcUnknownItem);
  const OpcStatus status =
      calls_.Wait([&](OpcDone done) { group_->Remove(item->GetItemServerHandle(), std::move(done)); });
  if (!calls_.Succeeded("Remove Item", status)) return false;
  std::erase_if(items_, [&](const auto& each) { return each->GetItemIndex() == *handle; });
  return true;
}

bool OPCGroupClass::ValidateOPCItem(const std::string& itemID, const OpcDataType& type, bool active,
                                    OpcItemAnswer& answer) {
  SetOPCItemsDefaultActive(active);
  SetOPCItemsDefaultDataType(type);
  const auto verdict = std::make_shared<OpcItemAnswer>();
  const OpcStatus status = calls_.Wait([&](OpcDone done) {
    session_.Validate(WishOf(itemID, 0), [verdict, done = std::move(done)](const OpcItemAnswer& told) {
      *verdict = told;
      done(IsVerdict(told.status) ? kOpcGood : told.status);
    });
  });
  if (!calls_.Succeeded("Validate Item", status)) return false;
  answer = *verdict;
  return IsGood(answer.status);
}

bool OPCGroupClass::AsyncWriteOPCItem(std::int32_t clientHandle, const OpcValue& value) {
  const OPCItemClass* const item = FindItem(clientHandle);
  if (item == nullptr) return calls_.Succeeded("Write Item", kOpcUnknownItem);
  // What is told ahead of the end of the call was refused without asking the server.
  const auto atOnce = std::make_shared<std::optional<OpcStatus>>();
  const auto isHandedOver = std::make_shared<bool>(false);
  group_->Write(item->GetItemServerHandle(), value,
                [this, clientHandle, atOnce, isHandedOver, alive = std::weak_ptr(alive_)](OpcStatus status) {
                  if (!*isHandedOver) {
                    *atOnce = status;
                  } else if (!alive.expired()) {
                    OPCGroupObj_AsyncWriteComplete(clientHandle, status);
                  }
                });
  *isHandedOver = true;
  return !*atOnce || calls_.Succeeded("Write Item", **atOnce);
}

OPCItemClass* OPCGroupClass::FindItem(std::int32_t clientHandle) const {
  // Handles only grow, so the collection is in their order.
  const auto found = std::lower_bound(items_.begin(), items_.end(), clientHandle,
                                      [](const auto& item, auto handle) { return item->GetItemIndex() < handle; });
  return found != items_.end() && (*found)->GetItemIndex() == clientHandle ? found->get() : nullptr;
}

bool OPCGroupClass::TakeChange(const OpcChange& change) {
  OPCItemClass* const item = FindItem(change.clientHandle);
  if (item == nullptr) return false;
  item->UpdateOPCItemData(change.value, change.quality, change.timeStamp);
  return true;
}

void OPCGroupClass::OPCGroupObj_DataChange(std::span<const OpcChange> changes) {
  for (const OpcChange& change : changes) {
    if (!TakeChange(change) && adding_ > 0) early_.push_back(change);
  }
}

void OPCGroupClass::OPCGroupObj_AsyncWriteComplete(std::int32_t clientHandle, OpcStatus error) {
  OPCItemClass* const item = FindItem(clientHandle);
  if (item != nullptr && error != kOpcGood) item->SetItemQuality(kOpcQualityBad);
}

}  // namespace velk
