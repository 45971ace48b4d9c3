#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "base/message_text.h"
#include "model/data_state.h"
#include "model/stored_settings.h"
#include "model/time_base.h"

namespace velk {

class BoxPause;
class GraphWindow;

/// The one session of the process: plain fields that everything reads and writes directly, those that the settings keep
/// among them. Arrays are indexed from 1.
struct Session : StoredSettings {
  // --- Parameters; as configured see StoredSettings ---
  PerParameter<Parameter> CurrentParameters;  ///< working set: inputs, then computed channels, filled at Connect
  std::int16_t TotalParameters = 0;           ///< both, computed at Connect

  // --- Values, indexed like CurrentParameters ---
  PerParameter<float> CurrentValue{};   ///< scaled and smoothed; what is logged went through this 32-bit float
  PerParameter<float> PreviousValue{};  ///< at the last plotted point
  std::array<PerParameter<double>, kMaxSmooth + 1> SmoothHistory{};  ///< [age][parameter]
  PerParameter<bool> AlarmTriggered{};

  // --- Graph map, see graph_map.h ---
  PerParameter<GraphWindow*> GraphForms{};  ///< by graph number; the open ones, null elsewhere
  std::int16_t GraphCount = 0;
  PerParameter<std::int16_t> GraphList{};                       ///< graph numbers in order of first appearance
  PerParameter<std::int16_t> GraphCurveCount{};                 ///< by graph number
  std::array<PerParameter<std::int16_t>, kSlots> GraphSlots{};  ///< [slot][graph number] -> parameter
  std::int16_t CopySource = 0;  ///< graph number whose first curve waits to be pasted; 0 where none does

  // --- Status ---
  MessageText CurrentStatus;  ///< the status word, see status.h
  bool AcquireStarted = false;
  bool AcquisitionMode = false;     ///< set at Connect, cleared when a playback file is chosen
  bool StopRequested = false;       ///< set by Stop and by a time-out, honoured at the head of the next sample
  bool SampleBusy = false;          ///< a sample is running
  std::int16_t SampleSkips = 0;     ///< events that the guard has swallowed since the last run
  BoxPause* SampleBoxes = nullptr;  ///< keeps boxes away that would come with each sample; null: none is under way
  bool FirstPoint = true;           ///< until the first plotted sample of the process
  bool AskOnExit = true;
  bool ProgramEnding = false;  ///< graph windows then don't save their layout

  // --- Recording ---
  std::string CurrentFile;   ///< file chosen for recording; its suffix follows the page count
  std::string LogFileInUse;  ///< file of the open log
  bool RecordToDB = false;
  std::int16_t PageCount = 0;                   ///< page changes since the file was chosen
  std::int32_t PagesTurned = 0;                 ///< by the samples since PageCount was last brought up to date
  std::vector<std::string> SummaryExtraFields;  ///< columns of SummaryReport for manual entry

  // --- Playback ---
  std::int16_t PlaybackParameterCount = 0;  ///< channels of the file whose parameters stand in CurrentParameters
  double PlaybackSamplingRate = 0;          ///< days between the rows of the file, in place of SamplingRate
  bool PlaybackStopRequested = false;       ///< set by Stop, honoured at the next tick
  std::int64_t PlaybackRow = 0;             ///< key of the present row

  // --- Times, in days ---
  double SampleTime = 0;
  double StartTime = 0;  ///< cut to the minute
  TimeBase Times;        ///< of the live charts and of playback, which share one
  double LastPageTime = 0;
  double SampleSeconds = 0;
  double LastDataTime = 0;  ///< arrival of the last line

  DataState Data;

  std::vector<std::string> TemplateNames{1};  ///< 1 to the number of templates
};

/// Whether CurrentParameters and the graph windows are those of a file that is or was played back: from the moment it
/// is accepted until Connect. What is edited then is no business of the unit's set-up, nor of a log.
inline bool ShowsFile(const Session& session) {
  return session.PlaybackParameterCount != 0;
}

/// Whether the counts of the session are the file's too: until its playback ends.
inline bool FileHasItsPlace(const Session& session) {
  return session.UnitParameters.has_value();
}

}  // namespace velk
