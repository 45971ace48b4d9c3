#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "model/parameter.h"

namespace velk {

inline constexpr int kSlots = kMaxParameters + 1;
inline constexpr int kMaxSmooth = 10;
inline constexpr int kPorts = 16;

/// An array of parameters' values that all start alike.
template <class T>
constexpr std::array<T, kSlots> AllSlots(T value) {
  std::array<T, kSlots> all{};
  all.fill(value);
  return all;
}

/// What the settings keep from one start to the next and a template holds: loading one replaces this group and nothing
/// else of the session. Fields carry the names of their keys. Arrays are indexed from 1.
struct StoredSettings {
  template <class T>
  using PerParameter = std::array<T, kSlots>;

  // --- Parameters ---
  PerParameter<Parameter> Parameters;              ///< input channels as configured
  std::vector<Parameter> AdditionalParameters{1};  ///< computed channels, 1 to NumberOfFormulae
  std::vector<std::string> Formula{1};             ///< text of each, or "Linked Parameter"
  PerParameter<Parameter> PlaybackParameters;
  std::int16_t NumberOfParameters = 1;  ///< input channels; also the parameter columns of logData
  /// While a file is played back: the unit's input channels, which are what is kept. NumberOfParameters then counts the
  /// file's.
  std::optional<std::int16_t> UnitParameters;
  std::int16_t NumberOfFormulae = 0;
  PerParameter<std::int16_t> SmoothValue = AllSlots<std::int16_t>(1);  ///< length of the moving average, 1 to 10

  // --- Section General ---
  std::string Current_language = "English";
  std::string CurrentFont = "MS Sans Serif";
  std::string CompanyLogoFile;
  std::string DefaultDirectory;
  std::string DirectoryAtStart;            ///< where the program was started; DefaultDirectory begins there
  double SamplingRate = 1.0 / 86400;       ///< days
  std::int16_t TheTimeOut = 5;             ///< sampling intervals
  std::int16_t SensitivityCriterion = 20;  ///< percent of the scale span
  std::int16_t intFontSize = 10;
  double MaximumTime = 3600;  ///< height of the plot surface in twips
  double pixelslength = 120;  ///< samples in a block
  double pixeldivide = 15;    ///< twips that a sample goes down the page
  bool CompanyLogoVisible = true;
  bool FitGraphsToWindows = true;  ///< a chart takes as many dots down the page as its window has
  std::string MainWindowPlace;     ///< where the operator has left the main window
  std::string LargeValues;         ///< numbers of the channels in the window of large values
  bool NightColours = false;       ///< charts on dark paper, on a light desktop too

  // --- Section PrintGraph ---
  bool LogoInserted = false;
  bool TextInserted = false;
  float PrintGraphText1X = 0, PrintGraphText1Y = 0;
  float PrintGraphImageX = 0, PrintGraphImageY = 0, PrintGraphImageH = 0, PrintGraphImageW = 0;

  // --- Section Protocol ---
  std::array<bool, kPorts + 1> Port{};
  std::int16_t PortNumber = 1;
  std::int32_t BaudRate = 9600;
  std::int16_t Handshake = 0;
  std::string Parity = "N";
  std::int16_t DataBits = 8;
  std::string StopBits = "1";
  std::string Delimiter = " ";
  std::string Terminator = "\r";
  /// Chosen for another protocol behind an own unit, which keeps its separators in the two above until the next start.
  /// Where one of them isn't empty they are what is saved and offered again.
  std::string ChosenDelimiter;
  std::string ChosenTerminator;
  std::string SerialData;
  std::int16_t FormattedLineLength = 0;
  std::string daqIPAddress;
  std::string daqHTML;

  // --- Constants of the selected unit, see instruments/protocols.h ---
  std::int16_t NumberOfChannels = 0;
  std::int16_t LastAnalogChannel = 0;
  std::int16_t LastHardwareChannel = 0;
  bool IsOwnUnit = false;  ///< sticks once set
  bool UseODataCom = false;
  std::vector<std::array<std::string, 6>> OrbenSettings;  ///< hardware settings table, a row a channel

  // --- Section Playback ---
  std::int16_t PlaybackSpeed = 1;
  std::int16_t FirstDataLine = 1;
  std::int16_t PlayBackNoOfFields = 1;
  std::string PlaybackDelimiter;
};

inline bool HasChosenSeparators(const StoredSettings& session) {
  return !session.ChosenDelimiter.empty() || !session.ChosenTerminator.empty();
}

/// Delimiter and Terminator are the chosen ones.
inline void ForgetChosenSeparators(StoredSettings& session) {
  session.ChosenDelimiter.clear();
  session.ChosenTerminator.clear();
}

}  // namespace velk
