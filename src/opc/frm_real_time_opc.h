#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>

#include "opc/opc_configuration.h"
#include "opc/opc_texts.h"
#include "platform/loop/clock.h"
#include "platform/opc/opc_transport.h"

namespace velk {

/// A stored item as a channel: a connection and a group of its own, of which the transport shares what is alike. What
/// fails shows no box; it is tried again with pauses that grow up to 30 s.
class frmRealTimeOPC {
 public:
  frmRealTimeOPC(OpcTransport& transport, Clock& clock);
  ~frmRealTimeOPC();
  frmRealTimeOPC(const frmRealTimeOPC&) = delete;
  frmRealTimeOPC& operator=(const frmRealTimeOPC&) = delete;

  /// Begins to subscribe to an item of the list. Indices count from 1.
  void connectOPC(const OPCServers& servers, std::size_t serverIndex, std::size_t groupIndex, std::size_t itemIndex);
  /// Takes the values as they come; the last of them stays. One that is empty, as bad ones can be, changes nothing.
  void ConnectedGroup_DataChange(std::span<const OpcChange> changes);

  void Remove_Items();
  void Remove_Group();
  void Disconnect_Server();

  const OpcLineItem& OnLine() const { return line_; }
  const std::string& ItemID() const { return wish_.id; }
  const std::string& ServerName() const { return place_.server; }
  /// There is no connection to the server: a value that was there is an old one.
  bool IsLost() const { return isLost_; }
  /// There is no item, or it has no value.
  bool IsMissing() const { return line_.hasFailed || isEmpty_; }

 private:
  void BeginServer();
  void TakeServer(std::unique_ptr<OpcSession> server);
  void BeginItem();
  void Fail();
  void Retry();

  OpcTransport& transport_;
  Clock& clock_;
  OpcPlace place_;
  OpcSubscriptionWish groupWish_;
  OpcItemWish wish_;
  std::unique_ptr<OpcSession> ConnectedOPCServer;
  std::unique_ptr<OpcSubscription> ConnectedGroup;
  std::optional<std::int32_t> ItemServerHandles;
  bool groupStands_ = false;  ///< the server has it
  OpcLineItem line_;
  bool isLost_ = false;
  bool isEmpty_ = false;
  std::unique_ptr<Timer> retry_;
  /// Answers to what was begun before it was made anew belong to nobody.
  std::shared_ptr<char> life_ = std::make_shared<char>();
};

}  // namespace velk
