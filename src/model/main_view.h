#pragma once

#include <string>
#include <string_view>

#include "base/operator_text.h"

namespace velk {

/// The main window as lower code sees it. Buttons and menu items go by their names ("RecordToDB", "mnuFileRecord"),
/// images by their numbers.
class MainView {
 public:
  virtual ~MainView() = default;

  /// Panel 1 the status word, 2 the file, 3 the date of a playback row, 4 the time of the last sample or row, 5 rows
  /// that could not be recorded, 6 which row of a file is played back.
  virtual void SetPanel(int panel, const OperatorText& text) = 0;

  /// The panel of the data: whether they come, and what was rejected; gone while it has no text. `warns`: in its
  /// warning colour, with a mark.
  virtual void ShowData(const OperatorText& text, bool warns) = 0;
  /// The sign that rows go to a file, and what else there is to know of that file; gone while it has no text.
  virtual void ShowRecording(const OperatorText& text, const OperatorText& toolTip) = 0;

  /// Menu items and their captions follow the status.
  virtual void ShowStatus(const MessageText& status) = 0;
  /// An item or a button that isn't there raises std::logic_error, here and below.
  virtual void SetMenuEnabled(std::string_view item, bool enabled) = 0;
  virtual void SetMenuCaption(std::string_view item, const OperatorText& caption) = 0;

  virtual void SetButtonImage(std::string_view key, int image) = 0;
  virtual int ButtonImage(std::string_view key) const = 0;
  virtual void SetButtonVisible(std::string_view key, bool visible) = 0;
  virtual void SetButtonEnabled(std::string_view key, bool enabled) = 0;
  virtual void SetButtonToolTip(std::string_view key, const OperatorText& text) = 0;

  /// Puts the speed bar and its label to a speed of playback, 1 to 1000. The bar stands in the place of the button
  /// "ScrollBar".
  virtual void ShowSpeed(int speed) = 0;

  /// Writes the title: base title, a blank and the version.
  virtual void ResetCaption() = 0;
  virtual void SetHourglass(bool on) = 0;
  virtual void Repaint() = 0;
  /// The end of a sample, ahead of the yield to events: what is to be shown by now is painted by that yield, and
  /// doesn't wake the machine behind it.
  virtual void ShowDue() = 0;
  /// The system's beep. Sounds that still play may be merged.
  virtual void Beep() = 0;
};

/// Numbers of the toolbar's images.
namespace image {
inline constexpr int PauseRunning = 7;
inline constexpr int PauseStopped = 9;
inline constexpr int RecordOff = 12;
inline constexpr int RecordOn = 13;
inline constexpr int DisconnectOff = 15;
inline constexpr int ConnectOff = 16;
inline constexpr int ConnectOn = 17;
inline constexpr int DisconnectOn = 18;
inline constexpr int ConnectSilent = 19;  ///< the link is open, and nothing comes
}  // namespace image

}  // namespace velk
