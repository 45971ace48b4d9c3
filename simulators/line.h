#pragma once

#include <string>

namespace sim {

/// The unit's end of the serial line: a pseudo-terminal whose other end a program opens as its port.
class Line {
 public:
  /// `link`, where not empty, is made to lead to the device whenever there is one. `baud` paces the bytes, 0 does not.
  Line(std::string link, int baud);
  ~Line();
  Line(const Line&) = delete;
  Line& operator=(const Line&) = delete;

  /// Makes the device. Ends the program with a message when that fails.
  void Plug();
  /// Takes the device away, as when a cable is pulled.
  void Unplug();
  const std::string& Device() const { return device_; }
  /// The link of the devices to come.
  void SetLink(const std::string& link) { link_ = link; }

  /// Waits until the reader has taken all that was sent, at most two seconds: what is on the line when the device goes
  /// away still arrives.
  void Drain() const;

  /// Whether a program has the device open.
  bool HasReader() const;

  /// Whether the reader has set the line to this rate, with hardware handshake where that is asked for.
  bool StandsAt(int baud, bool handshake) const;

  /// Sends the bytes at the line's pace, and waits for a reader that is slow. False if the reader went away or the
  /// program is to end before the last byte.
  bool Send(const std::string& bytes);
  /// The same, but what the reader has sent meanwhile stays for Receive.
  bool Transmit(const std::string& bytes);

  /// What the reader has sent; never waits.
  std::string Receive() const;
  void DropInput() const { Receive(); }

 private:
  bool SendChunk(const char* bytes, std::size_t count);

  std::string link_;
  int baud_;
  std::string device_;
  int master_ = -1;
  double freeAt_ = 0;  ///< when the line has carried what was sent
};

/// Seconds that only run forward.
double Seconds();

/// Rests until then. False if the program is to end.
bool RestUntil(double seconds);

/// Whether a signal has asked the program to end.
bool Ending();
/// From here on SIGTERM, SIGINT and the end of the parent ask the program to end.
void CatchSignals();

}  // namespace sim
