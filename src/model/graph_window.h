#pragma once

#include <cstdint>

namespace velk {

/// Where a value lies that is out of its limits.
enum class AlarmSide { None, Low, High };

/// One strip-chart window as the road of a sample sees it. Times are date-times, values 32-bit floats. Each operation
/// reports its own failures in a box (" - PlotValue") and leaves without drawing.
class GraphWindow {
 public:
  virtual ~GraphWindow() = default;

  /// Draws the frame of one block; scrolls half a page when the block would pass the bottom.
  virtual void Picture2_Update(double blockStart, double blockEnd) = 0;
  /// Prints the date of `blockEnd` beside the block.
  virtual void WriteDate(double blockStart, double blockEnd) = 0;
  /// Sets the range of the history scroll bar.
  virtual void UpdateScroll(double upTo) = 0;
  virtual void WriteValuesToLabels(int parameter, float value) = 0;
  virtual void PlotValue(double previousTime, double time, float previousValue, float value, double min, double max,
                         std::int32_t colour, bool wrapping) = 0;
  /// An alarmed parameter's value label changes its background with each call and carries a mark that tells the side;
  /// otherwise the label goes back to its own look.
  virtual void ShowAlarm(int parameter, AlarmSide side) = 0;
  /// The values are grey: no line comes, or the job is paused. Not stale: they have their own looks again.
  virtual void ShowValuesStale(bool stale) = 0;
  /// Time at the top of the plot; 0 until something was drawn.
  virtual double TimeOrigin() const = 0;
  virtual void EnableToolbar() = 0;
  /// Rebuilds the header and rewrites every label from CurrentParameters.
  virtual void RefreshForm() = 0;
  /// Copies the curve records of this window from CurrentParameters back to Parameters or AdditionalParameters.
  virtual void UpdateParametersDefs() = 0;
};

/// The set of strip-chart windows.
class GraphWindows {
 public:
  virtual ~GraphWindows() = default;
  /// Unloads what is open, then makes a window for each entry of GraphList.
  virtual void CreateGraphWindows() = 0;
  /// Unloads every open window, yielding after each.
  virtual void UnloadAll() = 0;
  /// Rebuilds the window of one graph number, if it is open.
  virtual void Rebuild(int graphNumber) = 0;
};

}  // namespace velk
