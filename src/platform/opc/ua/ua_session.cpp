#include "platform/opc/ua/ua_session.h"

#include <utility>
#include <vector>

#include "base/numbers.h"
#include "platform/opc/ua/ua_values.h"

namespace velk::ua {

namespace {

constexpr UA_UInt32 kServerStatusNode = 2256;

OpcServerState StateOf(UA_ServerState state) {
  switch (state) {
    case UA_SERVERSTATE_RUNNING:
      return OpcServerState::Running;
    case UA_SERVERSTATE_FAILED:
      return OpcServerState::Failed;
    case UA_SERVERSTATE_NOCONFIGURATION:
      return OpcServerState::NoConfiguration;
    case UA_SERVERSTATE_SUSPENDED:
      return OpcServerState::Suspended;
    case UA_SERVERSTATE_TEST:
      return OpcServerState::Test;
    default:
      return OpcServerState::Disconnected;
  }
}

OpcServerStatus StatusOf(const UA_ServerStatusDataType& told, double lastUpdate) {
  OpcServerStatus status;
  status.state = StateOf(told.state);
  status.vendor = TextOf(told.buildInfo.manufacturerName);
  status.version = TextOf(told.buildInfo.softwareVersion);
  status.build = TextOf(told.buildInfo.buildNumber);
  status.startTime = DaysOf(told.startTime);
  status.currentTime = DaysOf(told.currentTime);
  status.lastUpdate = lastUpdate;
  return status;
}

/// Hands what the library told on to whoever asked, by a post: a box of theirs must not stand inside the library's
/// work. Nobody is told once `life` has ended.
class Teller {
 public:
  Teller(Clock& clock, std::weak_ptr<char> life) : clock_(clock), life_(std::move(life)) {}

  void Post(std::function<void()> task) const {
    clock_.Post([life = life_, task = std::move(task)] {
      if (!life.expired()) task();
    });
  }
  OpcDone Later(OpcDone done) const {
    return [self = *this, done = std::move(done)](OpcStatus status) { self.Post([done, status] { done(status); }); };
  }

 private:
  Clock& clock_;
  std::weak_ptr<char> life_;
};

/// The pages of a folder, told in their order however long each of them takes.
class PagesInARow {
 public:
  PagesInARow(Teller tell, OpcSession::Pages page) : tell_(std::move(tell)), page_(std::move(page)) {}

  std::size_t TakePlace() { return places_++; }
  void Put(std::size_t place, OpcPage whole) {
    ready_[place] = std::move(whole);
    for (auto next = ready_.find(told_); next != ready_.end(); next = ready_.find(++told_)) {
      tell_.Post([told = std::move(next->second), page = page_] { page(told); });
      ready_.erase(next);
    }
  }

 private:
  Teller tell_;
  OpcSession::Pages page_;
  std::map<std::size_t, OpcPage> ready_;
  std::size_t places_ = 0;
  std::size_t told_ = 0;
};

OpcPage PageOf(OpcStatus status, const std::vector<Reference>& references, bool isLast) {
  OpcPage page;
  page.status = status;
  page.isLast = isLast || !IsGood(status);
  for (const Reference& reference : references) {
    OpcNode node;
    node.name = reference.name;
    node.id = reference.id;
    node.isBranch = !reference.isVariable;
    node.isVariable = reference.isVariable;
    page.nodes.push_back(std::move(node));
  }
  return page;
}

/// Of the variables among the nodes, in their order.
void TakeTraits(std::vector<OpcNode>& nodes, const std::vector<Traits>& traits) {
  std::size_t next = 0;
  for (OpcNode& node : nodes) {
    if (!node.isVariable) continue;
    const Traits& own = traits.at(next++);
    node.type = own.type;
    node.isReadable = own.isReadable;
    node.isWritable = own.isWritable;
  }
}

/// A group as its user has it: alone, or with others who wish the same.
class SubscriptionHandle : public OpcSubscription {
 public:
  SubscriptionHandle(Clock& clock, std::shared_ptr<Group> group, std::string name)
      : tell_(clock, life_), group_(std::move(group)), name_(std::move(name)) {}
  ~SubscriptionHandle() override {
    for (const std::int32_t handle : handles_) group_->RemoveItem(handle, [](OpcStatus) {});
  }

  const std::string& Name() const override { return name_; }
  void SetHandler(Changes handler) override { owner_->handler = std::move(handler); }
  void SetUpdateRate(int milliseconds, OpcDone done) override {
    group_->SetUpdateRate(milliseconds, tell_.Later(std::move(done)));
  }
  void SetDeadBand(float percent, OpcDone done) override { group_->SetDeadBand(percent, tell_.Later(std::move(done))); }
  void SetActive(bool active, OpcDone done) override { group_->SetActive(active, tell_.Later(std::move(done))); }

  void Add(const OpcItemWish& item, Added done) override {
    group_->AddItem(owner_, item, [this, tell = tell_, life = std::weak_ptr(life_), done](const OpcItemAnswer& answer) {
      if (life.expired()) return;
      if (IsGood(answer.status)) handles_.insert(answer.serverHandle);
      tell.Post([done, answer] { done(answer); });
    });
  }

  void Remove(std::int32_t serverHandle, OpcDone done) override {
    if (handles_.count(serverHandle) == 0) return tell_.Later(std::move(done))(kOpcUnknownItem);
    group_->RemoveItem(serverHandle,
                       [this, serverHandle, tell = tell_, life = std::weak_ptr(life_), done](OpcStatus status) {
                         if (life.expired()) return;
                         if (IsGood(status)) handles_.erase(serverHandle);
                         tell.Post([done, status] { done(status); });
                       });
  }

  void SetItemActive(std::int32_t serverHandle, bool active, OpcDone done) override {
    group_->SetItemActive(serverHandle, active, tell_.Later(std::move(done)));
  }

  void Write(std::int32_t serverHandle, const OpcValue& value, OpcDone done) override {
    const OpcStatus refused = group_->WriteItem(serverHandle, value, tell_.Later(done));
    if (!IsGood(refused)) done(refused);
  }

 private:
  std::shared_ptr<char> life_ = std::make_shared<char>();
  Teller tell_;
  std::shared_ptr<Group> group_;
  std::string name_;
  std::shared_ptr<ItemOwner> owner_ = std::make_shared<ItemOwner>();
  std::set<std::int32_t> handles_;
};

class Session : public OpcSession, private ConnectionUser {
 public:
  explicit Session(std::shared_ptr<SharedConnection> shared)
      : shared_(std::move(shared)), tell_(shared_->connection->Time(), life_) {
    shared_->connection->Add(*this);
  }
  ~Session() override { shared_->connection->Remove(*this); }

  void SetEvents(OpcSessionEvents events) override { events_ = std::move(events); }
  bool IsLive() const override { return shared_->connection->IsLive(); }

  void ReadStatus(Status done) override;
  void Browse(const std::string& nodeId, Pages page) override;
  void Validate(const OpcItemWish& item, Validated done) override;
  std::unique_ptr<OpcSubscription> Subscribe(const OpcSubscriptionWish& wish, OpcDone done) override;

 private:
  void OnLive() override {
    isEnding_ = false;
    tell_.Post([this] {
      if (events_.onBack) events_.onBack();
    });
  }
  void OnShutDown() override {
    isEnding_ = true;
    tell_.Post([this] {
      if (events_.onShutDown) events_.onShutDown();
    });
  }
  void OnLost() override {
    if (!isEnding_) OnShutDown();
    tell_.Post([this] {
      if (events_.onLost) events_.onLost();
    });
  }
  static void TakeReferencesOf(const ConnectionPointer& connection, OpcPage told,
                               const std::shared_ptr<PagesInARow>& row);
  std::string NewName() { return "Group " + std::to_string(++lastName_); }

  std::shared_ptr<SharedConnection> shared_;
  OpcSessionEvents events_;
  std::shared_ptr<char> life_ = std::make_shared<char>();
  Teller tell_;
  int lastName_ = 0;
  bool isEnding_ = false;  ///< the end of the server was told
};

void Session::ReadStatus(Status done) {
  UA_ReadValueId what;
  UA_ReadValueId_init(&what);
  what.nodeId = UA_NODEID_NUMERIC(0, kServerStatusNode);
  what.attributeId = UA_ATTRIBUTEID_VALUE;
  UA_ReadRequest request;
  UA_ReadRequest_init(&request);
  request.nodesToRead = &what;
  request.nodesToReadSize = 1;
  shared_->connection->Call<UA_ReadResponse>(
      &request, UA_TYPES_READREQUEST, UA_TYPES_READRESPONSE,
      [tell = tell_, connection = std::weak_ptr(shared_->connection), done = std::move(done)](
          OpcStatus status, UA_ReadResponse* response) {
        OpcServerStatus told;
        const bool isAnswered = response != nullptr && response->resultsSize == 1 && response->results[0].hasValue;
        const auto alive = connection.lock();
        if (isAnswered && alive &&
            UA_Variant_hasScalarType(&response->results[0].value, &UA_TYPES[UA_TYPES_SERVERSTATUSDATATYPE])) {
          told = StatusOf(*static_cast<UA_ServerStatusDataType*>(response->results[0].value.data), alive->LastUpdate());
        } else if (IsGood(status)) {
          status = kOpcTypeMismatch;
        }
        tell.Post([done, status, told] { done(status, told); });
      });
}

/// The traits of a page's variables and whether they have parts are read behind the page, and the next page is asked
/// for meanwhile.
void Session::Browse(const std::string& nodeId, Pages page) {
  const auto row = std::make_shared<PagesInARow>(tell_, std::move(page));
  BrowseNode(shared_->connection, nodeId.empty() ? kObjectsId : nodeId,
             [this, life = std::weak_ptr(life_), row](OpcStatus status, const std::vector<Reference>& references,
                                                      bool isLast) {
               if (life.expired()) return false;
               TakeReferencesOf(shared_->connection, PageOf(status, references, isLast), row);
               return true;
             });
}

void Session::TakeReferencesOf(const ConnectionPointer& connection, OpcPage told,
                               const std::shared_ptr<PagesInARow>& row) {
  const std::size_t place = row->TakePlace();
  std::vector<std::string> variables;
  for (const OpcNode& node : told.nodes)
    if (node.isVariable) variables.push_back(node.id);
  if (variables.empty()) return row->Put(place, std::move(told));
  ReadTraits(connection, variables,
             [told = std::move(told), row, place, variables, weak = std::weak_ptr(connection)](
                 OpcStatus read, const std::vector<Traits>& traits) mutable {
               const ConnectionPointer alive = weak.lock();
               if (!alive) return;
               if (!IsGood(read)) {
                 told.status = read;
                 return row->Put(place, std::move(told));
               }
               TakeTraits(told.nodes, traits);
               ReadHaveParts(alive, variables,
                             [told = std::move(told), row, place](const std::vector<bool>& haveParts) {
                               OpcPage whole = told;
                               std::size_t next = 0;
                               for (OpcNode& node : whole.nodes)
                                 if (node.isVariable) node.isBranch = haveParts.at(next++);
                               row->Put(place, std::move(whole));
                             });
             });
}

void Session::Validate(const OpcItemWish& item, Validated done) {
  if (!IsLive()) return tell_.Post([done] { done({.status = kOpcNotConnected}); });
  Group::Describe(
      shared_->connection, item,
      [tell = tell_, done = std::move(done)](const OpcItemAnswer& answer, const std::string&, const std::string&) {
        tell.Post([done, answer] { done(answer); });
      });
}

std::unique_ptr<OpcSubscription> Session::Subscribe(const OpcSubscriptionWish& wish, OpcDone done) {
  OpcSubscriptionWish named = wish;
  if (named.name.empty()) named.name = NewName();
  const bool isSound = wish.updateRate >= 0 && wish.deadBand >= 0 && wish.deadBand <= 100;
  if (!isSound) {
    tell_.Later(std::move(done))(kOpcOutOfRange);
    return nullptr;
  }
  const std::string key = named.name + "\n" + std::to_string(wish.updateRate) + "\n" + NumberText(wish.deadBand);
  std::shared_ptr<Group> group = wish.mayBeShared ? shared_->groups[key].lock() : nullptr;
  if (group) {
    // Its user waits for the same answer as the first one: items are added behind it.
    group->WhenMade(tell_.Later(std::move(done)));
  } else {
    group = std::make_shared<Group>(shared_->connection, named);
    if (wish.mayBeShared) shared_->groups[key] = group;
    group->WhenMade(tell_.Later(std::move(done)));
    group->Open();
  }
  return std::make_unique<SubscriptionHandle>(shared_->connection->Time(), group, named.name);
}

}  // namespace

std::unique_ptr<OpcSession> MakeSession(std::shared_ptr<SharedConnection> shared) {
  return std::make_unique<Session>(std::move(shared));
}

}  // namespace velk::ua
