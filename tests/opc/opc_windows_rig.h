#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <QTest>
#include <memory>

#include "i18n/windows/window_host.h"
#include "opc/opc_rig.h"
#include "platform/platform.h"
#include "platform/settings/settings.h"
#include "support/in_english.h"
#include "support/temporary_folder.h"
#include "support/window_driving.h"

namespace velk::test {

inline constexpr const char* kRate = "ns=2;s=Pump.Rate";
inline constexpr const char* kDepth = "ns=2;s=Pump.Depth";

/// The windows of OPC, over a server in memory.
class OpcWindows : public OpcRig {
 protected:
  OpcWindows() {
    opc.servers = {{"Plant", "opc.tcp://10.0.0.5:4840"}, {"Mud", "opc.tcp://10.0.0.5:4841"}};
    const OpcDataType number = {OpcType::Double};
    opc.known[kRate] = {.canonicalType = number, .hasRange = true};
    opc.known[kDepth] = {.canonicalType = number};
    opc.folders[""] = {{"Pump", "ns=2;s=Pump", true}};
    opc.folders["ns=2;s=Pump"] = {{"Inner", "ns=2;s=Inner", true},
                                  {"Rate", kRate, false, true, {OpcType::Float}, true, true},
                                  {"Depth", kDepth, false, true, number, true, false}};
  }

  /// A window is shown, and does what it does once it stands.
  template <class Window>
  Window& Shown(std::unique_ptr<Window>& window) {
    window->show();
    QApplication::processEvents();
    return *window;
  }
  static QString TextOf(const QWidget& window, const char* field) {
    return FindControl<QLineEdit>(window, field)->text();
  }
  static void Type(const QWidget& window, const char* field, const char* text) {
    auto* edit = FindControl<QLineEdit>(window, field);
    edit->setFocus();
    edit->selectAll();
    QTest::keyClicks(edit, QString::fromLatin1(text));
  }

  TemporaryFolder folder;
  SettingsStore settings{folder.File("settings")};
  Translation translation;
  WindowHost host{dialogs, translation};
  Platform platform{clock, gate, dialogs, settings, English()};
};

}  // namespace velk::test
