#pragma once

#include <string>

namespace sim {

/// A web server on loopback that serves one client at a time.
class WebServer {
 public:
  /// Listens on 127.0.0.1; port 0 takes any that is free. Ends the program with a message when that fails.
  explicit WebServer(int port);
  ~WebServer();
  WebServer(const WebServer&) = delete;
  WebServer& operator=(const WebServer&) = delete;

  int Port() const { return port_; }

  /// The path of the next request, or "" when the program is to end. Closes the client before.
  std::string NextRequest();

  /// Sends to the client. False when it has gone or the program is to end.
  bool Send(const std::string& bytes);

  /// Whether the client still waits.
  bool ClientWaits() const;

  void CloseClient();

 private:
  std::string ReadRequest();

  int listener_ = -1;
  int client_ = -1;
  int port_ = 0;
};

}  // namespace sim
