#pragma once

#include <QIcon>

namespace velk {

/// A picture of data/icons by its name, sharp at every scale of the screen; empty where there is none of that name.
QIcon Icon(const char* name);
/// The picture behind a number of the toolbar's image list (see model/main_view.h for those that change).
QIcon Icon(int image);

namespace image {
inline constexpr int Record = 1;
inline constexpr int PlayBack = 2;
inline constexpr int Exit = 3;
inline constexpr int Acquire = 4;
inline constexpr int Edit = 5;
inline constexpr int Tools = 6;
inline constexpr int Stop = 8;
inline constexpr int Help = 10;
inline constexpr int Alarms = 11;
}  // namespace image

}  // namespace velk
