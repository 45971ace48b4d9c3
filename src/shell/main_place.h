#pragma once

#include <QList>
#include <QRect>
#include <string>

namespace velk {

/// Where the main window stands: its place when it does not fill the screen, and whether it does.
struct MainPlace {
  QRect normal;
  bool isMaximised = false;
  bool operator==(const MainPlace&) const = default;
};

/// As a setting: "x y width height", with " maximised" behind it.
std::string TextOf(const MainPlace& place);
/// An empty place where the text is none.
MainPlace PlaceOf(const std::string& text);

/// The place for a window that was left at `before`, or is opened for the first time where that is empty, `wanted` in
/// size. `screens` are the rooms that screens have beside panels, the first one first. It is within a screen: the one
/// that it was left on where that is still there. A window that is larger than its screen fills it.
MainPlace PlaceOnScreens(const MainPlace& before, QSize wanted, const QList<QRect>& screens);

}  // namespace velk
