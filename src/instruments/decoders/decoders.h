#pragma once

#include <string>

#include "instruments/decoders/own_unit.h"
#include "model/session.h"
#include "platform/platform.h"
#include "platform/ports/serial.h"

namespace velk {

/// The procedures that bring what an instrument sends into the common form: a time, then the delimiter and a value a
/// parameter, then the terminator.
enum class Decoder {
  None,
  AnySerialData,
  DataTaker_a,
  DataTaker_b,
  HPTHoneywellEZtrend,
  NationalOilWell,
  NOWPLC,
  Orben_ver_3,
  Requested_data,
  Stewart_stevenson
};

/// Who decodes a line that was delivered: by the line driver, or as a page that has been read.
Decoder DeliveredDecoder(const Session& session);

/// Who reads the plain port for a tick.
Decoder PolledDecoder(const Session& session);

/// The decoders with what they keep from line to line.
class Decoders {
 public:
  Decoders(Session& session, const Platform& platform) : session_(session), platform_(platform) {}

  /// Brings a delivered line into the common form, or rejects it: then the sample's road finds no terminator behind its
  /// time. A delivered line is only checked; nothing more is read for it.
  void DecodeDelivered(std::string& line);

  /// Reads one sample from the plain port; empty where there is none. Waits for the instrument, letting events run,
  /// until it is there, out of time, or StopRequested. SampleTime is set already. Shows its own boxes: the time-out,
  /// and faults of the port under the decoder's name.
  std::string ReadPolled(SerialPort& port);

 private:
  std::string Read(Decoder decoder, SerialPort& port);
  std::string ReadRequested(SerialPort& port);

  Session& session_;
  Platform platform_;
  OwnUnitDecoder ownUnit_;
};

}  // namespace velk
