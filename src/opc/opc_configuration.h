#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/settings/settings.h"

namespace velk {

// The servers, groups and items that are stored, in the order in which items become channels.

struct OPCGroupRecord {
  std::string GroupName;
  float GroupDeadBand = 0;           ///< percent, 0 to 100
  std::int32_t GroupUpdateRate = 0;  ///< milliseconds, 0 and more
  std::vector<std::string> Items;    ///< identifiers

  bool operator==(const OPCGroupRecord&) const = default;
};

struct OPCServerRecord {
  std::string ServerName;  ///< its application's name, or the URL of its endpoint
  std::string ServerNode;  ///< empty: this machine
  std::vector<OPCGroupRecord> Groups;

  bool operator==(const OPCServerRecord&) const = default;
};

using OPCServers = std::vector<OPCServerRecord>;

/// What is stored. A count that promises more than there is gives empty names; counts end at 10,000.
OPCServers LoadOPCConfiguration(SettingsStore& settings);

/// Stores the servers. Keys of a longer list stay; the counts hide them.
void SaveOPCConfiguration(SettingsStore& settings, const OPCServers& servers);

/// The items of all groups of all servers.
int CountOPCItems(const OPCServers& servers);

}  // namespace velk
