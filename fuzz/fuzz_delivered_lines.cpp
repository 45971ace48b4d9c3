// Any line, delivered: what a check accepts has the count of fields and the time that it asks for, and what it rejects
// has the terminator in front. Buffered lines and blocks come the same way.

#include <cstdint>
#include <cstdlib>
#include <string>

#include "instruments/decoders/any_serial_data.h"
#include "instruments/decoders/data_taker.h"
#include "instruments/decoders/intermittent.h"
#include "instruments/decoders/national_oil_well.h"
#include "instruments/decoders/own_unit.h"
#include "instruments/reading/time_check.h"

using namespace velk;

namespace {

void Require(bool holds) {
  if (!holds) std::abort();
}

/// The settings are drawn from the first byte of the input.
Session SessionOf(std::uint8_t draw) {
  static const char* const kDelimiters[] = {" ", "\t", ",", ";"};
  static const char* const kTerminators[] = {"\r", "\n", "\r\n", "\n\r"};
  Session session;
  session.Delimiter = kDelimiters[draw & 3];
  session.Terminator = kTerminators[draw >> 2 & 3];
  session.NumberOfParameters = static_cast<std::int16_t>(draw >> 4 & 7);
  for (Parameter& parameter : session.Parameters) parameter.Gain = 1;
  return session;
}

bool HasSoundFields(const std::string& line, const Session& session, int more) {
  return CountDelimiters(line, session.Delimiter) == session.NumberOfParameters + more && HasTime(line);
}

void CheckNationalOilWell(const std::string& sent, Session& session) {
  session.FormattedLineLength = static_cast<std::int16_t>(sent.size());
  std::string line = sent;
  NationalOilWell(line, session);
  Require(line == (HasSoundFields(sent, session, 0) ? sent : session.Terminator + sent));
  NOWPLC(line, session);
  Require(line.starts_with(session.Terminator) && line.find('\0') == std::string::npos);
}

void CheckOwnUnit(const std::string& sent, const Session& session) {
  OwnUnitDecoder decoder;
  for (const bool second : {false, true}) {
    std::string line = sent;
    decoder.Orben_ver_3(line, session);
    const bool sound = HasSoundFields(sent, session, 0) && (second || sent.empty());
    Require(line == (sound ? sent : "\r\n" + sent));
  }
}

void CheckBlock(const std::string& block, const Session& session) {
  const std::string line = LineFromDataTakerBlock(block, session);
  const bool accepted = !line.starts_with(session.Terminator);
  Require(!accepted || (line.ends_with(session.Terminator) && HasSoundFields(line, session, 1)));
}

void CheckBufferedLine(const std::string& line, Session& session) {
  session.CurrentValue.fill(77);
  const BufferedSample sample = ReadBufferedLine(session, line);
  Require(!sample.IsAccepted() || line.find(session.Terminator) != std::string::npos);
  for (int i = 0; i < kSlots; ++i) {
    const bool taken = sample.IsAccepted() && i >= 1 && i <= session.NumberOfParameters;
    Require(taken || session.CurrentValue[i] == 77.0F);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  static Session sessions[128];
  static const bool filled = [] {
    for (int draw = 0; draw < 128; ++draw) sessions[draw] = SessionOf(static_cast<std::uint8_t>(draw));
    return true;
  }();
  Require(filled);
  Session& session = sessions[data[0] & 127];
  const std::string line(data + 1, data + size);
  CheckNationalOilWell(line, session);
  CheckOwnUnit(line, session);
  CheckBlock(line, session);
  CheckBufferedLine(line, session);
  std::string any = line;
  AnySerialData(any);
  Require(any.find('\0') == std::string::npos && any.size() <= line.size());
  return 0;
}
