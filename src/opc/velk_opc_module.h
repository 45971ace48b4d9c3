#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/operator_text.h"
#include "opc/frm_real_time_opc.h"
#include "platform/settings/settings.h"

namespace velk {

/// The items of the stored list as the channels of a job, in the order of server, then group, then item.
class VELKOPCModule {
 public:
  /// All outlive the module.
  VELKOPCModule(OpcTransport& transport, Clock& clock, SettingsStore& settings)
      : transport_(transport), clock_(clock), settings_(settings) {}

  /// Reads the list and begins to connect its items, `most` of them at most, in place of those that were connected.
  void ConnectOPCItems(std::size_t most);
  /// Ends each item's subscription and connection; waits for no server.
  void DisconnectOPCItems();
  /// Whether ConnectOPCItems was called and not undone; some items may still be on their way.
  bool IsConnected() const { return isConnected_; }

  /// How many items there are.
  std::size_t Count() const { return OPCItemForms.size(); }
  /// The line of a moment; nothing before each item has reported or failed.
  std::optional<std::string> Line(double now, std::string_view delimiter, std::string_view terminator) const;
  /// Servers that are gone and items without a value, as the operator is told of them; empty where all is well.
  OperatorText TroubleText() const;

 private:
  std::vector<OpcLineItem> OnLine() const;

  OpcTransport& transport_;
  Clock& clock_;
  SettingsStore& settings_;
  std::vector<std::unique_ptr<frmRealTimeOPC>> OPCItemForms;
  bool isConnected_ = false;
};

/// The identifiers of the stored items, in the order in which they are channels.
std::vector<std::string> OpcTags(SettingsStore& settings);

}  // namespace velk
