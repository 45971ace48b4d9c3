#include <QListWidget>
#include <QTreeWidget>

#include "model/help_topics.h"
#include "opc/windows/frm_add_group.h"
#include "opc/windows/frm_add_item.h"
#include "opc/windows/frm_item_update_interval.h"
#include "opc/windows/frm_main_opc.h"
#include "opc/windows/frm_opc_group_properties.h"
#include "opc/windows/frm_opc_login.h"
#include "opc/windows/frm_opc_server_properties.h"
#include "opc/windows/frm_select_opc_server.h"
#include "support/fake_opc.h"
#include "support/window_driving.h"
#include "windows/every_window.h"

namespace velk::test {
namespace {

/// A server in memory with pumps, and the list that has been made of it.
struct SamplePlant {
  explicit SamplePlant(const std::string& language) : job(MakeJob(language)) {
    opc.servers = {{"Rig 7 Plant", "opc.tcp://10.0.0.5:4840"}, {"Mud Logging", "opc.tcp://10.0.0.5:4841"}};
    opc.serverStatus = {.state = OpcServerState::Running,
                        .vendor = "Rig Automation",
                        .version = "2.14.3",
                        .build = "1877",
                        .startTime = 46000.25,
                        .currentTime = 46001.5,
                        .lastUpdate = 46001.5};
    const OpcDataType number = {OpcType::Double};
    opc.folders[""] = {{"Pump", "ns=2;s=Pump", true}, {"Tank", "ns=2;s=Tank", true}};
    for (const char* name : {"Pressure", "Rate", "Strokes"}) {
      const std::string id = std::string("ns=2;s=Pump.") + name;
      opc.folders["ns=2;s=Pump"].push_back({name, id, false, true, number, true, true});
      opc.known[id] = {.canonicalType = number, .isReadable = true, .isWritable = true};
    }
    manager = std::make_unique<OpcManager>(calls, job->settings);
  }

  void AddPumps() {
    manager->AddSelectedOPCServerMain("Rig 7 Plant", "10.0.0.5");
    manager->AddOPCGroupMain(0, "Pumps", 250, 0, true);
    for (const char* name : {"Pressure", "Rate", "Strokes"})
      manager->AddOPCItemMain(0, 0, std::string("ns=2;s=Pump.") + name, {}, true);
    opc.Report("ns=2;s=Pump.Pressure", OpcValue(186.25));
    const std::vector<OpcElement> two = {40.5F, 41.25F};
    opc.Report("ns=2;s=Pump.Rate", OpcValue(two));
  }

  Job job;
  FakeOpc opc;
  OpcCalls calls{opc, job->clock, job->dialogs};
  std::unique_ptr<OpcManager> manager;
  std::unique_ptr<QWidget> window;
};

template <class Make>
std::shared_ptr<QWidget> OnPlant(const std::string& language, Make make) {
  const auto plant = std::make_shared<SamplePlant>(language);
  plant->window = make(*plant);
  // What the window asks for once it stands.
  QApplication::processEvents();
  return {plant, plant->window.get()};
}

std::shared_ptr<QWidget> OpenManager(const std::string& language, bool hasPumps) {
  return OnPlant(language, [hasPumps](SamplePlant& plant) {
    if (hasPumps) plant.AddPumps();
    auto window = std::make_unique<frmMainOPC>(plant.job->host, plant.job->platform, plant.calls, *plant.manager);
    auto* tree = FindControl<QTreeWidget>(*window, "TreeView1");
    if (hasPumps) tree->setCurrentItem(tree->topLevelItem(0)->child(0)->child(0));
    return window;
  });
}

std::shared_ptr<QWidget> OpenAddItem(const std::string& language) {
  const std::shared_ptr<QWidget> window = OnPlant(language, [](SamplePlant& plant) {
    plant.AddPumps();
    AddItemAccess access;
    access.browse = [&plant] { return plant.manager->Servers()[0].server->GetServerBrowseObject(); };
    return std::make_unique<frmAddItem>(plant.job->host, access);
  });
  auto* branches = FindControl<QTreeWidget>(*window, "tvBranches");
  branches->setCurrentItem(branches->topLevelItem(0)->child(0));
  return window;
}

std::shared_ptr<QWidget> OpenServerProperties(const std::string& language) {
  return OnPlant(language, [](SamplePlant& plant) {
    plant.AddPumps();
    return std::make_unique<frmOPCServerProperties>(plant.job->host, plant.calls, *plant.manager->Servers()[0].server);
  });
}

std::shared_ptr<QWidget> OpenSelection(const std::string& language) {
  const std::shared_ptr<QWidget> window = OnPlant(language, [](SamplePlant& plant) {
    return std::make_unique<frmSelectOPCServer>(plant.job->host, plant.calls,
                                                [](const std::string&, const std::string&) { return true; });
  });
  FindControl<QListWidget>(*window, "OPCServerList")->setCurrentRow(0);
  return window;
}

const WindowsOf kOpc([] {
  return std::vector<ListedWindow>{
      {"frmMainOPC",
       "",
       topic::Opc,
       {"lblHint", "qt_*"},
       [](const std::string& language) { return OpenManager(language, true); }},
      {"frmMainOPC",
       "empty",
       topic::Opc,
       {"lblHint", "qt_*"},
       [](const std::string& language) { return OpenManager(language, false); }},
      {"frmSelectOPCServer", "", topic::Opc, {"SelectedOPCServer"}, OpenSelection},
      {"frmAddGroup",
       "",
       topic::Opc,
       {},
       [](const std::string& language) {
         return Hosted<frmAddGroup>(MakeJob(language),
                                    [](const std::string&, std::int32_t, float, bool) { return true; });
       }},
      {"frmOPCGroupProperties",
       "",
       topic::Opc,
       {"GroupName", "lblNote"},
       [](const std::string& language) {
         const OpcGroupShown group{"Pumps", 250, 2.5F, true, "ns=2;s=Pump.Strokes, ns=2;s=Pump.Mode"};
         return Hosted<frmOPCGroupProperties>(MakeJob(language), group, [](std::int32_t, float, bool) { return true; });
       }},
      {"frmOPCServerProperties",
       "",
       topic::Opc,
       {"ProgID", "VendorInfo", "StartTime", "CurrentTime", "LastUpdateTime", "ServerState", "Version"},
       OpenServerProperties},
      {"frmAddItem", "", topic::Opc, {"lblState", "DataType", "DataTypeFilter", "AccessFilter"}, OpenAddItem},
      {"frmItemUpdateInterval",
       "",
       topic::Opc,
       {},
       [](const std::string& language) { return Hosted<frmItemUpdateInterval>(MakeJob(language), 250); }},
      {"frmOPCLogin",
       "",
       topic::Opc,
       {"lblServer"},
       [](const std::string& language) {
         return Hosted<frmOPCLogin>(MakeJob(language), std::string("opc.tcp://10.0.0.5:4840"), false);
       }},
  };
});

}  // namespace
}  // namespace velk::test
