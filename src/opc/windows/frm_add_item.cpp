#include "opc/windows/frm_add_item.h"

#include <QTimer>
#include <QTreeWidget>
#include <deque>
#include <utility>

#include "base/text_qt.h"
#include "i18n/windows/translate_form.h"
#include "model/help_topics.h"
#include "opc/texts.h"
#include "ui_frm_add_item.h"

namespace velk {

namespace {

/// The key of the child that lets a branch be opened before anybody knows what is in it.
constexpr const char* kDummyKey = "KEPwareDummyNode";
constexpr int kKeyRole = Qt::UserRole;

void AddDummy(QTreeWidgetItem& branch) {
  auto* dummy = new QTreeWidgetItem(&branch);
  dummy->setData(0, kKeyRole, QString::fromLatin1(kDummyKey));
}

bool HasDummy(const QTreeWidgetItem& branch) {
  return branch.childCount() == 1 && branch.child(0)->data(0, kKeyRole).toString() == QLatin1String(kDummyKey);
}

}  // namespace

const std::vector<NamedOpcType>& NamedOpcTypes() {
  static const std::vector<NamedOpcType> kTypes = {
      {"Native", {}},
      {"Boolean", {OpcType::Boolean}},
      {"Byte", {OpcType::Byte}},
      {"ByteArray", {OpcType::Byte, true}},
      {"Short", {OpcType::Short}},
      {"ShortArray", {OpcType::Short, true}},
      {"Long", {OpcType::Long}},
      {"LongArray", {OpcType::Long, true}},
      {"Float", {OpcType::Float}},
      {"FloatArray", {OpcType::Float, true}},
      {"Double", {OpcType::Double}},
      {"DoubleArray", {OpcType::Double, true}},
      {"String", {OpcType::String}},
      {"StringArray", {OpcType::String, true}},
      {"Date", {OpcType::Date}},
      {"DateArray", {OpcType::Date, true}},
      {"BooleanArray", {OpcType::Boolean, true}},
  };
  return kTypes;
}

frmAddItem::frmAddItem(WindowHost& host, AddItemAccess access)
    : QDialog(host.Parent()), host_(host), access_(std::move(access)), ui_(std::make_unique<Ui::frmAddItem>()) {
  ui_->setupUi(this);
  setProperty("helpTopic", topic::Opc);
  ui_->lvItemView->setModel(&names_);
  ui_->ActiveState->setChecked(true);
  TranslateForm(*this, host.Words());
  ui_->tvBranches->setAccessibleName(ui_->Browsing->title());
  ui_->lvItemView->setAccessibleName(windowTitle());
  FillTypes();
  connect(ui_->tvBranches, &QTreeWidget::itemExpanded, this, [this](QTreeWidgetItem* branch) { Expand(*branch); });
  connect(ui_->tvBranches, &QTreeWidget::currentItemChanged, this, &frmAddItem::FillItems);
  connect(ui_->ItemNameFilter, &QLineEdit::editingFinished, this, &frmAddItem::FillItems);
  connect(ui_->DataTypeFilter, &QComboBox::activated, this, &frmAddItem::FillItems);
  connect(ui_->AccessFilter, &QComboBox::activated, this, &frmAddItem::FillItems);
  connect(ui_->lvItemView, &QAbstractItemView::activated, this, &frmAddItem::TakeItem);
  connect(ui_->Validate, &QPushButton::clicked, this, &frmAddItem::Validate_Click);
  connect(ui_->AddItem, &QPushButton::clicked, this, &frmAddItem::AddItem_Click);
  connect(ui_->CancelButton, &QPushButton::clicked, this, &QDialog::reject);
  // The window stands there before a server is asked that may be slow.
  QTimer::singleShot(0, this, &frmAddItem::BeginBrowsing);
}

frmAddItem::~frmAddItem() = default;

void frmAddItem::FillTypes() {
  for (const NamedOpcType& each : NamedOpcTypes()) {
    ui_->DataTypeFilter->addItem(QString::fromLatin1(each.name));
    ui_->DataType->addItem(QString::fromLatin1(each.name));
  }
  for (const MessageText& access : {text::OpcAccessAny, text::OpcAccessReadOnly, text::OpcAccessWriteOnly})
    ui_->AccessFilter->addItem(ToQt(host_.Words().Translator.In(access)));
}

OpcDataType frmAddItem::ChosenType() const {
  return NamedOpcTypes().at(static_cast<std::size_t>(ui_->DataType->currentIndex())).type;
}

/// Without a browser identifiers are typed.
void frmAddItem::BeginBrowsing() {
  const QPointer<frmAddItem> alive(this);
  browser_ = access_.browse();
  ui_->Browsing->setEnabled(browser_ != nullptr);
  if (!browser_) return ui_->ItemID->setFocus();
  auto* root = new QTreeWidgetItem(ui_->tvBranches, {QStringLiteral("/")});
  AddBranches(*root);
  if (!alive) return;
  root->setExpanded(true);
  ui_->tvBranches->setCurrentItem(root);
}

bool frmAddItem::MoveTo(const QTreeWidgetItem& branch) {
  std::deque<std::string> path;
  for (const QTreeWidgetItem* each = &branch; each->parent() != nullptr; each = each->parent())
    path.push_front(FromQt(each->text(0)));
  if (!browser_->MoveToRoot()) return false;
  for (const std::string& name : path)
    if (!browser_->MoveDown(name)) return false;
  return true;
}

void frmAddItem::AddBranches(QTreeWidgetItem& branch) {
  const QPointer<frmAddItem> alive(this);
  if (!MoveTo(branch) || !browser_->ShowBranches() || !alive) return;
  QList<QTreeWidgetItem*> found;
  for (int i = 1; i <= browser_->GetItemCount(); ++i) {
    auto* child = new QTreeWidgetItem({ToQt(*browser_->GetItemName(i))});
    AddDummy(*child);
    found << child;
  }
  branch.addChildren(found);
}

void frmAddItem::Expand(QTreeWidgetItem& branch) {
  if (!HasDummy(branch)) return;
  delete branch.takeChild(0);
  AddBranches(branch);
}

void frmAddItem::FillItems() {
  const QTreeWidgetItem* const branch = ui_->tvBranches->currentItem();
  if (!browser_ || branch == nullptr) return;
  const QPointer<frmAddItem> alive(this);
  const auto type = static_cast<std::size_t>(ui_->DataTypeFilter->currentIndex());
  browser_->SetFilter(FromQt(ui_->ItemNameFilter->text()));
  browser_->SetDataTypeFilter(NamedOpcTypes().at(type).type);
  browser_->SetAccessFilter(static_cast<OpcAccess>(ui_->AccessFilter->currentIndex()));
  const auto shown = [](const std::vector<std::string>& some) {
    QStringList texts;
    for (const std::string& each : some) texts << ToQt(each);
    return texts;
  };
  // A folder can be long: its first names stand there while the others come.
  if (MoveTo(*branch) && alive)
    browser_->onFirstLeafs = [this, alive, shown](const std::vector<std::string>& some) {
      if (alive) names_.setStringList(shown(some));
    };
  std::vector<std::string> names;
  if (browser_->onFirstLeafs && browser_->ShowLeafs() && alive) {
    for (int i = 1; i <= browser_->GetItemCount(); ++i) names.push_back(*browser_->GetItemName(i));
  }
  if (!alive) return;
  browser_->onFirstLeafs = nullptr;
  names_.setStringList(shown(names));
}

/// The list shows the leaves of the present branch, which the browser still has.
void frmAddItem::TakeItem(const QModelIndex& entry) {
  const QTreeWidgetItem* const branch = ui_->tvBranches->currentItem();
  const QPointer<frmAddItem> alive(this);
  if (branch == nullptr || !MoveTo(*branch) || !browser_->ShowLeafs() || !alive) return;
  const std::optional<std::string> id = browser_->GetItemID(FromQt(entry.data().toString()));
  if (alive && id) ui_->ItemID->setText(ToQt(*id));
}

void frmAddItem::Validate_Click() {
  const QPointer<frmAddItem> alive(this);
  const auto inWords = [this](const MessageText& text) { return ToQt(host_.Words().Translator.In(text)); };
  ui_->lblState->setText(inWords(text::OpcTestingItem));
  const bool isAccepted = access_.validate(FromQt(ui_->ItemID->text()), ChosenType(), ui_->ActiveState->isChecked());
  if (alive) ui_->lblState->setText(inWords(isAccepted ? text::OpcItemAccepted : text::OpcCheckItem));
}

void frmAddItem::AddItem_Click() {
  const QPointer<frmAddItem> alive(this);
  const std::string id = FromQt(ui_->ItemID->text());
  if (id.empty()) return ui_->ItemID->setFocus();
  const bool isAdded = access_.addOPCItemMain(id, ChosenType(), ui_->ActiveState->isChecked());
  if (!alive) return;
  if (isAdded) return accept();
  host_.Boxes().Message({text::OpcItemRejected, {}, Buttons::Ok, BoxIcon::Exclamation});
}

}  // namespace velk
