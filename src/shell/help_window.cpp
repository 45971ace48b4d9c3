#include "shell/help_window.h"

#include <QKeyEvent>
#include <QShortcut>
#include <QSignalBlocker>
#include <QStyle>
#include <algorithm>
#include <initializer_list>

#include "base/text_qt.h"
#include "i18n/windows/translate_form.h"
#include "platform/windows/letter_size.h"
#include "shell/texts.h"
#include "shell/ui_help_window.h"

namespace velk {

namespace {

constexpr int kMargin = 12;  ///< around a page, in pixels
constexpr int kLetters = 115, kLines = 38;
constexpr int kPlaceRole = Qt::UserRole;  ///< of a contents entry: its place among the pages

}  // namespace

HelpWindow::HelpWindow(WindowHost& host)
    : ui_(std::make_unique<Ui::HelpWindow>()), pages_(ReadHelpPages(host.Words().Languages.Language())) {
  ui_->setupUi(this);
  setAttribute(Qt::WA_QuitOnClose, false);
  ui_->splitter->setStretchFactor(1, 1);
  ui_->Browser->document()->setDocumentMargin(kMargin);
  ui_->cmdBack->setEnabled(false);
  ui_->lblVersion->setText(ToQt(host.Words().Translator.In(text::BaseTitle + " " VELK_VERSION)));
  connect(ui_->cmdBack, &QPushButton::clicked, ui_->Browser, &QTextBrowser::backward);
  // A key of the window: the button's own is the letter that its caption marks.
  auto* altLeft = new QShortcut(Qt::ALT | Qt::Key_Left, this);
  connect(altLeft, &QShortcut::activated, ui_->Browser, &QTextBrowser::backward);
  connect(ui_->Browser, &QTextBrowser::backwardAvailable, ui_->cmdBack, &QWidget::setEnabled);
  connect(ui_->Browser, &QTextBrowser::sourceChanged, this, [this](const QUrl& address) {
    shown_ = address;  // source() still tells the page before
    MarkShown();
  });
  connect(ui_->lstContents, &QListWidget::currentRowChanged, this, &HelpWindow::ShowChosen);
  connect(ui_->txtSearch, &QLineEdit::textChanged, this, &HelpWindow::FillContents);
  connect(ui_->txtSearch, &QLineEdit::returnPressed, this, [this] {
    ui_->lstContents->setCurrentRow(0);
    ui_->lstContents->setFocus();
  });
  FillContents();
  TranslateForm(*this, host.Words());
  for (QWidget* const part : std::initializer_list<QWidget*>{ui_->lstContents, ui_->Browser})
    part->setAccessibleName(windowTitle());
  resize(LetterSize(*this, kLetters, kLines));
  ui_->splitter->setSizes({ContentsWidth(), width() - ContentsWidth()});
}

HelpWindow::~HelpWindow() = default;

void HelpWindow::ShowTopic(int number) {
  ui_->txtSearch->clear();
  ui_->Browser->setSource(pages_[static_cast<std::size_t>(FindTopic(pages_, number))].address);
  ui_->lstContents->setFocus();
}

/// Of the longest title in one line; of a third of the window where the letters are too large for that.
int HelpWindow::ContentsWidth() const {
  const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent) + 2 * ui_->lstContents->frameWidth();
  return std::min(ui_->lstContents->sizeHintForColumn(0) + bar, width() / 3);
}

void HelpWindow::FillContents() {
  const QSignalBlocker quiet(ui_->lstContents);
  ui_->lstContents->clear();
  for (const int place : FindPages(pages_, ui_->txtSearch->text())) {
    auto* entry = new QListWidgetItem(pages_[static_cast<std::size_t>(place)].title, ui_->lstContents);
    entry->setData(kPlaceRole, place);
  }
  ui_->lblNothing->setVisible(ui_->lstContents->count() == 0);
  MarkShown();
}

void HelpWindow::ShowChosen() {
  const QListWidgetItem* entry = ui_->lstContents->currentItem();
  if (!entry) return;
  ui_->Browser->setSource(pages_[entry->data(kPlaceRole).toUInt()].address);
  const QStringList words = ui_->txtSearch->text().split(' ', Qt::SkipEmptyParts);
  if (!words.isEmpty()) ui_->Browser->find(words.first());
}

void HelpWindow::MarkShown() {
  const QSignalBlocker quiet(ui_->lstContents);
  ui_->lstContents->setCurrentRow(-1);
  for (int row = 0; row < ui_->lstContents->count(); ++row) {
    const auto place = ui_->lstContents->item(row)->data(kPlaceRole).toUInt();
    if (pages_[place].address.path() == shown_.path()) ui_->lstContents->setCurrentRow(row);
  }
}

void HelpWindow::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    close();
  } else if (event->matches(QKeySequence::Find)) {
    ui_->txtSearch->setFocus();
    ui_->txtSearch->selectAll();
  } else {
    QWidget::keyPressEvent(event);
  }
}

}  // namespace velk
