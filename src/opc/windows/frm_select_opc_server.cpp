#include "opc/windows/frm_select_opc_server.h"

#include <QTimer>
#include <algorithm>

#include "base/text_qt.h"
#include "i18n/windows/translate_form.h"
#include "model/help_topics.h"
#include "opc/opc_server_class.h"
#include "opc/texts.h"
#include "platform/opc/opc_id.h"
#include "ui_frm_select_opc_server.h"

namespace velk {

frmSelectOPCServer::frmSelectOPCServer(WindowHost& host, OpcCalls& calls, AddSelectedOPCServerMain add)
    : QDialog(host.Parent()),
      host_(host),
      calls_(calls),
      add_(std::move(add)),
      ui_(std::make_unique<Ui::frmSelectOPCServer>()) {
  ui_->setupUi(this);
  setProperty("helpTopic", topic::Opc);
  // As wide as an address with its port.
  ui_->OPCNodeName->setMinimumWidth(24 * fontMetrics().averageCharWidth());
  connect(ui_->Command1, &QPushButton::clicked, this, &frmSelectOPCServer::Command1_Click);
  connect(ui_->OPCServerList, &QListWidget::currentRowChanged, this, &frmSelectOPCServer::OPCServerList_Click);
  // An entry may be clicked again, over what was typed meanwhile.
  connect(ui_->OPCServerList, &QListWidget::itemClicked, this, &frmSelectOPCServer::OPCServerList_Click);
  connect(ui_->OPCServerList, &QListWidget::itemDoubleClicked, this, &frmSelectOPCServer::ConnectToOPCServer_Click);
  connect(ui_->ConnectToOPCServer, &QPushButton::clicked, this, &frmSelectOPCServer::ConnectToOPCServer_Click);
  connect(ui_->CancelButton, &QPushButton::clicked, this, &QDialog::reject);
  TranslateForm(*this, host.Words());
  ui_->OPCServerList->setAccessibleName(ui_->Label2->text().remove(QLatin1Char('&')));
  ui_->SelectedOPCServer->setText(ToQt(host.Words().Translator.In(text::OpcNoServerSelected)));
  // The window stands there before a node is asked that may be silent.
  QTimer::singleShot(0, this, &frmSelectOPCServer::Command1_Click);
}

frmSelectOPCServer::~frmSelectOPCServer() = default;

void frmSelectOPCServer::Command1_Click() {
  const QPointer<frmSelectOPCServer> alive(this);
  const std::string node = FromQt(ui_->OPCNodeName->text());
  std::optional<std::vector<OpcServerEntry>> found;
  {
    const OpcCalls::Quiet quiet(calls_);
    found = OPCServerClass(calls_).GetOPCServerList(node);
  }
  if (!alive) return;
  servers_ = found.value_or(std::vector<OpcServerEntry>());
  ui_->OPCServerList->clear();
  for (const OpcServerEntry& server : servers_) {
    auto* entry = new QListWidgetItem(ToQt(server.name), ui_->OPCServerList);
    entry->setToolTip(ToQt(server.url));
  }
  if (!found) host_.Boxes().Message({text::OpcNoRemoteServers, {}, Buttons::Ok, BoxIcon::Exclamation});
}

/// Two servers of one name are told apart by their endpoints.
void frmSelectOPCServer::OPCServerList_Click() {
  const int row = ui_->OPCServerList->currentRow();
  if (row < 0) return;
  const OpcServerEntry& chosen = servers_.at(static_cast<std::size_t>(row));
  const auto sameName = std::count_if(servers_.begin(), servers_.end(),
                                      [&](const OpcServerEntry& each) { return each.name == chosen.name; });
  ui_->SelectedOPCServer->setText(ToQt(sameName > 1 || chosen.name.empty() ? chosen.url : chosen.name));
}

void frmSelectOPCServer::ConnectToOPCServer_Click() {
  const QPointer<frmSelectOPCServer> alive(this);
  const QString selected = ui_->SelectedOPCServer->text().trimmed();
  if (selected.isEmpty() || selected == ToQt(host_.Words().Translator.In(text::OpcNoServerSelected))) {
    host_.Boxes().Message({text::OpcSelectServer, {}, Buttons::Ok, BoxIcon::Exclamation});
    return;
  }
  const bool isAdded = add_(FromQt(selected), NodeOf(FromQt(selected)));
  if (alive && isAdded) accept();
}

/// The port of a node is that of its list; an endpoint of the list has one of its own.
std::string frmSelectOPCServer::NodeOf(const std::string& server) const {
  const std::string node = FromQt(ui_->OPCNodeName->text().trimmed());
  const bool isEndpoint =
      std::any_of(servers_.begin(), servers_.end(), [&](const OpcServerEntry& each) { return each.url == server; });
  return isEndpoint && !node.empty() ? OpcHostName(node).value_or(node) : node;
}

}  // namespace velk
