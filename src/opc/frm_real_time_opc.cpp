#include "opc/frm_real_time_opc.h"

#include <algorithm>
#include <utility>

namespace velk {

namespace {

constexpr std::int32_t kItemClientHandle = 1;
constexpr int kFirstPauseMs = 1000;
constexpr int kLastPauseMs = 30'000;

}  // namespace

frmRealTimeOPC::frmRealTimeOPC(OpcTransport& transport, Clock& clock)
    : transport_(transport), clock_(clock), retry_(clock.MakeTimer()) {
  retry_->SetInterval(kFirstPauseMs);
  retry_->SetHandler([this] {
    if (retry_->Enabled()) Retry();
  });
}

frmRealTimeOPC::~frmRealTimeOPC() {
  Remove_Items();
  Remove_Group();
  Disconnect_Server();
}

void frmRealTimeOPC::connectOPC(const OPCServers& servers, std::size_t serverIndex, std::size_t groupIndex,
                                std::size_t itemIndex) {
  const OPCServerRecord& server = servers.at(serverIndex - 1);
  const OPCGroupRecord& group = server.Groups.at(groupIndex - 1);
  place_ = {.server = server.ServerName, .host = server.ServerNode};
  groupWish_ = {.name = group.GroupName,
                .updateRate = group.GroupUpdateRate,
                .deadBand = group.GroupDeadBand,
                .isActive = true,
                .mayBeShared = true};
  wish_ = {.id = group.Items.at(itemIndex - 1), .type = {}, .isActive = true, .clientHandle = kItemClientHandle};
  BeginServer();
}

void frmRealTimeOPC::BeginServer() {
  life_ = std::make_shared<char>();
  transport_.Connect(place_, [this, life = std::weak_ptr(life_)](OpcStatus status, std::unique_ptr<OpcSession> server) {
    if (life.expired()) return;
    if (IsGood(status)) {
      TakeServer(std::move(server));
    } else {
      isLost_ = true;
      Fail();
    }
  });
}

/// What comes of the group is told ahead of the moment that it is handed over where that is known at once.
void frmRealTimeOPC::TakeServer(std::unique_ptr<OpcSession> server) {
  ConnectedOPCServer = std::move(server);
  isLost_ = false;
  ConnectedOPCServer->SetEvents({.onLost = [this] { isLost_ = true; }, .onBack = [this] { isLost_ = false; }});
  ConnectedGroup = ConnectedOPCServer->Subscribe(groupWish_, [this, life = std::weak_ptr(life_)](OpcStatus status) {
    if (life.expired()) return;
    clock_.Post([this, life, status] {
      if (life.expired()) return;
      groupStands_ = IsGood(status) && ConnectedGroup;
      if (groupStands_) {
        BeginItem();
      } else {
        Fail();
      }
    });
  });
  if (ConnectedGroup)
    ConnectedGroup->SetHandler([this](std::span<const OpcChange> changes) { ConnectedGroup_DataChange(changes); });
}

void frmRealTimeOPC::BeginItem() {
  ConnectedGroup->Add(wish_, [this, life = std::weak_ptr(life_)](const OpcItemAnswer& answer) {
    if (life.expired()) return;
    if (!IsGood(answer.status)) return Fail();
    ItemServerHandles = answer.serverHandle;
    retry_->SetInterval(kFirstPauseMs);
  });
}

void frmRealTimeOPC::Fail() {
  line_.hasFailed = true;
  retry_->SetEnabled(true);
}

void frmRealTimeOPC::Retry() {
  retry_->SetEnabled(false);
  retry_->SetInterval(std::min(2 * retry_->Interval(), kLastPauseMs));
  if (groupStands_) return BeginItem();
  Remove_Group();
  Disconnect_Server();
  BeginServer();
}

void frmRealTimeOPC::ConnectedGroup_DataChange(std::span<const OpcChange> changes) {
  for (const OpcChange& change : changes) {
    line_.hasReported = true;
    line_.hasFailed = false;
    isEmpty_ = change.value.elements.empty();
    if (!isEmpty_) line_.value = change.value;
  }
}

void frmRealTimeOPC::Remove_Items() {
  if (ConnectedGroup && ItemServerHandles) ConnectedGroup->Remove(*ItemServerHandles, [](OpcStatus) {});
  ItemServerHandles.reset();
}

void frmRealTimeOPC::Remove_Group() {
  groupStands_ = false;
  ConnectedGroup.reset();
}

void frmRealTimeOPC::Disconnect_Server() {
  life_.reset();
  ConnectedOPCServer.reset();
}

}  // namespace velk
