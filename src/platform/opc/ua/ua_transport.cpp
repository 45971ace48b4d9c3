#include "platform/opc/ua/ua_transport.h"

#include <QHostAddress>
#include <QHostInfo>
#include <QObject>
#include <QUrl>
#include <algorithm>
#include <map>
#include <utility>

#include "base/text_qt.h"
#include "platform/opc/opc_id.h"
#include "platform/opc/ua/ua_opening.h"
#include "platform/opc/ua/ua_session.h"

namespace velk {

namespace ua {
namespace {

constexpr std::string_view kScheme = "opc.tcp://";

/// Asks one endpoint for the servers that it knows of.
class Finder : private ConnectionUser {
 public:
  Finder(Clock& clock, const std::string& url, std::string hostName, OpcTransport::Servers done)
      : connection_(std::make_shared<Connection>(clock, url, Connection::Depth::Channel)),
        hostName_(std::move(hostName)),
        done_(std::move(done)) {
    connection_->Add(*this);
  }
  ~Finder() override { connection_->Remove(*this); }

  void Begin() {
    connection_->Open([this](OpcStatus status) { End(status, {}); });
  }

 private:
  void OnLive() override;
  void OnLost() override {}
  void Take(const UA_FindServersResponse& response);
  void End(OpcStatus status, const std::vector<OpcServerEntry>& servers) {
    if (const OpcTransport::Servers done = std::exchange(done_, nullptr)) done(status, servers);
  }

  ConnectionPointer connection_;
  std::string hostName_;
  OpcTransport::Servers done_;
  std::shared_ptr<char> life_ = std::make_shared<char>();
};

/// A channel that closes under the question is opened anew, and the question asked again.
void Finder::OnLive() {
  UA_FindServersRequest request;
  UA_FindServersRequest_init(&request);
  request.endpointUrl = ViewOf(connection_->Url());
  connection_->Call<UA_FindServersResponse>(
      &request, UA_TYPES_FINDSERVERSREQUEST, UA_TYPES_FINDSERVERSRESPONSE,
      [this, life = std::weak_ptr(life_)](OpcStatus, UA_FindServersResponse* response) {
        if (!life.expired() && response != nullptr) Take(*response);
      });
}

void Finder::Take(const UA_FindServersResponse& response) {
  std::vector<OpcServerEntry> servers;
  for (std::size_t i = 0; i < response.serversSize; ++i) {
    const UA_ApplicationDescription& server = response.servers[i];
    if (server.applicationType == UA_APPLICATIONTYPE_CLIENT) continue;
    for (std::size_t j = 0; j < server.discoveryUrlsSize; ++j) {
      const std::optional<std::string> url = WithOpcHost(TextOf(server.discoveryUrls[j]), hostName_);
      if (!url) continue;
      servers.push_back({TextOf(server.applicationName.text), *url});
      break;
    }
  }
  End(kOpcGood, servers);
}

/// What has ended is let go of by a post: it may be inside the work of its own connection.
class UaTransport : public OpcTransport {
 public:
  UaTransport(Clock& clock, std::string folder, OpcQuestions* questions, OpcLookUp lookUp)
      : clock_(clock), lookUp_(std::move(lookUp)), pki_(std::move(folder)), questions_(questions) {
    if (!lookUp_) lookUp_ = [this](const std::string& host, const auto& found) { LookUp(host, found); };
  }

  void FindServers(const std::string& host, Servers done) override;
  void ForgetRefusals() override { said_.refused.clear(); }
  void Connect(const OpcPlace& place, Connected done) override;

 private:
  /// An endpoint that is being connected to, and who waits for it.
  struct Pending {
    std::unique_ptr<Opening> opening;
    std::vector<Connected> waiting;
  };
  /// A host that is being asked for its servers, and who waits for them.
  struct Search {
    std::unique_ptr<Finder> finder;
    std::vector<Servers> waiting;
  };

  void Post(std::function<void()> task);
  void ConnectNamed(const OpcPlace& place, Connected done);
  void ConnectHost(const std::string& url, Connected done);
  /// Tells the URL with an address in place of the host's name, or nothing where nobody knows the name.
  void Reach(const std::string& url, const std::function<void(const std::optional<std::string>&)>& reached);
  void ConnectUrl(const std::string& url, const std::string& named, Connected done);
  void TellFound(const std::string& url, OpcStatus status, const std::vector<OpcServerEntry>& servers);
  void TellOpened(const std::string& url, const std::string& named, OpcStatus status,
                  const ConnectionPointer& connection);
  using Found = std::function<void(const std::vector<std::string>& addresses)>;
  void LookUp(const std::string& host, const Found& found);
  void LookUpAgain(const std::weak_ptr<Connection>& connection, const std::string& named);

  Clock& clock_;
  OpcLookUp lookUp_;
  QObject context_;  ///< look-ups of hosts end with it
  const Pki pki_;
  OpcQuestions* questions_;
  Said said_;
  std::map<std::string, Search> searches_;
  std::map<std::string, Pending> opening_;
  std::map<std::string, std::weak_ptr<SharedConnection>> open_;
  std::shared_ptr<char> life_ = std::make_shared<char>();
};

void UaTransport::Post(std::function<void()> task) {
  clock_.Post([life = std::weak_ptr(life_), task = std::move(task)] {
    if (!life.expired()) task();
  });
}

/// Many items may be connected at once, and a small controller has room for few channels: those that ask the same wait
/// for one answer.
void UaTransport::FindServers(const std::string& host, Servers done) {
  const std::optional<std::string> url = OpcHostUrl(host);
  if (!url) return Post([done] { done(kOpcBadId, {}); });
  std::vector<Servers>& waiting = searches_[*url].waiting;
  waiting.push_back(std::move(done));
  if (waiting.size() > 1) return;
  Reach(*url, [this, at = *url, name = *OpcHostName(host)](const std::optional<std::string>& reached) {
    const auto tell = [this, at](OpcStatus status, const std::vector<OpcServerEntry>& servers) {
      Post([this, at, status, servers] { TellFound(at, status, servers); });
    };
    if (!reached) return tell(kOpcNoServer, {});
    Search& search = searches_.at(at);
    search.finder = std::make_unique<Finder>(clock_, *reached, name, tell);
    search.finder->Begin();
  });
}

void UaTransport::TellFound(const std::string& url, OpcStatus status, const std::vector<OpcServerEntry>& servers) {
  const auto found = searches_.find(url);
  const Search search = std::move(found->second);
  searches_.erase(found);
  for (const Servers& done : search.waiting) done(status, servers);
}

void UaTransport::Connect(const OpcPlace& place, Connected done) {
  if (place.server.substr(0, kScheme.size()) != kScheme) return ConnectNamed(place, std::move(done));
  const std::optional<std::string> url = WithOpcHost(place.server, place.host);
  if (!url) return Post([done] { done(kOpcBadId, nullptr); });
  ConnectHost(*url, std::move(done));
}

void UaTransport::ConnectNamed(const OpcPlace& place, Connected done) {
  FindServers(place.host, [this, name = place.server, done = std::move(done)](
                              OpcStatus status, const std::vector<OpcServerEntry>& servers) {
    if (!IsGood(status)) return done(status, nullptr);
    const auto found =
        std::find_if(servers.begin(), servers.end(), [&](const OpcServerEntry& each) { return each.name == name; });
    if (found == servers.end()) return done(kOpcNotFound, nullptr);
    ConnectHost(found->url, done);
  });
}

/// The URL with the first address that was found for its host.
std::optional<std::string> WithAddress(const std::string& url, const std::vector<std::string>& addresses) {
  if (addresses.empty()) return std::nullopt;
  const std::string& address = addresses.front();
  const bool isLong = address.find(':') != std::string::npos;
  return WithOpcHost(url, isLong ? "[" + address + "]" : address);
}

/// Servers of plants listen on the short kind of addresses; the long kind is taken where there is no other.
void UaTransport::LookUp(const std::string& host, const Found& found) {
  QHostInfo::lookupHost(ToQt(host), &context_, [found](const QHostInfo& info) {
    std::vector<std::string> addresses;
    for (const QHostAddress& each : info.addresses())
      if (each.protocol() == QAbstractSocket::IPv4Protocol) addresses.push_back(FromQt(each.toString()));
    for (const QHostAddress& each : info.addresses())
      if (each.protocol() == QAbstractSocket::IPv6Protocol) addresses.push_back(FromQt(each.toString()));
    found(addresses);
  });
}

/// The library would look a name up on the stack, which can take long.
void UaTransport::Reach(const std::string& url, const std::function<void(const std::optional<std::string>&)>& reached) {
  const QString host = QUrl(ToQt(url)).host();
  if (host == "localhost") return reached(WithOpcHost(url, "127.0.0.1"));
  if (!QHostAddress(host).isNull()) return reached(url);
  lookUp_(FromQt(host), [life = std::weak_ptr(life_), url, reached](const std::vector<std::string>& addresses) {
    if (!life.expired()) reached(WithAddress(url, addresses));
  });
}

void UaTransport::ConnectHost(const std::string& url, Connected done) {
  Reach(url, [this, url, done = std::move(done)](const std::optional<std::string>& reached) {
    if (!reached) return Post([done] { done(kOpcNoServer, nullptr); });
    const QString host = QUrl(ToQt(url)).host();
    const bool isNamed = host != "localhost" && QHostAddress(host).isNull();
    ConnectUrl(*reached, isNamed ? url : std::string(), done);
  });
}

/// A host may have got another address while it was away.
void UaTransport::LookUpAgain(const std::weak_ptr<Connection>& connection, const std::string& named) {
  lookUp_(FromQt(QUrl(ToQt(named)).host()), [connection, named](const std::vector<std::string>& addresses) {
    const ConnectionPointer alive = connection.lock();
    const std::optional<std::string> found = WithAddress(named, addresses);
    if (alive && found) alive->SetUrl(*found);
  });
}

void UaTransport::ConnectUrl(const std::string& url, const std::string& named, Connected done) {
  if (const std::shared_ptr<SharedConnection> shared = open_[url].lock()) {
    return Post([shared, done] {
      const bool isLive = shared->connection->IsLive();
      done(isLive ? kOpcGood : kOpcNoServer, isLive ? MakeSession(shared) : nullptr);
    });
  }
  Pending& pending = opening_[url];
  pending.waiting.push_back(std::move(done));
  if (pending.opening) return;
  pending.opening = std::make_unique<Opening>(
      clock_, Opening::Trust{pki_, questions_, said_}, url, named.empty() ? url : named,
      [this, url, named](OpcStatus status, const ConnectionPointer& connection) {
        Post([this, url, named, status, connection] { TellOpened(url, named, status, connection); });
      });
  pending.opening->Begin();
}

void UaTransport::TellOpened(const std::string& url, const std::string& named, OpcStatus status,
                             const ConnectionPointer& connection) {
  const auto found = opening_.find(url);
  const Pending opened = std::move(found->second);
  opening_.erase(found);
  std::shared_ptr<SharedConnection> shared;
  if (IsGood(status)) {
    shared = std::make_shared<SharedConnection>();
    shared->connection = connection;
    open_[url] = shared;
    if (!named.empty())
      connection->onFailed = [this, life = std::weak_ptr(life_), weak = std::weak_ptr(connection), named] {
        if (!life.expired()) LookUpAgain(weak, named);
      };
  }
  for (const Connected& done : opened.waiting) done(status, shared ? MakeSession(shared) : nullptr);
}

}  // namespace
}  // namespace ua

std::unique_ptr<OpcTransport> MakeUaTransport(Clock& clock, OpcQuestions* questions, const std::string& keys,
                                              OpcLookUp lookUp) {
  return std::make_unique<ua::UaTransport>(clock, keys.empty() ? ua::PkiFolder() : keys, questions, std::move(lookUp));
}

}  // namespace velk
