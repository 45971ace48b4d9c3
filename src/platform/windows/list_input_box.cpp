#include "platform/windows/list_input_box.h"

#include <QKeyEvent>
#include <QScreen>
#include <QStyle>
#include <algorithm>

#include "base/text_qt.h"
#include "platform/texts.h"
#include "platform/windows/fit_to_title.h"
#include "ui_list_input_box.h"

namespace velk {

namespace {

/// The number formats are seven; a longer list scrolls.
constexpr int kRowsInSight = 8;

}  // namespace

ListInputBox::ListInputBox(const ShownListQuestion& question, const Language& language, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::ListInputBox>()), question_(question) {
  ui_->setupUi(this);
  if (question_.helpTopic != 0) setProperty("helpTopic", question_.helpTopic);
  const QString title = ToQt(question_.title);
  const QString prompt = ToQt(question_.prompt);
  setWindowTitle(title);
  ui_->lblPrompt->setText(prompt);
  ui_->lblPrompt->setVisible(!prompt.isEmpty());
  ui_->Text1->setVisible(question_.mayEnter);
  for (const std::string& entry : question_.entries) ui_->List1->addItem(ToQt(entry));
  // Readers of the screen tell what the list and the box are for.
  const QString purpose = prompt.isEmpty() ? title : prompt;
  ui_->List1->setAccessibleName(purpose);
  ui_->Text1->setAccessibleName(purpose);

  connect(ui_->List1, &QListWidget::itemSelectionChanged, this, &ListInputBox::List1_Click);
  // A click on the entry that is selected already shows it again.
  connect(ui_->List1, &QListWidget::itemClicked, this, &ListInputBox::List1_Click);
  connect(ui_->List1, &QListWidget::itemDoubleClicked, this, [this] { ui_->cmdOK->click(); });
  connect(ui_->Text1, &QLineEdit::textChanged, this, &ListInputBox::Text1_Change);
  connect(ui_->cmdOK, &QPushButton::clicked, this, &ListInputBox::cmdOK_Click);
  connect(ui_->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  ui_->List1->installEventFilter(this);
  Text1_Change();
  if (question_.mayEnter) {
    ui_->Text1->setFocus();
  } else {
    ui_->List1->setFocus();
  }
  ui_->cmdOK->setText(ToQt(language.In(text::ButtonOk)));
  ui_->cmdCancel->setText(ToQt(language.In(text::ButtonCancel)));
  FitToTexts();
}

ListInputBox::~ListInputBox() = default;

/// Wide enough for the title and the entries, as far as the screen has room, and high enough for some of them.
void ListInputBox::FitToTexts() {
  const int room = screen()->availableSize().width() * 3 / 4;
  FitToTitle(*this);
  const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent) + 2 * ui_->List1->frameWidth();
  const int entries = std::min(ui_->List1->sizeHintForColumn(0) + bar, room);
  ui_->List1->setMinimumWidth(std::max(ui_->List1->minimumWidth(), entries));
  const int rows = std::min(ui_->List1->count(), kRowsInSight);
  const int high = rows * std::max(ui_->List1->sizeHintForRow(0), 0) + 2 * ui_->List1->frameWidth();
  ui_->List1->setMinimumHeight(std::max(ui_->List1->minimumHeight(), high));
}

/// The first press of an arrow selects the first entry: the list made it the current one as soon as it got the
/// keyboard, but nothing is chosen for the operator.
bool ListInputBox::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress && ChosenRow() < 0 && ui_->List1->count() > 0 &&
      static_cast<QKeyEvent*>(event)->key() == Qt::Key_Down) {
    ui_->List1->setCurrentRow(0);
    return true;
  }
  return QDialog::eventFilter(watched, event);
}

int ListInputBox::ChosenRow() const {
  const QList<QListWidgetItem*> selected = ui_->List1->selectedItems();
  return selected.isEmpty() ? -1 : ui_->List1->row(selected.front());
}

void ListInputBox::List1_Click() {
  if (const int row = ChosenRow(); row >= 0) ui_->Text1->setText(ui_->List1->item(row)->text());
  Text1_Change();
}

void ListInputBox::Text1_Change() {
  ui_->cmdOK->setEnabled(!Text().empty());
}

/// A name that stands in the list is given as it stands there, whatever the toolkit made of it for showing.
std::string ListInputBox::Text() const {
  const int row = ChosenRow();
  const std::string entry = row < 0 ? std::string() : question_.entries[static_cast<std::size_t>(row)];
  if (!question_.mayEnter) return entry;
  const QString text = ui_->Text1->text();
  return row >= 0 && text == ui_->List1->item(row)->text() ? entry : FromQt(text);
}

void ListInputBox::cmdOK_Click() {
  chosen_ = Text();
  accept();
}

}  // namespace velk
