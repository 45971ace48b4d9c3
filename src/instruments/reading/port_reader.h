#pragma once

#include <string>

#include "model/session.h"
#include "platform/loop/clock.h"
#include "platform/ports/serial.h"

namespace velk {

/// How a wait for the end of a text came out.
enum class Reading {
  Whole,    ///< the end has come
  Stopped,  ///< StopRequested was set meanwhile
  Gone,     ///< the port was closed meanwhile: its device went away
  GivenUp   ///< the wait's own limit was reached
};

/// Reads the plain port for the decoders that frame their instrument's text themselves. Nothing is held back: what a
/// decoder has not asked for stays in the port for the next one.
class PortReader {
 public:
  /// Bytes of a frame or an answer that are kept, so that an instrument that sends on and on holds no more memory.
  static constexpr std::size_t kLongestText = 64 * 1024;

  PortReader(SerialPort& port, Clock& clock, const Session& session) : port_(port), clock_(clock), session_(session) {}

  SerialPort& Port() { return port_; }

  /// What waits, at most `most` bytes; never waits itself. Raises PortNotOpen.
  std::string Waiting(std::size_t most);
  /// All that waits.
  std::string AllWaiting() { return Waiting(port_.BytesWaiting()); }

  /// Bytes that were read so far.
  std::int64_t BytesRead() const { return bytesRead_; }

  /// One round of reading: the next character, where one waits, is added to `text` and events run; where none waits the
  /// round rests a millisecond.
  void Round(std::string& text);

  /// Rounds until `ends(text)`. `givesUp()` is asked ahead of each further round. A device that goes away ends the wait
  /// without an error: a box would stand on the tick, and so keep the port from being opened again.
  template <class Ends, class GivesUp>
  Reading ReadUntil(std::string& text, Ends&& ends, GivesUp&& givesUp) {
    while (!ends(text)) {
      if (session_.StopRequested) return Reading::Stopped;
      if (!port_.IsOpen()) return Reading::Gone;
      if (givesUp()) return Reading::GivenUp;
      Round(text);
    }
    return Reading::Whole;
  }

 private:
  SerialPort& port_;
  Clock& clock_;
  const Session& session_;
  std::int64_t bytesRead_ = 0;
};

/// Gives up behind so many rounds.
class RoundLimit {
 public:
  explicit RoundLimit(int most) : left_(most) {}
  bool operator()() { return left_-- == 0; }

 private:
  int left_;
};

}  // namespace velk
