#include "opc/opc_configuration.h"

#include <algorithm>
#include <limits>

#include "base/numbers.h"

namespace velk {

namespace {

constexpr std::string_view kApplication = "VELK2";
constexpr std::string_view kSection = "OPCdata";
constexpr double kMostEntries = 10000;  ///< of a list; a damaged count must not take all memory

std::string Key(const std::string& word, std::size_t number) {
  return word + std::to_string(number);
}

/// "server1&GroupName2"
std::string GroupField(std::size_t server, const std::string& word, std::size_t group) {
  return Key("server", server) + "&" + Key(word, group);
}

/// "server1&Group2@ItemName3"
std::string ItemField(std::size_t server, std::size_t group, std::size_t item) {
  return GroupField(server, "Group", group) + "@" + Key("ItemName", item);
}

class Stored {
 public:
  explicit Stored(SettingsStore& settings) : settings_(settings) {}

  std::string Text(const std::string& key) const { return settings_.Get(kApplication, kSection, key, {}); }
  double Number(const std::string& key, double most) const { return std::clamp(Val(Text(key)), 0.0, most); }
  std::size_t Count(const std::string& key) const { return static_cast<std::size_t>(Number(key, kMostEntries)); }
  void Save(const std::string& key, const std::string& value) { settings_.Save(kApplication, kSection, key, value); }

 private:
  SettingsStore& settings_;
};

OPCGroupRecord LoadGroup(const Stored& stored, std::size_t server, std::size_t group) {
  OPCGroupRecord record;
  record.GroupName = stored.Text(GroupField(server, "GroupName", group));
  record.GroupDeadBand = static_cast<float>(stored.Number(GroupField(server, "GroupDeadBand", group), 100));
  record.GroupUpdateRate = static_cast<std::int32_t>(
      stored.Number(GroupField(server, "GroupUpdateRate", group), std::numeric_limits<std::int32_t>::max()));
  record.Items.resize(stored.Count(GroupField(server, "GroupItemsCount", group)));
  for (std::size_t item = 1; item <= record.Items.size(); ++item)
    record.Items[item - 1] = stored.Text(ItemField(server, group, item));
  return record;
}

void SaveGroup(Stored& stored, std::size_t server, std::size_t group, const OPCGroupRecord& record) {
  stored.Save(GroupField(server, "GroupName", group), record.GroupName);
  stored.Save(GroupField(server, "GroupDeadBand", group), NumberText(record.GroupDeadBand));
  stored.Save(GroupField(server, "GroupUpdateRate", group), std::to_string(record.GroupUpdateRate));
  stored.Save(GroupField(server, "GroupItemsCount", group), std::to_string(record.Items.size()));
  for (std::size_t item = 1; item <= record.Items.size(); ++item)
    stored.Save(ItemField(server, group, item), record.Items[item - 1]);
}

}  // namespace

OPCServers LoadOPCConfiguration(SettingsStore& settings) {
  const Stored stored(settings);
  OPCServers servers(stored.Count("ServersCount"));
  for (std::size_t server = 1; server <= servers.size(); ++server) {
    OPCServerRecord& record = servers[server - 1];
    record.ServerName = stored.Text(Key("ServerName", server));
    record.ServerNode = stored.Text(Key("servernode", server));
    const std::size_t groups = stored.Count(Key("servergroupscount", server));
    for (std::size_t group = 1; group <= groups; ++group) record.Groups.push_back(LoadGroup(stored, server, group));
  }
  return servers;
}

void SaveOPCConfiguration(SettingsStore& settings, const OPCServers& servers) {
  Stored stored(settings);
  stored.Save("ServersCount", std::to_string(servers.size()));
  for (std::size_t server = 1; server <= servers.size(); ++server) {
    const OPCServerRecord& record = servers[server - 1];
    stored.Save(Key("ServerName", server), record.ServerName);
    stored.Save(Key("servernode", server), record.ServerNode);
    stored.Save(Key("servergroupscount", server), std::to_string(record.Groups.size()));
    for (std::size_t group = 1; group <= record.Groups.size(); ++group)
      SaveGroup(stored, server, group, record.Groups[group - 1]);
  }
}

int CountOPCItems(const OPCServers& servers) {
  std::size_t count = 0;
  for (const OPCServerRecord& server : servers) {
    for (const OPCGroupRecord& group : server.Groups) count += group.Items.size();
  }
  return static_cast<int>(count);
}

}  // namespace velk
