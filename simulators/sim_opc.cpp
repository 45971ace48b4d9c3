// velk_sim_opc: a plant's server of OPC UA on loopback. It prints its endpoint.

#include <open62541/plugin/accesscontrol_default.h>
#include <open62541/server.h>
#include <open62541/server_config_default.h>

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

  --port N       port on 127.0.0.1 (default 48400)
  --name TEXT    name of the application (default "VELK Plant")
  --many N       variables in Plant/Many (default 10)
  --interval S   seconds between two values of Plant/Pump/Depth and Count (default 0.1; 0: they stand still)
  --secured      an endpoint that signs and encrypts, with a fresh certificate, beside the open one
  --expired      the same with a certificate whose time is over
  --user NAME    a user, who has to log in with --password TEXT; nobody else is let in
  --journal F    each value of Count, a line each, as it is written

The first line printed is the endpoint. Ends on SIGTERM and SIGINT, and with the program that started it; SIGSTOP makes
it silent.
)";

void SayNothing(void*, UA_LogLevel, UA_LogCategory, const char*, va_list) {
}

const std::string kPolicy = "http://opcfoundation.org/UA/SecurityPolicy#Basic256Sha256";
const std::string kOpen = "http://opcfoundation.org/UA/SecurityPolicy#None";

UA_Logger silent = {SayNothing, nullptr, nullptr};

struct Options {
  int port = 48400;
  std::string name = "VELK Plant";
  int many = 10;
  double interval = 0.1;
  bool secured = false;
  bool expired = false;
  std::string user;
  std::string password;
  std::string journal;
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
  url = "opc.tcp://127.0.0.1:" + std::to_string(options.port);
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

struct Moving {
  sim::Journal journal;
  int many;
};

void Move(UA_Server* server, void* data) {
  auto& moving = *static_cast<Moving*>(data);
  moving.journal.Write("sound", std::to_string(sim::MovePlant(server, moving.many)));
}

}  // namespace

int main(int argc, char** argv) {
  Options options;
  sim::CommandLine commandLine("velk_sim_opc", kHelp);
  commandLine.Number("--port", options.port);
  commandLine.Text("--name", options.name);
  commandLine.Number("--many", options.many);
  commandLine.Number("--interval", options.interval);
  commandLine.Flag("--secured", options.secured);
  commandLine.Flag("--expired", options.expired);
  commandLine.Text("--user", options.user);
  commandLine.Text("--password", options.password);
  commandLine.Text("--journal", options.journal);
  commandLine.Read(argc, argv);

  sim::CatchSignals();
  std::string url;
  UA_Server* const server = MakeServer(options, url);
  if (server == nullptr) return 1;
  sim::AddPlant(server, options.many);
  Moving moving{sim::Journal(options.journal), options.many};
  if (options.interval > 0) UA_Server_addRepeatedCallback(server, Move, &moving, options.interval * 1000, nullptr);
  if (UA_Server_run_startup(server) != UA_STATUSCODE_GOOD) {
    UA_Server_delete(server);
    std::fprintf(stderr, "velk_sim_opc: port %d is taken\n", options.port);
    return 1;
  }
  std::printf("%s\n", url.c_str());
  std::fflush(stdout);
  while (!sim::Ending()) UA_Server_run_iterate(server, true);
  UA_Server_run_shutdown(server);
  UA_Server_delete(server);
  return 0;
}
