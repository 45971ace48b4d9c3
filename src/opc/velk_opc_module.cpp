#include "opc/velk_opc_module.h"

#include <algorithm>

#include "opc/texts.h"

namespace velk {

namespace {

constexpr std::size_t kNamed = 3;  ///< in a panel that is narrow

/// Names once each, the first few of them.
class FewNames {
 public:
  void Add(const std::string& name) {
    if (std::find(names_.begin(), names_.end(), name) == names_.end()) names_.push_back(name);
  }
  void AddTo(OperatorText& text, const MessageText& what) const {
    if (names_.empty()) return;
    if (!text.IsEmpty()) text += " \u00b7 ";
    text += what;
    for (std::size_t i = 0; i < std::min(names_.size(), kNamed); ++i) text += (i == 0 ? "" : ", ") + names_[i];
    if (names_.size() > kNamed) text += ", \u2026";
  }

 private:
  std::vector<std::string> names_;
};

}  // namespace

void VELKOPCModule::ConnectOPCItems(std::size_t most) {
  DisconnectOPCItems();
  isConnected_ = true;
  const OPCServers servers = LoadOPCConfiguration(settings_);
  OPCItemForms.reserve(std::min(most, static_cast<std::size_t>(CountOPCItems(servers))));
  for (std::size_t server = 1; server <= servers.size(); ++server) {
    const auto& groups = servers[server - 1].Groups;
    for (std::size_t group = 1; group <= groups.size(); ++group) {
      for (std::size_t item = 1; item <= groups[group - 1].Items.size(); ++item) {
        if (OPCItemForms.size() == most) return;
        OPCItemForms.push_back(std::make_unique<frmRealTimeOPC>(transport_, clock_));
        OPCItemForms.back()->connectOPC(servers, server, group, item);
      }
    }
  }
}

void VELKOPCModule::DisconnectOPCItems() {
  OPCItemForms.clear();
  isConnected_ = false;
}

std::vector<OpcLineItem> VELKOPCModule::OnLine() const {
  std::vector<OpcLineItem> items;
  items.reserve(OPCItemForms.size());
  for (const auto& form : OPCItemForms) items.push_back(form->OnLine());
  return items;
}

std::optional<std::string> VELKOPCModule::Line(double now, std::string_view delimiter,
                                               std::string_view terminator) const {
  return JoinOpcLine(now, OnLine(), delimiter, terminator);
}

OperatorText VELKOPCModule::TroubleText() const {
  FewNames lost;
  FewNames missing;
  for (const auto& form : OPCItemForms) {
    if (form->IsLost()) {
      lost.Add(form->ServerName());
    } else if (form->IsMissing()) {
      missing.Add(form->ItemID());
    }
  }
  OperatorText text;
  lost.AddTo(text, text::OpcServerLost);
  missing.AddTo(text, text::OpcItemMissing);
  return text;
}

std::vector<std::string> OpcTags(SettingsStore& settings) {
  std::vector<std::string> tags;
  for (const OPCServerRecord& server : LoadOPCConfiguration(settings)) {
    for (const OPCGroupRecord& group : server.Groups) tags.insert(tags.end(), group.Items.begin(), group.Items.end());
  }
  return tags;
}

}  // namespace velk
