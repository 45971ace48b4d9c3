#pragma once

#include <string>

#include "instruments/decoders/decoder.h"
#include "platform/platform.h"

namespace velk {

/// Who reads the plain port for a tick: the protocol's decoder, or that of the own units once one has been chosen.
const Decoder& PolledDecoder(const Session& session);

/// The decoders of a session, by its protocol, with what they keep from line to line.
class Decoders {
 public:
  Decoders(Session& session, const Platform& platform) : session_(session), platform_(platform) {}
  Decoders(const Decoders&) = delete;
  Decoders& operator=(const Decoders&) = delete;

  /// Brings a delivered line into the common form, or rejects it: then the sample's road finds no terminator behind its
  /// time. A delivered line is only checked; nothing more is read for it.
  void DecodeDelivered(std::string& line);

  /// Reads one sample from the plain port; empty where there is none. Waits for the instrument, letting events run,
  /// until it is there, out of time, or StopRequested. SampleTime is set already. Shows its own boxes: the time-out,
  /// and faults of the port under the decoder's name. `portInUse` is told with a time-out.
  std::string ReadPolled(SerialPort& port, const OperatorText& portInUse = {});

 private:
  Session& session_;
  Platform platform_;
  OwnUnitDecoder ownUnit_;
  Decoding with_{session_, platform_.clock, platform_.dialogs, ownUnit_, {}};
};

}  // namespace velk
