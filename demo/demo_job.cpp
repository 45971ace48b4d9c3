#include "demo/demo_job.h"

namespace velk::demo {

namespace {

struct Channel {
  const char* name;
  const char* units;
  const char* max;
  int graph;
  int colour;  ///< 0x00bbggrr
};

constexpr int kRed = 0x2020C0, kBlue = 0xC05010, kGreen = 0x208020, kBrown = 0x205090, kViolet = 0xA02080;

/// What the simulated unit sends, by channel. A graph of 0 is a channel that is read and not shown.
constexpr Channel kChannels[] = {
    {"Treating Pressure", "psi", "10000", 1, kRed},
    {"Slurry Rate", "bbl/min", "10", 2, kBlue},
    {"Slurry Density", "lb/gal", "20", 2, kGreen},
    {"Annulus Pressure", "psi", "1000", 1, kViolet},
    {"Fluid Temperature", "degF", "200", 4, kRed},
    {"BLANK", "lb/gal", "20", 0, 0},
    {"BLANK", "psi", "5000", 0, 0},
    {"Additive Rate", "gal/min", "5", 2, kViolet},
    {"Pump Strokes", "stk", "5000", 4, kBlue},
    {"BLANK", "stk", "5000", 0, 0},
    {"BLANK", "stk", "5000", 0, 0},
    {"BLANK", "stk", "5000", 0, 0},
    {"BLANK", "stk", "5000", 0, 0},
    {"Stage Total", "bbl", "200", 3, kBlue},
    {"Job Total", "bbl", "500", 3, kBrown},
    {"Hydraulic Power", "hp", "1000", 3, kRed},
    {"Net Pressure", "psi", "10000", 1, kGreen},
    {"BLANK", "gal", "20000", 0, 0},
    {"BLANK", "gal", "20000", 0, 0},
    {"BLANK", "gal", "20000", 0, 0},
    {"BLANK", "gal", "20000", 0, 0},
    {"BLANK", "gal", "20000", 0, 0},
};

void SaveChannel(SettingsStore& settings, int number, const Channel& channel) {
  const std::string section = "Parameter" + std::to_string(number);
  const auto save = [&](const char* key, const std::string& value) { settings.Save("VELK2", section, key, value); };
  save("name", channel.name);
  save("units", channel.units);
  save("max", channel.max);
  save("format", "#0.00");
  save("color", std::to_string(channel.colour));
  save("FormIndex", std::to_string(channel.graph));
  save("GraphVisible", channel.graph > 0 ? "True" : "False");
}

}  // namespace

void SetUpStore(SettingsStore& settings, const std::string& device, bool everySample) {
  int number = 0;
  for (const Channel& channel : kChannels) SaveChannel(settings, ++number, channel);
  settings.Save("VELK2", "Parameters", "NumberOfParameters", std::to_string(number));
  settings.Save("VELK2", "Protocol", "SerialData", "KESTA version 5");
  settings.Save("VELK2", "Protocol", "PortNumber", "1");
  settings.Save("VELK2", "Protocol", "PortDevice1", device);
  settings.Save("VELK2", "General", "SensitivityCriterion", everySample ? "0" : "20");
}

}  // namespace velk::demo
