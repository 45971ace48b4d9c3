#pragma once

#include <cstdint>
#include <string>

namespace velk {

/// Parameters in all; every array of parameters has this many slots behind slot 0, which carries nothing.
inline constexpr int kMaxParameters = 64;

/// The name of an input channel that is read but neither logged by name nor shown.
inline constexpr const char* kBlankName = "BLANK";

/// An alarm level that is not set. Compared as text, in any language.
inline constexpr const char* kNoAlarm = "None";

/// The formula text of a channel that a decoder fills.
inline constexpr const char* kLinkedParameter = "Linked Parameter";

/// One named channel: acquired, computed, logged, drawn or printed. Fields carry the names of their settings keys.
struct Parameter {
  std::string name;
  std::string units;
  double min = 0;                     ///< graph scale minimum
  double max = 0;                     ///< graph scale maximum
  std::int32_t color = 0;             ///< 0x00bbggrr
  std::string format;                 ///< number picture, see Format in base/numbers.h
  std::int16_t FormIndex = 0;         ///< graph window that carries the curve, 1 to 64
  bool GraphVisible = false;          ///< active: plotted, tested for significance and alarms
  std::string CommandString;          ///< command that fetches this parameter from a unit that is asked
  std::string loweralarm = kNoAlarm;  ///< a number, "None" or empty
  std::string upperalarm = kNoAlarm;
  std::string ResetCommand;       ///< the new value is put in before its last character
  double Gain = 0;                ///< factor of the raw value
  double Offset = 0;              ///< added behind the gain
  bool Wrapping = false;          ///< the curve wraps round the scale instead of being clipped
  std::int32_t AverageCount = 0;  ///< state of the formula function avg
  double AverageSum = 0;
  double RunningMinimum = 0;  ///< state of the formula function min
  double RunningMaximum = 0;
  bool IncludeInSummary = false;  ///< has a column in SummaryReport
};

/// Copies what a parameter is, and leaves the running statistics of `to`: those of a computed channel live in
/// AdditionalParameters only and go on over edits, stops and starts.
void CopyDefinition(const Parameter& from, Parameter& to);
/// The same of a computed channel behind those of a played file: whether it is shown there, and on which graph, says
/// nothing of `to`.
void CopyDefinitionInFile(const Parameter& from, Parameter& to);

}  // namespace velk
