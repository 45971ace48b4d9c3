#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "platform/opc/opc_status.h"
#include "platform/opc/opc_value.h"

namespace velk {

// The way to OPC servers. Nothing here waits: each call returns at once, and what came of it is told later from the
// event loop, or at once where it is known. An answer comes once, or not at all where what was asked has gone; a server
// that is slow, or an operator who is asked, can take longer than anybody waits. Handles end what they stand for when
// they go.

inline constexpr int kOpcMilliseconds = 5000;  ///< that a call is waited for

/// A server that a host knows of.
struct OpcServerEntry {
  std::string name;  ///< the application's name
  std::string url;   ///< of its endpoint

  bool operator==(const OpcServerEntry&) const = default;
};

/// Where a server is: by the name of its application, or the URL of its endpoint; and the host, with a port behind ":"
/// or without one (4840), empty for this machine. The host that is named takes the place of the URL's own.
struct OpcPlace {
  std::string server;
  std::string host;

  bool operator==(const OpcPlace&) const = default;
};

enum class OpcServerState { Running = 1, Failed, NoConfiguration, Suspended, Test, Disconnected };

struct OpcServerStatus {
  OpcServerState state = OpcServerState::Disconnected;
  std::string vendor;
  std::string version;     ///< of the software, as "2.14.3"
  std::string build;       ///< number of the build
  double startTime = 0;    ///< local wall clock
  double currentTime = 0;  ///< local wall clock
  double lastUpdate = 0;   ///< when values last came over this session; 0: none did
};

/// What stands in a folder of a server.
struct OpcNode {
  std::string name;
  std::string id;           ///< "ns=2;s=Pump.Pressure"
  bool isBranch = false;    ///< has something below it, or may have
  bool isVariable = false;  ///< has a value
  OpcDataType type = {};
  bool isReadable = false;
  bool isWritable = false;

  bool operator==(const OpcNode&) const = default;
};

/// A part of a folder's nodes; the last one says so.
struct OpcPage {
  OpcStatus status = kOpcGood;
  std::vector<OpcNode> nodes = {};
  bool isLast = true;
};

/// An item as it is asked for. The identifier is that of a node, or the path to it from the root ("Objects/Pump/Rate").
struct OpcItemWish {
  std::string id;
  OpcDataType type = {};
  bool isActive = true;
  std::int32_t clientHandle = 0;  ///< comes back with each of its values
};

/// What the server says of an item.
struct OpcItemAnswer {
  OpcStatus status = kOpcGood;
  std::int32_t serverHandle = 0;
  OpcDataType canonicalType = {};  ///< in which the server keeps it
  bool isReadable = false;
  bool isWritable = false;
  bool hasRange = false;  ///< an engineering range, which a deadband is a share of
};

/// Good 192, uncertain 64, bad 0, with what lies below them.
inline constexpr std::int32_t kOpcQualityGood = 192;
inline constexpr std::int32_t kOpcQualityUncertain = 64;
inline constexpr std::int32_t kOpcQualityBad = 0;

struct OpcChange {
  std::int32_t clientHandle = 0;
  OpcValue value;
  std::int32_t quality = kOpcQualityBad;
  double timeStamp = 0;  ///< local wall clock
};

struct OpcSubscriptionWish {
  std::string name = {};     ///< empty: one is given
  int updateRate = 100;      ///< milliseconds
  float deadBand = 0;        ///< percent of the engineering range, 0 to 100
  bool isActive = true;      ///< publishes
  bool mayBeShared = false;  ///< with others of one session that wish the same under this name
};

/// A subscription of a session and its items, which are made again by themselves when a server that went comes back.
class OpcSubscription {
 public:
  using Changes = std::function<void(std::span<const OpcChange>)>;
  using Added = std::function<void(const OpcItemAnswer&)>;

  virtual ~OpcSubscription() = default;

  virtual const std::string& Name() const = 0;
  /// Told of the values of this handle's items.
  virtual void SetHandler(Changes handler) = 0;

  virtual void SetUpdateRate(int milliseconds, OpcDone done) = 0;
  virtual void SetDeadBand(float percent, OpcDone done) = 0;
  /// Publishing on and off.
  virtual void SetActive(bool active, OpcDone done) = 0;

  virtual void Add(const OpcItemWish& item, Added done) = 0;
  virtual void Remove(std::int32_t serverHandle, OpcDone done) = 0;
  virtual void SetItemActive(std::int32_t serverHandle, bool active, OpcDone done) = 0;
  /// The value in the type that the server keeps it in; TypeMismatch where there is no way there.
  virtual void Write(std::int32_t serverHandle, const OpcValue& value, OpcDone done) = 0;
};

/// What a session tells by itself.
struct OpcSessionEvents {
  std::function<void()> onShutDown = {};  ///< the server announced its end, or is gone without having done so
  std::function<void()> onLost = {};      ///< nothing comes; it is tried again
  std::function<void()> onBack = {};      ///< tried with success: items live again
};

/// A connection to a server. It is tried again by itself after a loss, with pauses that grow up to 30 s.
class OpcSession {
 public:
  using Status = std::function<void(OpcStatus, const OpcServerStatus&)>;
  using Pages = std::function<void(const OpcPage&)>;
  using Validated = std::function<void(const OpcItemAnswer&)>;

  virtual ~OpcSession() = default;

  virtual void SetEvents(OpcSessionEvents events) = 0;
  virtual bool IsLive() const = 0;

  virtual void ReadStatus(Status done) = 0;
  /// What stands below a node, in pages as they come; an empty identifier is the root of what a user browses.
  virtual void Browse(const std::string& nodeId, Pages page) = 0;
  /// Whether an item could be added.
  virtual void Validate(const OpcItemWish& item, Validated done) = 0;

  /// The subscription is there when `done` says so; null where the wish makes no sense, which is told at once.
  virtual std::unique_ptr<OpcSubscription> Subscribe(const OpcSubscriptionWish& wish, OpcDone done) = 0;
};

class OpcTransport {
 public:
  using Servers = std::function<void(OpcStatus, const std::vector<OpcServerEntry>&)>;
  using Connected = std::function<void(OpcStatus, std::unique_ptr<OpcSession>)>;

  virtual ~OpcTransport() = default;

  /// The servers that a host ("" for this machine, "10.0.0.5:4841") knows of.
  virtual void FindServers(const std::string& host, Servers done) = 0;
  /// The operator begins anew: what he refused is asked about once more.
  virtual void ForgetRefusals() {}
  /// A session of the caller's; below, those to one endpoint share one connection.
  virtual void Connect(const OpcPlace& place, Connected done) = 0;
};

}  // namespace velk
