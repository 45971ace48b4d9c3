#pragma once

#include <QPointer>
#include <QTcpServer>
#include <QTcpSocket>
#include <functional>
#include <string>
#include <vector>

namespace velk::test {

/// A web server on loopback whose every byte a test writes. `answer` is called with each whole request.
class PageServer {
 public:
  PageServer() {
    server_.listen(QHostAddress::LocalHost);
    QObject::connect(&server_, &QTcpServer::newConnection, &server_, [this] {
      QTcpSocket* const socket = server_.nextPendingConnection();
      QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket] {
        const std::string request = socket->peek(64 * 1024).toStdString();
        if (request.find("\r\n\r\n") == std::string::npos) return;
        socket->readAll();
        requests.push_back(request);
        if (answer) answer(request, *socket);
      });
    });
  }

  /// "127.0.0.1:port" with the path behind it.
  std::string Address(const std::string& path = "/pens.htm") const {
    return "127.0.0.1:" + std::to_string(server_.serverPort()) + path;
  }

  /// Answers every request with these bytes and closes.
  void AnswerAll(const std::string& bytes) {
    answer = [bytes](const std::string&, QTcpSocket& socket) {
      socket.write(bytes.data(), static_cast<qint64>(bytes.size()));
      socket.disconnectFromHost();
    };
  }

  static std::string Page(const std::string& body, const std::string& headers = "Content-Type: text/html\r\n") {
    return "HTTP/1.1 200 OK\r\n" + headers + "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
  }

  std::function<void(const std::string& request, QTcpSocket& socket)> answer;
  std::vector<std::string> requests;

 private:
  QTcpServer server_;
};

}  // namespace velk::test
