#include "web_server.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>

#include "line.h"

namespace sim {

namespace {

constexpr int kLookMilliseconds = 20;  // how often a wait looks at the signals
constexpr std::size_t kLongestRequest = 64 * 1024;

[[noreturn]] void Fail(const char* what) {
  std::perror(what);
  std::exit(1);
}

bool WaitFor(int descriptor, short events) {
  pollfd state{descriptor, events, 0};
  return poll(&state, 1, kLookMilliseconds) > 0;
}

}  // namespace

WebServer::WebServer(int port) : listener_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
  if (listener_ < 0) Fail("socket");
  const int on = 1;
  setsockopt(listener_, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof address;
  auto* const general = reinterpret_cast<sockaddr*>(&address);
  if (bind(listener_, general, size) != 0 || listen(listener_, 8) != 0 || getsockname(listener_, general, &size) != 0)
    Fail("127.0.0.1");
  port_ = ntohs(address.sin_port);
}

WebServer::~WebServer() {
  CloseClient();
  close(listener_);
}

void WebServer::CloseClient() {
  if (client_ >= 0) close(client_);
  client_ = -1;
}

std::string WebServer::NextRequest() {
  CloseClient();
  while (!Ending()) {
    if (!WaitFor(listener_, POLLIN)) continue;
    client_ = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
    if (client_ < 0) continue;
    const std::string path = ReadRequest();
    if (!path.empty()) return path;
    CloseClient();
  }
  return {};
}

/// The path of "GET path HTTP/1.1"; empty for anything else.
std::string WebServer::ReadRequest() {
  std::string request;
  while (request.find("\r\n\r\n") == std::string::npos) {
    if (Ending() || request.size() > kLongestRequest) return {};
    char bytes[1024];
    const ssize_t count = recv(client_, bytes, sizeof bytes, 0);
    if (count > 0)
      request.append(bytes, static_cast<std::size_t>(count));
    else if (count == 0 || (errno != EAGAIN && errno != EINTR))
      return {};
    else
      WaitFor(client_, POLLIN);
  }
  if (request.compare(0, 4, "GET ") != 0) return {};
  return request.substr(4, request.find(' ', 4) - 4);
}

bool WebServer::Send(const std::string& bytes) {
  for (std::size_t sent = 0; sent < bytes.size();) {
    if (Ending()) return false;
    const ssize_t count = send(client_, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
    if (count > 0)
      sent += static_cast<std::size_t>(count);
    else if (errno != EAGAIN && errno != EINTR)
      return false;
    else
      WaitFor(client_, POLLOUT);
  }
  return true;
}

bool WebServer::ClientWaits() const {
  char byte = 0;
  const ssize_t count = recv(client_, &byte, 1, MSG_PEEK | MSG_DONTWAIT);
  return count > 0 || (count < 0 && (errno == EAGAIN || errno == EINTR));
}

}  // namespace sim
