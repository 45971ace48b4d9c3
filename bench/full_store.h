#pragma once

#include <QTemporaryDir>
#include <string>

#include "platform/settings/settings.h"
#include "settings/settings_io.h"

namespace velk::bench {

/// A full store on the disk that holds the working folder: 64 parameters, 64 playback parameters, 32 formulas.
class FullStore {
 public:
  FullStore() {
    Session session;
    SettingsStore store(Path());
    LoadSettings(session, store, Language());
    session.NumberOfFormulae = 32;
    session.AdditionalParameters.resize(33);
    session.Formula.assign(33, "{Parameter 1} * 2 + avg({Parameter 2})");
    SaveSettings(session, store);
    store.Save("VELK2", "Parameters", "NumberOfParameters", "32");
    store.Flush();
  }

  /// What XDG_CONFIG_HOME has to be for a program to find the store.
  std::string ConfigHome() const { return folder_.path().toStdString(); }
  std::string Path() const { return ConfigHome() + "/VELK"; }

 private:
  QTemporaryDir folder_{QStringLiteral("velk-bench-XXXXXX")};
};

}  // namespace velk::bench
