#pragma once

#include "i18n/windows/window_host.h"
#include "support/in_english.h"
#include "support/scripted_dialogs.h"

namespace velk::test {

/// A host for windows that a test makes itself, in a language, over the boxes of the test's.
struct Host {
  explicit Host(const Translation& words = EnglishWindows()) : translation(words) {}
  operator WindowHost&() { return windows; }  // NOLINT(google-explicit-constructor): stands for the host

  const Translation& translation;
  Gate gate;
  ScriptedDialogs dialogs{gate, translation.Translator};
  WindowHost windows{dialogs, translation};
};

/// For windows that ask nothing.
inline WindowHost& EnglishHost() {
  static Host host;
  return host;
}

}  // namespace velk::test
