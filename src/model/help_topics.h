#pragma once

/// Numbers of the help's pages. A window names its page by the property "helpTopic", which F1 looks for.
namespace velk::topic {

inline constexpr int FirstStart = 100;
inline constexpr int Connecting = 110;
inline constexpr int Instruments = 115;
inline constexpr int Keyboard = 120;
inline constexpr int Formulas = 300;
inline constexpr int Alarms = 310;
inline constexpr int Parameters = 320;
inline constexpr int Templates = 400;
inline constexpr int Languages = 410;
inline constexpr int Failures = 500;
inline constexpr int Files = 510;
inline constexpr int Licences = 520;
inline constexpr int Recording = 572;
inline constexpr int Playback = 580;
inline constexpr int StripChart = 1500;
inline constexpr int Printing = 1510;
inline constexpr int Viewer = 1520;
inline constexpr int Wells = 1600;
inline constexpr int UnitTable = 1610;
inline constexpr int Exchange = 1700;
inline constexpr int Opc = 1800;

}  // namespace velk::topic
