#pragma once

#include <string>
#include <string_view>

#include "instruments/decoders/own_unit.h"
#include "instruments/reading/port_reader.h"
#include "model/session.h"
#include "platform/dialogs/dialogs.h"
#include "platform/loop/clock.h"

namespace velk {

/// What decoders work with, and all that they keep from line to line.
struct Decoding {
  Session& session;
  Clock& clock;
  Dialogs& dialogs;
  OwnUnitDecoder& ownUnit;
  OperatorText portInUse = {};  ///< with its device, for what is told of a wait that was in vain
};

/// A procedure that brings what an instrument sends into the common form: a time, then the delimiter and a value a
/// parameter, then the terminator. Values are not scaled. Damaged bytes are no error: the line is rejected.
struct Decoder {
  /// Stands behind " - " in the box of a fault.
  std::string_view procedure = {};
  /// Checks a line that was delivered: by the line driver, or as a page that has been read. Leaves it in the common
  /// form, or rejected: then the sample's road finds no terminator behind its time. Nothing more is read for it. Null
  /// where nothing can be checked.
  void (*check)(std::string& line, const Decoding& with) = nullptr;
  /// Reads one sample from the plain port; empty where there is none. Waits for the instrument, letting events run, and
  /// leaves on StopRequested, without its device or out of time. Raises PortNotOpen. Null for an instrument that is not
  /// polled.
  std::string (*read)(PortReader& reader, const Decoding& with) = nullptr;
};

namespace decoder {
/// For what is neither checked nor polled.
inline constexpr Decoder None;
}  // namespace decoder

}  // namespace velk
