#include "opc/opc_manager.h"

#include <algorithm>
#include <utility>

#include "opc/opc_keys.h"

namespace velk {

namespace {

constexpr std::size_t kItemsAtOnce = 100;  ///< each such lot is waited for by itself

template <class List>
void EraseAt(List& list, std::size_t place) {
  list.erase(list.begin() + static_cast<std::ptrdiff_t>(place));
}

ManagedGroup GroupOfRecord(const OPCGroupRecord& record, const std::string& key) {
  ManagedGroup group{record.GroupName, key, record.GroupDeadBand, record.GroupUpdateRate, {}};
  for (const std::string& id : record.Items) group.items.push_back({id});
  return group;
}

}  // namespace

OpcManager::OpcManager(OpcCalls& calls, SettingsStore& settings) : calls_(calls), settings_(settings) {
  for (const OPCServerRecord& record : LoadOPCConfiguration(settings)) {
    const int index = NextServerIndex();
    ManagedServer server{record.ServerName, record.ServerNode, OpcServerKey(index), nullptr, {}};
    for (const OPCGroupRecord& group : record.Groups)
      server.groups.push_back(GroupOfRecord(group, OpcGroupKey(static_cast<int>(server.groups.size()) + 1, index)));
    servers_.push_back(std::move(server));
  }
}

int OpcManager::NextServerIndex() const {
  int highest = 0;
  for (const ManagedServer& server : servers_) highest = std::max(highest, NumberOfOpcKey(server.key).value_or(0));
  return highest + 1;
}

OPCGroupClass* OpcManager::GroupOf(std::size_t server, std::size_t group) const {
  const ManagedServer& owner = servers_.at(server);
  return owner.server ? owner.server->FindGroup(owner.groups.at(group).key) : nullptr;
}

OPCItemClass* OpcManager::ItemOf(std::size_t server, std::size_t group, std::size_t item) const {
  const OPCGroupClass* const owner = GroupOf(server, group);
  return owner ? owner->FindItem(servers_[server].groups[group].items.at(item).handle) : nullptr;
}

bool OpcManager::AddSelectedOPCServerMain(const std::string& name, const std::string& node) {
  const int index = NextServerIndex();
  const std::string key = OpcServerKey(index);
  auto server = std::make_unique<OPCServerClass>(calls_);
  if (!server->ConnectOPCServer(name, node, static_cast<std::int16_t>(index), key)) return false;
  servers_.push_back({name, node, key, std::move(server), {}});
  return true;
}

bool OpcManager::ConnectServer(std::size_t place) {
  ManagedServer& listed = servers_.at(place);
  auto server = std::make_unique<OPCServerClass>(calls_);
  const auto index = static_cast<std::int16_t>(NumberOfOpcKey(listed.key).value_or(0));
  if (!server->ConnectOPCServer(listed.name, listed.node, index, listed.key)) return false;
  listed.server = std::move(server);
  const OpcCalls::Quiet quiet(calls_);
  for (ManagedGroup& group : listed.groups) {
    group.key.clear();
    for (ManagedItem& item : group.items) item.handle = 0;
  }
  const int cancelled = calls_.Cancelled();
  for (ManagedGroup& group : listed.groups) {
    AddStoredGroup(*listed.server, group);
    if (calls_.Cancelled() != cancelled) break;
  }
  return true;
}

/// A server that falls silent is not asked for each of the rest.
void OpcManager::AddStoredGroup(OPCServerClass& server, ManagedGroup& group) {
  if (!server.IsLive()) return;
  std::string key;
  if (!server.AddOPCGroup(group.name, group.updateRate, group.deadBand, true, key)) return;
  group.key = key;
  OPCGroupClass& added = *server.FindGroup(key);
  for (std::size_t first = 0; first < group.items.size(); first += kItemsAtOnce) {
    const std::size_t end = std::min(first + kItemsAtOnce, group.items.size());
    std::vector<std::string> ids;
    for (std::size_t i = first; i < end; ++i) ids.push_back(group.items[i].id);
    std::vector<std::int32_t> handles;
    const bool isAnswered = added.AddOPCItems(ids, handles);
    for (std::size_t i = first; i < end; ++i) group.items[i].handle = handles[i - first];
    if (!isAnswered) return;
  }
}

bool OpcManager::AddOPCGroupMain(std::size_t place, const std::string& name, std::int32_t updateRate, float deadBand,
                                 bool active) {
  ManagedServer& server = servers_.at(place);
  std::string key;
  if (!server.server || !server.server->AddOPCGroup(name, updateRate, deadBand, active, key)) return false;
  server.groups.push_back({server.server->FindGroup(key)->GetGroupName(), key, deadBand, updateRate, {}});
  return true;
}

bool OpcManager::AddOPCItemMain(std::size_t server, std::size_t group, const std::string& itemID,
                                const OpcDataType& type, bool active) {
  OPCGroupClass* const owner = GroupOf(server, group);
  std::string key;
  std::int32_t handle = 0;
  if (!owner || !owner->AddOPCItem(itemID, type, active, key, handle)) return false;
  servers_[server].groups[group].items.push_back({itemID, handle});
  return true;
}

bool OpcManager::SetGroup(std::size_t server, std::size_t group, std::int32_t updateRate, float deadBand, bool active) {
  ManagedGroup& listed = servers_.at(server).groups.at(group);
  OPCGroupClass* const owner = GroupOf(server, group);
  if (owner && !owner->SetGroupUpdateRate(updateRate)) return false;
  listed.updateRate = updateRate;
  if (owner && !owner->SetGroupDeadBand(deadBand)) return false;
  listed.deadBand = deadBand;
  return !owner || owner->SetGroupActiveState(active);
}

void OpcManager::RemoveServer(std::size_t server) {
  EraseAt(servers_, server);
}

bool OpcManager::RemoveGroup(std::size_t server, std::size_t group) {
  ManagedServer& owner = servers_.at(server);
  if (GroupOf(server, group) && !owner.server->RemoveOPCGroup(owner.groups[group].key)) return false;
  EraseAt(owner.groups, group);
  return true;
}

bool OpcManager::RemoveItem(std::size_t server, std::size_t group, std::size_t item) {
  auto& items = servers_.at(server).groups.at(group).items;
  if (ItemOf(server, group, item) && !GroupOf(server, group)->RemoveOPCItem(OpcItemKey(items[item].handle)))
    return false;
  EraseAt(items, item);
  return true;
}

OPCServers OpcManager::Stored() const {
  OPCServers stored;
  for (const ManagedServer& server : servers_) {
    OPCServerRecord record{server.name, server.node, {}};
    for (const ManagedGroup& group : server.groups) {
      OPCGroupRecord kept{group.name, group.deadBand, group.updateRate, {}};
      for (const ManagedItem& item : group.items) kept.Items.push_back(item.id);
      record.Groups.push_back(std::move(kept));
    }
    stored.push_back(std::move(record));
  }
  return stored;
}

}  // namespace velk
