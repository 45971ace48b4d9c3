#include "platform/opc/ua/ua_opening.h"

#include <chrono>
#include <utility>

#include "base/errors.h"

namespace velk::ua {

namespace {

constexpr int kLoginTries = 3;
constexpr int kLookMilliseconds = 20;  ///< whether the identity is made

/// Policies that are still held to be safe, and none.
constexpr std::string_view kPolicies[] = {"http://opcfoundation.org/UA/SecurityPolicy#None",
                                          "http://opcfoundation.org/UA/SecurityPolicy#Basic256Sha256",
                                          "http://opcfoundation.org/UA/SecurityPolicy#Aes128_Sha256_RsaOaep",
                                          "http://opcfoundation.org/UA/SecurityPolicy#Aes256_Sha256_RsaPss"};

bool IsKnownPolicy(const UA_String& uri) {
  const std::string text = TextOf(uri);
  for (const std::string_view known : kPolicies)
    if (text == known) return true;
  return false;
}

/// The place of a token of a kind among those of an endpoint.
std::optional<std::size_t> TokenOf(const UA_EndpointDescription& endpoint, UA_UserTokenType type) {
  for (std::size_t i = 0; i < endpoint.userIdentityTokensSize; ++i)
    if (endpoint.userIdentityTokens[i].tokenType == type) return i;
  return std::nullopt;
}

/// A password goes over an encrypted channel only.
bool MayLogIn(const UA_EndpointDescription& endpoint) {
  return endpoint.securityMode == UA_MESSAGESECURITYMODE_SIGNANDENCRYPT &&
         TokenOf(endpoint, UA_USERTOKENTYPE_USERNAME).has_value();
}

bool IsUsable(const UA_EndpointDescription& endpoint) {
  return IsKnownPolicy(endpoint.securityPolicyUri) && endpoint.securityMode != UA_MESSAGESECURITYMODE_INVALID &&
         (TokenOf(endpoint, UA_USERTOKENTYPE_ANONYMOUS).has_value() || MayLogIn(endpoint));
}

bool IsMoreSecure(const UA_EndpointDescription& a, const UA_EndpointDescription& b) {
  if (a.securityMode != b.securityMode) return a.securityMode > b.securityMode;
  return a.securityLevel > b.securityLevel;
}

bool IsRefusedLogin(OpcStatus status) {
  return status == kOpcAccessDenied || status == kOpcTokenInvalid || status == kOpcTokenRejected;
}

}  // namespace

Opening::Opening(Clock& clock, const Trust& trust, std::string url, std::string name, Done done)
    : clock_(clock),
      trust_(trust),
      url_(std::move(url)),
      name_(std::move(name)),
      done_(std::move(done)),
      connection_(std::make_shared<Connection>(clock, url_, Connection::Depth::Channel)),
      makingTimer_(clock.MakeTimer()) {
  connection_->Add(*this);
  makingTimer_->SetInterval(kLookMilliseconds);
  makingTimer_->SetHandler([this] { FinishIdentity(); });
}

Opening::~Opening() {
  if (connection_) connection_->Remove(*this);
}

void Opening::Post(std::function<void()> task) {
  clock_.Post([life = std::weak_ptr(life_), task = std::move(task)] {
    if (!life.expired()) task();
  });
}

void Opening::End(OpcStatus status, const ConnectionPointer& connection) {
  if (const Done done = std::exchange(done_, nullptr)) done(status, connection);
}

void Opening::Begin() {
  connection_->Open([this](OpcStatus status) { Post([this, status] { End(status); }); });
}

/// A channel that closes under the question is opened anew, and the question asked again.
void Opening::OnLive() {
  UA_GetEndpointsRequest request;
  UA_GetEndpointsRequest_init(&request);
  request.endpointUrl = ViewOf(url_);
  connection_->Call<UA_GetEndpointsResponse>(
      &request, UA_TYPES_GETENDPOINTSREQUEST, UA_TYPES_GETENDPOINTSRESPONSE,
      [this, life = std::weak_ptr(life_)](OpcStatus, UA_GetEndpointsResponse* response) {
        if (!life.expired() && response != nullptr && !access_.endpoint) Choose(*response);
      });
}

void Opening::Choose(const UA_GetEndpointsResponse& response) {
  const UA_EndpointDescription* best = nullptr;
  bool wantsUnsafeLogin = false;
  for (std::size_t i = 0; i < response.endpointsSize; ++i) {
    const UA_EndpointDescription& each = response.endpoints[i];
    if (IsUsable(each) && (best == nullptr || IsMoreSecure(each, *best))) best = &each;
    wantsUnsafeLogin = wantsUnsafeLogin || TokenOf(each, UA_USERTOKENTYPE_USERNAME).has_value();
  }
  if (best == nullptr) {
    const OpcStatus why = wantsUnsafeLogin ? kOpcModeInsufficient : kOpcModeRejected;
    return Post([this, why] { End(why); });
  }
  access_.endpoint = std::make_shared<Owned<UA_EndpointDescription>>(UA_TYPES[UA_TYPES_ENDPOINTDESCRIPTION]);
  UA_EndpointDescription_copy(best, &**access_.endpoint);
  isSecured_ = best->securityMode != UA_MESSAGESECURITYMODE_NONE;
  const auto anonymous = TokenOf(*best, UA_USERTOKENTYPE_ANONYMOUS);
  wantsLogin_ = !anonymous;
  access_.token = anonymous ? *anonymous : *TokenOf(*best, UA_USERTOKENTYPE_USERNAME);
  Post([this] {
    connection_->Remove(*this);
    connection_.reset();
    if (isSecured_) {
      CheckCertificate();
    } else {
      Connect();
    }
  });
}

void Opening::CheckCertificate() {
  const std::string certificate = TextOf((*access_.endpoint)->serverCertificate);
  const std::optional<CertificateFacts> facts = FactsOf(certificate);
  if (!facts) return End(kOpcCertificateRefused);
  const std::string known = trust_.pki.PinOf(name_);
  access_.pin = FingerprintOf(certificate);
  const OpcCertificate shown = {name_, facts->subject, access_.pin, facts->validTo, !known.empty()};
  if (facts->validTo < clock_.Now()) return RefuseExpired(shown);
  if (known == access_.pin) return TakeIdentity();
  if (trust_.questions == nullptr || trust_.said.refused.count(name_) != 0) return End(kOpcCertificateRefused);
  const std::weak_ptr<char> life = life_;
  const bool isAccepted = trust_.questions->Accepts(shown);
  if (life.expired()) return;
  if (!isAccepted) {
    trust_.said.refused.insert(name_);
    return End(kOpcCertificateRefused);
  }
  if (Kept([this] { trust_.pki.Pin(name_, access_.pin); })) TakeIdentity();
}

/// Told once, as a refusal of the operator's is asked for once.
void Opening::RefuseExpired(const OpcCertificate& certificate) {
  const std::weak_ptr<char> life = life_;
  if (trust_.questions != nullptr && trust_.said.refused.insert(name_).second)
    trust_.questions->TellExpired(certificate);
  if (!life.expired()) End(kOpcCertificateExpired);
}

bool Opening::Kept(const std::function<void()>& keep) {
  try {
    keep();
    return true;
  } catch (const RuntimeError&) {
    End(kOpcNotWritable);
    return false;
  }
}

void Opening::TakeIdentity() {
  access_.own = trust_.pki.Own();
  if (access_.own) return TakeLogin(false);
  making_ = std::async(std::launch::async, MakeIdentity);
  makingTimer_->SetEnabled(true);
}

void Opening::FinishIdentity() {
  if (!making_.valid() || making_.wait_for(std::chrono::seconds(0)) != std::future_status::ready) return;
  makingTimer_->SetEnabled(false);
  access_.own = making_.get();
  if (!access_.own) return End(kOpcCertificateRefused);
  if (Kept([this] { trust_.pki.KeepOwn(*access_.own); })) TakeLogin(false);
}

void Opening::TakeLogin(bool again) {
  if (!wantsLogin_) return Connect();
  const auto known = trust_.said.logins.find(name_);
  if (known != trust_.said.logins.end()) {
    access_.login = known->second;
    return Connect();
  }
  if (trust_.questions == nullptr || trust_.said.refused.count(name_) != 0) return End(kOpcAccessDenied);
  const std::weak_ptr<char> life = life_;
  access_.login = trust_.questions->Login(name_, again);
  if (life.expired()) return;
  if (!access_.login) {
    trust_.said.refused.insert(name_);
    return End(kOpcAccessDenied);
  }
  trust_.said.logins[name_] = *access_.login;
  Connect();
}

void Opening::Connect() {
  connection_ = std::make_shared<Connection>(clock_, url_, Connection::Depth::Session, access_);
  connection_->Open([this](OpcStatus status) { Post([this, status] { TakeEnd(status); }); });
}

void Opening::TakeEnd(OpcStatus status) {
  if (IsGood(status)) return End(kOpcGood, connection_);
  if (wantsLogin_ && IsRefusedLogin(status)) {
    trust_.said.logins.erase(name_);
    if (++logins_ < kLoginTries) return TakeLogin(true);
  }
  End(status);
}

}  // namespace velk::ua
