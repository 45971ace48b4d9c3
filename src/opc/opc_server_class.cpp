#include "opc/opc_server_class.h"

#include <algorithm>
#include <utility>

#include "base/numbers.h"
#include "opc/opc_keys.h"

namespace velk {

namespace {

constexpr std::int32_t kDefaultUpdateRate = 100;  ///< milliseconds

/// The number at a place of "2.14.3"; 0 where there is none.
int VersionPart(const std::string& version, int place) {
  std::size_t start = 0;
  for (; place > 0; --place) {
    const std::size_t point = version.find('.', start);
    if (point == std::string::npos) return 0;
    start = point + 1;
  }
  const std::string part = version.substr(start, version.find('.', start) - start);
  return static_cast<int>(std::clamp(Val(part), 0.0, 1e9));
}

/// Groups in the order of the collection, ahead of their session.
void Release(std::vector<std::unique_ptr<OPCGroupClass>>& groups) {
  for (auto& group : groups) group.reset();
  groups.clear();
}

}  // namespace

OPCServerClass::~OPCServerClass() {
  Release(groups_);
}

std::optional<std::vector<OpcServerEntry>> OPCServerClass::GetOPCServerList(const std::string& node) {
  const auto list = std::make_shared<std::vector<OpcServerEntry>>();
  const OpcStatus status = calls_.Wait([&](OpcDone done) {
    calls_.Transport().FindServers(
        node, [list, done = std::move(done)](OpcStatus told, const std::vector<OpcServerEntry>& servers) {
          *list = servers;
          done(told);
        });
  });
  if (!calls_.Succeeded("Get OPC Server List", status)) return std::nullopt;
  return std::move(*list);
}

OpcStatus OPCServerClass::Connect(const OpcPlace& place) {
  const auto session = std::make_shared<std::unique_ptr<OpcSession>>();
  calls_.Transport().ForgetRefusals();
  const OpcStatus status = calls_.Wait(
      [&](OpcDone done) {
        calls_.Transport().Connect(
            place, [session, done = std::move(done)](OpcStatus told, std::unique_ptr<OpcSession> connected) {
              *session = std::move(connected);
              done(told);
            });
      },
      // Nobody waits for it any more: it ends.
      [session](OpcStatus) { session->reset(); });
  if (IsGood(status)) {
    Release(groups_);
    session_ = std::move(*session);
  }
  return status;
}

bool OPCServerClass::ConnectOPCServer(const std::string& name, const std::string& node, std::int16_t index,
                                      const std::string& key) {
  const OpcStatus status = Connect({.server = name, .host = node});
  if (!calls_.Succeeded("Connect", status)) return false;
  ServerName_ = name;
  NodeName_ = node;
  ServerIndex_ = index;
  ServerKey_ = key;
  isGoingDown_ = false;
  session_->SetEvents(
      {.onShutDown = [this] { OPCServerObj_ServerShutDown(); }, .onBack = [this] { isGoingDown_ = false; }});
  return SetDefaultGroupIsActive(true) && SetDefaultGroupUpdateRate(kDefaultUpdateRate) && SetDefaultGroupDeadBand(0);
}

bool OPCServerClass::DisconnectOPCServer() {
  if (!session_) return calls_.Succeeded("Disconnect", kOpcNotConnected);
  Release(groups_);
  session_.reset();
  return true;
}

std::optional<OpcServerStatus> OPCServerClass::ReadStatus(std::string_view name) {
  const auto answer = std::make_shared<OpcServerStatus>();
  OpcStatus status = kOpcNotConnected;
  if (session_) {
    status = calls_.Wait([&](OpcDone done) {
      session_->ReadStatus([answer, done = std::move(done)](OpcStatus told, const OpcServerStatus& what) {
        *answer = what;
        done(told);
      });
    });
  }
  if (!calls_.Succeeded(name, status)) return std::nullopt;
  return *answer;
}

std::optional<double> OPCServerClass::GetStartTime() {
  const auto status = ReadStatus("StartTime");
  return status ? std::optional(status->startTime) : std::nullopt;
}

std::optional<double> OPCServerClass::GetCurrentTime() {
  const auto status = ReadStatus("CurrentTime");
  return status ? std::optional(status->currentTime) : std::nullopt;
}

std::optional<double> OPCServerClass::GetLastUpdateTime() {
  const auto status = ReadStatus("LastUpdate");
  return status ? std::optional(status->lastUpdate) : std::nullopt;
}

std::optional<int> OPCServerClass::GetMajorVersion() {
  const auto status = ReadStatus("MajorVersion");
  return status ? std::optional(VersionPart(status->version, 0)) : std::nullopt;
}

std::optional<int> OPCServerClass::GetMinorVersion() {
  const auto status = ReadStatus("MinorVersion");
  return status ? std::optional(VersionPart(status->version, 1)) : std::nullopt;
}

std::optional<int> OPCServerClass::GetBuildNumber() {
  const auto status = ReadStatus("BuildNumber");
  return status ? std::optional(VersionPart(status->build, 0)) : std::nullopt;
}

std::optional<std::string> OPCServerClass::GetVendorInfo() {
  const auto status = ReadStatus("VendorInfo");
  return status ? std::optional(status->vendor) : std::nullopt;
}

std::optional<int> OPCServerClass::GetServerState() {
  const auto status = ReadStatus("ServerState");
  return status ? std::optional(static_cast<int>(status->state)) : std::nullopt;
}

std::unique_ptr<OPCBrowserClass> OPCServerClass::GetServerBrowseObject() {
  if (!calls_.Succeeded("Browser Object", session_ ? kOpcGood : kOpcNotConnected)) return nullptr;
  auto browser = std::make_unique<OPCBrowserClass>(calls_);
  browser->SetBrowserObject(*session_);
  return browser;
}

bool OPCServerClass::SetDefaultGroupIsActive(bool active) {
  if (!calls_.Succeeded("DefaultGroupIsActive", session_ ? kOpcGood : kOpcNotConnected)) return false;
  defaults_.isActive = active;
  return true;
}

bool OPCServerClass::SetDefaultGroupUpdateRate(std::int32_t milliseconds) {
  const OpcStatus status = !session_ ? kOpcNotConnected : milliseconds < 0 ? kOpcOutOfRange : kOpcGood;
  if (!calls_.Succeeded("SetDefaultGroupUpdateRate", status)) return false;
  defaults_.updateRate = milliseconds;
  return true;
}

bool OPCServerClass::SetDefaultGroupDeadBand(float percent) {
  const bool isShare = percent >= 0 && percent <= 100;
  if (!calls_.Succeeded("SetDefaultGroupDeadBand", !session_ ? kOpcNotConnected : isShare ? kOpcGood : kOpcOutOfRange))
    return false;
  defaults_.deadBand = percent;
  return true;
}

std::unique_ptr<OpcSubscription> OPCServerClass::Subscribe(const OpcSubscriptionWish& wish, OpcStatus& status) {
  std::unique_ptr<OpcSubscription> group;
  status = calls_.Wait([&](OpcDone done) { group = session_->Subscribe(wish, std::move(done)); });
  return group;
}

bool OPCServerClass::AddOPCGroup(const std::string& name, std::int32_t updateRate, float deadBand, bool active,
                                 std::string& key) {
  const OpcSubscriptionWish before = defaults_;
  if (!SetDefaultGroupIsActive(active) || !SetDefaultGroupUpdateRate(updateRate) ||
      !SetDefaultGroupDeadBand(deadBand)) {
    defaults_ = before;
    return false;
  }
  OpcSubscriptionWish wish = defaults_;
  wish.name = name;
  OpcStatus status = HasGroup(name) ? kOpcNameTaken : kOpcGood;
  std::unique_ptr<OpcSubscription> subscription;
  if (IsGood(status)) subscription = Subscribe(wish, status);
  if (!calls_.Succeeded("Add Group", status)) {
    defaults_ = before;
    return false;
  }
  const std::int16_t index = NextGroupIndex();
  key = OpcGroupKey(index, ServerIndex_);
  auto group = std::make_unique<OPCGroupClass>(calls_, *session_);
  group->SetOPCGroup(std::move(subscription), wish, NodeName_, key, index);
  groups_.push_back(std::move(group));
  return true;
}

bool OPCServerClass::HasGroup(const std::string& name) const {
  return !name.empty() &&
         std::any_of(groups_.begin(), groups_.end(), [&](const auto& group) { return group->GetGroupName() == name; });
}

std::int16_t OPCServerClass::NextGroupIndex() const {
  std::int16_t highest = 0;
  for (const auto& group : groups_) highest = std::max(highest, group->GetGroupIndex());
  return static_cast<std::int16_t>(highest + 1);
}

bool OPCServerClass::RemoveOPCGroup(std::string_view key) {
  const auto found =
      std::find_if(groups_.begin(), groups_.end(), [&](const auto& group) { return group->GetGroupKey() == key; });
  if (!calls_.Succeeded("Remove Group", found != groups_.end() ? kOpcGood : kOpcNotFound)) return false;
  groups_.erase(found);
  return true;
}

OPCGroupClass* OPCServerClass::FindGroup(std::string_view key) const {
  const auto found =
      std::find_if(groups_.begin(), groups_.end(), [&](const auto& group) { return group->GetGroupKey() == key; });
  return found == groups_.end() ? nullptr : found->get();
}

}  // namespace velk
