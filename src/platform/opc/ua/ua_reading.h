#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/opc/opc_transport.h"
#include "platform/opc/ua/ua_connection.h"

namespace velk::ua {

// What is asked about nodes. Each is told once, from inside the library's work, unless the connection goes first.

using ConnectionPointer = std::shared_ptr<Connection>;

/// What a node that has a value says of it.
struct Traits {
  OpcStatus status = kOpcGood;  ///< of a node that has no value: what the server says
  OpcDataType type = {};
  std::string dataType;  ///< the identifier of the server's own type
  bool hasType = false;  ///< one that values can be brought into
  bool isReadable = false;
  bool isWritable = false;
};

/// The nodes' traits in the order of their identifiers.
void ReadTraits(const ConnectionPointer& connection, const std::vector<std::string>& ids,
                std::function<void(OpcStatus, const std::vector<Traits>&)> done);

/// The identifier of the node that an item's identifier or path names.
void ResolveItem(const ConnectionPointer& connection, const std::string& id,
                 std::function<void(OpcStatus, const std::string&)> done);

/// Whether a node has an engineering range.
void ReadHasRange(const ConnectionPointer& connection, const std::string& id,
                  std::function<void(OpcStatus, bool)> done);

/// Whether variables have others below them that are parts of them; properties are none.
void ReadHaveParts(const ConnectionPointer& connection, const std::vector<std::string>& ids,
                   std::function<void(const std::vector<bool>&)> done);

/// A node below another.
struct Reference {
  std::string id;
  std::string name;        ///< for the eye
  std::string browseName;  ///< in paths
  std::uint16_t nameSpace = 0;
  bool isVariable = false;
};

/// What stands below a node, page by page; `page` gives back whether it wants the next one.
using TakeReferences = std::function<bool(OpcStatus, const std::vector<Reference>&, bool isLast)>;
void BrowseNode(const ConnectionPointer& connection, const std::string& id, TakeReferences page);

inline constexpr const char* kRootId = "i=84";
inline constexpr const char* kObjectsId = "i=85";

}  // namespace velk::ua
