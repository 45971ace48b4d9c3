#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/language.h"
#include "model/session.h"
#include "platform/ports/serial.h"

namespace velk {

class SettingsStore;

/// What HardwareSettings edits: the instrument, its port and what is taken from it. Fields are named as the session's.
struct HardwareChoices {
  std::string SerialData;
  std::int16_t NumberOfParameters = 1;
  double SamplingRate = 1.0 / 86400;  ///< days
  std::int16_t SensitivityCriterion = 20;
  std::int16_t PortNumber = 1;
  std::int32_t BaudRate = 9600;
  std::string Parity = "N";
  std::int16_t DataBits = 8;
  std::string StopBits = "1";
  std::int16_t Handshake = 0;
  /// Other devices for numbers of the port list; an empty one goes back to what the list has.
  std::map<int, std::string> PortDevice = {};
};

HardwareChoices HardwareChoicesOf(const Session& session);

/// Takes the choices over and, for an own unit, its constants.
void StoreHardwareChoices(Session& session, const HardwareChoices& choices);

// What the lists offer, in their order. The rates are those that SetupComPort takes: each port is opened through it.
inline constexpr std::array<std::int32_t, 4> kBaudRates{2400, 4800, 9600, 19200};
inline constexpr std::array<std::string_view, 5> kParities{"E", "M", "N", "O", "S"};
inline constexpr std::array<std::int16_t, 4> kDataBits{5, 6, 7, 8};
inline constexpr std::array<std::string_view, 3> kStopBits{"1", "1.5", "2"};
inline constexpr std::array<std::int16_t, 3> kHandshakes{0, 1, 2};
inline constexpr int kPortsOffered = 4;

/// The place of a stored value in a list; -1 where the list doesn't offer it.
template <class List, class Value>
int PlaceOf(const List& list, const Value& value) {
  for (std::size_t i = 0; i < list.size(); ++i)
    if (list[i] == value) return static_cast<int>(i);
  return -1;
}

/// What the lists of parities and handshakes show, by the place in kParities and kHandshakes.
const MessageText& ParityText(int place);
const MessageText& HandshakeText(int place);

/// The place of a value of SerialData in the protocol list; -1 for one that is no entry of it.
int ProtocolPlace(std::string_view serialData);

/// SerialData once an entry was picked: its own, that of the next entry or what is `stored`, as its row tells.
std::string PickedSerialData(int place, std::string_view stored);

/// A template by its name in the list of templates, which is in the language that it was made in.
struct ListedTemplate {
  std::string name;
  std::string serialData;  ///< the protocol in it
};

/// What stands beneath the list once an entry was picked (-1: none was) and this is what would be stored: that no
/// values will come, and which of the templates to load; else nothing.
OperatorText ProtocolNote(int picked, std::string_view serialData, const std::vector<ListedTemplate>& templates);

/// The count of values in a line of an own unit; nothing for any other protocol.
std::optional<int> ChannelsOf(std::string_view serialData);

/// Whether the number of channels is that of the items of a list which is kept elsewhere.
bool CountsItems(std::string_view serialData);

/// The choices with the port as an own unit fixes it; as they are for any other protocol.
HardwareChoices WithFixedPort(HardwareChoices choices);

/// What the port of the choices is opened with, as an own unit fixes it; `device` stands behind it.
SerialSettings LineOf(const HardwareChoices& choices, const std::string& device);

/// "Com Port n" with what stands behind it.
struct PortEntry {
  int number = 1;
  std::string device;
  bool exists = false;      ///< a device, not only a name
  bool isInUse = false;     ///< by another program
  std::string group = {};   ///< to join, where this user may not open it
  std::string listed = {};  ///< what the list has for this number, whatever was chosen
};

/// "present", or what would hinder its opening.
OperatorText PresenceText(const PortEntry& port);

/// The entry of a number with another device; `directory` as below.
PortEntry WithDevice(PortEntry port, const std::string& device, const std::string& directory = "/dev");

/// The entries of the port list; `directory` is where devices are looked for.
std::vector<PortEntry> PortEntries(SettingsStore& settings, const std::string& directory = "/dev");

/// A number that was typed, or what is wrong with it, for the operator.
struct NumberRead {
  std::int16_t value = 0;
  OperatorText fault;
};

/// 0 to 64, and no more than 64 together with the additional parameters.
NumberRead ReadParameterCount(std::string_view typed, int formulae);

/// Percent of the scale span; wrapped curves can move by more than their span.
NumberRead ReadSensitivity(std::string_view typed);

/// Gives each of the parameters 1 to `count` that has no name what a fresh channel has.
void FillUnnamedParameters(Session::PerParameter<Parameter>& parameters, int count, const Language& language);

}  // namespace velk
