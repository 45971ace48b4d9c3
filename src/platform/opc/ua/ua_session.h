#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>

#include "platform/opc/opc_transport.h"
#include "platform/opc/ua/ua_connection.h"
#include "platform/opc/ua/ua_group.h"

namespace velk::ua {

/// The subscriptions of a connection that may be shared.
using SharedGroups = std::map<std::string, std::weak_ptr<Group>>;

/// A connection with what its sessions share.
struct SharedConnection {
  ConnectionPointer connection;
  SharedGroups groups;
};

std::unique_ptr<OpcSession> MakeSession(std::shared_ptr<SharedConnection> shared);

}  // namespace velk::ua
