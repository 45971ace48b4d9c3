#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "opc/opc_configuration.h"
#include "opc/opc_server_class.h"

namespace velk {

/// An item of the list.
struct ManagedItem {
  std::string id;
  std::int32_t handle = 0;  ///< its client handle; 0: the server has none of it
};

struct ManagedGroup {
  std::string name;
  std::string key;  ///< "Group 2 1"; empty where its server is connected and has refused it
  float deadBand = 0;
  std::int32_t updateRate = 0;
  std::vector<ManagedItem> items;
};

struct ManagedServer {
  std::string name;
  std::string node;
  std::string key;                         ///< "Server 1"
  std::unique_ptr<OPCServerClass> server;  ///< null: nobody has connected it since the list was opened
  std::vector<ManagedGroup> groups;
};

/// The list of servers, groups and items while it is edited. It begins with what is stored and connects nothing by
/// itself; a server that is connected gets the groups and items that the list has of it. Places count from 0. What
/// fails shows its box and leaves the list as it was.
class OpcManager {
 public:
  OpcManager(OpcCalls& calls, SettingsStore& settings);

  const std::vector<ManagedServer>& Servers() const { return servers_; }
  /// Null where the group or the item is not at the server.
  OPCGroupClass* GroupOf(std::size_t server, std::size_t group) const;
  OPCItemClass* ItemOf(std::size_t server, std::size_t group, std::size_t item) const;

  /// Connects a server and puts it behind the others.
  bool AddSelectedOPCServerMain(const std::string& name, const std::string& node);
  /// Connects a server of the list. Groups and items that it refuses stay in the list.
  bool ConnectServer(std::size_t server);
  /// An empty name lets the server choose one.
  bool AddOPCGroupMain(std::size_t server, const std::string& name, std::int32_t updateRate, float deadBand,
                       bool active);
  bool AddOPCItemMain(std::size_t server, std::size_t group, const std::string& itemID, const OpcDataType& type,
                      bool active);
  /// Milliseconds, and percent of the engineering range.
  bool SetGroup(std::size_t server, std::size_t group, std::int32_t updateRate, float deadBand, bool active);

  void RemoveServer(std::size_t server);
  bool RemoveGroup(std::size_t server, std::size_t group);
  bool RemoveItem(std::size_t server, std::size_t group, std::size_t item);

  /// The list as it is stored.
  OPCServers Stored() const;
  void SaveOPCConfiguration() const { velk::SaveOPCConfiguration(settings_, Stored()); }

 private:
  int NextServerIndex() const;
  static void AddStoredGroup(OPCServerClass& server, ManagedGroup& group);

  OpcCalls& calls_;
  SettingsStore& settings_;
  std::vector<ManagedServer> servers_;
};

}  // namespace velk
