// velk_sim_opc: a plant's server of OPC UA on loopback. It prints its endpoint.

#include <open62541/plugin/accesscontrol_default.h>
#include <open62541/server.h>
#include <open62541/server_config_default.h>

#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <string>

#include "command_line.h"
#include "journal.h"
#include "line.h"
#include "opc_certificate.h"
#include "opc_nodes.h"

namespace {

constexpr const char* kHelp =
    R"(velk_sim_opc: a plant's server of OPC UA on loopback.

  --host ADDRESS address that it listens on (default 127.0.0.1)
  --port N       its port (default 48400)
  --name TEXT    name of the application (default "VELK Plant")
  --many N       variables in Plant/Many (default 10)
  --moving N     how many of them have another value each time (default 64)
  --interval S   seconds between two values of Plant/Pump/Depth and Count (default 0.1; 0: they stand still)
  --secured      an endpoint that signs and encrypts, with a fresh certificate, beside the open one
  --expired      the same with a certificate whose time is over
  --user NAME    a user, who has to log in with --password TEXT; nobody else is let in
  --journal F    each value of Count, a line each, as it is written
  --slow MS      answers come this much later, each
  --limit N      nodes that may be read or browsed in one call (default: any number)
  --subscriptions N   subscriptions that a session may have (default: any number)
  --notice MS    how long the end is announced before it comes (default 0)
  --empty        Plant/Changing is empty at the start

The first line printed is the endpoint. Ends on SIGTERM and SIGINT, and with the program that started it; SIGSTOP makes
it silent; each SIGUSR1 takes Plant/Changing/Level away, or puts it there again as another node.
)";

void SayNothing(void*, UA_LogLevel, UA_LogCategory, const char*, va_list) {
}

const std::string kPolicy = "http://opcfoundation.org/UA/SecurityPolicy#Basic256Sha256";
const std::string kOpen = "http://opcfoundation.org/UA/SecurityPolicy#None";

constexpr double kBeatMilliseconds = 10;

UA_Logger silent = {SayNothing, nullptr, nullptr};

struct Options {
  std::string host = "127.0.0.1";
  int port = 48400;
  std::string name = "VELK Plant";
  int many = 10;
  int moving = 64;
  double interval = 0.1;
  bool secured = false;
  bool expired = false;
  std::string user;
  std::string password;
  std::string journal;
  int slow = 0;
  int limit = 0;
  int subscriptions = 0;
  int notice = 0;
  bool empty = false;
};

UA_String ViewOf(const std::string& text) {
  UA_String view;
  view.length = text.size();
  view.data = reinterpret_cast<UA_Byte*>(const_cast<char*>(text.data()));
  return view;
}

void Secure(UA_ServerConfig& config, bool expired) {
  const sim::Certificate own = sim::MakeCertificate("urn:velk:plant", expired);
  const UA_ByteString certificate = ViewOf(own.certificate);
  const UA_ByteString key = ViewOf(own.key);
  UA_String_clear(&config.applicationDescription.applicationUri);
  config.applicationDescription.applicationUri = UA_STRING_ALLOC("urn:velk:plant");
  UA_ServerConfig_addSecurityPolicyBasic256Sha256(&config, &certificate, &key);
  UA_ServerConfig_addEndpoint(&config, ViewOf(kPolicy), UA_MESSAGESECURITYMODE_SIGNANDENCRYPT);
}

void AskForUser(UA_ServerConfig& config, const Options& options) {
  const UA_UsernamePasswordLogin login = {ViewOf(options.user), ViewOf(options.password)};
  const bool encrypts = options.secured || options.expired;
  const UA_ByteString policy = ViewOf(encrypts ? kPolicy : kOpen);
  config.allowNonePolicyPassword = !encrypts;
  UA_AccessControl_default(&config, false, &policy, 1, &login);
}

UA_Server* MakeServer(const Options& options, std::string& url) {
  UA_ServerConfig config{};
  config.logging = &silent;
  UA_ServerConfig_setMinimal(&config, static_cast<UA_UInt16>(options.port), nullptr);
  config.shutdownDelay = options.notice;
  config.maxNodesPerRead = static_cast<UA_UInt32>(options.limit);
  config.maxSubscriptionsPerSession = static_cast<UA_UInt32>(options.subscriptions);
  config.maxNodesPerBrowse = static_cast<UA_UInt32>(options.limit);
  url = "opc.tcp://" + options.host + ":" + std::to_string(options.port);
  UA_Array_delete(config.serverUrls, config.serverUrlsSize, &UA_TYPES[UA_TYPES_STRING]);
  config.serverUrls = static_cast<UA_String*>(UA_Array_new(1, &UA_TYPES[UA_TYPES_STRING]));
  config.serverUrlsSize = 1;
  config.serverUrls[0] = UA_STRING_ALLOC(url.c_str());
  UA_LocalizedText_clear(&config.applicationDescription.applicationName);
  config.applicationDescription.applicationName = UA_LOCALIZEDTEXT_ALLOC("en", options.name.c_str());
  UA_String_clear(&config.buildInfo.manufacturerName);
  config.buildInfo.manufacturerName = UA_STRING_ALLOC("VELK simulators");
  UA_String_clear(&config.buildInfo.softwareVersion);
  config.buildInfo.softwareVersion = UA_STRING_ALLOC("2.14.3");
  UA_String_clear(&config.buildInfo.buildNumber);
  config.buildInfo.buildNumber = UA_STRING_ALLOC("77");
  if (options.secured || options.expired) Secure(config, options.expired);
  if (!options.user.empty()) AskForUser(config, options);
  return UA_Server_newWithConfig(&config);
}

volatile std::sig_atomic_t changes = 0;

/// What the callbacks of the server work with.
struct Running {
  Options options;
  std::string url;
  sim::Journal journal;
  UA_Boolean goesOn = true;
  int changed = 0;
};

void Move(UA_Server* server, void* data) {
  auto& running = *static_cast<Running*>(data);
  const int moving = std::min(running.options.many, running.options.moving);
  running.journal.Write("sound", std::to_string(sim::MovePlant(server, moving)));
}

/// Called between the answers, first when the server listens.
void Beat(UA_Server* server, void* data) {
  auto& running = *static_cast<Running*>(data);
  if (!running.url.empty()) {
    std::printf("%s\n", running.url.c_str());
    std::fflush(stdout);
    running.url.clear();
  }
  if (sim::Ending()) running.goesOn = false;
  for (; running.changed < changes; ++running.changed) sim::ChangePlant(server);
  if (running.options.slow > 0) usleep(static_cast<useconds_t>(running.options.slow) * 1000);
}

void ReadOptions(int argc, char** argv, Options& options) {
  sim::CommandLine commandLine("velk_sim_opc", kHelp);
  commandLine.Text("--host", options.host);
  commandLine.Number("--port", options.port);
  commandLine.Text("--name", options.name);
  commandLine.Number("--many", options.many);
  commandLine.Number("--moving", options.moving);
  commandLine.Number("--interval", options.interval);
  commandLine.Flag("--secured", options.secured);
  commandLine.Flag("--expired", options.expired);
  commandLine.Text("--user", options.user);
  commandLine.Text("--password", options.password);
  commandLine.Text("--journal", options.journal);
  commandLine.Number("--slow", options.slow);
  commandLine.Number("--limit", options.limit);
  commandLine.Number("--subscriptions", options.subscriptions);
  commandLine.Number("--notice", options.notice);
  commandLine.Flag("--empty", options.empty);
  commandLine.Read(argc, argv);
}

}  // namespace

int main(int argc, char** argv) {
  Options options;
  ReadOptions(argc, argv, options);
  sim::CatchSignals();
  std::signal(SIGUSR1, [](int) { changes = changes + 1; });
  std::string url;
  UA_Server* const server = MakeServer(options, url);
  if (server == nullptr) return 1;
  sim::AddPlant(server, options.many);
  if (!options.empty) sim::ChangePlant(server);
  Running running{options, url, sim::Journal(options.journal)};
  if (options.interval > 0) UA_Server_addRepeatedCallback(server, Move, &running, options.interval * 1000, nullptr);
  UA_Server_addRepeatedCallback(server, Beat, &running, kBeatMilliseconds, nullptr);
  const bool isWhole = UA_Server_run(server, &running.goesOn) == UA_STATUSCODE_GOOD;
  UA_Server_delete(server);
  if (!isWhole) std::fprintf(stderr, "velk_sim_opc: port %d is taken\n", options.port);
  return isWhole ? 0 : 1;
}
