#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "opc/opc_browser_class.h"
#include "opc/opc_calls.h"
#include "opc/opc_group_class.h"

namespace velk {

/// A server with its groups. What fails shows its box, gives false or nothing, and leaves all as it was. Whoever lets
/// go of it removes its groups and disconnects it.
class OPCServerClass {
 public:
  using Groups = std::vector<std::unique_ptr<OPCGroupClass>>;

  explicit OPCServerClass(OpcCalls& calls) : calls_(calls) {}
  ~OPCServerClass();
  OPCServerClass(const OPCServerClass&) = delete;
  OPCServerClass& operator=(const OPCServerClass&) = delete;

  /// The servers that a node knows of.
  std::optional<std::vector<OpcServerEntry>> GetOPCServerList(const std::string& node);
  bool ConnectOPCServer(const std::string& name, const std::string& node, std::int16_t index, const std::string& key);
  bool DisconnectOPCServer();
  /// Connected, and the server answers.
  bool IsLive() const { return session_ && session_->IsLive(); }
  /// The server has announced its end and not come back since.
  bool IsGoingDown() const { return isGoingDown_; }

  const std::string& GetOPCServerKey() const { return ServerKey_; }
  const Groups& GetOPCServerGroupCollection() const { return groups_; }
  std::int16_t GetOPCServerIndex() const { return ServerIndex_; }
  const std::string& GetServerName() const { return ServerName_; }
  const std::string& GetNodeName() const { return NodeName_; }

  /// Dates are local wall clock.
  std::optional<double> GetStartTime();
  std::optional<double> GetCurrentTime();
  /// When values last came; 0 where none did.
  std::optional<double> GetLastUpdateTime();
  /// "2.14.3" has 2 and 14.
  std::optional<int> GetMajorVersion();
  std::optional<int> GetMinorVersion();
  std::optional<int> GetBuildNumber();
  std::optional<std::string> GetVendorInfo();
  std::optional<int> GetServerState();

  /// At the root of the server; null where the server is not connected.
  std::unique_ptr<OPCBrowserClass> GetServerBrowseObject();

  // What a group gets that is added without saying so.
  bool SetDefaultGroupIsActive(bool active);
  /// Milliseconds, 0 and more.
  bool SetDefaultGroupUpdateRate(std::int32_t milliseconds);
  /// Percent, 0 to 100.
  bool SetDefaultGroupDeadBand(float percent);
  bool GetDefaultGroupIsActive() const { return defaults_.isActive; }
  std::int32_t GetDefaultGroupUpdateRate() const { return defaults_.updateRate; }
  float GetDefaultGroupDeadBand() const { return defaults_.deadBand; }

  /// Adds a group and tells its key ("Group 2 1"). An empty name lets the server choose one.
  bool AddOPCGroup(const std::string& name, std::int32_t updateRate, float deadBand, bool active, std::string& key);
  bool RemoveOPCGroup(std::string_view key);
  /// The group of a key, or null.
  OPCGroupClass* FindGroup(std::string_view key) const;

  /// The server is going down, or has gone.
  void OPCServerObj_ServerShutDown() { isGoingDown_ = true; }

 private:
  std::optional<OpcServerStatus> ReadStatus(std::string_view name);
  OpcStatus Connect(const OpcPlace& place);
  std::unique_ptr<OpcSubscription> Subscribe(const OpcSubscriptionWish& wish, OpcStatus& status);
  /// One more than the highest index in use.
  std::int16_t NextGroupIndex() const;
  bool HasGroup(const std::string& name) const;

  OpcCalls& calls_;
  std::string ServerName_;
  std::string NodeName_;
  std::string ServerKey_;
  std::int16_t ServerIndex_ = 0;
  OpcSubscriptionWish defaults_;
  std::unique_ptr<OpcSession> session_;
  bool isGoingDown_ = false;
  Groups groups_;
};

}  // namespace velk
