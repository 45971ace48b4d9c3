#include "opc/windows/frm_main_opc.h"

#include <QGuiApplication>
#include <QHeaderView>
#include <QMenu>
#include <QScreen>
#include <QTreeWidget>
#include <algorithm>

#include "base/numbers.h"
#include "base/text_qt.h"
#include "i18n/windows/translate_form.h"
#include "model/help_topics.h"
#include "opc/opc_entries.h"
#include "opc/texts.h"
#include "opc/windows/frm_add_group.h"
#include "opc/windows/frm_add_item.h"
#include "opc/windows/frm_item_update_interval.h"
#include "opc/windows/frm_opc_group_properties.h"
#include "opc/windows/frm_opc_server_properties.h"
#include "opc/windows/frm_select_opc_server.h"
#include "platform/dialogs/procedure.h"
#include "platform/settings/settings.h"
#include "ui_frm_main_opc.h"

namespace velk {

namespace {

constexpr int kDisplayMs = 250;
constexpr std::size_t kNamedItems = 3;  ///< of those that a deadband does nothing for
constexpr const char* kApplication = "VELK2";
constexpr const char* kPlaceSection = "Settings";

}  // namespace

frmMainOPC::frmMainOPC(WindowHost& host, const Platform& platform, OpcCalls& calls, OpcManager& manager)
    : QDialog(host.Parent()),
      host_(host),
      platform_(platform),
      calls_(calls),
      manager_(manager),
      ui_(std::make_unique<Ui::frmMainOPC>()),
      items_(manager, host.Words()),
      Timer1(platform.clock.MakeTimer()) {
  ui_->setupUi(this);
  setProperty("helpTopic", topic::Opc);
  setWindowFlag(Qt::WindowMaximizeButtonHint);
  layout()->setMenuBar(ui_->mnuBar);
  ui_->ListView1->setModel(&items_);
  ui_->ListView1->header()->setObjectName(QStringLiteral("qt_ListHeadings"));
  ui_->Splitter1->setStretchFactor(1, 1);
  ConnectCommands();
  TranslateForm(*this, host.Words());
  ui_->TreeView1->setAccessibleName(ToQt(host.Words().Translator.In(text::OpcServersRoot)));
  ui_->ListView1->setAccessibleName(windowTitle());
  RestorePlace();
  FillTree(Place{});
  FitColumns();
  ui_->TreeView1->setFocus();
  Timer1->SetInterval(kDisplayMs);
  Timer1->SetHandler([this] { Timer1_Timer(); });
  Timer1->SetEnabled(true);
}

frmMainOPC::~frmMainOPC() {
  SavePlace();
}

void frmMainOPC::ConnectCommands() {
  const auto onItem = [this](QAction* item, void (frmMainOPC::*work)()) {
    connect(item, &QAction::triggered, this, work);
  };
  onItem(ui_->mnuTreeViewNewServer, &frmMainOPC::mnuTreeViewNewServer_Click);
  onItem(ui_->mnuTreeViewConnect, &frmMainOPC::mnuTreeViewConnect_Click);
  onItem(ui_->mnuTreeViewNewGroup, &frmMainOPC::mnuTreeViewNewGroup_Click);
  onItem(ui_->mnuTreeViewNewItem, &frmMainOPC::mnuTreeViewNewItem_Click);
  onItem(ui_->mnuTreeViewDelete, &frmMainOPC::mnuTreeViewDelete_Click);
  onItem(ui_->mnuTreeViewProperties, &frmMainOPC::mnuTreeViewProperties_Click);
  onItem(ui_->mnuListViewNewItem, &frmMainOPC::mnuTreeViewNewItem_Click);
  onItem(ui_->mnuListViewDelete, &frmMainOPC::mnuListViewDelete_Click);
  onItem(ui_->mnuListViewWriteValue, &frmMainOPC::mnuListViewWriteValue_Click);
  onItem(ui_->mnuViewUpdateDispaly, &frmMainOPC::mnuViewUpdateDispaly_Click);
  connect(ui_->mnuListViewSetActive, &QAction::triggered, this, [this] { SetItemsActive(true); });
  connect(ui_->mnuListViewSetInactive, &QAction::triggered, this, [this] { SetItemsActive(false); });
  ui_->TreeView1->addActions(ui_->mnuTreeView->actions());
  ui_->ListView1->addActions(ui_->mnuListView->actions());
  const auto popUp = [this](QAbstractItemView* view, QMenu* menu) {
    connect(view, &QWidget::customContextMenuRequested, this,
            [view, menu](const QPoint& at) { menu->popup(view->viewport()->mapToGlobal(at)); });
  };
  popUp(ui_->TreeView1, ui_->mnuTreeView);
  popUp(ui_->ListView1, ui_->mnuListView);
  connect(ui_->TreeView1, &QTreeWidget::currentItemChanged, this, &frmMainOPC::ShowChosen);
  connect(ui_->ListView1->selectionModel(), &QItemSelectionModel::selectionChanged, this, &frmMainOPC::ShowChosen);
  connect(ui_->cmdClose, &QPushButton::clicked, this, &QDialog::accept);
}

// --- What is shown and chosen ---

QString frmMainOPC::LabelOf(const ManagedServer& server) const {
  OperatorText label = server.name;
  if (!server.node.empty()) label += " - " + server.node;
  if (!server.server || !server.server->IsLive()) {
    label += text::OpcNotConnected;
  } else if (server.server->IsGoingDown()) {
    label += text::OpcGoesDown;
  }
  return ToQt(host_.Words().Translator.In(label));
}

void frmMainOPC::FillTree(std::optional<Place> chosen) {
  const QSignalBlocker quiet(ui_->TreeView1);
  ui_->TreeView1->clear();
  auto* root = new QTreeWidgetItem(ui_->TreeView1, {ToQt(host_.Words().Translator.In(text::OpcServersRoot))});
  QTreeWidgetItem* current = root;
  for (std::size_t i = 0; i < manager_.Servers().size(); ++i) {
    const ManagedServer& server = manager_.Servers()[i];
    auto* node = new QTreeWidgetItem(root, {LabelOf(server)});
    if (chosen && chosen->server == i) current = node;
    for (std::size_t j = 0; j < server.groups.size(); ++j) {
      auto* group = new QTreeWidgetItem(node, {ToQt(server.groups[j].name)});
      if (chosen && chosen->server == i && chosen->group == j) current = group;
    }
  }
  ui_->TreeView1->expandAll();
  ui_->TreeView1->setCurrentItem(current);
  const auto group = ChosenGroup();
  items_.ShowGroup(group.has_value(), group ? group->server : 0, group ? *group->group : 0);
  ShowChosen();
}

/// Wide enough for what is usual, and for their headings in any language.
void frmMainOPC::FitColumns() {
  const QFontMetrics letters = fontMetrics();
  for (const auto& [column, usual] :
       {std::pair{0, "ns=2;s=Well 12.Pump.Pressure"}, {1, "123456.789012"}, {2, "Not at the server"}}) {
    ui_->ListView1->resizeColumnToContents(column);
    const int width = letters.horizontalAdvance(QString::fromLatin1(usual)) + 4 * letters.averageCharWidth();
    ui_->ListView1->setColumnWidth(column, std::max(ui_->ListView1->columnWidth(column), width));
  }
}

std::optional<frmMainOPC::Place> frmMainOPC::Chosen() const {
  const QTreeWidgetItem* const item = ui_->TreeView1->currentItem();
  if (item == nullptr || item->parent() == nullptr) return std::nullopt;
  const QTreeWidgetItem* const above = item->parent();
  const auto placeOf = [](const QTreeWidgetItem& child) {
    return static_cast<std::size_t>(child.parent()->indexOfChild(const_cast<QTreeWidgetItem*>(&child)));
  };
  if (above->parent() == nullptr) return Place{placeOf(*item), std::nullopt};
  return Place{placeOf(*above), placeOf(*item)};
}

std::optional<frmMainOPC::Place> frmMainOPC::ChosenGroup() const {
  const auto chosen = Chosen();
  return chosen && chosen->group ? chosen : std::nullopt;
}

std::vector<std::size_t> frmMainOPC::ChosenItems() const {
  std::vector<std::size_t> places;
  for (const QModelIndex& row : ui_->ListView1->selectionModel()->selectedRows())
    places.push_back(static_cast<std::size_t>(row.row()));
  std::sort(places.rbegin(), places.rend());
  return places;
}

/// The list follows the tree, and the menus what is chosen in both.
void frmMainOPC::ShowChosen() {
  const auto chosen = Chosen();
  const auto group = ChosenGroup();
  if (sender() == ui_->TreeView1)
    items_.ShowGroup(group.has_value(), group ? group->server : 0, group ? *group->group : 0);
  const ManagedServer* const server = chosen ? &manager_.Servers().at(chosen->server) : nullptr;
  const bool isConnected = server && server->server;
  const bool isAtServer = group && manager_.GroupOf(group->server, *group->group) != nullptr;
  const bool hasItem = group && ui_->ListView1->selectionModel()->hasSelection();
  ui_->mnuTreeViewConnect->setEnabled(server && !isConnected);
  ui_->mnuTreeViewNewGroup->setEnabled(isConnected);
  ui_->mnuTreeViewNewItem->setEnabled(isAtServer);
  ui_->mnuTreeViewDelete->setEnabled(server != nullptr);
  ui_->mnuTreeViewProperties->setEnabled(group || isConnected);
  ui_->mnuListViewNewItem->setEnabled(isAtServer);
  ui_->mnuListViewDelete->setEnabled(hasItem);
  for (QAction* item : {ui_->mnuListViewSetActive, ui_->mnuListViewSetInactive, ui_->mnuListViewWriteValue})
    item->setEnabled(hasItem && isAtServer);
  const bool isBegun = CountOPCItems(manager_.Stored()) > 0;
  ui_->lblHint->setText(isBegun ? QString() : ToQt(host_.Words().Translator.In(text::OpcBegin)));
  ui_->lblHint->setVisible(!isBegun);
}

void frmMainOPC::Timer1_Timer() {
  items_.Refresh();
  const QTreeWidgetItem* const root = ui_->TreeView1->topLevelItem(0);
  for (int i = 0; i < root->childCount(); ++i) {
    const QString label = LabelOf(manager_.Servers().at(static_cast<std::size_t>(i)));
    if (root->child(i)->text(0) != label) root->child(i)->setText(0, label);
  }
}

// --- The tree ---

void frmMainOPC::mnuTreeViewNewServer_Click() {
  const QPointer<frmMainOPC> alive(this);
  host_.Show<frmSelectOPCServer>(calls_, [this](const std::string& name, const std::string& node) {
    return manager_.AddSelectedOPCServerMain(name, node);
  });
  if (alive && !manager_.Servers().empty()) FillTree(Place{manager_.Servers().size() - 1, std::nullopt});
}

void frmMainOPC::mnuTreeViewConnect_Click() {
  const QPointer<frmMainOPC> alive(this);
  const auto chosen = Chosen();
  if (!chosen) return;
  manager_.ConnectServer(chosen->server);
  if (alive) FillTree(chosen);
}

void frmMainOPC::mnuTreeViewNewGroup_Click() {
  const QPointer<frmMainOPC> alive(this);
  const auto chosen = Chosen();
  if (!chosen) return;
  const std::size_t server = chosen->server;
  const std::size_t before = manager_.Servers().at(server).groups.size();
  host_.Show<frmAddGroup>([&](const std::string& name, std::int32_t updateRate, float deadBand, bool active) {
    return manager_.AddOPCGroupMain(server, name, updateRate, deadBand, active);
  });
  if (alive && manager_.Servers().at(server).groups.size() > before) FillTree(Place{server, before});
}

void frmMainOPC::mnuTreeViewNewItem_Click() {
  const QPointer<frmMainOPC> alive(this);
  const auto chosen = ChosenGroup();
  if (!chosen || manager_.GroupOf(chosen->server, *chosen->group) == nullptr) return;
  const std::size_t server = chosen->server;
  const std::size_t group = *chosen->group;
  AddItemAccess access;
  access.browse = [this, server] { return manager_.Servers().at(server).server->GetServerBrowseObject(); };
  access.validate = [this, server, group](const std::string& id, const OpcDataType& type, bool active) {
    OpcItemAnswer answer;
    return manager_.GroupOf(server, group)->ValidateOPCItem(id, type, active, answer);
  };
  access.addOPCItemMain = [this, server, group](const std::string& id, const OpcDataType& type, bool active) {
    return manager_.AddOPCItemMain(server, group, id, type, active);
  };
  host_.Show<frmAddItem>(access);
  if (!alive) return;
  items_.ShowAdded();
  ShowChosen();
}

bool frmMainOPC::IsSureToDelete(const std::string& name) {
  return host_.Boxes().Message({.text = text::OpcDeleteBefore + OperatorText(name) + text::OpcDeleteAfter,
                                .buttons = Buttons::YesNo,
                                .icon = BoxIcon::Question,
                                .safeDefault = true}) == velk::Answer::Yes;
}

void frmMainOPC::mnuTreeViewDelete_Click() {
  const QPointer<frmMainOPC> alive(this);
  const auto chosen = Chosen();
  if (!chosen) return;
  const ManagedServer& server = manager_.Servers().at(chosen->server);
  const ManagedGroup* const group = chosen->group ? &server.groups.at(*chosen->group) : nullptr;
  const bool isEmpty = group ? group->items.empty() : server.groups.empty();
  if (!isEmpty && !IsSureToDelete(group ? group->name : server.name)) return;
  if (!alive) return;
  items_.ShowGroup(false, 0, 0);
  if (!chosen->group) {
    manager_.RemoveServer(chosen->server);
  } else if (!manager_.RemoveGroup(chosen->server, *chosen->group)) {
    if (alive) FillTree(chosen);
    return;
  }
  if (alive) FillTree(chosen->group ? std::optional(Place{chosen->server, std::nullopt}) : std::nullopt);
}

void frmMainOPC::mnuTreeViewProperties_Click() {
  const auto chosen = Chosen();
  if (!chosen) return;
  if (chosen->group) return ShowGroupProperties(*chosen);
  OPCServerClass* const server = manager_.Servers().at(chosen->server).server.get();
  if (server != nullptr) host_.Show<frmOPCServerProperties>(calls_, *server);
}

void frmMainOPC::ShowGroupProperties(const Place& place) {
  const ManagedGroup& listed = manager_.Servers().at(place.server).groups.at(*place.group);
  OpcGroupShown shown{listed.name, listed.updateRate, listed.deadBand, true, {}};
  if (const OPCGroupClass* const group = manager_.GroupOf(place.server, *place.group)) {
    shown.isActive = group->GetGroupActiveState();
    std::size_t named = 0;
    for (const auto& item : group->GetOPCGroupItemsCollection()) {
      if (item->HasRange() || named > kNamedItems) continue;
      const std::string name = named++ < kNamedItems ? item->GetItemID() : "\u2026";
      shown.itemsWithoutRange += (shown.itemsWithoutRange.empty() ? "" : ", ") + name;
    }
  }
  host_.Show<frmOPCGroupProperties>(shown, [&](std::int32_t updateRate, float deadBand, bool active) {
    return manager_.SetGroup(place.server, *place.group, updateRate, deadBand, active);
  });
}

// --- The list ---

void frmMainOPC::mnuListViewDelete_Click() {
  const QPointer<frmMainOPC> alive(this);
  const auto group = ChosenGroup();
  if (!group) return;
  const std::vector<std::size_t> places = ChosenItems();
  for (const std::size_t item : places) {
    const bool isRemoved = manager_.RemoveItem(group->server, *group->group, item);
    if (!alive) return;
    items_.ShowAnew();
    if (!isRemoved) break;
  }
  ShowChosen();
}

void frmMainOPC::SetItemsActive(bool active) {
  const auto group = ChosenGroup();
  if (!group) return;
  for (const std::size_t place : ChosenItems()) {
    OPCItemClass* const item = manager_.ItemOf(group->server, *group->group, place);
    if (item != nullptr && !item->SetItemActiveState(active)) return;
  }
}

void frmMainOPC::mnuListViewWriteValue_Click() {
  const auto group = ChosenGroup();
  const std::vector<std::size_t> places = ChosenItems();
  const OPCItemClass* item =
      group && !places.empty() ? manager_.ItemOf(group->server, *group->group, places.back()) : nullptr;
  if (item == nullptr) return;
  const std::int32_t handle = item->GetItemIndex();
  const bool isArray = item->GetItemCanonicalType().isArray;
  const QPointer<frmMainOPC> alive(this);
  const auto typed = host_.Boxes().Input(text::OpcWriteValueOf + OperatorText(item->GetItemID()), text::OpcWriteTitle);
  if (!alive || !typed) return;
  if (OPCGroupClass* const owner = manager_.GroupOf(group->server, *group->group))
    owner->AsyncWriteOPCItem(handle, EnteredOpcValue(*typed, isArray));
}

void frmMainOPC::mnuViewUpdateDispaly_Click() {
  const QPointer<frmMainOPC> alive(this);
  const auto interval = host_.Ask<frmItemUpdateInterval>(Timer1->Interval());
  if (alive && interval) Timer1->SetInterval(*interval);
}

// --- Where it stands ---

void frmMainOPC::RestorePlace() {
  const auto stored = [this](const char* key) {
    return static_cast<int>(Val(platform_.settings.Get(kApplication, kPlaceSection, key, "0")));
  };
  const QRect place(stored("MainLeft"), stored("MainTop"), stored("MainWidth"), stored("MainHeight"));
  const bool isOnScreen = QGuiApplication::primaryScreen()->virtualGeometry().intersects(place);
  if (place.width() > 0 && place.height() > 0 && isOnScreen) {
    resize(place.size());
    move(place.topLeft());
  } else {
    resize(140 * fontMetrics().averageCharWidth(), 30 * fontMetrics().height());
  }
}

void frmMainOPC::SavePlace() {
  for (const auto& [key, value] :
       {std::pair{"MainLeft", x()}, {"MainTop", y()}, {"MainWidth", width()}, {"MainHeight", height()}})
    platform_.settings.Save(kApplication, kPlaceSection, key, std::to_string(value));
}

void mnuEditOPCServer_Click(WindowHost& host, const Platform& platform, OpcTransport& transport, int channelsLeft,
                            const std::function<void()>& stored) {
  RunProcedure({platform.dialogs, "mnuEditOPCServer_Click"}, [&](const Statements& run) {
    {
      OpcCalls calls(transport, platform.clock, platform.dialogs);
      OpcManager manager(calls, platform.settings);
      host.Show<frmMainOPC>(platform, calls, manager);
      run([&] {
        manager.SaveOPCConfiguration();
        platform.settings.Flush();
      });
    }
    const int count = CountOPCItems(LoadOPCConfiguration(platform.settings));
    if (count > channelsLeft)
      platform.dialogs.Message(
          {std::to_string(count) + OperatorText(text::OpcTooManyItems), {}, Buttons::Ok, BoxIcon::Exclamation});
    run([&] { stored(); });
  });
}

}  // namespace velk
