#pragma once

#include <QByteArray>
#include <QHostAddress>
#include <QTcpServer>
#include <QTcpSocket>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace velk::test {

/// Stands between a transport and a server on loopback, and knows where a message begins and ends. It can break a
/// connection at any of them.
class Relay {
 public:
  enum class Fault {
    None,
    Cut,      ///< ends the connection in place of handing a request on
    Halve,    ///< hands half of an answer on, and ends the connection
    Swallow,  ///< from a request on nothing comes through any more
  };

  explicit Relay(int serverPort) : serverPort_(serverPort) {
    QObject::connect(&listener_, &QTcpServer::newConnection, &listener_, [this] { Accept(); });
    listener_.listen(QHostAddress::LocalHost);
  }

  std::string Url() const { return "opc.tcp://" + Host(); }
  std::string Host() const { return "127.0.0.1:" + std::to_string(listener_.serverPort()); }
  int Connections() const { return connections_; }

  /// Breaks the connection at the n-th message from now on, counted from 1: a request, or for Halve an answer.
  void FailAt(Fault fault, int message) {
    fault_ = fault;
    left_ = message;
    hasFailed_ = false;
  }
  /// The same at the next request of a kind, by the number of its encoding.
  void FailAtKind(Fault fault, std::uint16_t kind) {
    FailAt(fault, 1);
    kind_ = kind;
  }
  bool HasFailed() const { return hasFailed_; }
  /// Requests of this kind are lost; 0: none.
  void Lose(std::uint16_t kind) { lost_ = kind; }

 private:
  /// One connection, both ways.
  struct Pair {
    QTcpSocket* client = nullptr;
    QTcpSocket* server = nullptr;
    QByteArray requests;
    QByteArray answers;
    bool isSilent = false;
  };

  void Accept() {
    const auto pair = std::make_shared<Pair>();
    ++connections_;
    pair->client = listener_.nextPendingConnection();
    pair->server = new QTcpSocket(&listener_);
    pair->server->connectToHost(QHostAddress(QHostAddress::LocalHost), static_cast<quint16>(serverPort_));
    QObject::connect(pair->client, &QTcpSocket::readyRead, &listener_, [this, pair] {
      pair->requests += pair->client->readAll();
      Forward(*pair, pair->requests, true);
    });
    QObject::connect(pair->server, &QTcpSocket::readyRead, &listener_, [this, pair] {
      pair->answers += pair->server->readAll();
      Forward(*pair, pair->answers, false);
    });
    QObject::connect(pair->client, &QTcpSocket::disconnected, pair->server, [pair] { pair->server->abort(); });
    QObject::connect(pair->server, &QTcpSocket::disconnected, pair->client, [pair] { pair->client->abort(); });
  }

  /// Whole messages only: eight bytes tell the kind of it and its length.
  void Forward(Pair& pair, QByteArray& bytes, bool isRequest) {
    while (bytes.size() >= 8) {
      const auto length = static_cast<qsizetype>(NumberAt(bytes, 4, 4));
      if (bytes.size() < length) return;
      const QByteArray message = bytes.left(length);
      bytes.remove(0, length);
      if (pair.isSilent || (isRequest && lost_ != 0 && KindOf(message) == lost_)) continue;
      if (IsDue(message, isRequest) && !Break(pair, message)) return;
      if (!pair.isSilent) (isRequest ? pair.server : pair.client)->write(message);
    }
  }

  bool IsDue(const QByteArray& message, bool isRequest) {
    if (fault_ == Fault::None || isRequest == (fault_ == Fault::Halve)) return false;
    if (kind_ != 0 && KindOf(message) != kind_) return false;
    return --left_ == 0;
  }

  /// Whether the connection stands behind it.
  bool Break(Pair& pair, const QByteArray& message) {
    const Fault fault = fault_;
    fault_ = Fault::None;
    kind_ = 0;
    hasFailed_ = true;
    if (fault == Fault::Swallow) {
      pair.isSilent = true;
      return true;
    }
    if (fault == Fault::Halve) {
      pair.client->write(message.left(message.size() / 2));
      pair.client->flush();
    }
    pair.client->disconnectFromHost();
    pair.server->abort();
    return false;
  }

  static std::uint32_t NumberAt(const QByteArray& bytes, qsizetype at, int count) {
    std::uint32_t number = 0;
    for (int i = count - 1; i >= 0; --i) number = number << 8U | static_cast<unsigned char>(bytes[at + i]);
    return number;
  }
  /// Behind 24 bytes of headers an open message names its kind: 1, the name space 0, and the number.
  static std::uint16_t KindOf(const QByteArray& message) {
    const bool isNamed = message.startsWith("MSG") && message.size() > 28 && message[24] == 1;
    return isNamed ? static_cast<std::uint16_t>(NumberAt(message, 26, 2)) : 0;
  }

  int serverPort_;
  QTcpServer listener_;
  int connections_ = 0;
  Fault fault_ = Fault::None;
  int left_ = 0;
  std::uint16_t kind_ = 0;
  std::uint16_t lost_ = 0;
  bool hasFailed_ = false;
};

}  // namespace velk::test
