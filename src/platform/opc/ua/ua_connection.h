#pragma once

#include <open62541/client.h>

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>

#include "platform/loop/clock.h"
#include "platform/opc/opc_questions.h"
#include "platform/opc/opc_status.h"
#include "platform/opc/ua/ua_owned.h"
#include "platform/opc/ua/ua_pki.h"

namespace velk::ua {

/// A client of the library, ended without waiting for a server that is silent.
struct EndClient {
  void operator()(UA_Client* client) const;
};
using ClientPointer = std::unique_ptr<UA_Client, EndClient>;

/// A client that says nothing on the terminal and makes nothing anew by itself; null where there is no memory.
/// Its context is the connection, which outlives it.
class Connection;
ClientPointer MakeClient(Connection& connection);

/// What a session is made with beside its URL. A channel for questions needs none of it.
struct Access {
  /// The endpoint that was chosen among the server's, and the place among its tokens of the one that is taken.
  std::shared_ptr<Owned<UA_EndpointDescription>> endpoint = {};
  std::size_t token = 0;
  std::optional<Identity> own = {};  ///< where the endpoint is secured
  std::string pin = {};              ///< the fingerprint that the server's certificate must have
  std::optional<OpcLogin> login = {};
};

/// Who uses a connection. Told from inside the library's work: whoever is told begins calls at most, and posts what
/// may do more.
class ConnectionUser {
 public:
  virtual ~ConnectionUser() = default;
  virtual void OnLive() = 0;
  virtual void OnLost() = 0;
  /// The server says that it is about to end; once.
  virtual void OnShutDown() {}
};

/// A connection to one endpoint. It is made, and made anew after a loss, with pauses that grow up to 30 s; its work is
/// done in ticks of the event loop, none of which waits for the network.
class Connection {
 public:
  static constexpr int kTickMilliseconds = 20;
  static constexpr int kHurryMilliseconds = 2;         ///< between two ticks while an answer is awaited
  static constexpr int kAnswerMilliseconds = 4000;     ///< for one answer
  static constexpr int kConnectMilliseconds = 4500;    ///< for a session, all told
  static constexpr int kFirstPauseMilliseconds = 500;  ///< and twice as long each time
  static constexpr int kLastPauseMilliseconds = 30000;

  /// With a session, or with no more than the channel that servers are listed over.
  enum class Depth { Channel, Session };

  Connection(Clock& clock, std::string url, Depth depth = Depth::Session, Access access = {});
  ~Connection();
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  /// Begins to connect. `first` is told once what came of the first try; after a failed one nothing more is tried. Over
  /// a channel alone it is told of a failure only: users ask at each OnLive until one answer has come.
  void Open(OpcDone first);
  bool IsLive() const { return isLive_; }
  const std::string& Url() const { return url_; }
  /// Where the next try goes.
  void SetUrl(const std::string& url) { url_ = url; }
  const Access& How() const { return access_; }
  /// A try behind a loss has failed, and another will come.
  std::function<void()> onFailed;

  void Add(ConnectionUser& user) { users_.insert(&user); }
  void Remove(ConnectionUser& user) { users_.erase(&user); }
  bool Has(ConnectionUser* user) const { return users_.count(user) != 0; }
  /// The server does not answer, or brings no more values: all is made anew.
  void NoteSilence() { isSilent_ = true; }

  /// An answer is on its way: ticks come closer for a moment.
  void Hurry();

  Clock& Time() { return clock_; }
  UA_Client* Client() { return client_.get(); }
  void NoteUpdate() { lastUpdate_ = clock_.Now(); }
  double LastUpdate() const { return lastUpdate_; }  ///< 0: nothing came yet

  /// Sends a request. `done` is told once, from inside the library's work, with the answer or, for a failed call, with
  /// null.
  template <class Response>
  void Call(const void* request, int requestType, int responseType, std::function<void(OpcStatus, Response*)> done);

 private:
  void Try();
  void Tick();
  /// Whether what the depth asks for is there.
  bool IsOpen() const;
  void BecomeLive();
  void LookAtState();
  void TakeState(OpcStatus status, const UA_ReadResponse* response);
  void Fail(OpcStatus status);
  /// As Call, without a hurry; nothing but whether it was sent.
  template <class Response>
  UA_StatusCode Send(const void* request, int requestType, int responseType,
                     const std::function<void(OpcStatus, Response*)>& done);
  void TellUsers(void (ConnectionUser::*what)());

  Clock& clock_;
  std::string url_;
  Depth depth_;
  Access access_;
  bool isSilent_ = false;
  ClientPointer client_;
  std::unique_ptr<Timer> timer_;
  OpcDone first_;
  std::set<ConnectionUser*> users_;
  bool isLive_ = false;
  std::int64_t deadline_ = 0;  ///< of the try; behind a failed one, when the next begins
  int pause_ = kFirstPauseMilliseconds;
  double lastUpdate_ = 0;
  std::int64_t hurriesUntil_ = 0;
  bool isLooking_ = false;     ///< the server is being asked for its state
  std::int64_t nextLook_ = 0;  ///< when it is asked again
  bool isEnding_ = false;      ///< it has said so
};

/// What the library hands back with an answer.
struct PendingCall {
  std::function<void(OpcStatus, void*)> done;
};
void TakeAnswer(UA_Client* client, void* pending, UA_UInt32 request, void* response);

/// What becomes of an answer: `done` is handed it, or null for a failed call.
template <class Response>
std::unique_ptr<PendingCall> Pending(std::function<void(OpcStatus, Response*)> done) {
  auto pending = std::make_unique<PendingCall>();
  pending->done = [done = std::move(done)](OpcStatus status, void* response) {
    done(status, IsGood(status) ? static_cast<Response*>(response) : nullptr);
  };
  return pending;
}

template <class Response>
UA_StatusCode Connection::Send(const void* request, int requestType, int responseType,
                               const std::function<void(OpcStatus, Response*)>& done) {
  auto pending = Pending<Response>(done);
  const UA_StatusCode sent = __UA_Client_AsyncService(client_.get(), request, &UA_TYPES[requestType], TakeAnswer,
                                                      &UA_TYPES[responseType], pending.get(), nullptr);
  if (sent == UA_STATUSCODE_GOOD)
    pending.release();  // NOLINT(bugprone-unused-return-value): TakeAnswer has it, which is called once in any case
  return sent;
}

template <class Response>
void Connection::Call(const void* request, int requestType, int responseType,
                      std::function<void(OpcStatus, Response*)> done) {
  if (!isLive_) return done(kOpcNotConnected, nullptr);
  const UA_StatusCode sent = Send(request, requestType, responseType, done);
  if (sent != UA_STATUSCODE_GOOD) return done(sent, nullptr);
  Hurry();
}

}  // namespace velk::ua
