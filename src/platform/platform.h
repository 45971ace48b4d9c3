#pragma once

namespace velk {

class Clock;
class Gate;
class Dialogs;
class SettingsStore;
class Language;

/// The operating environment as the program is handed it: made once in main() or by a test, passed by reference.
struct Platform {
  Clock& clock;
  Gate& gate;
  Dialogs& dialogs;
  SettingsStore& settings;
  const Language& language;
};

}  // namespace velk
