#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/opc/opc_transport.h"
#include "platform/opc/ua/ua_connection.h"
#include "platform/opc/ua/ua_reading.h"

namespace velk::ua {

/// Who has items in a group. Told by posts.
struct ItemOwner {
  OpcSubscription::Changes handler;
  std::vector<OpcChange> waiting;  ///< until the post that tells them runs
};

/// A subscription at the server. It keeps what was asked for and makes it again when the server is back; what the
/// server refuses then is tried again with pauses that grow up to 30 s.
class Group : public ConnectionUser, public std::enable_shared_from_this<Group> {
 public:
  Group(ConnectionPointer connection, const OpcSubscriptionWish& wish);
  ~Group() override;

  const OpcSubscriptionWish& Wish() const { return wish_; }
  /// `done` here and below is told from inside the library's work.
  void Open() { Make(); }
  /// Told when the server has it, or refused it; at once where it has.
  void WhenMade(OpcDone done);
  void SetUpdateRate(int milliseconds, const OpcDone& done);
  void SetDeadBand(float percent, const OpcDone& done);
  void SetActive(bool active, OpcDone done);

  void AddItem(const std::shared_ptr<ItemOwner>& owner, const OpcItemWish& wish, OpcSubscription::Added done);
  void RemoveItem(std::int32_t serverHandle, const OpcDone& done);
  void SetItemActive(std::int32_t serverHandle, bool active, OpcDone done);
  /// Refused at once, and nothing sent, where there is no such item or the value has no way into its type.
  OpcStatus WriteItem(std::int32_t serverHandle, const OpcValue& value, OpcDone done);

  /// What the server says of an item, without one being made.
  static void Describe(
      const ConnectionPointer& connection, const OpcItemWish& wish,
      std::function<void(const OpcItemAnswer&, const std::string& node, const std::string& type)> done);

  void OnLive() override;
  void OnLost() override;

 private:
  struct Item {
    std::weak_ptr<ItemOwner> owner;
    OpcItemWish wish;
    OpcItemAnswer answer;
    std::string node;
    std::string dataType;
    UA_UInt32 monitored = 0;  ///< the server's number of it; 0: none
    bool isAsked = false;     ///< the server is being asked for it
  };

  void Make();
  void TakeMade(OpcStatus status, UA_UInt32 subscription);
  void TellMade(OpcStatus status);
  void TryLater();
  void Retry();
  void Watch(std::int32_t serverHandle, const OpcDone& done);
  void TakeWatched(std::int32_t serverHandle, OpcStatus status, UA_UInt32 monitored, const OpcDone& done);
  void WatchAgain(std::int32_t serverHandle);
  void WatchAnew(bool rangedOnly, const OpcDone& done);
  void Unwatch(std::vector<UA_UInt32> monitored);
  void NoteMissing(std::int32_t serverHandle);
  std::vector<std::int32_t> Handles() const;
  void TakeValue(const Item& item, const UA_DataValue& value);
  void NoteGone(std::int32_t serverHandle, Item& item);
  void Tell(const std::shared_ptr<ItemOwner>& owner, OpcChange change);
  static void TakeNotification(UA_Client* client, UA_UInt32 subscription, void* group, UA_UInt32 monitored, void* item,
                               UA_DataValue* value);
  static void TakeStatusChange(UA_Client* client, UA_UInt32 subscription, void* group,
                               UA_StatusChangeNotification* change);

  ConnectionPointer connection_;
  OpcSubscriptionWish wish_;
  UA_UInt32 subscription_ = 0;  ///< the server's number of it; 0: none
  bool isBeingMade_ = false;
  std::unique_ptr<Timer> retry_;  ///< of what the server has refused when it was back
  std::vector<OpcDone> whenMade_;
  std::map<std::int32_t, Item> items_;
  std::int32_t lastHandle_ = 0;
};

}  // namespace velk::ua
