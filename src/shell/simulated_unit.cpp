#include "shell/simulated_unit.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

#include "base/text_qt.h"
#include "platform/settings/settings.h"
#include "shell/texts.h"

namespace velk {

namespace {

struct Channel {
  int number;
  MessageText name;
  const char* units;
  const char* max;
  int graph;
  int colour;  ///< 0x00bbggrr
};

/// Of what the simulated unit sends, by the number of the channel.
constexpr Channel kChannels[] = {{1, text::TreatingPressure, "psi", "10000", 1, 0x2E10C8},
                                 {2, text::SlurryRate, "bbl/min", "10", 2, 0xB85700},
                                 {3, text::SlurryDensity, "lb/gal", "20", 2, 0x3F7F1B},
                                 {4, text::AnnulusPressure, "psi", "1000", 1, 0x8E2D7B},
                                 {14, text::StageTotal, "bbl", "200", 2, 0x0054B8}};
constexpr int kChannelsOfUnit = 22;

/// Beside the program where it is installed; in its own folder where it was built.
QString SimulatorIn(const std::string& programFolder) {
  for (const char* place : {"/velk_sim_unit", "/../../simulators/velk_sim_unit"}) {
    const QFileInfo file(ToQt(programFolder + place));
    if (file.isExecutable()) return file.canonicalFilePath();
  }
  return {};
}

}  // namespace

void SetUpForSimulatedUnit(SettingsStore& settings, const std::string& device, const StoredSettings& own,
                           const Language& language) {
  const auto save = [&](const std::string& section, const char* key, const std::string& value) {
    settings.Save("VELK2", section, key, value);
  };
  save("General", "Current_language", own.Current_language);
  save("General", "NightColours", own.NightColours ? "True" : "False");
  save("General", "FitGraphsToWindows", own.FitGraphsToWindows ? "True" : "False");
  save("Protocol", "SerialData", "KESTA version 5");
  save("Protocol", "PortNumber", "1");
  save("Protocol", "PortDevice1", device);
  save("Parameters", "NumberOfParameters", std::to_string(kChannelsOfUnit));
  for (int i = 1; i <= kChannelsOfUnit; ++i) {
    save("Parameter" + std::to_string(i), "GraphVisible", "False");
    save("Parameter" + std::to_string(i), "FormIndex", "0");
  }
  for (const Channel& channel : kChannels) {
    const std::string section = "Parameter" + std::to_string(channel.number);
    save(section, "name", language.In(channel.name));
    save(section, "units", channel.units);
    save(section, "max", channel.max);
    save(section, "FormIndex", std::to_string(channel.graph));
    save(section, "GraphVisible", "True");
    save(section, "color", std::to_string(channel.colour));
  }
  settings.Flush();
}

bool StartWithSimulatedUnit(const std::string& programFolder, const StoredSettings& own, const Language& language) {
  const QString simulator = SimulatorIn(programFolder);
  QTemporaryDir folder;
  if (simulator.isEmpty() || !folder.isValid()) return false;
  folder.setAutoRemove(false);  // by the script below, once its VELK has ended
  const QString place = folder.filePath(QStringLiteral("settings"));
  SettingsStore settings(FromQt(place));
  SetUpForSimulatedUnit(settings, FromQt(folder.filePath(QStringLiteral("unit"))), own, language);
  QProcess shell;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(QStringLiteral("VELK_SETTINGS"), place);
  shell.setProcessEnvironment(environment);
  shell.setProgram(QStringLiteral("/bin/sh"));
  shell.setArguments({QStringLiteral("-c"),
                      QStringLiteral("\"$1\" --unit kesta5 --link \"$2/unit\" >/dev/null & unit=$!\n"
                                     "\"$3\"\nkill $unit\nrm -rf \"$2\""),
                      QStringLiteral("velk"), simulator, folder.path(), QCoreApplication::applicationFilePath()});
  return shell.startDetached();
}

}  // namespace velk
