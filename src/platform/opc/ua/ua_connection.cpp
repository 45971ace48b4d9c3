#include "platform/opc/ua/ua_connection.h"

#include <open62541/client_config_default.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace velk::ua {

namespace {

void SayNothing(void*, UA_LogLevel, UA_LogCategory, const char*, va_list) {
}

UA_Logger silent = {SayNothing, nullptr, nullptr};

/// Every answer of the library begins with this.
OpcStatus ResultOf(const void* response) {
  return static_cast<const UA_ResponseHeader*>(response)->serviceResult;
}

constexpr UA_UInt32 kServerStateNode = 2259;
constexpr std::int64_t kLookMilliseconds = 1000;     ///< between two looks at the server's state
constexpr std::int64_t kHurryingMilliseconds = 100;  ///< how long, behind the last question
constexpr UA_UInt32 kSessionMilliseconds = 60000;
constexpr UA_UInt32 kLongestMessage = 64U << 20;  ///< bytes
constexpr UA_UInt32 kMostChunks = 4096;           ///< of a message

/// Not even a sign of life came of a subscription.
void NoteInactive(UA_Client* client, UA_UInt32 /*subscription*/, void* /*group*/) {
  static_cast<Connection*>(UA_Client_getContext(client))->NoteSilence();
}

/// The channel is made with a key of the certificate that was asked about; here it must be that one still.
UA_StatusCode VerifyPinned(const UA_CertificateVerification* check, const UA_ByteString* certificate) {
  const std::string bytes = TextOf(*certificate);
  const bool isPinned = FingerprintOf(bytes) == static_cast<Connection*>(check->context)->How().pin;
  return isPinned ? UA_STATUSCODE_GOOD : UA_STATUSCODE_BADCERTIFICATEUNTRUSTED;
}

/// What was accepted is the certificate, whatever it calls itself.
UA_StatusCode AcceptUri(const UA_CertificateVerification*, const UA_ByteString*, const UA_String*) {
  return UA_STATUSCODE_GOOD;
}

void KeepPin(UA_CertificateVerification* check) {
  check->context = nullptr;
}

UA_StatusCode SetUpSecured(UA_ClientConfig& config, Connection& connection) {
  const Identity& own = *connection.How().own;
  const UA_StatusCode set =
      UA_ClientConfig_setDefaultEncryption(&config, ViewOf(own.certificate), ViewOf(own.key), nullptr, 0, nullptr, 0);
  if (set != UA_STATUSCODE_GOOD) return set;
  UA_CertificateVerification& check = config.certificateVerification;
  if (check.clear != nullptr) check.clear(&check);
  check.context = &connection;
  check.verifyCertificate = VerifyPinned;
  check.verifyApplicationURI = AcceptUri;
  check.clear = KeepPin;
  UA_String_clear(&config.clientDescription.applicationUri);
  config.clientDescription.applicationUri = CopyOf(kApplicationUri);
  return UA_STATUSCODE_GOOD;
}

/// The endpoint as it was chosen, at the host that was named.
void SetEndpoint(UA_ClientConfig& config, Connection& connection) {
  const Access& access = connection.How();
  if (!access.endpoint) return;
  UA_EndpointDescription& chosen = **access.endpoint;
  UA_EndpointDescription_copy(&chosen, &config.endpoint);
  UA_String_clear(&config.endpoint.endpointUrl);
  config.endpoint.endpointUrl = CopyOf(connection.Url());
  UA_UserTokenPolicy_copy(&chosen.userIdentityTokens[access.token], &config.userTokenPolicy);
  config.securityMode = chosen.securityMode;
  UA_String_copy(&chosen.securityPolicyUri, &config.securityPolicyUri);
  if (access.login)
    UA_ClientConfig_setAuthenticationUsername(&config, access.login->user.c_str(), access.login->password.c_str());
}

}  // namespace

void EndClient::operator()(UA_Client* client) const {
  UA_ClientConfig* const config = UA_Client_getConfig(client);
  config->subscriptionInactivityCallback = nullptr;
  // The farewell is sent, and its answer is not waited for.
  config->timeout = 1;
  UA_Client_delete(client);
}

ClientPointer MakeClient(Connection& connection) {
  UA_ClientConfig config{};
  config.logging = &silent;
  const UA_StatusCode set =
      connection.How().own ? SetUpSecured(config, connection) : UA_ClientConfig_setDefault(&config);
  if (set != UA_STATUSCODE_GOOD) return nullptr;
  SetEndpoint(config, connection);
  config.timeout = Connection::kAnswerMilliseconds;
  config.localConnectionConfig.localMaxMessageSize = kLongestMessage;
  config.localConnectionConfig.localMaxChunkCount = kMostChunks;
  config.requestedSessionTimeout = kSessionMilliseconds;
  config.noNewSession = true;
  config.subscriptionInactivityCallback = NoteInactive;
  config.clientContext = &connection;
  return ClientPointer(UA_Client_newWithConfig(&config));
}

void TakeAnswer(UA_Client* /*client*/, void* pending, UA_UInt32 /*request*/, void* response) {
  const std::unique_ptr<PendingCall> call(static_cast<PendingCall*>(pending));
  call->done(ResultOf(response), response);
}

Connection::Connection(Clock& clock, std::string url, Depth depth, Access access)
    : clock_(clock), url_(std::move(url)), depth_(depth), access_(std::move(access)), timer_(clock.MakeQuickTimer()) {
  timer_->SetInterval(kTickMilliseconds);
  timer_->SetHandler([this] { Tick(); });
}

Connection::~Connection() {
  isLive_ = false;
  timer_->SetEnabled(false);
  client_.reset();
}

void Connection::Open(OpcDone first) {
  first_ = std::move(first);
  timer_->SetEnabled(true);
  Try();
}

void Connection::Try() {
  isSilent_ = false;
  Hurry();
  client_ = MakeClient(*this);
  deadline_ = clock_.Ticks() + kConnectMilliseconds;
  const auto connect = depth_ == Depth::Session ? UA_Client_connectAsync : UA_Client_connectSecureChannelAsync;
  const UA_StatusCode begun = client_ ? connect(client_.get(), url_.c_str()) : UA_STATUSCODE_BADOUTOFMEMORY;
  if (begun != UA_STATUSCODE_GOOD) Fail(begun);
}

void Connection::Hurry() {
  hurriesUntil_ = clock_.Ticks() + kHurryingMilliseconds;
  if (timer_->Interval() != kHurryMilliseconds) timer_->SetInterval(kHurryMilliseconds);
}

void Connection::Tick() {
  if (timer_->Interval() != kTickMilliseconds && clock_.Ticks() > hurriesUntil_) timer_->SetInterval(kTickMilliseconds);
  if (!client_) {
    if (clock_.Ticks() >= deadline_) Try();
    return;
  }
  UA_Client_run_iterate(client_.get(), 0);
  UA_StatusCode status = UA_STATUSCODE_GOOD;
  UA_Client_getState(client_.get(), nullptr, nullptr, &status);
  // On its way to the endpoint the library opens the channel more than once.
  if (isLive_ && depth_ == Depth::Channel) isLive_ = IsOpen();
  if (isLive_ && depth_ == Depth::Session) {
    if (!IsOpen() || isSilent_) return Fail(UA_STATUSCODE_BADCONNECTIONCLOSED);
    LookAtState();
  } else if (isLive_) {
    if (clock_.Ticks() >= deadline_) Fail(kOpcTimeout);
  } else if (IsOpen()) {
    BecomeLive();
  } else if (status != UA_STATUSCODE_GOOD) {
    Fail(status);
  } else if (clock_.Ticks() >= deadline_) {
    Fail(kOpcTimeout);
  }
}

bool Connection::IsOpen() const {
  UA_SecureChannelState channel = UA_SECURECHANNELSTATE_CLOSED;
  UA_SessionState session = UA_SESSIONSTATE_CLOSED;
  UA_Client_getState(client_.get(), &channel, &session, nullptr);
  return depth_ == Depth::Session ? session == UA_SESSIONSTATE_ACTIVATED : channel == UA_SECURECHANNELSTATE_OPEN;
}

/// The same question tells whether the server still answers, and whether it is about to end.
void Connection::LookAtState() {
  if (isLooking_ || clock_.Ticks() < nextLook_) return;
  UA_ReadValueId what;
  UA_ReadValueId_init(&what);
  what.nodeId = UA_NODEID_NUMERIC(0, kServerStateNode);
  what.attributeId = UA_ATTRIBUTEID_VALUE;
  UA_ReadRequest request;
  UA_ReadRequest_init(&request);
  request.nodesToRead = &what;
  request.nodesToReadSize = 1;
  isLooking_ = true;
  const UA_StatusCode sent =
      Send<UA_ReadResponse>(&request, UA_TYPES_READREQUEST, UA_TYPES_READRESPONSE,
                            [this](OpcStatus status, const UA_ReadResponse* response) { TakeState(status, response); });
  if (sent != UA_STATUSCODE_GOOD) isLooking_ = false;
}

void Connection::TakeState(OpcStatus status, const UA_ReadResponse* response) {
  isLooking_ = false;
  nextLook_ = clock_.Ticks() + kLookMilliseconds;
  if (status == kOpcTimeout) NoteSilence();
  if (response == nullptr || response->resultsSize != 1) return;
  const UA_Variant& value = response->results[0].value;
  // An enumeration comes as a whole number.
  const bool isNumber = UA_Variant_isScalar(&value) && value.type->memSize == sizeof(UA_Int32);
  if (!isNumber || *static_cast<const UA_Int32*>(value.data) != UA_SERVERSTATE_SHUTDOWN) return;
  if (!std::exchange(isEnding_, true)) TellUsers(&ConnectionUser::OnShutDown);
}

void Connection::BecomeLive() {
  isLive_ = true;
  isEnding_ = false;
  pause_ = kFirstPauseMilliseconds;
  TellUsers(&ConnectionUser::OnLive);
  if (depth_ == Depth::Channel) return;
  if (const OpcDone first = std::exchange(first_, nullptr)) first(kOpcGood);
}

void Connection::Fail(OpcStatus status) {
  const bool wasLive = std::exchange(isLive_, false);
  client_.reset();
  deadline_ = clock_.Ticks() + pause_;
  pause_ = std::min(2 * pause_, kLastPauseMilliseconds);
  if (const OpcDone first = std::exchange(first_, nullptr)) {
    timer_->SetEnabled(false);
    first(status);
  } else {
    if (wasLive) TellUsers(&ConnectionUser::OnLost);
    if (onFailed) onFailed();
  }
}

void Connection::TellUsers(void (ConnectionUser::*what)()) {
  for (ConnectionUser* const user : std::vector(users_.begin(), users_.end())) {
    if (Has(user)) (user->*what)();
  }
}

}  // namespace velk::ua
