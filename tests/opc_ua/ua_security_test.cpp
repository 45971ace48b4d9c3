// Servers that are secured: certificates that are asked about once, users and passwords.

#include <sys/stat.h>

#include "opc_ua/opc_plant.h"
#include "platform/opc/ua/ua_pki.h"
#include "support/temporary_folder.h"

namespace velk {
namespace {

/// An operator who has made up his mind.
class Decided : public OpcQuestions {
 public:
  bool Accepts(const OpcCertificate& certificate) override {
    asked.push_back(certificate);
    return accepts;
  }
  void TellExpired(const OpcCertificate& certificate) override { expired.push_back(certificate); }
  std::optional<OpcLogin> Login(const std::string& url, bool again) override {
    logins.push_back(url + (again ? " again" : ""));
    if (passwords.empty()) return std::nullopt;
    const OpcLogin login{"crew", passwords.front()};
    passwords.erase(passwords.begin());
    return login;
  }

  bool accepts = true;
  std::vector<std::string> passwords;
  std::vector<OpcCertificate> asked;
  std::vector<OpcCertificate> expired;
  std::vector<std::string> logins;
};

class SecuredServer : public test::OpcPlant {
 protected:
  SecuredServer() { Begin(); }
  /// As a new start of the program does.
  void Begin() { transport = MakeUaTransport(clock, &operator_, folder.File("pki")); }
  std::unique_ptr<OpcSession> ConnectPlant(OpcStatus* what = nullptr) {
    return Connect({.server = Url(), .host = ""}, what);
  }
  std::string PkiFile(const char* name) const { return folder.File("pki") + "/" + name; }

  test::TemporaryFolder folder;
  Decided operator_;
};

TEST_F(SecuredServer, IsAskedAboutOnceAndSpokenToEncrypted) {
  ASSERT_EQ(StartServer({"--secured"}), Url());
  auto session = ConnectPlant();
  ASSERT_NE(session, nullptr);
  ASSERT_EQ(operator_.asked.size(), 1U);
  EXPECT_EQ(operator_.asked[0].url, Url());
  EXPECT_EQ(operator_.asked[0].subject, "CN=VELK Plant,O=VELK simulators");
  EXPECT_EQ(operator_.asked[0].fingerprint.size(), 32U * 3 - 1);
  EXPECT_FALSE(operator_.asked[0].isChanged);
  EXPECT_GT(operator_.asked[0].validTo, clock.Now());
  const auto group = Subscribe(*session);
  EXPECT_EQ(Add(*group, "ns=1;s=Pump.Rate").status, kOpcGood);
  EXPECT_EQ(NextChange(1).value, OpcValue(40.0F));
  session.reset();
  Begin();
  EXPECT_NE(ConnectPlant(), nullptr);
  EXPECT_EQ(operator_.asked.size(), 1U) << "a new start of the program knows it";
}

TEST_F(SecuredServer, LeavesKeysToTheUserAlone) {
  ASSERT_EQ(StartServer({"--secured"}), Url());
  ASSERT_NE(ConnectPlant(), nullptr);
  for (const char* name : {"own.key", "own.der", "accepted"}) {
    struct stat what {};
    ASSERT_EQ(::stat(PkiFile(name).c_str(), &what), 0) << name;
    EXPECT_EQ(what.st_mode & 0777U, 0600U) << name;
  }
}

TEST_F(SecuredServer, IsRefusedWhereItsCertificateIsAndNotAskedAboutAgainBySomeoneElse) {
  ASSERT_EQ(StartServer({"--secured"}), Url());
  operator_.accepts = false;
  OpcStatus status = kOpcGood;
  EXPECT_EQ(ConnectPlant(&status), nullptr);
  EXPECT_EQ(status, kOpcCertificateRefused);
  EXPECT_EQ(ConnectPlant(&status), nullptr);
  EXPECT_EQ(operator_.asked.size(), 1U);
  transport->ForgetRefusals();
  operator_.accepts = true;
  EXPECT_NE(ConnectPlant(&status), nullptr);
  EXPECT_EQ(operator_.asked.size(), 2U);
}

TEST_F(SecuredServer, IsRefusedWithAnotherCertificateUntilThatIsAcceptedAnew) {
  ASSERT_EQ(StartServer({"--secured"}), Url());
  ASSERT_NE(ConnectPlant(), nullptr);
  server.reset();
  ASSERT_EQ(StartServer({"--secured"}), Url());
  Begin();
  operator_.accepts = false;
  OpcStatus status = kOpcGood;
  EXPECT_EQ(ConnectPlant(&status), nullptr);
  EXPECT_EQ(status, kOpcCertificateRefused);
  ASSERT_EQ(operator_.asked.size(), 2U);
  EXPECT_TRUE(operator_.asked[1].isChanged);
  Begin();
  operator_.accepts = true;
  EXPECT_NE(ConnectPlant(), nullptr);
  Begin();
  EXPECT_NE(ConnectPlant(), nullptr);
  EXPECT_EQ(operator_.asked.size(), 3U);
}

TEST_F(SecuredServer, IsRefusedOnceTheTimeOfItsCertificateIsOver) {
  ASSERT_EQ(StartServer({"--expired"}), Url());
  OpcStatus status = kOpcGood;
  EXPECT_EQ(ConnectPlant(&status), nullptr);
  EXPECT_EQ(status, kOpcCertificateExpired);
  EXPECT_TRUE(operator_.asked.empty());
  ASSERT_EQ(operator_.expired.size(), 1U);
  EXPECT_NEAR(operator_.expired[0].validTo, clock.Now() - 1.0 / 24, 0.01) << "an hour ago";
  EXPECT_EQ(ConnectPlant(&status), nullptr);
  EXPECT_EQ(operator_.expired.size(), 1U) << "told once";
}

TEST_F(SecuredServer, AsksForUserAndPasswordOnceAProgram) {
  ASSERT_EQ(StartServer({"--secured", "--user", "crew", "--password", "secret"}), Url());
  operator_.passwords = {"secret"};
  auto session = ConnectPlant();
  ASSERT_NE(session, nullptr);
  EXPECT_EQ(operator_.logins, (std::vector<std::string>{Url()}));
  session.reset();
  clock.WaitMilliseconds(50);
  session = ConnectPlant();
  EXPECT_NE(session, nullptr);
  EXPECT_EQ(operator_.logins.size(), 1U);
  session.reset();
  Begin();
  OpcStatus status = kOpcGood;
  EXPECT_EQ(ConnectPlant(&status), nullptr) << "nothing of it is stored";
  EXPECT_EQ(status, kOpcAccessDenied);
}

TEST_F(SecuredServer, AsksAgainBehindAWrongPassword) {
  ASSERT_EQ(StartServer({"--secured", "--user", "crew", "--password", "secret"}), Url());
  operator_.passwords = {"wrong", "secret"};
  EXPECT_NE(ConnectPlant(), nullptr);
  EXPECT_EQ(operator_.logins, (std::vector<std::string>{Url(), Url() + " again"}));
}

TEST_F(SecuredServer, GetsNoPasswordOverAnOpenChannel) {
  ASSERT_EQ(StartServer({"--user", "crew", "--password", "secret"}), Url());
  operator_.passwords = {"secret"};
  OpcStatus status = kOpcGood;
  EXPECT_EQ(ConnectPlant(&status), nullptr);
  EXPECT_EQ(status, kOpcModeInsufficient);
  EXPECT_TRUE(operator_.logins.empty());
}

TEST_F(SecuredServer, IsRefusedWhereNobodyCanBeAsked) {
  ASSERT_EQ(StartServer({"--secured"}), Url());
  transport = MakeUaTransport(clock, nullptr, folder.File("pki"));
  OpcStatus status = kOpcGood;
  EXPECT_EQ(ConnectPlant(&status), nullptr);
  EXPECT_EQ(status, kOpcCertificateRefused);
}

// --- Keys and certificates ---

TEST(OpcPki, KeepsAnIdentityThatTellsItsHolder) {
  const test::TemporaryFolder folder;
  const ua::Pki pki(folder.File("pki"));
  EXPECT_FALSE(pki.Own());
  const auto made = ua::MakeIdentity();
  ASSERT_TRUE(made);
  const auto facts = ua::FactsOf(made->certificate);
  ASSERT_TRUE(facts);
  EXPECT_NE(facts->subject.find("CN=VELK"), std::string::npos);
  EXPECT_NEAR(facts->validTo - facts->validFrom, 3650, 1);
  pki.KeepOwn(*made);
  ASSERT_TRUE(pki.Own());
  EXPECT_EQ(pki.Own()->certificate, made->certificate);
  EXPECT_EQ(pki.Own()->key, made->key);
}

TEST(OpcPki, KnowsTheLastFingerprintOfEachServer) {
  const test::TemporaryFolder folder;
  const ua::Pki pki(folder.File("pki"));
  EXPECT_EQ(pki.PinOf("opc.tcp://a:4840"), "");
  pki.Pin("opc.tcp://a:4840", "AA");
  pki.Pin("opc.tcp://b b:4840", "BB");
  pki.Pin("opc.tcp://a:4840", "CC");
  EXPECT_EQ(pki.PinOf("opc.tcp://a:4840"), "CC");
  EXPECT_EQ(pki.PinOf("opc.tcp://b b:4840"), "BB");
}

TEST(OpcPki, TakesNoBytesForACertificateThatAreNone) {
  EXPECT_FALSE(ua::FactsOf(""));
  EXPECT_FALSE(ua::FactsOf("word"));
  // "abc" by the published test of the hash.
  EXPECT_EQ(ua::FingerprintOf("abc").substr(0, 11), "BA:78:16:BF");
}

}  // namespace
}  // namespace velk
